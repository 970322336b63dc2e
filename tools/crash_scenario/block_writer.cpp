#include "block_writer.h"

#include <QSharedMemory>

#include <cstring>

namespace CrashScenario {

namespace {

/** Fills what the serial number leaves of its field when it is not to be terminated. */
constexpr char serialFiller = '#';

QByteArray fieldBytes(const Block &block)
{
    Tessel::SharedClientInfo info = {};
    if (block.serialUnterminated)
        std::memset(info.serialNumber, serialFiller, sizeof info.serialNumber);
    std::memcpy(info.serialNumber, block.serialNumber.constData(),
                size_t(block.serialNumber.size()));
    info.deviceType = block.deviceType;
    info.version = block.version;
    std::memcpy(info.logFilePath, block.logFilePath.constData(), size_t(block.logFilePath.size()));
    info.autoActionSeconds = block.autoActionSeconds;
    info.unattendedRestart = block.unattendedRestart ? 1 : 0;
    return {reinterpret_cast<const char *>(&info), int(sizeof info)};
}

} // namespace

QByteArray blockBytes(const Block &block)
{
    const bool isRaw = block.raw || block.fill;
    const QByteArray start = isRaw ? block.raw.value_or(QByteArray()) : fieldBytes(block);
    return start.leftJustified(block.size, char(block.fill.value_or(0)), true);
}

QString writeBlock(QSharedMemory &memory, const Block &block)
{
    if (!memory.create(block.size) && !memory.attach())
        return memory.errorString();
    const QByteArray bytes = blockBytes(block);
    if (memory.size() < bytes.size())
        return QStringLiteral("a block of %1 bytes is there already").arg(memory.size());
    std::memcpy(memory.data(), bytes.constData(), size_t(bytes.size()));
    return {};
}

} // namespace CrashScenario
