#include "tessel_core/descriptors.h"

#include <cerrno>

#include <fcntl.h>
#include <unistd.h>

namespace Tessel {

int moveClearOfStandardStreams(int descriptor)
{
    if (descriptor < 0 || descriptor > STDERR_FILENO)
        return descriptor;
    const int moved = fcntl(descriptor, F_DUPFD, STDERR_FILENO + 1);
    const int error = errno;
    close(descriptor);
    errno = error;
    return moved;
}

} // namespace Tessel
