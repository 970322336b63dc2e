#pragma once

#include <QtGlobal>

#include <array>

class QFile;

namespace Tessel {

/**
 * Reads a file from its beginning in chunks, without fetching its holes: core
 * images are mostly holes, and reading them would fill the memory of a machine
 * that just crashed with pages of zeros.
 *
 * The file is open for reading, unbuffered, not owned, and used by nobody else
 * meanwhile. On file systems that do not tell of holes everything is read.
 */
class SparseReader
{
public:
    static constexpr qint64 chunkBytes = 8192;

    explicit SparseReader(QFile &source);

    /**
     * Sets `chunk` to the file's next bytes, which stay valid until the next call,
     * and returns their count, at most chunkBytes; 0 at the end, -1 on failure.
     */
    qint64 next(const char *&chunk);

private:
    qint64 findData();
    qint64 fill();

    QFile &file;
    /** Bytes of the hole that are still to be handed out. */
    qint64 holeLeft = 0;
    /** Where the data that was found ends. */
    qint64 dataEnd = 0;
    qint64 handedOut = 0;
    qint64 filled = 0;
    std::array<char, 8 * chunkBytes> buffer;
};

} // namespace Tessel
