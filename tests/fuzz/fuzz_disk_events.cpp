// What the kernel tells of the devices' folder: only disks are announced, in the order
// and under the names the rules give, whatever the buffer holds.
//
// An input is a series of batches. Each begins with 2 bytes, big-endian: the low 15
// bits are its size in bytes, the top bit says that the wait for a pending disk ran out
// first. The batch's events follow as the kernel writes them.

#include "fuzz/input_bytes.h"
#include "fuzz/require.h"
#include "tessel_core/disk_events.h"

#include <QRegularExpression>

#include <cstring>
#include <memory>
#include <optional>

#include <sys/inotify.h>

using namespace Tessel;

namespace {

constexpr quint16 timeOutBit = 0x8000;

/** The field of four bytes at `offset`, as this processor and its kernel lay it out. */
quint32 fieldAt(const QByteArray &bytes, int offset)
{
    quint32 value = 0;
    std::memcpy(&value, bytes.constData() + offset, sizeof value);
    return value;
}

struct NodeEvent
{
    QString name;
    bool created = false;
};

/** The events that concern disks: the first step of the rules, over the whole batch at once. */
std::vector<NodeEvent> nodeEvents(QByteArray batch)
{
    constexpr int header = 16;
    constexpr int maskOffset = 4;
    constexpr int lengthOffset = 12;
    static const QRegularExpression disk(QStringLiteral("^(hd|sd)"));
    std::vector<NodeEvent> events;
    while (batch.size() >= header) {
        const quint32 mask = fieldAt(batch, maskOffset);
        const quint32 length = fieldAt(batch, lengthOffset);
        if (length > static_cast<quint32>(batch.size() - header))
            break;
        QByteArray field = batch.mid(header, static_cast<int>(length));
        batch.remove(0, header + field.size());
        const int end = field.indexOf('\0');
        field.truncate(end < 0 ? field.size() : end);
        const QString name = QString::fromLocal8Bit(field);
        const bool told = (mask & (IN_CREATE | IN_DELETE)) != 0 && (mask & IN_ISDIR) == 0;
        if (told && disk.match(name).hasMatch())
            events.push_back({name, (mask & IN_CREATE) != 0});
    }
    return events;
}

/** The rules of announcing, told once more. */
class Model
{
public:
    std::vector<NodeEvent> announce(const std::vector<NodeEvent> &events)
    {
        static const QRegularExpression partition(QStringLiteral("[0-9]\\z"));
        std::vector<NodeEvent> announced;
        bool sawDisk = false;
        for (const NodeEvent &event : events) {
            if (event.created && !partition.match(event.name).hasMatch()) {
                pending = event.name;
                sawDisk = true;
                continue;
            }
            if (event.created && pending && event.name.indexOf(*pending) >= 0)
                pending.reset();
            announced.push_back(event);
        }
        if (pending && !sawDisk)
            announced.push_back(timeOut());
        return announced;
    }

    NodeEvent timeOut()
    {
        const NodeEvent event{*pending, true};
        pending.reset();
        return event;
    }

    std::optional<QString> pending;
};

void requireSame(const DiskChange &change, const NodeEvent &expected)
{
    require(change.name == expected.name, "the announcement names the node");
    require(change.inserted == expected.created, "the announcement says what became of it");
}

/** In a block of its own, of exactly that size and at an odd address. */
std::vector<DiskChange> takeBatch(DiskEvents &events, const QByteArray &batch)
{
    const auto size = static_cast<std::size_t>(batch.size());
    const std::unique_ptr<char[]> block(new char[size + 1]); // NOLINT: no vector's spare room
    std::memcpy(block.get() + 1, batch.constData(), size);
    return events.takeBatch(block.get() + 1, size);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    InputBytes input(data, size);
    DiskEvents events;
    Model model;
    while (!input.isEmpty()) {
        const quint16 head = input.takeShort();
        if ((head & timeOutBit) != 0 && model.pending)
            requireSame(events.takePendingDisk(), model.timeOut());
        const QByteArray batch = input.take(head & ~timeOutBit);
        const std::vector<NodeEvent> expected = model.announce(nodeEvents(batch));
        const std::vector<DiskChange> changes = takeBatch(events, batch);
        require(changes.size() == expected.size(), "as many announcements as the rules give");
        for (std::size_t i = 0; i < changes.size(); ++i)
            requireSame(changes[i], expected[i]);
        require(events.isDiskPending() == model.pending.has_value(),
                "a disk is pending when the rules hold one back");
    }
    return 0;
}
