#include "tessel_core/disk_events.h"

#include <QtTest>

#include <cstring>
#include <memory>
#include <vector>

#include <sys/inotify.h>

using Tessel::DiskChange;
using Tessel::DiskEvents;

namespace {

using Batches = std::vector<QByteArray>;

QByteArray nodeEvent(quint32 mask, const QByteArray &name, quint32 nameBytes)
{
    inotify_event header = {};
    header.wd = 1;
    header.mask = mask;
    header.len = nameBytes;
    QByteArray bytes(reinterpret_cast<const char *>(&header), sizeof header);
    return bytes + name.leftJustified(static_cast<int>(nameBytes), '\0');
}

// As the kernel pads: to a multiple of the header's size, with a zero at least.
QByteArray nodeEvent(quint32 mask, const QByteArray &name)
{
    const auto size = static_cast<quint32>(name.size());
    return nodeEvent(mask, name, size == 0 ? 0 : (size / 16 + 1) * 16);
}

QByteArray created(const QByteArray &name)
{
    return nodeEvent(IN_CREATE, name);
}

QByteArray deleted(const QByteArray &name)
{
    return nodeEvent(IN_DELETE, name);
}

QStringList described(const std::vector<DiskChange> &changes)
{
    QStringList texts;
    for (const DiskChange &change : changes)
        texts << (change.inserted ? "+" : "-") + change.name;
    return texts;
}

// From a block of exactly its size, so that the address sanitiser sees a byte too far.
QStringList take(DiskEvents &events, const QByteArray &batch)
{
    const auto size = static_cast<std::size_t>(batch.size());
    const std::unique_ptr<char[]> exact(new char[size]);
    std::memcpy(exact.get(), batch.constData(), size);
    return described(events.takeBatch(exact.get(), size));
}

} // namespace

Q_DECLARE_METATYPE(Batches)

class TestDiskEvents : public QObject
{
    Q_OBJECT

private slots:
    void nodesBecomeChanges_data();
    void nodesBecomeChanges();
    void aPendingDiskIsTakenOnce();
    void theWaitIsOneSecond();
    void aTruncatedEventEndsTheBatch_data();
    void aTruncatedEventEndsTheBatch();
    void everyCutOfABatchIsSurvived();
    void aNameWithoutEndIsCutAtItsLength();
    void eventsMayLieAtAnyAddress();
};

void TestDiskEvents::nodesBecomeChanges_data()
{
    QTest::addColumn<Batches>("batches");
    QTest::addColumn<QStringList>("changes");
    QTest::addColumn<QString>("pending");
    const auto row = [](const char *name, const Batches &batches, const QStringList &changes,
                        const char *pending = "") {
        QTest::newRow(name) << batches << changes << QString(pending);
    };

    row("a partition at once", {created("sdb1")}, {"+sdb1"});
    row("an old controller's partition", {created("hda2")}, {"+hda2"});
    row("a partition with two digits", {created("sda10")}, {"+sda10"});
    row("a disk waits", {created("sdb")}, {}, "sdb");
    row("an old controller's disk waits", {created("hda")}, {}, "hda");
    row("the last letter is a disk too", {created("sdz")}, {}, "sdz");
    row("a prefix alone is a disk", {created("sd")}, {}, "sd");
    row("only the last character counts", {created("sd1a")}, {}, "sd1a");
    row("a foreign digit is no digit", {created("sda\xd9\xa1")}, {}, "sda\xd9\xa1");

    row("disk and partition in one batch", {created("sdb") + created("sdb1")}, {"+sdb1"});
    row("disk and partition in two batches", {created("sdb"), created("sdb1")}, {"+sdb1"});
    row("every partition", {created("sdb") + created("sdb1") + created("sdb2")},
        {"+sdb1", "+sdb2"});
    row("a name that merely contains the disk's", {created("sda"), created("sdaa1")}, {"+sdaa1"});
    row("a partition before its disk", {created("sdb1") + created("sdb")}, {"+sdb1"}, "sdb");

    row("another disk's partition leaves the disk pending", {created("sdc") + created("sdb1")},
        {"+sdb1"}, "sdc");
    row("and in a later batch announces it afterwards", {created("sdc"), created("sdb1")},
        {"+sdb1", "+sdc"});
    // Kept: of two disks at once the operator's panel offers the last.
    row("a second disk replaces the first for good",
        {created("sdb"), created("sdc"), created("sdd1")}, {"+sdd1", "+sdc"});
    row("in one batch as well", {created("sdb") + created("sdc")}, {}, "sdc");
    row("the replaced disk's partition does not stop the new one",
        {created("sdb") + created("sdc") + created("sdb1")}, {"+sdb1"}, "sdc");

    row("a disk goes at once", {deleted("sdb")}, {"-sdb"});
    row("a partition goes at once", {deleted("sdb1")}, {"-sdb1"});
    row("in the order of events", {deleted("sdb1") + created("sdc1") + deleted("sdb")},
        {"-sdb1", "+sdc1", "-sdb"});
    // Kept: a disk is not taken back by its own removal.
    row("come and gone in one batch", {created("sdc") + deleted("sdc")}, {"-sdc"}, "sdc");
    row("come and gone in two batches", {created("sdc"), deleted("sdc")}, {"-sdc", "+sdc"});
    row("gone and come in one batch", {deleted("sdb") + created("sdb")}, {"-sdb"}, "sdb");

    row("folders are ignored",
        {nodeEvent(IN_CREATE | IN_ISDIR, "sdb1") + nodeEvent(IN_CREATE | IN_ISDIR, "sdb") +
         nodeEvent(IN_DELETE | IN_ISDIR, "sdb1")},
        {});
    for (const char *name : {"sg0", "SDB1", "Sdb1", "xsdb1", "s", "h", "loop0", "md1", "id1"})
        row(name, {created(name) + deleted(name)}, {});
    row("other notices of a disk are ignored",
        {nodeEvent(IN_ATTRIB, "sdb1") + nodeEvent(IN_MOVED_TO, "sdb1") +
         nodeEvent(IN_CLOSE_WRITE, "sdb")},
        {});
    row("a lost watch has no name", {nodeEvent(IN_IGNORED, "")}, {});
    row("an overflow has no name", {nodeEvent(IN_Q_OVERFLOW, "")}, {});
    row("a name of zeros only", {nodeEvent(IN_CREATE, "", 16)}, {});
    row("events after a nameless one count", {nodeEvent(IN_Q_OVERFLOW, "") + created("sdb1")},
        {"+sdb1"});

    row("nothing at all", {""}, {});
    // What ends the quiet need not be a disk: the wait is never drawn out by others.
    row("any batch announces the pending disk", {created("sdb"), created("tty1")}, {"+sdb"});
    row("also an overflow", {created("sdb"), nodeEvent(IN_Q_OVERFLOW, "")}, {"+sdb"});
    row("the batch of the disk itself does not", {created("sdb") + created("tty1")}, {}, "sdb");
}

