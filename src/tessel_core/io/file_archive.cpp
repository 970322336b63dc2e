#include "tessel_core/io/file_archive.h"

#include "tessel_core/error_report.h"
#include "tessel_core/io/file_archive_io.h"

#include <archive.h>

#include <QFile>
#include <QFileDevice>
#include <QIODevice>

#include <utility>

namespace Tessel {
namespace {

// Field reports are searched for this place, wherever the check stands by now.
constexpr int assertionLine = 424;
constexpr char assertionFile[] = "src/tessel_core/io/file_archive";

bool enableReading(struct archive *handle, FileArchive::Format format)
{
    switch (format) {
    case FileArchive::Format::TarGzip:
        return archive_read_support_filter_gzip(handle) == ARCHIVE_OK &&
               archive_read_support_format_tar(handle) == ARCHIVE_OK;
    case FileArchive::Format::Tar:
        return archive_read_support_format_tar(handle) == ARCHIVE_OK;
    case FileArchive::Format::Zip:
        return archive_read_support_format_zip(handle) == ARCHIVE_OK;
    case FileArchive::Format::SevenZip:
        return archive_read_support_format_7zip(handle) == ARCHIVE_OK;
    }
    return false;
}

bool storeOnly(struct archive *handle, FileArchive::CompressionMode compression)
{
    if (compression != FileArchive::CompressionMode::Stored)
        return true;
    return archive_write_set_filter_option(handle, "gzip", "compression-level", "0") == ARCHIVE_OK;
}

bool enableWriting(struct archive *handle, FileArchive::Format format,
                   FileArchive::CompressionMode compression)
{
    switch (format) {
    case FileArchive::Format::TarGzip:
        return archive_write_add_filter_gzip(handle) == ARCHIVE_OK &&
               archive_write_set_format_gnutar(handle) == ARCHIVE_OK &&
               storeOnly(handle, compression);
    case FileArchive::Format::Tar:
        return archive_write_add_filter_none(handle) == ARCHIVE_OK &&
               archive_write_set_format_gnutar(handle) == ARCHIVE_OK;
    case FileArchive::Format::Zip:
        return archive_write_set_format_zip(handle) == ARCHIVE_OK;
    case FileArchive::Format::SevenZip:
        return archive_write_set_format_7zip(handle) == ARCHIVE_OK;
    }
    return false;
}

/** A handle set up for writing, the last block unpadded; null when the format is unknown. */
struct archive *newWriter(FileArchive::Format format, FileArchive::CompressionMode compression)
{
    struct archive *handle = archive_write_new();
    if (handle != nullptr && enableWriting(handle, format, compression) &&
        archive_write_set_bytes_in_last_block(handle, 1) == ARCHIVE_OK)
        return handle;
    archive_write_free(handle);
    return nullptr;
}

struct archive *newReader(FileArchive::Format format)
{
    struct archive *handle = archive_read_new();
    if (handle != nullptr && enableReading(handle, format))
        return handle;
    archive_read_free(handle);
    return nullptr;
}

/** Pushes what a file still buffers to the kernel, so that a full medium shows. */
bool flushDevice(QIODevice *device)
{
    auto *file = qobject_cast<QFileDevice *>(device);
    return file == nullptr || (file->isOpen() && file->flush());
}

} // namespace

FileArchive::FileArchive()
    : io(std::make_unique<ArchiveIo>())
{}

FileArchive::~FileArchive()
{
    close();
}

bool FileArchive::formatSupportsCompressionMode(Format format, CompressionMode compression)
{
    if (compression == CompressionMode::Default)
        return true;
    return compression == CompressionMode::Stored && format == Format::TarGzip;
}

bool FileArchive::open(OpenMode mode, QIODevice *device, Format format, CompressionMode compression)
{
    if (isOpen())
        return false;
    switch (mode) {
    case OpenMode::Read:
        return openDeviceForReading(device, format);
    case OpenMode::Write:
        return openDeviceForWriting(device, format, compression);
    }
    return false;
}

bool FileArchive::openDeviceForReading(QIODevice *device, Format format)
{
    startSession(device);
    handle = newReader(format);
    if (handle == nullptr)
        return false;
    archive_read_set_seek_callback(handle, seekDevice);
    const int result =
        archive_read_open2(handle, io.get(), openDevice, readDevice, nullptr, closeDevice);
    return finishOpen(result, OpenMode::Read);
}

bool FileArchive::openDeviceForWriting(QIODevice *device, Format format,
                                       CompressionMode compression)
{
    if (!formatSupportsCompressionMode(format, compression))
        reportFatal("Assert: 'formatSupportsCompressionMode(format, compression)' is FALSE",
                    assertionLine, assertionFile);
    startSession(device);
    handle = newWriter(format, compression);
    if (handle == nullptr)
        return false;
    const int result =
        archive_write_open(handle, io.get(), openDevice, writeOrDiscard, closeDevice);
    return finishOpen(result, OpenMode::Write);
}

bool FileArchive::openForReading(ReadFunction read, Format format)
{
    if (isOpen() || !read)
        return false;
    startSession(nullptr);
    io->readFunction = std::move(read);
    handle = newReader(format);
    if (handle == nullptr)
        return false;
    const int result =
        archive_read_open2(handle, io.get(), nullptr, readThroughFunction, nullptr, nullptr);
    return finishOpen(result, OpenMode::Read);
}

bool FileArchive::openForWriting(WriteFunction write, Format format, CompressionMode compression)
{
    if (isOpen() || !write || !formatSupportsCompressionMode(format, compression))
        return false;
    startSession(nullptr);
    io->writeFunction = std::move(write);
    handle = newWriter(format, compression);
    if (handle == nullptr)
        return false;
    const int result = archive_write_open(handle, io.get(), nullptr, writeOrDiscard, nullptr);
    return finishOpen(result, OpenMode::Write);
}

void FileArchive::startSession(QIODevice *device)
{
    io->device = device;
    io->baseOffset = device != nullptr ? device->pos() : 0;
    io->payloadBytes = 0;
    io->blockBytes = 0;
    io->readFunction = nullptr;
    io->writeFunction = nullptr;
    io->writeFailed = false;
    io->errorCode = 0;
    io->errorText.clear();
}

/** Keeps the handle of a successful open and frees that of a failed one. */
bool FileArchive::finishOpen(int result, OpenMode mode)
{
    if (result == ARCHIVE_OK) {
        writing = mode == OpenMode::Write;
        return true;
    }
    recordFailure();
    archive_free(std::exchange(handle, nullptr));
    return false;
}

bool FileArchive::isOpen() const
{
    return handle != nullptr;
}

bool FileArchive::close()
{
    if (!isOpen())
        return true;
    bool complete = true;
    if (writing) {
        complete = archive_write_close(handle) == ARCHIVE_OK && !io->writeFailed;
        if (!complete)
            recordFailure();
        archive_write_free(handle); // says OK even after a failed close
        complete = flushDevice(io->device) && complete;
    } else
        complete = archive_read_free(handle) == ARCHIVE_OK;
    handle = nullptr;
    writing = false;
    io->device.clear();
    return complete;
}

void FileArchive::setProgress(ArchiveProgress *reporter)
{
    io->progress = reporter;
}

quint64 FileArchive::payloadBytes() const
{
    return io->payloadBytes;
}

quint64 FileArchive::blockBytes() const
{
    return io->blockBytes;
}

QString FileArchive::errorString() const
{
    return io->errorText;
}

int FileArchive::errorCode() const
{
    return io->errorCode;
}

/** Takes down what the library complains of. Answers false, as its callers then do. */
bool FileArchive::recordFailure()
{
    io->keepFirstError(archive_errno(handle), archive_error_string(handle));
    return false;
}

bool FileArchive::canRead() const
{
    return isOpen() && !writing;
}

// Behind a failed write there is nothing left to add to.
bool FileArchive::canWrite() const
{
    return isOpen() && writing && !io->writeFailed;
}

} // namespace Tessel
