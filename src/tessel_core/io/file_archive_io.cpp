#include "tessel_core/io/file_archive_io.h"

#include <cerrno>
#include <cstdio>

namespace Tessel {
namespace {

ArchiveIo &ioOf(void *io)
{
    return *static_cast<ArchiveIo *>(io);
}

/** For libarchive, and for our own record: libarchive may replace the text by what it led to. */
int fail(struct archive *archive, ArchiveIo &io, int code, const char *text)
{
    archive_set_error(archive, code, "%s", text);
    io.keepFirstError(code, text);
    return ARCHIVE_FATAL;
}

int notOpen(struct archive *archive, ArchiveIo &io)
{
    return fail(archive, io, EBADF, "IO device isn't open");
}

// Not recorded: the library probes with seeks that may fail.
la_int64_t seekRefused(struct archive *archive, const char *reason)
{
    archive_set_error(archive, ARCHIVE_FATAL, "%s", reason);
    return ARCHIVE_FATAL;
}

/**
 * Hands all of the buffer to `take`. libarchive does not look at a short count
 * when it writes the last block, so none may ever reach it.
 */
template <typename Take>
la_ssize_t writeAll(const void *buffer, size_t length, const Take &take)
{
    const char *bytes = static_cast<const char *>(buffer);
    size_t done = 0;
    while (done < length) {
        const qint64 taken = take(bytes + done, length - done);
        if (taken <= 0)
            return -1;
        done += static_cast<size_t>(taken);
    }
    return static_cast<la_ssize_t>(length);
}

} // namespace

void ArchiveIo::keepFirstError(int code, const char *text)
{
    if (!errorText.isNull() || text == nullptr)
        return;
    errorCode = code;
    errorText = QString::fromLocal8Bit(text);
}

int openDevice(struct archive *archive, void *io)
{
    ArchiveIo &block = ioOf(io);
    const bool isOpen = !block.device.isNull() && block.device->isOpen();
    return isOpen ? ARCHIVE_OK : notOpen(archive, block);
}

la_ssize_t readDevice(struct archive *archive, void *io, const void **buffer)
{
    ArchiveIo &block = ioOf(io);
    if (block.device.isNull())
        return notOpen(archive, block);
    *buffer = block.readBuffer;
    const qint64 count = block.device->read(block.readBuffer, sizeof block.readBuffer);
    if (count < 0)
        fail(archive, block, errno, "IO device read error");
    return count;
}

la_ssize_t writeDevice(struct archive *archive, void *io, const void *buffer, size_t length)
{
    ArchiveIo &block = ioOf(io);
    if (block.device.isNull())
        return notOpen(archive, block);
    const la_ssize_t written = writeAll(buffer, length, [&block](const char *bytes, size_t count) {
        return block.device->write(bytes, static_cast<qint64>(count));
    });
    if (written < 0)
        fail(archive, block, errno, "IO device write error");
    return written;
}

la_int64_t seekDevice(struct archive *archive, void *io, la_int64_t offset, int whence)
{
    ArchiveIo &block = ioOf(io);
    if (block.device.isNull())
        return notOpen(archive, block);
    QIODevice &device = *block.device;

    qint64 origin = 0;
    if (whence == SEEK_SET)
        origin = block.baseOffset;
    else if (whence == SEEK_CUR)
        origin = device.pos();
    else if (whence == SEEK_END)
        origin = device.size();
    else
        return ARCHIVE_FATAL;
    if (whence == SEEK_END && origin < 1)
        return seekRefused(archive, "File device reported zero or negative size");

    // Damaged archives ask for offsets that do not even fit the sum.
    qint64 target = 0;
    const bool overflow = __builtin_add_overflow(origin, offset, &target);
    if (overflow ? offset < 0 : target < block.baseOffset)
        return seekRefused(archive, "Tried to seek off start of file");
    if (overflow || target > device.size())
        return seekRefused(archive, "Tried to seek off end of file");
    if (!device.seek(target)) {
        archive_set_error(archive, errno, "File seek failed");
        return ARCHIVE_FATAL;
    }
    // The device's own position, although SEEK_SET counts from the base offset: kept, as
    // readers of archives that start part-way into a device are set up for it.
    return target;
}

// The device belongs to the caller, who closes it after the archive.
int closeDevice(struct archive * /*archive*/, void * /*io*/)
{
    return ARCHIVE_OK;
}

la_ssize_t readThroughFunction(struct archive * /*archive*/, void *io, const void **buffer)
{
    const qint64 count = ioOf(io).readFunction(buffer);
    return count < 0 ? ARCHIVE_FATAL : count;
}

la_ssize_t writeThroughFunction(struct archive * /*archive*/, void *io, const void *buffer,
                                size_t length)
{
    const la_ssize_t written = writeAll(buffer, length, ioOf(io).writeFunction);
    return written < 0 ? ARCHIVE_FATAL : written;
}

la_ssize_t writeOrDiscard(struct archive *archive, void *io, const void *buffer, size_t length)
{
    ArchiveIo &block = ioOf(io);
    const auto write = block.writeFunction ? writeThroughFunction : writeDevice;
    block.writeFailed = block.writeFailed || write(archive, io, buffer, length) < 0;
    return static_cast<la_ssize_t>(length);
}

} // namespace Tessel
