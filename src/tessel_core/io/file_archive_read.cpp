#include "tessel_core/io/archive_progress.h"
#include "tessel_core/io/file_archive.h"
#include "tessel_core/io/file_archive_io.h"

#include <archive.h>
#include <archive_entry.h>

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <sys/stat.h>

namespace Tessel {
namespace {

/** A name in no particular encoding: UTF-8 when it is valid as such, else local 8-bit. */
QString decodeName(const char *bytes)
{
    const QByteArray name(bytes);
    const QString text = QString::fromUtf8(name);
    return text.toUtf8() == name ? text : QString::fromLocal8Bit(name);
}

QString nameOf(struct archive_entry *entry)
{
    // Null when the locale, "C" on the appliance, cannot express the name.
    if (const wchar_t *wide = archive_entry_pathname_w(entry))
        return QString::fromWCharArray(wide);
    if (const char *utf8 = archive_entry_pathname_utf8(entry))
        return QString::fromUtf8(utf8);
    const char *bytes = archive_entry_pathname(entry);
    return bytes != nullptr ? decodeName(bytes) : QString();
}

/** Where an entry goes below `root` (absolute and clean); null when it would leave it. */
QString pathInside(const QString &root, const QString &name)
{
    const QString below = root.endsWith(QLatin1Char('/')) ? root : root + QLatin1Char('/');
    const QString path = QDir::cleanPath(below + name);
    const bool inside = path == root || path.startsWith(below);
    return inside && !name.isEmpty() && !name.startsWith(QLatin1Char('/')) ? path : QString();
}

QFileDevice::Permissions permissionsOf(mode_t mode)
{
    constexpr struct
    {
        mode_t bit;
        QFileDevice::Permission permission;
    } table[] = {
        {S_IRUSR, QFileDevice::ReadOwner},  {S_IWUSR, QFileDevice::WriteOwner},
        {S_IXUSR, QFileDevice::ExeOwner},   {S_IRGRP, QFileDevice::ReadGroup},
        {S_IWGRP, QFileDevice::WriteGroup}, {S_IXGRP, QFileDevice::ExeGroup},
        {S_IROTH, QFileDevice::ReadOther},  {S_IWOTH, QFileDevice::WriteOther},
        {S_IXOTH, QFileDevice::ExeOther},
    };
    QFileDevice::Permissions permissions;
    for (const auto &row : table)
        permissions.setFlag(row.permission, (mode & row.bit) != 0);
    return permissions;
}

/** Writes the entry's data to a file that replaces whatever file is at `path`. */
bool extractFile(struct archive *handle, struct archive_entry *entry, const QString &path)
{
    const QFileInfo target(path);
    if (target.exists() && !target.isFile()) // opening a pipe would wait for its other end
        return false;
    if (!QDir().mkpath(target.path()))
        return false;
    // Unbuffered, as libarchive writes to the descriptor behind the file's back.
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered))
        return false;
    if (archive_read_data_into_fd(handle, file.handle()) != ARCHIVE_OK)
        return false;
    // It seeks over gaps, which leaves a gap at the very end out of the file.
    if (archive_entry_size(entry) > file.size() && !file.resize(archive_entry_size(entry)))
        return false;
    return file.setPermissions(permissionsOf(archive_entry_perm(entry)));
}

/** Extracts what is a directory or a regular file, and passes over everything else. */
bool extractEntry(struct archive *handle, struct archive_entry *entry, const QString &root)
{
    const mode_t type = archive_entry_filetype(entry);
    if (type != AE_IFDIR && type != AE_IFREG)
        return true;
    const QString path = pathInside(root, nameOf(entry));
    if (path.isNull())
        return false;
    return type == AE_IFDIR ? QDir().mkpath(path) : extractFile(handle, entry, path);
}

} // namespace

bool FileArchive::entryNames(QStringList &list)
{
    list.clear();
    if (!canRead())
        return false;
    struct archive_entry *entry = nullptr;
    for (;;) {
        const int result = archive_read_next_header(handle, &entry);
        if (result == ARCHIVE_EOF)
            return true;
        if (result != ARCHIVE_OK)
            return recordFailure();
        list.append(nameOf(entry));
        // Left unlooked at, data that ends too early would pass for the end.
        if (archive_read_data_skip(handle) != ARCHIVE_OK)
            return recordFailure();
    }
}

bool FileArchive::entryNames(const QString &path, QStringList &list)
{
    list.clear();
    QFile file(path);
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    FileArchive archive;
    return archive.open(OpenMode::Read, &file, Format::TarGzip) && archive.entryNames(list);
}

bool FileArchive::extractAll(const QString &directory)
{
    // An empty directory would turn every name into one below the file system's root.
    if (!canRead() || directory.isEmpty())
        return false;
    const QString root = QDir::cleanPath(QFileInfo(directory).absoluteFilePath());
    struct archive_entry *entry = nullptr;
    for (;;) {
        const int result = archive_read_next_header(handle, &entry);
        if (result == ARCHIVE_EOF)
            return true;
        if (result != ARCHIVE_OK && result != ARCHIVE_WARN)
            return recordFailure();
        if (io->progress != nullptr && !io->progress->mayContinue())
            return false;
        if (!extractEntry(handle, entry, root))
            return recordFailure();
    }
}

} // namespace Tessel
