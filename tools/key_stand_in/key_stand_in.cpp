/*
 * Stands in for the kernel's vfat in tools/sandbox --keys, where no block device can be
 * opened: loaded with LD_PRELOAD into the program that mounts keys, it shows the folder
 * "/keys/NAME" where that program mounts "/dev/NAME" as vfat. Everything else a program
 * mounts or unmounts passes through; what is unmounted is unmounted by the real call, so
 * that a busy key is as busy as it would be.
 *
 * Every call about a key is told as one line of "/keys/calls", in the way strace does:
 *
 *     mount("/dev/sdb1", "/usbkey", "vfat", MS_NOATIME, "") = -1 EIO
 *     umount("/usbkey") = 0
 *
 * A failure is asked for by a file that holds the number of its errno: "/keys/NAME.errno"
 * for mounting that node, "/keys/umount.errno" for unmounting.
 *
 * A key pulled out takes nothing with it here: a folder that is shown stays readable when
 * its node has gone. How a real key dies is seen in the emulated appliance.
 */
#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <sys/mount.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

namespace {

const std::string nodes = "/dev/";
const std::string keys = "/keys/";
constexpr const char *mountPoint = "/usbkey";

std::string quoted(const void *text)
{
    return text ? '"' + std::string(static_cast<const char *>(text)) + '"' : "NULL";
}

/** Keeps errno as it is: it is the caller's answer. One write a line. */
void record(const std::string &call, int result)
{
    const int error = errno;
    std::string line = call + " = " + std::to_string(result);
    if (result != 0)
        line += std::string(" ") + strerrorname_np(error);
    line += '\n';
    const int file =
        open((keys + "calls").c_str(), O_WRONLY | O_CREAT | O_APPEND | O_CLOEXEC, 0644);
    if (file < 0 || write(file, line.data(), line.size()) != ssize_t(line.size()))
        std::fprintf(stderr, "key_stand_in: cannot write /keys/calls\n");
    if (file >= 0)
        close(file);
    errno = error;
}

/** The errno that "/keys/NAME.errno" asks for, 0 for none. */
int failureAskedFor(const std::string &name)
{
    std::FILE *file = std::fopen((keys + name + ".errno").c_str(), "re");
    if (!file)
        return 0;
    char line[16] = {};
    const char *text = std::fgets(line, sizeof line, file);
    const int number = text ? int(std::strtol(text, nullptr, 10)) : 0;
    std::fclose(file);
    return number;
}

bool isSameFolder(const char *one, const std::string &other)
{
    struct stat left = {};
    struct stat right = {};
    return stat(one, &left) == 0 && stat(other.c_str(), &right) == 0 &&
           left.st_dev == right.st_dev && left.st_ino == right.st_ino;
}

/** What mount(2) would say about that node before it mounts; 0 when it would mount. */
int problemWith(const std::string &source, const char *target)
{
    struct stat status = {};
    if (source.compare(0, nodes.size(), nodes) != 0 || stat(source.c_str(), &status) != 0)
        return ENOENT;
    const std::string name = source.substr(nodes.size());
    if (const int asked = failureAskedFor(name))
        return asked;
    // A disk without that file system on it.
    if (stat((keys + name).c_str(), &status) != 0 || !S_ISDIR(status.st_mode))
        return EINVAL;
    return isSameFolder(target, keys + name) ? EBUSY : 0;
}

int mountKey(const std::string &source, const char *target)
{
    if (const int problem = problemWith(source, target)) {
        errno = problem;
        return -1;
    }
    const std::string folder = keys + source.substr(nodes.size());
    return int(syscall(SYS_mount, folder.c_str(), target, nullptr, MS_BIND, nullptr));
}

} // namespace

extern "C" int mount(const char *source, const char *target, const char *type, unsigned long flags,
                     const void *data) noexcept
{
    if (!source || !target || !type || std::strcmp(type, "vfat") != 0)
        return int(syscall(SYS_mount, source, target, type, flags, data));
    const int result = mountKey(source, target);
    const std::string flagNames = flags == MS_NOATIME ? "MS_NOATIME" : std::to_string(flags);
    record("mount(" + quoted(source) + ", " + quoted(target) + ", " + quoted(type) + ", " +
               flagNames + ", " + quoted(data) + ')',
           result);
    return result;
}

extern "C" int umount(const char *target) noexcept
{
    if (!target || std::strcmp(target, mountPoint) != 0)
        return int(syscall(SYS_umount2, target, 0));
    int result = -1;
    if (const int asked = failureAskedFor("umount"))
        errno = asked;
    else
        result = int(syscall(SYS_umount2, target, 0));
    record("umount(" + quoted(target) + ')', result);
    return result;
}
