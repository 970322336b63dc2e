#include "tessel_core/disk_events.h"

#include <QByteArray>
#include <QFile>

#include <cstring>
#include <utility>

#include <sys/inotify.h>

namespace Tessel {

namespace {

// Case-sensitive, as the kernel names its nodes.
bool isDiskNode(const QByteArray &name)
{
    return name.startsWith("hd") || name.startsWith("sd");
}

bool isPartition(const QString &name)
{
    const QChar last = name.back();
    return last >= QLatin1Char('0') && last <= QLatin1Char('9');
}

// The kernel fills a name up with zeros, which is no promise that one is there.
QByteArray nodeName(const char *text, std::size_t size)
{
    return {text, static_cast<int>(strnlen(text, size))};
}

} // namespace

std::vector<DiskChange> DiskEvents::takeBatch(const char *buffer, std::size_t size)
{
    Batch batch;
    while (size >= sizeof(inotify_event)) {
        // Copied: the bytes need not lie where the processor wants such a structure.
        inotify_event event = {};
        std::memcpy(&event, buffer, sizeof event);
        buffer += sizeof event;
        size -= sizeof event;
        if (event.len > size)
            break;
        const QByteArray name = nodeName(buffer, event.len);
        buffer += event.len;
        size -= event.len;

        // The kernel's own notices (queue overflow, watch gone) have no name either.
        if ((event.mask & IN_ISDIR) != 0 || !isDiskNode(name))
            continue;
        if ((event.mask & IN_CREATE) != 0)
            nodeCreated(QFile::decodeName(name), batch);
        else if ((event.mask & IN_DELETE) != 0)
            batch.changes.push_back({QFile::decodeName(name), false});
    }
    if (isDiskPending() && !batch.createdDisk)
        batch.changes.push_back(takePendingDisk());
    return batch.changes;
}

void DiskEvents::nodeCreated(const QString &name, Batch &batch)
{
    if (!isPartition(name)) {
        // A disk that was pending is given up for good: of two that arrive together
        // only the last is offered without a partition.
        pendingDisk = name;
        batch.createdDisk = true;
        return;
    }
    if (isDiskPending() && name.contains(pendingDisk))
        pendingDisk = QString();
    batch.changes.push_back({name, true});
}

DiskChange DiskEvents::takePendingDisk()
{
    return {std::exchange(pendingDisk, QString()), true};
}

} // namespace Tessel
