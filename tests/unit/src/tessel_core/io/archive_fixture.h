#pragma once

// What the archive's test programs share: devices with moods and archives built in memory.

#include "tessel_core/io/archive_progress.h"
#include "tessel_core/io/file_archive.h"

#include <archive.h>
#include <archive_entry.h>

#include <QBuffer>
#include <QByteArray>
#include <QFile>
#include <QRandomGenerator>
#include <QString>
#include <QVector>

#include <algorithm>
#include <cerrno>
#include <clocale>
#include <functional>
#include <memory>

namespace ArchiveFixture {

using Tessel::FileArchive;
using Compression = FileArchive::CompressionMode;
using Format = FileArchive::Format;
using Mode = FileArchive::OpenMode;

/** Bytes no compressor makes smaller, the same in every run. */
inline QByteArray noise(int size)
{
    QVector<quint32> words(size / 4 + 1);
    QRandomGenerator(20240229).fillRange(words.data(), words.size());
    return QByteArray(reinterpret_cast<const char *>(words.constData()), size);
}

inline bool writeFile(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

inline QByteArray readFile(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** The archive that `fill` makes; empty when a step of it failed. */
inline QByteArray archiveOf(const std::function<bool(FileArchive &)> &fill,
                            Format format = Format::TarGzip,
                            Compression compression = Compression::Default)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FileArchive archive;
    const bool made =
        archive.open(Mode::Write, &buffer, format, compression) && fill(archive) && archive.close();
    return made ? buffer.data() : QByteArray();
}

/** One entry of a hand-made, possibly hostile archive. */
struct RawEntry
{
    QByteArray name;
    mode_t type;
    mode_t permissions;
    QByteArray data;
    QByteArray linkTarget;
};

inline RawEntry fileEntry(const QByteArray &name, const QByteArray &data = {}, mode_t mode = 0644)
{
    return {name, AE_IFREG, mode, data, {}};
}

inline RawEntry directoryEntry(const QByteArray &name)
{
    return {name, AE_IFDIR, 0755, {}, {}};
}

/** A device or a pipe. */
inline RawEntry nodeEntry(const QByteArray &name, mode_t type)
{
    return {name, type, 0644, {}, {}};
}

inline RawEntry linkEntry(const QByteArray &name, const QByteArray &target)
{
    return {name, AE_IFLNK, 0777, {}, target};
}

inline RawEntry hardLinkEntry(const QByteArray &name, const QByteArray &target)
{
    return {name, AE_IFREG, 0644, {}, target};
}

/** An archive of entries the archive class itself would never write. */
inline QByteArray rawArchive(const QVector<RawEntry> &entries)
{
    QByteArray bytes(1 << 20, '\0');
    size_t used = 0;
    struct archive *handle = archive_write_new();
    archive_write_add_filter_gzip(handle);
    archive_write_set_format_gnutar(handle);
    archive_write_open_memory(handle, bytes.data(), size_t(bytes.size()), &used);
    for (const RawEntry &raw : entries) {
        struct archive_entry *entry = archive_entry_new();
        archive_entry_set_pathname(entry, raw.name.constData());
        archive_entry_set_filetype(entry, raw.type);
        archive_entry_set_perm(entry, raw.permissions);
        archive_entry_set_size(entry, raw.data.size());
        if (raw.type == AE_IFLNK)
            archive_entry_set_symlink(entry, raw.linkTarget.constData());
        else if (!raw.linkTarget.isEmpty())
            archive_entry_set_hardlink(entry, raw.linkTarget.constData());
        archive_write_header(handle, entry);
        archive_write_data(handle, raw.data.constData(), size_t(raw.data.size()));
        archive_entry_free(entry);
    }
    archive_write_close(handle);
    archive_write_free(handle);
    return bytes.left(int(used));
}

/** Takes `room` bytes in all and is full after that; at most `gulp` bytes at once. */
class FullDevice : public QIODevice
{
public:
    explicit FullDevice(qint64 space, qint64 mouthful = 1 << 20)
        : room(space)
        , gulp(mouthful)
    {
        open(QIODevice::WriteOnly | QIODevice::Unbuffered);
    }
    qint64 room;
    QByteArray taken;

protected:
    qint64 readData(char * /*data*/, qint64 /*size*/) override { return -1; }
    qint64 writeData(const char *data, qint64 size) override
    {
        const qint64 count = std::min({size, gulp, room - taken.size()});
        if (count > 0) {
            taken.append(data, int(count));
            return count;
        }
        errno = ENOSPC;
        return -1;
    }

private:
    const qint64 gulp;
};

/** Gives the bytes and then fails, as a key that is pulled does; notes what is asked of it. */
class FailingSource : public QIODevice
{
public:
    explicit FailingSource(QByteArray content)
        : bytes(std::move(content))
    {
        open(QIODevice::ReadOnly | QIODevice::Unbuffered);
    }
    qint64 longestRead = 0;
    bool isSequential() const override { return true; }

protected:
    qint64 readData(char *data, qint64 size) override
    {
        longestRead = std::max(longestRead, size);
        const qint64 count = std::min<qint64>(size, bytes.size());
        if (count == 0) {
            errno = EIO;
            return -1;
        }
        std::copy_n(bytes.constData(), count, data);
        bytes.remove(0, int(count));
        return count;
    }
    qint64 writeData(const char * /*data*/, qint64 /*size*/) override { return -1; }

private:
    QByteArray bytes;
};

/** Notes every step of progress. */
class Steps : public Tessel::ArchiveProgress
{
public:
    void advance(quint64 payloadBytesDone) override
    {
        done.append(payloadBytesDone);
        if (onFirstStep && done.size() == 1)
            onFirstStep();
    }
    QVector<quint64> done;
    std::function<void()> onFirstStep;
};

/** Gives the process another locale for names, and the old one back. */
class LocaleScope
{
public:
    explicit LocaleScope(const char *name)
        : before(std::setlocale(LC_ALL, nullptr))
    {
        valid = std::setlocale(LC_ALL, name) != nullptr;
    }
    ~LocaleScope() { std::setlocale(LC_ALL, before.constData()); }
    LocaleScope(const LocaleScope &) = delete;
    LocaleScope &operator=(const LocaleScope &) = delete;
    bool valid = false;

private:
    QByteArray before;
};

} // namespace ArchiveFixture

Q_DECLARE_METATYPE(ArchiveFixture::Format)
Q_DECLARE_METATYPE(ArchiveFixture::Compression)