void TestDiskEvents::nodesBecomeChanges()
{
    QFETCH(Batches, batches);
    QFETCH(QString, pending);
    DiskEvents events;
    QStringList changes;
    for (const QByteArray &batch : batches)
        changes += take(events, batch);
    QTEST(changes, "changes");
    QCOMPARE(events.isDiskPending(), !pending.isEmpty());
    QCOMPARE(events.isDiskPending() ? events.takePendingDisk().name : QString(), pending);
}

void TestDiskEvents::aPendingDiskIsTakenOnce()
{
    DiskEvents events;
    QVERIFY(!events.isDiskPending());
    take(events, created("sdb"));
    QVERIFY(events.isDiskPending());
    QCOMPARE(described({events.takePendingDisk()}), QStringList("+sdb"));
    QVERIFY(!events.isDiskPending());
    QCOMPARE(take(events, created("tty1")), QStringList());
}

void TestDiskEvents::theWaitIsOneSecond()
{
    QCOMPARE(DiskEvents::quietMilliseconds, 1000);
}

void TestDiskEvents::aTruncatedEventEndsTheBatch_data()
{
    QTest::addColumn<QByteArray>("end");
    QTest::newRow("half a header") << created("sdc1").left(7);
    QTest::newRow("a header without its name") << created("sdc1").left(16);
    QTest::newRow("half a name") << created("sdc1").left(19);
    QTest::newRow("a name without its padding") << created("sdc1").left(20);
    QTest::newRow("a length beyond every buffer")
        << nodeEvent(IN_CREATE, "", 0).replace(12, 4, "\xff\xff\xff\xff", 4) + "sdc1";
}

void TestDiskEvents::aTruncatedEventEndsTheBatch()
{
    QFETCH(QByteArray, end);
    DiskEvents events;
    QCOMPARE(take(events, created("sdb1") + end), QStringList("+sdb1"));
}

void TestDiskEvents::everyCutOfABatchIsSurvived()
{
    const QByteArray batch =
        created("sdb1") + nodeEvent(IN_Q_OVERFLOW, "") + deleted("sdb1") + created("sdc2");
    const QStringList all = {"+sdb1", "-sdb1", "+sdc2"};
    for (int size = 0; size <= batch.size(); ++size) {
        DiskEvents events;
        const QStringList changes = take(events, batch.left(size));
        QCOMPARE(changes, all.mid(0, changes.size()));
        QCOMPARE(changes.size() == all.size(), size == batch.size());
    }
}

void TestDiskEvents::aNameWithoutEndIsCutAtItsLength()
{
    DiskEvents events;
    QCOMPARE(take(events, nodeEvent(IN_CREATE, "sdb1", 4)), QStringList("+sdb1"));
}

void TestDiskEvents::eventsMayLieAtAnyAddress()
{
    DiskEvents events;
    const QByteArray shifted = "x" + created("sdb1");
    const auto size = static_cast<std::size_t>(shifted.size()) - 1;
    QCOMPARE(described(events.takeBatch(shifted.constData() + 1, size)), QStringList("+sdb1"));
}

QTEST_GUILESS_MAIN(TestDiskEvents)
#include "tst_disk_events.moc"
