/*
 * Does to the machine what the crash reporter does to it, one action after the
 * other as the arguments say, so that the sandbox can be tested without it. What
 * fails is told on standard output as "<action> <argument>: <errno's name>".
 *
 *   write FILE SIZE    writes SIZE bytes          read-block FILE  copies the shared block
 *   copy FROM TO       copies a file              unlink FILE      deletes it
 *   open FILE          opens it for reading       umount PATH      umount(2)
 *   say TEXT           prints a line              reboot, power-off  reboot(2)
 *   lock FILE          leaves a process behind that holds a lock on FILE
 *   mount NODE FOLDER  mounts it as a key     watch FOLDER    tells what comes and goes
 *   wait               sleeps until killed        exit N, signal N
 *
 * The end actions refuse to run outside a pid namespace of their own: there they
 * would be real.
 */
#include "tessel_core/shared_client_info.h"

#include <QCoreApplication>
#include <QFile>
#include <QSharedMemory>

#include <cerrno>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <cstring>

#include <fcntl.h>
#include <linux/reboot.h>
#include <sys/file.h>
#include <sys/inotify.h>
#include <sys/mount.h>
#include <sys/reboot.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

/** Inode of the machine's own pid namespace: PROC_PID_INIT_INO in <linux/proc_ns.h>. */
constexpr ino_t pidNamespaceOfTheMachine = 0xEFFFFFFC;

constexpr int refused = 99;

int number(const char *text)
{
    return int(std::strtol(text, nullptr, 10));
}

bool report(const char *action, const char *argument, bool succeeded)
{
    if (!succeeded)
        std::printf("%s %s: %s\n", action, argument, strerrorname_np(errno));
    return succeeded;
}

void refuseOnTheMachine()
{
    struct stat status = {};
    if (stat("/proc/self/ns/pid", &status) == 0 && status.st_ino != pidNamespaceOfTheMachine)
        return;
    std::puts("not in a sandbox");
    std::exit(refused);
}

void write(const char *path, const char *size)
{
    const int file = open(path, O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0644);
    if (!report("write", path, file >= 0))
        return;
    bool written = true;
    const QByteArray block(4096, 'x');
    for (int left = number(size); left > 0 && written; left -= block.size()) {
        const auto length = size_t(qMin(left, block.size()));
        written = ::write(file, block.constData(), length) == ssize_t(length);
    }
    report("write", path, written);
    close(file);
}

void openForReading(const char *path)
{
    const int file = open(path, O_RDONLY | O_CLOEXEC);
    if (report("open", path, file >= 0))
        close(file);
}

void copy(const char *from, const char *to)
{
    if (!QFile::copy(from, to))
        std::printf("copy %s: failed\n", from);
}

void readBlock(const char *path)
{
    QSharedMemory block(Tessel::sharedClientInfoKey);
    QFile file(path);
    if (!block.attach(QSharedMemory::ReadOnly) || !file.open(QIODevice::WriteOnly))
        std::printf("read-block: %s\n", qPrintable(block.errorString()));
    else
        file.write(static_cast<const char *>(block.constData()), block.size());
}

/** The lock belongs to the open file: the child keeps it after we are gone. */
void leaveLockHolder(const char *path)
{
    const int file = open(path, O_RDWR | O_CREAT | O_CLOEXEC, 0644);
    if (!report("lock", path, file >= 0 && flock(file, LOCK_EX | LOCK_NB) == 0))
        return;
    std::fflush(nullptr);
    if (fork() != 0)
        return;
    setsid();
    for (const int signal : {SIGHUP, SIGINT, SIGTERM})
        std::signal(signal, SIG_IGN);
    for (;;)
        pause();
}

[[noreturn]] void waitForever()
{
    for (;;)
        pause();
}

void endMachine(int command)
{
    refuseOnTheMachine();
    report("reboot", "", reboot(command) == 0);
}

/** A sanitiser would otherwise catch the signal and exit. */
void dieOf(int signal)
{
    std::signal(signal, SIG_DFL);
    raise(signal);
}

void unmount(const char *path)
{
    refuseOnTheMachine();
    report("umount", path, umount(path) == 0);
}

void mountKey(const char *node, const char *folder)
{
    refuseOnTheMachine();
    report("mount", node, mount(node, folder, "vfat", MS_NOATIME, "") == 0);
}

[[noreturn]] void watchFolder(const char *path)
{
    const int watch = inotify_init1(IN_CLOEXEC);
    if (report("watch", path, inotify_add_watch(watch, path, IN_CREATE | IN_DELETE) >= 0))
        std::puts("watching");
    for (;;) {
        std::fflush(nullptr);
        alignas(inotify_event) char events[4096] = {};
        const ssize_t length = read(watch, events, sizeof events);
        for (ssize_t at = 0; at < length;) {
            const auto *event = reinterpret_cast<const inotify_event *>(events + at);
            std::printf("%s %s\n", event->mask & IN_CREATE ? "created" : "deleted", event->name);
            at += ssize_t(sizeof *event) + event->len;
        }
    }
}

struct Action
{
    const char *name;
    int arguments;
    void (*run)(char **arguments);
};

const Action actions[] = {
    {"write", 2, [](char **arguments) { write(arguments[0], arguments[1]); }},
    {"copy", 2, [](char **arguments) { copy(arguments[0], arguments[1]); }},
    {"open", 1, [](char **arguments) { openForReading(arguments[0]); }},
    {"unlink", 1,
     [](char **arguments) { report("unlink", arguments[0], unlink(arguments[0]) == 0); }},
    {"read-block", 1, [](char **arguments) { readBlock(arguments[0]); }},
    {"lock", 1, [](char **arguments) { leaveLockHolder(arguments[0]); }},
    {"say", 1, [](char **arguments) { std::puts(arguments[0]); }},
    {"mount", 2, [](char **arguments) { mountKey(arguments[0], arguments[1]); }},
    {"watch", 1, [](char **arguments) { watchFolder(arguments[0]); }},
    {"wait", 0, [](char **) { waitForever(); }},
    {"umount", 1, [](char **arguments) { unmount(arguments[0]); }},
    {"reboot", 0, [](char **) { endMachine(RB_AUTOBOOT); }},
    {"power-off", 0, [](char **) { endMachine(RB_POWER_OFF); }},
    {"exit", 1, [](char **arguments) { std::exit(number(arguments[0])); }},
    {"signal", 1, [](char **arguments) { dieOf(number(arguments[0])); }},
};

/** Runs the first action and returns how many words it took; 0 when it is none. */
int runAction(int left, char **words)
{
    for (const Action &action : actions)
        if (std::strcmp(action.name, words[0]) == 0 && left > action.arguments) {
            action.run(words + 1);
            std::fflush(nullptr);
            return action.arguments + 1;
        }
    std::printf("unknown action %s\n", words[0]);
    return 0;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    for (int index = 1; index < argc;) {
        const int taken = runAction(argc - index, argv + index);
        if (taken == 0)
            return refused;
        index += taken;
    }
    return 0;
}
