#include "tessel_core/io/archive_progress.h"
#include "tessel_core/io/file_archive.h"
#include "tessel_core/io/file_archive_io.h"
#include "tessel_core/io/sparse_reader.h"

#include <archive.h>
#include <archive_entry.h>

#include <QByteArray>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QFileInfo>

#include <ctime>
#include <memory>

#include <fcntl.h>

namespace Tessel {
namespace {

constexpr unsigned int filePermissions = 0644;
constexpr unsigned int directoryPermissions = 0755;

struct EntryDeleter
{
    void operator()(struct archive_entry *entry) const { archive_entry_free(entry); }
};
using EntryPtr = std::unique_ptr<struct archive_entry, EntryDeleter>;

} // namespace

bool FileArchive::addEmptyFile(const QString &name)
{
    return canWrite() && writeHeader(name, AE_IFREG, filePermissions, 0);
}

bool FileArchive::addData(const QByteArray &data, const QString &name)
{
    if (!canWrite() ||
        !writeHeader(name, AE_IFREG, filePermissions, data.size(), std::time(nullptr)))
        return false;
    const auto size = static_cast<size_t>(data.size());
    const la_ssize_t taken = archive_write_data(handle, data.constData(), size);
    if (taken != static_cast<la_ssize_t>(size) || io->writeFailed)
        return recordFailure();
    account(size);
    return true;
}

bool FileArchive::addFile(const QString &path, const QString &nameInArchive)
{
    if (!canWrite())
        return false;
    const QFileInfo info(path);
    if (!info.isFile()) // opening a pipe would wait for its other end
        return false;
    QFile source(path);
    if (!source.open(QIODevice::ReadOnly | QIODevice::Unbuffered))
        return false;
    posix_fadvise(source.handle(), 0, 0, POSIX_FADV_SEQUENTIAL);
    if (!writeHeader(nameInArchive, AE_IFREG, filePermissions, info.size()))
        return false;
    const qint64 copied = copyFrom(source);
    source.close();
    if (copied < 0)
        return false;
    account(static_cast<quint64>(copied));
    return true;
}

/**
 * Copies the source into the entry whose header was written last and returns the
 * bytes the entry took, or -1 when the source or the archive failed.
 */
qint64 FileArchive::copyFrom(QFile &source)
{
    SparseReader reader(source);
    const char *chunk = nullptr;
    qint64 copied = 0;
    for (;;) {
        const qint64 count = reader.next(chunk);
        if (count <= 0)
            return count < 0 ? -1 : copied;
        const la_ssize_t taken = archive_write_data(handle, chunk, static_cast<size_t>(count));
        if (taken < 0 || io->writeFailed) {
            recordFailure();
            return -1;
        }
        copied += taken;
        if (taken > 0 && io->progress != nullptr)
            io->progress->advance(io->payloadBytes + static_cast<quint64>(copied));
        // The entry is full: a source that keeps growing must not keep us here.
        if (taken < count)
            return copied;
    }
}

bool FileArchive::addDirectory(const QString &path, const QString &nameInArchive)
{
    if (!canWrite() || !QFileInfo(path).isDir() ||
        !writeHeader(nameInArchive, AE_IFDIR, directoryPermissions, 0))
        return false;
    QDirIterator entries(path,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot);
    while (entries.hasNext()) {
        entries.next();
        const QFileInfo info = entries.fileInfo();
        const QString name = nameInArchive + QLatin1Char('/') + info.fileName();
        if (info.isFile() && !addFile(info.filePath(), name))
            return false;
        if (info.isDir() && !info.isSymLink() && !addDirectory(info.filePath(), name))
            return false;
    }
    return true;
}

bool FileArchive::add(const QString &path)
{
    const QFileInfo info(QDir::cleanPath(QFileInfo(path).absoluteFilePath()));
    if (info.isDir())
        return addDirectory(info.filePath(), info.fileName());
    return info.isFile() && addFile(info.filePath(), info.fileName());
}

bool FileArchive::writeHeader(const QString &name, unsigned int type, unsigned int permissions,
                              qint64 size, std::optional<std::time_t> date)
{
    const EntryPtr entry(archive_entry_new());
    if (entry == nullptr || name.isEmpty())
        return false;
    archive_entry_set_pathname(entry.get(), name.toUtf8().constData());
    archive_entry_set_filetype(entry.get(), type);
    archive_entry_set_perm(entry.get(), permissions);
    archive_entry_set_size(entry.get(), size);
    if (date) {
        archive_entry_set_birthtime(entry.get(), *date, 0);
        archive_entry_set_mtime(entry.get(), *date, 0);
    }
    // A warning, such as a name the C locale cannot express, leaves a good entry.
    const int result = archive_write_header(handle, entry.get());
    const bool written = result == ARCHIVE_OK || result == ARCHIVE_WARN;
    return (written && !io->writeFailed) || recordFailure();
}

void FileArchive::account(quint64 bytes)
{
    const quint64 blocks = (bytes + io->blockSize - 1) / io->blockSize;
    io->payloadBytes += bytes;
    io->blockBytes += blocks * io->blockSize;
}

} // namespace Tessel
