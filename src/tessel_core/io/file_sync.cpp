#include "tessel_core/io/file_sync.h"

#include <QFile>
#include <QString>

#include <cerrno>
#include <fcntl.h>
#include <unistd.h>

namespace Tessel {
namespace {

bool syncDescriptor(int descriptor)
{
    int result = 0;
    do {
        result = fsync(descriptor);
    } while (result < 0 && errno == EINTR);
    return result == 0 || errno == EINVAL;
}

} // namespace

bool syncFile(QFile &file)
{
    return file.flush() && syncDescriptor(file.handle());
}

bool syncDirectory(const QString &path)
{
    const int descriptor =
        open(QFile::encodeName(path).constData(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (descriptor < 0)
        return false;
    const bool synced = syncDescriptor(descriptor);
    close(descriptor);
    return synced;
}

} // namespace Tessel
