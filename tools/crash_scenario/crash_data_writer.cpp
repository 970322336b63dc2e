#include "crash_data_writer.h"

#include <QIODevice>

namespace CrashScenario {

namespace {

void writePath(QDataStream &stream, const CrashData &data)
{
    if (!data.falsePathLength) {
        stream << data.dumpFilePath;
        return;
    }
    stream << *data.falsePathLength;
    for (const QChar unit : data.dumpFilePath)
        stream << unit.unicode();
}

void writeOutput(QDataStream &stream, const CrashData &data)
{
    stream << data.falseListCount.value_or(quint32(data.outputLog.size()));
    for (const QString &line : data.outputLog)
        stream << line;
}

QByteArray streamedBytes(const CrashData &data)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(data.streamVersion);
    stream.setByteOrder(data.byteOrder);
    writePath(stream, data);
    stream << data.crashTime;
    writeOutput(stream, data);
    return bytes;
}

} // namespace

QByteArray crashDataBytes(const CrashData &data)
{
    const QByteArray bytes = data.raw ? *data.raw : streamedBytes(data);
    return data.truncateTo ? bytes.left(*data.truncateTo) : bytes;
}

} // namespace CrashScenario
