#include "crash_reporter/crash_data.h"

#include <QDataStream>

namespace {

/**
 * Reads one value. On a short stream Qt's own operators leave an empty but
 * non-null string or a valid date of Julian day 0 behind: such a field is null.
 */
template <typename T>
T readField(QDataStream &stream)
{
    stream.resetStatus();
    T value;
    stream >> value;
    return stream.status() == QDataStream::Ok ? value : T();
}

/**
 * Qt's rule for lists, less the memory it sets aside first: a false count must
 * not end the program before it saved anything.
 */
QStringList readLines(QDataStream &stream)
{
    stream.resetStatus();
    quint32 count = 0;
    stream >> count;

    QStringList lines;
    for (quint32 i = 0; i < count; ++i) {
        QString line;
        stream >> line;
        if (stream.status() != QDataStream::Ok)
            return {};
        lines.append(line);
    }
    return lines;
}

} // namespace

CrashData readCrashData(QIODevice &device)
{
    QDataStream stream(&device);
    CrashData data;
    data.dumpFilePath = readField<QString>(stream);
    data.crashTime = readField<QDateTime>(stream);
    data.outputLog = readLines(stream);
    return data;
}
