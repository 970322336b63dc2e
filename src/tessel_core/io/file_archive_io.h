#pragma once

// Private to the archive and its tests: the state libarchive's callbacks work on.

#include "tessel_core/io/file_archive.h"

#include <archive.h>

#include <QIODevice>
#include <QPointer>
#include <QString>

namespace Tessel {

struct ArchiveIo
{
    QPointer<QIODevice> device; // not owned; null when it died before the archive
    qint64 baseOffset = 0;      // device position when the archive was opened
    char readBuffer[1024] = {};
    quint64 payloadBytes = 0;
    quint64 blockSize = 4096;
    quint64 blockBytes = 0; // payload, each entry rounded up to whole blocks
    ArchiveProgress *progress = nullptr;

    FileArchive::ReadFunction readFunction;
    FileArchive::WriteFunction writeFunction;
    bool writeFailed = false;
    int errorCode = 0;
    QString errorText; // null while nothing failed

    /** Later failures are mostly the consequence of the first. */
    void keepFirstError(int code, const char *text);
};

// libarchive callbacks. `io` is the ArchiveIo; errors are left in the archive.

int openDevice(struct archive *archive, void *io);
la_ssize_t readDevice(struct archive *archive, void *io, const void **buffer);
la_ssize_t writeDevice(struct archive *archive, void *io, const void *buffer, size_t length);
la_int64_t seekDevice(struct archive *archive, void *io, la_int64_t offset, int whence);
int closeDevice(struct archive *archive, void *io);

la_ssize_t readThroughFunction(struct archive *archive, void *io, const void **buffer);
la_ssize_t writeThroughFunction(struct archive *archive, void *io, const void *buffer,
                                size_t length);

/**
 * What libarchive is given to write with: the device or the function, until one of
 * them fails. From then on `writeFailed` is set and everything is swallowed. Told of
 * a failure, libarchive's compressors would keep a pointer into the caller's data
 * and read from there again when the archive is closed, long after it is gone.
 */
la_ssize_t writeOrDiscard(struct archive *archive, void *io, const void *buffer, size_t length);

} // namespace Tessel
