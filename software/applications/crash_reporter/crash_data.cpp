#include "crash_reporter/crash_data.h"

#include <QDataStream>
#include <QIODevice>

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
 * Whether the date-time that comes next is in a zone whose name leads out of the
 * zone database. Qt opens such a name like any other file, and opening a pipe waits
 * for ever. A name that is cut or longer than any real one counts as leading out.
 */
bool leavesZoneDatabase(QIODevice &device)
{
    constexpr qint64 longestZone = 1024;
    QDataStream ahead(device.peek(longestZone));
    QDate date;
    QTime time;
    qint8 spec = Qt::LocalTime;
    ahead >> date >> time >> spec;
    if (ahead.status() != QDataStream::Ok || spec != Qt::TimeZone)
        return false;

    QString zone;
    ahead >> zone;
    if (zone == QLatin1String("OffsetFromUtc")) // Qt looks up the name that follows first
        ahead >> zone;
    return ahead.status() != QDataStream::Ok || zone.contains(QLatin1String(".."));
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
    if (leavesZoneDatabase(device))
        return data;
    data.crashTime = readField<QDateTime>(stream);
    data.outputLog = readLines(stream);
    return data;
}
