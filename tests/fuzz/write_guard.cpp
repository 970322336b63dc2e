// The fortified headers define open() themselves.
#undef _FORTIFY_SOURCE

#include "fuzz/write_guard.h"

#include "fuzz/require.h"

#include <cstdarg>

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

/** Null while there is no guard. */
QByteArray &guarded()
{
    static QByteArray folder;
    return folder;
}

void requireInside(const char *text)
{
    if (guarded().isNull())
        return;
    const QByteArray path(text);
    require(path == guarded() || path.startsWith(guarded() + '/'),
            "nothing is written outside the folder");
    require(!(path + '/').contains("/../"), "no path leads back out of the folder");
}

} // namespace

WriteGuard::WriteGuard(const QByteArray &folder)
{
    guarded() = folder;
}

WriteGuard::~WriteGuard()
{
    guarded().clear();
}

// Ours are found before libc's, by Qt and libarchive as well.
extern "C" {

int open64(const char *path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    if ((flags & (O_WRONLY | O_RDWR | O_CREAT | O_TRUNC)) != 0)
        requireInside(path);
    return static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
}

int open(const char *path, int flags, ...)
{
    std::va_list arguments;
    va_start(arguments, flags);
    const mode_t mode = (flags & (O_CREAT | O_TMPFILE)) != 0 ? va_arg(arguments, mode_t) : 0;
    va_end(arguments);
    return open64(path, flags, mode);
}

int mkdir(const char *path, mode_t mode) noexcept
{
    requireInside(path);
    return static_cast<int>(syscall(SYS_mkdir, path, mode));
}

int unlink(const char *path) noexcept
{
    requireInside(path);
    return static_cast<int>(syscall(SYS_unlink, path));
}

int symlink(const char *target, const char *path) noexcept
{
    requireInside(path);
    return static_cast<int>(syscall(SYS_symlink, target, path));
}

int link(const char *target, const char *path) noexcept
{
    requireInside(target);
    requireInside(path);
    return static_cast<int>(syscall(SYS_link, target, path));
}

int chmod(const char *path, mode_t mode) noexcept
{
    requireInside(path);
    return static_cast<int>(syscall(SYS_chmod, path, mode));
}

} // extern "C"
