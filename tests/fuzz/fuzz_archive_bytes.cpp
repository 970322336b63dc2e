// Archives of every format that nobody wrote: reading them ends, takes little memory,
// and extracting them leaves nothing but plain files and folders, all in their folder.
//
// An input is 1 byte and the archive. The byte's low two bits are the format, the third
// says to read through a function instead of a device, and the fourth to mend the sums of
// a tar's headers first: few changes to a header would come past them otherwise.

#include "fuzz/input_bytes.h"
#include "fuzz/memory_meter.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "fuzz/write_guard.h"
#include "tessel_core/io/file_archive.h"

#include <QBuffer>
#include <QDir>
#include <QSet>

#include <algorithm>
#include <functional>
#include <numeric>

using namespace Tessel;

namespace {

using Format = FileArchive::Format;

constexpr quint8 formatBits = 0x03;
constexpr quint8 functionBit = 0x04;
constexpr quint8 mendBit = 0x08;

struct Input
{
    Format format = Format::TarGzip;
    bool throughFunction = false;
    QByteArray bytes;
};

constexpr int headerSize = 512;

/** Six octal digits, a zero and a blank; the sum counts all eight as blanks. */
void mendSum(QByteArray &tar, int start)
{
    constexpr int place = 148;
    constexpr int size = 8;
    constexpr int digits = 6;
    tar.replace(start + place, size, QByteArray(size, ' '));
    const auto header = tar.cbegin() + start;
    const uint sum = std::accumulate(header, header + headerSize, 0U, [](uint before, char next) {
        return before + static_cast<uchar>(next);
    });
    const QByteArray text = QByteArray::number(sum, 8).rightJustified(digits, '0') + '\0';
    tar.replace(start + place, text.size(), text);
}

void mendSums(QByteArray &tar)
{
    constexpr int magicPlace = 257;
    for (int start = 0; start + headerSize <= tar.size(); start += headerSize) {
        if (tar.mid(start + magicPlace, 5) == "ustar")
            mendSum(tar, start);
    }
}

Input inputFrom(InputBytes bytes)
{
    Input input;
    const quint8 head = bytes.takeByte();
    input.format = static_cast<Format>(head & formatBits);
    input.throughFunction = (head & functionBit) != 0;
    input.bytes = bytes.takeRest();
    if ((head & mendBit) != 0)
        mendSums(input.bytes);
    return input;
}

/** Opens the input's archive and does something to it; false when it is none. */
bool withArchive(const Input &input, const std::function<bool(FileArchive &)> &work)
{
    QByteArray bytes = input.bytes;
    QBuffer device(&bytes);
    device.open(QIODevice::ReadOnly);
    bool handedOut = false;
    const auto read = [&bytes, &handedOut](const void **buffer) -> qint64 {
        *buffer = bytes.constData();
        return std::exchange(handedOut, true) ? 0 : bytes.size();
    };
    FileArchive archive;
    const bool isOpen = input.throughFunction
                            ? archive.openForReading(read, input.format)
                            : archive.open(FileArchive::OpenMode::Read, &device, input.format);
    require(isOpen == archive.isOpen(), "an archive is open when it says so");
    const bool done = isOpen && work(archive);
    archive.close();
    return done;
}

/** Zip and SevenZip may bring compressors that take what memory they like. */
bool takesLittleMemory(Format format)
{
    return format == Format::Tar || format == Format::TarGzip;
}

/** What an extraction may make of names: each of them, and the folders on the way. */
QSet<QString> pathsOf(const QStringList &names)
{
    QSet<QString> paths;
    for (const QString &name : names) {
        QString path = QDir::cleanPath(name);
        while (!path.isEmpty() && !paths.contains(path)) {
            paths.insert(path);
            path.truncate(std::max(path.lastIndexOf(QLatin1Char('/')), 0));
        }
    }
    return paths;
}

void checkEntries(const FoundEntries &found, const QSet<QString> &paths)
{
    for (auto entry = found.begin(); entry != found.end(); ++entry) {
        require(S_ISDIR(entry->mode) || S_ISREG(entry->mode), "only files and folders are made");
        require((entry->mode & (S_ISUID | S_ISGID | S_ISVTX)) == 0, "no bit goes beyond rwx");
        require(paths.contains(entry.key()), "what is made is called as the archive says");
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    // The library takes names, headers and buffers of its own; QBuffer and the copies ours.
    constexpr std::size_t freeMemory = 6U << 20U;
    constexpr std::size_t memoryPerByte = 64;
    static ScratchFolder scratch;
    const Input input = inputFrom({data, size});

    const MemoryMeter meter;
    QStringList names;
    const bool listed =
        withArchive(input, [&names](FileArchive &archive) { return archive.entryNames(names); });
    const bool extracted = withArchive(input, [](FileArchive &archive) {
        const WriteGuard guard(scratch.path().toLocal8Bit());
        return archive.extractAll(scratch.path());
    });
    if (takesLittleMemory(input.format))
        require(meter.peak() <= freeMemory + memoryPerByte * size,
                "memory stays a small multiple of the input");

    require(scratch.isAlone(), "nothing lies beside the folder");
    const FoundEntries found = scratch.entries();
    if (!found.isEmpty()) {
        // A list ends early where an extraction only warns: then the names are not all there.
        if (listed)
            checkEntries(found, pathsOf(names));
        scratch.renew();
    }
    require(!listed || !extracted || found.size() <= pathsOf(names).size(),
            "no more is made than was listed");
    return 0;
}
