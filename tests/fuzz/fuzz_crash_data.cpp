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
#include "fuzz/input_bytes.h"
#include "fuzz/memory_meter.h"
#include "fuzz/report_document_check.h"
#include "fuzz/require.h"

#include <QBuffer>

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

SharedClientInfo blockFrom(const QByteArray &bytes)
{
    SharedClientInfo block = {};
    std::memcpy(&block, bytes.constData(), static_cast<std::size_t>(bytes.size()));
    return block;
}

Input inputFrom(InputBytes bytes)
{
    Input input;
    if (bytes.takeByte() == 1)
        input.block = blockFrom(bytes.take(sharedClientInfoSize));
    input.comments = utf16From(bytes.take(bytes.takeShort()));
    input.crashData = bytes.takeRest();
    return input;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    // Qt reads a long string in steps of 2 MiB, and holds two of them while it grows.
    constexpr std::size_t freeMemory = 6U << 20U;
    constexpr std::size_t memoryPerByte = 64;

    Input input = inputFrom({data, size});
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
