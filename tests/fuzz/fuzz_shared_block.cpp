// The block of shared memory, of any content and any size: its texts end where they
// should, its numbers are those written, and the report carries them.
//
// An input is the block as its writer made it. The kernel gives a shorter one a whole
// page all the same, zeros behind the end.

#include "crash_reporter/device_type.h"
#include "fuzz/input_bytes.h"
#include "fuzz/report_document_check.h"
#include "fuzz/require.h"

#include <QBuffer>

#include <cstring>
#include <memory>

using namespace Tessel;

namespace {

constexpr int serialOffset = 0;
constexpr int serialSize = 64;
constexpr int deviceOffset = 64;
constexpr int versionOffset = 65;
constexpr int pathOffset = 69;
constexpr int pathSize = 256;
constexpr int secondsOffset = 328;
constexpr int flagOffset = 332;

/** A text of the block as Latin-1, letter by letter. */
QString textAt(const QByteArray &block, int offset, int size)
{
    QString text;
    for (int i = offset; i < offset + size && block[i] != '\0'; ++i)
        text += QChar(static_cast<uchar>(block[i]));
    return text;
}

quint8 byteAt(const QByteArray &block, int offset)
{
    return static_cast<quint8>(block[offset]);
}

qint64 secondsOf(const QByteArray &block)
{
    qint64 value = 0;
    for (int i = 3; i >= 0; --i)
        value = value * 256 + byteAt(block, secondsOffset + i);
    return value < (1LL << 31U) ? value : value - (1LL << 32U);
}

void checkFields(const SharedClientInfo &info, const QByteArray &block)
{
    require(serialNumber(info) == textAt(block, serialOffset, serialSize),
            "the serial number ends at its zero, or with its field");
    require(logFilePath(info) == textAt(block, pathOffset, pathSize),
            "the log's path ends at its zero, or with its field");
    require(info.deviceType == byteAt(block, deviceOffset), "the device type is at its place");
    require(packVersion(info.version) ==
                (byteAt(block, versionOffset) | unsigned(byteAt(block, versionOffset + 1)) << 8U |
                 unsigned(byteAt(block, versionOffset + 2)) << 16U |
                 unsigned(byteAt(block, versionOffset + 3)) << 24U),
            "the version is at its place");
    require(info.autoActionSeconds == secondsOf(block), "the seconds are at their place");
    require(info.unattendedRestart == byteAt(block, flagOffset), "the flag is at its place");
}

void checkDeviceName(const SharedClientInfo &info)
{
    static const QStringList models = {QStringLiteral("R4-PC"),  QStringLiteral("R4-220"),
                                       QStringLiteral("R4-120"), QStringLiteral("R4-010"),
                                       QStringLiteral("R4-210"), QStringLiteral("R4-110")};
    constexpr int firstModel = 2;
    require(deviceTypeName(info.deviceType) ==
                models.value(info.deviceType - firstModel, QStringLiteral("Unknown")),
            "the device is called by its model, or unknown");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const QByteArray block =
        InputBytes(data, size).take(sharedClientInfoSize).leftJustified(sharedClientInfoSize, '\0');
    // On the heap, where a read behind its end is seen.
    const auto info = std::make_unique<SharedClientInfo>();
    std::memcpy(info.get(), block.constData(), sharedClientInfoSize);
    checkFields(*info, block);
    checkDeviceName(*info);

    const QStringList noLines;
    CrashReportData report;
    report.clientInfo = info.get();
    report.outputLog = &noLines;
    QBuffer document;
    document.open(QIODevice::WriteOnly);
    CrashReportWriter().write(&document, report);
    checkReportDocument(document.data(), report);
    return 0;
}
