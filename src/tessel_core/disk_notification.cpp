#include "tessel_core/disk_notification.h"

#include "tessel_core/descriptors.h"
#include "tessel_core/disk_watcher.h"
#include "tessel_core/error_report.h"
#include "tessel_core/recursive_mutex.h"
#include "tessel_core/thread.h"

#include <QDir>
#include <QFile>
#include <QRegExp>
#include <QStringList>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <memory>
#include <vector>

#include <fcntl.h>
#include <sys/inotify.h>
#include <sys/select.h>
#include <unistd.h>

namespace Tessel {

namespace {

constexpr char threadName[] = "disk notification";
constexpr quint32 threadPriority = 3;
constexpr std::size_t threadStackHint = 16384;

struct Registration
{
    DiskNotification::Listener listener;
    void *context;

    bool operator==(const Registration &other) const
    {
        return listener == other.listener && context == other.context;
    }
};

/** The mutex guards the two lists. The descriptors change only while no thread runs. */
struct Service
{
    RecursiveMutex mutex;
    QStringList present;
    std::vector<Registration> listeners;

    // The watcher reads it while shutdown() clears it, without the mutex.
    std::atomic<bool> running = false;
    std::unique_ptr<Thread> watcher;

    // 0 where closed: every descriptor is kept clear of the standard streams.
    int inotify = 0;
    int watch = 0;
    int stopReadEnd = 0;
    int stopWriteEnd = 0;
};

// Never destroyed: a process may end without shutdown(), and its watcher thread then
// runs on while the statics of the program are torn down.
Service &service()
{
    static auto *const instance = new Service;
    return *instance;
}

void closeDescriptor(int &descriptor)
{
    if (descriptor != 0)
        close(descriptor);
    descriptor = 0;
}

// What select() can wait on, closed on exec; 0 with errno after a failure.
int claimDescriptor(int opened)
{
    int descriptor = moveClearOfStandardStreams(opened);
    if (descriptor < 0)
        return 0;
    if (descriptor >= FD_SETSIZE) {
        closeDescriptor(descriptor);
        errno = EMFILE;
        return 0;
    }
    fcntl(descriptor, F_SETFD, FD_CLOEXEC);
    return descriptor;
}

void openWatch(const QString &directory)
{
    Service &own = service();
    own.inotify = claimDescriptor(inotify_init());
    if (own.inotify == 0) {
        printError("DiskNotification::initialise() failed %s\n", std::strerror(errno));
    } else {
        // A read that finds nothing, whatever select() said, must not block shutdown().
        fcntl(own.inotify, F_SETFL, O_NONBLOCK);
    }
    // Also after a failure, so that its own message follows: the service department
    // knows the pair. Standard input, which 0 is, can hold no watch.
    const int watch = inotify_add_watch(own.inotify, QFile::encodeName(directory).constData(),
                                        IN_CREATE | IN_DELETE);
    if (watch < 0)
        printError("inotify_add_watch failed %s\n", std::strerror(errno));
    else
        own.watch = watch;
}

// Without the pipe, which has no message, the watcher looks at its flag now and then.
void openStopPipe()
{
    int ends[2] = {-1, -1};
    if (pipe(ends) != 0)
        return;
    Service &own = service();
    own.stopReadEnd = claimDescriptor(ends[0]);
    own.stopWriteEnd = claimDescriptor(ends[1]);
    // Half a pipe would make the watcher wait for a byte that nobody can write.
    if (own.stopReadEnd == 0 || own.stopWriteEnd == 0) {
        closeDescriptor(own.stopReadEnd);
        closeDescriptor(own.stopWriteEnd);
    }
}

void announce(const DiskChange &change)
{
    Service &own = service();
    const RecursiveMutexGuard guard(own.mutex);
    if (change.inserted && own.present.contains(change.name)) {
        printError("DiskNotification Error - %s already present\n",
                   QFile::encodeName(change.name).constData());
        return;
    }
    if (change.inserted)
        own.present.append(change.name);
    else if (!own.present.contains(change.name))
        return;

    // A listener may add or remove listeners: nobody is called who is gone by then.
    const std::vector<Registration> registrations = own.listeners;
    for (const Registration &registration : registrations) {
        if (std::find(own.listeners.cbegin(), own.listeners.cend(), registration) !=
            own.listeners.cend())
            registration.listener(change.name, change.inserted, registration.context);
    }
    // Only now: listeners still find the name present when they are told it has gone.
    if (!change.inserted)
        own.present.removeOne(change.name);
}

void watchDisks(void * /*argument*/)
{
    Service &own = service();
    DiskWatcher({own.inotify, own.stopReadEnd}, announce).run(own.running);
}

void startWatcher()
{
    Service &own = service();
    own.running = true;
    own.watcher = std::make_unique<Thread>();
    own.watcher->start(watchDisks, nullptr, threadName, threadPriority, threadStackHint);
}

void wakeWatcher()
{
    const int stopEnd = service().stopWriteEnd;
    const char stop = 0;
    // The pipe is empty, so nothing but a signal gets in the way.
    while (stopEnd != 0 && write(stopEnd, &stop, sizeof stop) < 0 && errno == EINTR) {
    }
}

bool isWholeDisk(const QString &name)
{
    if (name.size() != 3)
        return false;
    const QChar third = name.at(2);
    const bool isDigit = third >= QLatin1Char('0') && third <= QLatin1Char('9');
    return name.startsWith(QLatin1String("hd")) ||
           (name.startsWith(QLatin1String("sd")) && !isDigit);
}

// The folder is listed under the lock: a node that goes after the listing is then
// dropped by the watcher after it was added here, not before.
void scan(const QString &directory)
{
    Service &own = service();
    const RecursiveMutexGuard guard(own.mutex);
    const QStringList names =
        QDir(directory).entryList({QStringLiteral("hd*"), QStringLiteral("sd*")},
                                  QDir::System | QDir::Files | QDir::CaseSensitive, QDir::Unsorted);
    for (const QString &name : names) {
        const bool hasPartitions =
            isWholeDisk(name) && !names.filter(QRegExp(name + QStringLiteral(".+"))).isEmpty();
        // The watcher runs already and may have announced it.
        if (!hasPartitions && !own.present.contains(name))
            own.present.append(name);
    }
}

} // namespace

void DiskNotification::initialise(const QString &directory)
{
    if (service().running)
        return;
    openWatch(directory);
    openStopPipe();
    // The thread first: what appears during the scan is then not missed.
    startWatcher();
    scan(directory);
}

void DiskNotification::shutdown()
{
    // Harmless when nothing runs: then everything below is 0 or empty.
    Service &own = service();
    own.running = false;
    wakeWatcher();
    if (own.watch != 0)
        inotify_rm_watch(own.inotify, own.watch);
    own.watch = 0;
    // Without the lock, which the watcher may need to announce its last change.
    own.watcher.reset();
    closeDescriptor(own.inotify);
    closeDescriptor(own.stopReadEnd);
    closeDescriptor(own.stopWriteEnd);
    const RecursiveMutexGuard guard(own.mutex);
    own.present.clear();
}

void DiskNotification::addListener(Listener listener, void *context)
{
    const RecursiveMutexGuard guard(service().mutex);
    service().listeners.push_back({listener, context});
}

void DiskNotification::removeListener(Listener listener)
{
    Service &own = service();
    const RecursiveMutexGuard guard(own.mutex);
    const auto found = std::find_if(
        own.listeners.cbegin(), own.listeners.cend(),
        [listener](const Registration &registration) { return registration.listener == listener; });
    if (found != own.listeners.cend())
        own.listeners.erase(found);
}

bool DiskNotification::isPresent(const QString &name)
{
    const RecursiveMutexGuard guard(service().mutex);
    return service().present.contains(name);
}

int DiskNotification::deviceCount()
{
    const RecursiveMutexGuard guard(service().mutex);
    return service().present.size();
}

QString DiskNotification::deviceAt(int index)
{
    const RecursiveMutexGuard guard(service().mutex);
    return service().present.value(index);
}

} // namespace Tessel
