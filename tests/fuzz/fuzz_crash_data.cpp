// Whatever a crashed application leaves behind, a readable report comes out of it.
//
// An input is, in this order:
//   1 byte     1 when there is a shared block, anything else when there is none
//   336 bytes  the block, if there is one; zeros where the input ends early
//   2 bytes    size in bytes of the operator's comments, big-endian
//   so many    the comments, UTF-16 in big-endian order
//   the rest   the crash data file
// so that the end of a seed is a crash data file as the reporter is given one.

#include "crash_reporter/crash_data.h"
#include "crash_reporter/crash_report_writer.h"
#include "fuzz/memory_meter.h"
#include "fuzz/report_document_check.h"

#include <QBuffer>
#include <QtEndian>

#include <cstring>
#include <optional>

using namespace Tessel;

namespace {

struct Input
{
    std::optional<SharedClientInfo> block;
    QString comments;
    QByteArray crashData;
};

/** Takes up to `size` bytes off the front. */
QByteArray take(QByteArray &bytes, int size)
{
    QByteArray front = bytes.left(size);
    bytes.remove(0, size);
    return front;
}

SharedClientInfo blockFrom(const QByteArray &bytes)
{
    SharedClientInfo block = {};
    std::memcpy(&block, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return block;
}

QString utf16From(const QByteArray &bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromBigEndian<quint16>(bytes.constData(), text.size(), text.data());
    return text;
}

Input inputFrom(QByteArray bytes)
{
    Input input;
    if (take(bytes, 1).startsWith('\1'))
        input.block = blockFrom(take(bytes, sharedClientInfoSize));
    const QByteArray size = take(bytes, 2).leftJustified(2, '\0');
    input.comments = utf16From(take(bytes, qFromBigEndian<quint16>(size.constData())));
    input.crashData = bytes;
    return input;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    // Qt reads a long string in steps of 2 MiB, and holds two of them while it grows.
    constexpr std::size_t freeMemory = 6U << 20U;
    constexpr std::size_t memoryPerByte = 64;

    Input input =
        inputFrom(QByteArray(reinterpret_cast<const char *>(data), static_cast<int>(size)));
    QBuffer file(&input.crashData);
    file.open(QIODevice::ReadOnly);
    QBuffer document;
    document.open(QIODevice::WriteOnly);

    const MemoryMeter meter;
    const CrashData crash = readCrashData(file);
    CrashReportData report;
    report.dateTime = crash.crashTime;
    report.clientInfo = input.block ? &*input.block : nullptr;
    report.outputLog = &crash.outputLog;
    report.comments = input.comments;
    CrashReportWriter().write(&document, report);
    require(meter.peak() <= freeMemory + memoryPerByte * size,
            "memory stays a small multiple of the input");

    checkReportDocument(document.data(), report);
    return 0;
}
