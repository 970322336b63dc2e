#include "tessel_core/io/write_behind_file.h"

#include <cerrno>
#include <fcntl.h>

namespace Tessel {
namespace {

/** Not every file system, and no pipe, can write a range: the final sync does it all then. */
bool isMediumFailure(int error)
{
    return error == EIO || error == ENOSPC || error == EDQUOT;
}

} // namespace

WriteBehindFile::WriteBehindFile(const QString &path, qint64 windowBytes)
    : QFile(path)
    , window(windowBytes)
{}

qint64 WriteBehindFile::writeData(const char *data, qint64 length)
{
    if (mediumError == 0) {
        const qint64 taken = QFile::writeData(data, length);
        if (taken < 0)
            return taken;
        written += taken;
        if (written - onItsWay < window || pushWindow())
            return taken;
        mediumError = errno;
    }
    errno = mediumError;
    return -1;
}

/**
 * Sends the newest window on its way and waits for the one before it. The kernel
 * tells of a write error once: a failure here would be missing from the final sync.
 */
bool WriteBehindFile::pushWindow()
{
    int result = sync_file_range(handle(), onItsWay, written - onItsWay, SYNC_FILE_RANGE_WRITE);
    if (result == 0 && onItsWay > onMedium)
        result = sync_file_range(handle(), onMedium, onItsWay - onMedium,
                                 SYNC_FILE_RANGE_WAIT_BEFORE | SYNC_FILE_RANGE_WRITE |
                                     SYNC_FILE_RANGE_WAIT_AFTER);
    onMedium = onItsWay;
    onItsWay = written;
    return result == 0 || !isMediumFailure(errno);
}

} // namespace Tessel
