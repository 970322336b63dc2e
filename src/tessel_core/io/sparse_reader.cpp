#include "tessel_core/io/sparse_reader.h"

#include <QFile>

#include <algorithm>
#include <cerrno>
#include <limits>
#include <unistd.h>

namespace Tessel {
namespace {

constexpr char zeros[SparseReader::chunkBytes] = {};

} // namespace

SparseReader::SparseReader(QFile &source)
    : file(source)
{}

qint64 SparseReader::next(const char *&chunk)
{
    if (holeLeft == 0 && handedOut == filled) {
        const qint64 count = fill();
        if (count <= 0)
            return count;
    }
    if (holeLeft > 0) {
        const qint64 count = std::min(holeLeft, chunkBytes);
        holeLeft -= count;
        chunk = zeros;
        return count;
    }
    const qint64 count = std::min(filled - handedOut, chunkBytes);
    chunk = buffer.data() + handedOut;
    handedOut += count;
    return count;
}

/** Gets the next hole or bufferful of data; returns its size, 0 at the end, -1 on failure. */
qint64 SparseReader::fill()
{
    if (file.pos() >= dataEnd) {
        const qint64 hole = findData();
        holeLeft = std::max<qint64>(hole, 0);
        if (hole != 0)
            return hole;
    }
    handedOut = 0;
    filled = 0;
    const qint64 wanted = std::min(qint64(buffer.size()), dataEnd - file.pos());
    const qint64 count = file.read(buffer.data(), wanted);
    filled = std::max<qint64>(count, 0);
    return count;
}

/**
 * Returns the size of the hole at the current position, and moves behind it; 0 when
 * there is data up to `dataEnd`, or nothing more; -1 on failure.
 */
qint64 SparseReader::findData()
{
    const qint64 position = file.pos();
    const int descriptor = file.handle();
    qint64 data = lseek(descriptor, position, SEEK_DATA);
    if (data < 0 && errno == ENXIO) // a hole up to the end, or the end
        data = std::max(position, file.size());
    else if (data < 0)
        data = position;
    const qint64 end = lseek(descriptor, data, SEEK_HOLE);
    dataEnd = end > data ? end : std::numeric_limits<qint64>::max();
    // The questions moved the descriptor behind the file object's back.
    return file.seek(data) ? data - position : -1;
}

} // namespace Tessel
