#pragma once

#include <QString>

#include <cstddef>
#include <vector>

namespace Tessel {

/** A disk or partition, by the name of its node without folder, that came or went. */
struct DiskChange
{
    QString name;
    bool inserted = false;
};

/**
 * Decides what to announce of the nodes that come and go in the devices' folder.
 *
 * A whole disk ("sdb") is held back for its partitions to turn up: where one does,
 * the partition is what there is to mount, and the disk is not announced. A value of
 * its own, without clock and kernel: the caller waits and reads.
 */
class DiskEvents
{
public:
    /** How long the caller holds a pending disk back when nothing else happens. */
    static constexpr int quietMilliseconds = 1000;

    /**
     * What one read of an inotify descriptor means, in the order to announce it.
     * `buffer` holds `size` bytes as the kernel wrote them; an event that is cut short
     * ends the batch. A disk still pending afterwards is of this batch: its wait begins.
     */
    std::vector<DiskChange> takeBatch(const char *buffer, std::size_t size);

    bool isDiskPending() const { return !pendingDisk.isNull(); }

    /** The pending disk, which is no longer pending: its time is up. */
    DiskChange takePendingDisk();

private:
    struct Batch
    {
        std::vector<DiskChange> changes;
        bool createdDisk = false;
    };

    void nodeCreated(const QString &name, Batch &batch);

    // Null while none is pending.
    QString pendingDisk;
};

} // namespace Tessel
