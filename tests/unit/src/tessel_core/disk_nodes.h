#pragma once

#include "tessel_core/disk_notification.h"

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <vector>

#include <fcntl.h>
#include <sys/ioctl.h>
#include <unistd.h>

/** A folder that plays the devices' folder: nodes are plain files. */
class DiskNodes
{
public:
    QString path() const { return folder.path(); }

    bool create(const QString &name) const
    {
        const int node = open(pathOf(name).constData(), O_CREAT | O_EXCL | O_CLOEXEC, 0600);
        return node >= 0 && close(node) == 0;
    }
    bool remove(const QString &name) const { return unlink(pathOf(name).constData()) == 0; }
    bool createFolder(const QString &name) const { return QDir(path()).mkdir(name); }
    bool removeFolder(const QString &name) const { return QDir(path()).rmdir(name); }

private:
    QByteArray pathOf(const QString &name) const
    {
        return QFile::encodeName(folder.filePath(name));
    }

    QTemporaryDir folder;
};

/**
 * Listens while it lives and writes down what it is told: "+sdb1", "-sdb1". Made of
 * the standard library's locks, which the thread sanitiser sees.
 */
class ChangeRecorder
{
public:
    using Observer = std::function<void(const QString &name, bool inserted)>;

    ChangeRecorder() { Tessel::DiskNotification::addListener(listen, this); }
    ~ChangeRecorder() { Tessel::DiskNotification::removeListener(listen); }
    ChangeRecorder(const ChangeRecorder &) = delete;
    ChangeRecorder &operator=(const ChangeRecorder &) = delete;

    /** Runs inside every later call, until another is given. */
    void observe(Observer newObserver)
    {
        const std::lock_guard lock(mutex);
        observer = std::move(newObserver);
    }

    QStringList changes() const { return changesOnceThereAre(0); }

    /** The changes once there are `count`, or what there is when none came for long. */
    QStringList changesOnceThereAre(int count) const
    {
        std::unique_lock lock(mutex);
        arrived.wait_for(lock, patience, [this, count] { return recorded.size() >= count; });
        return copyOfRecorded();
    }

    /**
     * Every change up to that of a last partition, which it plugs itself: what has not
     * been told by then is never told. Not for while a disk is pending.
     */
    QStringList changesUpToNow(const DiskNodes &nodes) const
    {
        const QString last = QStringLiteral("sdz99");
        nodes.create(last);
        std::unique_lock lock(mutex);
        arrived.wait_for(lock, patience, [this, &last] { return recorded.contains("+" + last); });
        QStringList all = copyOfRecorded();
        all.removeOne("+" + last);
        return all;
    }

private:
    static constexpr std::chrono::seconds patience = std::chrono::seconds(20);

    static void listen(const QString &name, bool inserted, void *context)
    {
        auto *recorder = static_cast<ChangeRecorder *>(context);
        std::unique_lock lock(recorder->mutex);
        const Observer observer = recorder->observer;
        lock.unlock();
        if (observer)
            observer(name, inserted);
        lock.lock();
        recorder->recorded << (inserted ? "+" : "-") + name;
        recorder->arrived.notify_all();
    }

    // Text by text: the sanitiser does not see how Qt's lists share their memory.
    QStringList copyOfRecorded() const
    {
        QStringList copy;
        for (const QString &change : recorded)
            copy << change;
        return copy;
    }

    Observer observer;
    mutable std::mutex mutex;
    mutable std::condition_variable arrived;
    QStringList recorded;
};

/** Stops the service at the end of a scope, whatever a test's checks did. */
struct RunningService
{
    explicit RunningService(const DiskNodes &nodes)
    {
        Tessel::DiskNotification::initialise(nodes.path());
    }
    ~RunningService() { Tessel::DiskNotification::shutdown(); }
    RunningService(const RunningService &) = delete;
    RunningService &operator=(const RunningService &) = delete;
};

/** What the service says is present, in its order. */
inline QStringList presentNames()
{
    QStringList names;
    for (int index = 0; index < Tessel::DiskNotification::deviceCount(); ++index)
        names << Tessel::DiskNotification::deviceAt(index);
    return names;
}

inline QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

/** The open descriptors of this process, lowest first. */
inline std::vector<int> openDescriptors()
{
    // All but the one that lists them, which is gone when it is looked at.
    std::vector<int> descriptors;
    for (const QString &name : QDir("/proc/self/fd").entryList(QDir::System | QDir::AllEntries)) {
        bool isNumber = false;
        const int descriptor = name.toInt(&isNumber);
        if (isNumber && fcntl(descriptor, F_GETFD) >= 0)
            descriptors.push_back(descriptor);
    }
    return descriptors;
}

/** How many threads this process has. */
inline int threadCount()
{
    return QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
}

/** The service's inotify descriptor, or -1. */
inline int inotifyDescriptor()
{
    for (const int descriptor : openDescriptors()) {
        char target[64] = {};
        const QByteArray link = "/proc/self/fd/" + QByteArray::number(descriptor);
        if (readlink(link.constData(), target, sizeof target - 1) > 0 &&
            QByteArray(target) == "anon_inode:inotify")
            return descriptor;
    }
    return -1;
}

/** Whether the service has read every event: what follows is a batch of its own. */
inline bool hasReadEverything()
{
    int unread = -1;
    return ioctl(inotifyDescriptor(), FIONREAD, &unread) == 0 && unread == 0;
}
