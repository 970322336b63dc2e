#pragma once

#include <QString>

namespace Tessel {

/**
 * Watches for the nodes of disks and their partitions, "hd..." and "sd...", coming and
 * going, keeps the list of those present and tells listeners of every change.
 *
 * One service a process, all static. Any thread may query; initialise() and shutdown()
 * are called on one thread, alternately. Failures of the kernel are printed to standard
 * error and the service carries on as far as it can; nobody else is told.
 */
class DiskNotification
{
public:
    /**
     * Told of one change: the node's name without its folder, whether it appeared, and
     * the context it was registered with. Runs on the watcher thread with the service's
     * lock held: it may query the service, but must not wait for a thread that does.
     */
    using Listener = void (*)(const QString &name, bool inserted, void *context);

    DiskNotification() = delete;

    /**
     * Starts watching `directory` and lists what is there already, which no listener is
     * told. A whole disk whose partitions are there is not listed itself. The folder is
     * an argument for the tests: nodes appear in "/dev".
     */
    static void initialise(const QString &directory = QStringLiteral("/dev"));

    /** Stops watching, waits for the watcher thread and forgets the devices. Listeners stay. */
    static void shutdown();

    /** Appends a listener; called from now on, in the order of registration. */
    static void addListener(Listener listener, void *context);

    /** Removes the first registration of `listener`, whatever its context. */
    static void removeListener(Listener listener);

    /** Whether a node of exactly that name is present. */
    static bool isPresent(const QString &name);

    /** How many devices are present. */
    static int deviceCount();

    /** The name of a present device, in order of discovery; null past the end. */
    static QString deviceAt(int index);
};

} // namespace Tessel
