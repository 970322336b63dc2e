#pragma once

#include <QString>
#include <QStringList>
#include <QtGlobal>

#include <cstddef>
#include <ctime>
#include <functional>
#include <memory>
#include <optional>

class QByteArray;
class QFile;
class QIODevice;
struct archive;

namespace Tessel {

class ArchiveProgress;
struct ArchiveIo;

/**
 * Reads or writes one archive on any QIODevice, or through a pair of functions.
 *
 * An object is closed, open for reading or open for writing, and can be opened
 * again after close(). It belongs to one thread at a time and cannot be copied.
 * Every operation answers whether it succeeded, and an operation that does not
 * fit the state (reading while open for writing, anything while closed) answers
 * false without touching the device. So does adding an entry once a write failed.
 */
class FileArchive
{
public:
    enum class Format : quint32
    {
        TarGzip = 0, ///< GNU tar headers behind a gzip filter
        Tar = 1,     ///< GNU tar headers, no compression
        Zip = 2,
        SevenZip = 3,
    };
    enum class CompressionMode : quint32
    {
        Default = 0,
        Stored = 1, ///< no compression; only TarGzip knows it
    };
    enum class OpenMode : quint32
    {
        Read = 0,
        Write = 1,
    };

    /**
     * Sets *buffer to the next bytes of the archive, which stay valid until the
     * next call, and returns their count: 0 at the end, -1 on failure. Must not throw.
     */
    using ReadFunction = std::function<qint64(const void **buffer)>;
    /**
     * Takes `length` bytes of the archive and returns how many it took; it is called
     * again with the rest. 0 or -1 on failure. Must not throw.
     */
    using WriteFunction = std::function<qint64(const void *buffer, std::size_t length)>;

    FileArchive();
    /** Closes the archive; call close() first when its result matters. */
    ~FileArchive();
    FileArchive(const FileArchive &) = delete;
    FileArchive &operator=(const FileArchive &) = delete;

    /** Whether an archive of `format` can be written with `compression`. */
    static bool formatSupportsCompressionMode(Format format, CompressionMode compression);

    /**
     * Opens the archive that starts at the device's current position. The device
     * must be open, is not owned and must stay open until close(); if it dies
     * earlier, what is left to do fails.
     *
     * False when already open, when mode or format is none of the enumerators,
     * when the device is not open (errorCode() 9) or null, or when the bytes read
     * first are no such archive. The object is then closed and can be opened
     * again; a refusal because it was already open changes nothing.
     *
     * Writing in a combination formatSupportsCompressionMode() denies is a
     * programming error and aborts the process; reading ignores `compression`.
     *
     * A Tar that starts part-way into a device can be extracted, but not listed past
     * an entry of more than 64 KiB: the library seeks over those, and the seek
     * answers in positions of the device.
     */
    bool open(OpenMode mode, QIODevice *device, Format format,
              CompressionMode compression = CompressionMode::Default);
    /** open() for reading from a function. It cannot seek, so SevenZip cannot be read. */
    bool openForReading(ReadFunction read, Format format);
    /** open() for writing to a function. False, not an abort, on an unsupported combination. */
    bool openForWriting(WriteFunction write, Format format,
                        CompressionMode compression = CompressionMode::Default);

    bool isOpen() const;

    /**
     * Finishes the archive and lets go of the device, which stays open. Close the
     * archive before its device: most of a small archive is written only here.
     *
     * For an archive open for writing, true means that every byte of it since
     * open() was taken, by the kernel if the device is a file; a full medium often
     * shows up only here. What adding an entry reported is not repeated. True when
     * there is nothing to close.
     */
    bool close();

    /**
     * Attaches a reporter, which is not owned and must outlive its use here; null
     * detaches. It stays attached when the archive is closed and opened again.
     */
    void setProgress(ArchiveProgress *reporter);

    /** Bytes of data and files added since the archive was last opened. */
    quint64 payloadBytes() const;
    /** The same, each entry rounded up to whole blocks of 4096 bytes. */
    quint64 blockBytes() const;

    /**
     * The first failure the device or the archive library met since the archive was
     * last opened, kept after close(). Null and 0 when they met none: an operation
     * refused for other reasons, such as a source that is missing, leaves no text.
     */
    QString errorString() const;
    /** The errno value, or the library's own code, that goes with errorString(). */
    int errorCode() const;

    /**
     * Replaces `list` by the names of the entries, in archive order, and reads the
     * archive to its end. False when the archive is damaged, with the names up to
     * there, and also when the library merely warns of an entry. A name the locale
     * cannot express is decoded as UTF-8, else as local bytes; of Zip and SevenZip
     * such a name cannot be had at all, and is a warning.
     */
    bool entryNames(QStringList &list);
    /** Lists the file at `path` as TarGzip. */
    static bool entryNames(const QString &path, QStringList &list);

    /**
     * Extracts the directories and regular files of the archive below `directory`,
     * which is made when missing; files are replaced and get the entry's
     * read, write and execute bits, never more. Links, devices and pipes are skipped.
     *
     * The first failure ends the extraction; what was extracted stays. An entry
     * that would land outside `directory`, by an absolute name or by "..", is such
     * a failure, and so are a name that cannot be had (see entryNames()) and an
     * empty `directory`. An archive cannot plant links; links that are already
     * below `directory` are its owner's arrangement and are followed.
     */
    bool extractAll(const QString &directory);

    /** Adds a file without data. Like every name in an archive, `name` is stored as UTF-8. */
    bool addEmptyFile(const QString &name);
    /** Adds `data` as a file dated now. */
    bool addData(const QByteArray &data, const QString &name);

    /**
     * Adds a copy of the regular file `path` (or of the one a link there leads to).
     *
     * A source that is missing, unreadable or no regular file is refused before
     * anything is written, so that the archive merely lacks the entry. The size is
     * fixed beforehand: of a file that grows meanwhile the first bytes are kept, one
     * that shrinks is padded with zeros, and one that fails to be read half-way is
     * padded too but answers false. Entries carry permissions 0644 and no date.
     */
    bool addFile(const QString &path, const QString &nameInArchive);

    /**
     * Adds a directory and all it holds, hidden files included, in the order the file
     * system lists them. Links to files are added as files; links to directories,
     * which might lead back, dangling links, pipes and devices are left out. Ends
     * at the first file or directory that cannot be added.
     */
    bool addDirectory(const QString &path, const QString &nameInArchive);

    /** Adds the file or directory under its own name; false for anything else. */
    bool add(const QString &path);

private:
    bool openDeviceForReading(QIODevice *device, Format format);
    bool openDeviceForWriting(QIODevice *device, Format format, CompressionMode compression);
    void startSession(QIODevice *device);
    bool finishOpen(int result, OpenMode mode);
    bool recordFailure();
    bool canRead() const;
    bool canWrite() const;
    bool writeHeader(const QString &name, unsigned int type, unsigned int permissions, qint64 size,
                     std::optional<std::time_t> date = {});
    qint64 copyFrom(QFile &source);
    void account(quint64 bytes);

    std::unique_ptr<ArchiveIo> io;
    struct archive *handle = nullptr; // null while closed
    bool writing = false;
};

} // namespace Tessel
