#include "disk_nodes.h"
#include "gate.h"
#include "support/log_capture.h"
#include "tessel_core/disk_notification.h"

#include <QtTest>

#include <atomic>
#include <chrono>
#include <cstdio>
#include <thread>

using Tessel::DiskNotification;
using TestSupport::captureStandardError;

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::seconds quietTime(1);

void createAll(const DiskNodes &nodes, const QStringList &names)
{
    for (const QString &name : names)
        QVERIFY2(nodes.create(name), qPrintable(name));
}

// Plugs a partition whose announcement does not end before `work` is done: what
// `work` does to the nodes is one batch, unless it is too much for one.
void inOneBatch(const DiskNodes &nodes, ChangeRecorder &recorder, const std::function<void()> &work)
{
    Gate announcing;
    Gate mayEnd;
    recorder.observe([&](const QString &name, bool) {
        if (name != "sdy1")
            return;
        announcing.open();
        mayEnd.pass();
    });
    QVERIFY(nodes.create("sdy1"));
    announcing.pass();
    work();
    mayEnd.open();
    QCOMPARE(recorder.changesOnceThereAre(1).at(0), QString("+sdy1"));
    recorder.observe({});
}

} // namespace

class TestDiskNotification : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { DiskNotification::shutdown(); }

    void aPartitionIsAnnouncedAtOnce();
    void aDiskWithAPartitionIsAnnouncedAsThePartition();
    void aDiskWithoutAPartitionIsAnnouncedAfterASecond();
    void aDiskReplacedByAnotherIsNeverAnnounced();
    void anotherDisksPartitionLeavesTheDiskToItsSecond();
    void anotherBatchEndsTheSecond();
    void aDiskCreatedAndDeletedInOneReadIsAnnouncedAfterASecond();
    void aDiskCreatedAndDeletedInTwoReadsIsNotTakenBack();
    void foldersAndOtherNamesAreIgnored();
    void aBurstOfManyReadsIsAnnouncedInOrder();

    void aNameGoneIsToldBeforeItIsDropped();
    void anUnknownNameThatGoesIsNotTold();
    void aNameThatIsPresentAlreadyIsPrinted();

    void theScanListsWhatIsThere_data();
    void theScanListsWhatIsThere();
    void theScanTellsNobody();
    void whatTheScanListedCanGo();

    void shuttingDownForgetsDevicesButNotListeners();
    void callsOutOfTurnAreHarmless();
    void theDescriptorsAreNotInherited();
    void standardStreamsThatAreClosedStayClosed();
};

void TestDiskNotification::aPartitionIsAnnouncedAtOnce()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    createAll(nodes, {"sdb1"});
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    QVERIFY(DiskNotification::isPresent("sdb1"));
    QVERIFY(!DiskNotification::isPresent("SDB1"));
    QVERIFY(!DiskNotification::isPresent("sdb"));
    QCOMPARE(presentNames(), QStringList("sdb1"));
}

void TestDiskNotification::aDiskWithAPartitionIsAnnouncedAsThePartition()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    createAll(nodes, {"sdb"});
    QTRY_VERIFY(hasReadEverything());
    createAll(nodes, {"sdb1"});
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    // Another disk's second of quiet passes without a word about the first.
    createAll(nodes, {"sdc"});
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "+sdc"}));
    QCOMPARE(presentNames(), (QStringList{"sdb1", "sdc"}));
}

void TestDiskNotification::aDiskWithoutAPartitionIsAnnouncedAfterASecond()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    const Clock::time_point begin = Clock::now();
    createAll(nodes, {"sdb"});
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb"));
    QVERIFY(Clock::now() - begin >= quietTime);
    QCOMPARE(presentNames(), QStringList("sdb"));
}

void TestDiskNotification::aDiskReplacedByAnotherIsNeverAnnounced()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    createAll(nodes, {"sdb"});
    QTRY_VERIFY(hasReadEverything());
    const Clock::time_point begin = Clock::now();
    createAll(nodes, {"sdc"});
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdc"));
    // The second belongs to the disk that came last.
    QVERIFY(Clock::now() - begin >= quietTime);
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList("+sdc"));
}

void TestDiskNotification::anotherDisksPartitionLeavesTheDiskToItsSecond()
{
    const DiskNodes nodes;
    ChangeRecorder recorder;
    const RunningService service(nodes);
    const Clock::time_point begin = Clock::now();
    inOneBatch(nodes, recorder, [&nodes] { createAll(nodes, {"sdc", "sdb1"}); });
    QCOMPARE(recorder.changesOnceThereAre(3), (QStringList{"+sdy1", "+sdb1", "+sdc"}));
    QVERIFY(Clock::now() - begin >= quietTime);
}

void TestDiskNotification::anotherBatchEndsTheSecond()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    createAll(nodes, {"sdc"});
    QTRY_VERIFY(hasReadEverything());
    createAll(nodes, {"sdb1"});
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "+sdc"}));
}

void TestDiskNotification::aDiskCreatedAndDeletedInOneReadIsAnnouncedAfterASecond()
{
    const DiskNodes nodes;
    ChangeRecorder recorder;
    const RunningService service(nodes);
    const Clock::time_point begin = Clock::now();
    inOneBatch(nodes, recorder, [&nodes] {
        createAll(nodes, {"sdc"});
        QVERIFY(nodes.remove("sdc"));
    });
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdy1", "+sdc"}));
    QVERIFY(Clock::now() - begin >= quietTime);
    // Kept: nothing takes the name back, and mounting it fails.
    QVERIFY(DiskNotification::isPresent("sdc"));
}

void TestDiskNotification::aDiskCreatedAndDeletedInTwoReadsIsNotTakenBack()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    createAll(nodes, {"sdc"});
    QTRY_VERIFY(hasReadEverything());
    QVERIFY(nodes.remove("sdc"));
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdc"));
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList("+sdc"));
    QVERIFY(DiskNotification::isPresent("sdc"));
}

void TestDiskNotification::foldersAndOtherNamesAreIgnored()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    QVERIFY(nodes.createFolder("sdb1"));
    QVERIFY(nodes.createFolder("sdb"));
    QVERIFY(nodes.removeFolder("sdb1"));
    createAll(nodes, {"sg0", "SDB1", "xsdb1", "loop0", "tty1"});
    QVERIFY(nodes.remove("sg0"));
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList());
    QCOMPARE(presentNames(), QStringList("sdz99"));
}

void TestDiskNotification::aBurstOfManyReadsIsAnnouncedInOrder()
{
    const DiskNodes nodes;
    ChangeRecorder recorder;
    const RunningService service(nodes);
    QStringList expected = {"+sdy1"};
    inOneBatch(nodes, recorder, [&] {
        for (int index = 1; index <= 60; ++index) {
            const QString name = QString("sda%1").arg(index);
            createAll(nodes, {name});
            expected << "+" + name;
        }
    });
    QCOMPARE(recorder.changesOnceThereAre(61), expected);
    QCOMPARE(DiskNotification::deviceCount(), 61);
}

// The key support of the applications relies on this order: see isPresent() there.
void TestDiskNotification::aNameGoneIsToldBeforeItIsDropped()
{
    const DiskNodes nodes;
    std::atomic<bool> presentWhenTold = false;
    ChangeRecorder recorder;
    recorder.observe([&presentWhenTold](const QString &name, bool inserted) {
        if (!inserted)
            presentWhenTold = DiskNotification::isPresent(name);
    });
    const RunningService service(nodes);
    createAll(nodes, {"sdb1", "sdb2"});
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "+sdb2"}));
    QVERIFY(nodes.remove("sdb1"));
    QCOMPARE(recorder.changesOnceThereAre(3), (QStringList{"+sdb1", "+sdb2", "-sdb1"}));
    QVERIFY(presentWhenTold);
    // The lock is held from before the call until after the removal.
    QVERIFY(!DiskNotification::isPresent("sdb1"));
    QCOMPARE(presentNames(), QStringList("sdb2"));
}

void TestDiskNotification::anUnknownNameThatGoesIsNotTold()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    // Listed as partition only, so the disk is unknown.
    createAll(nodes, {"sdb", "sdb1"});
    const RunningService service(nodes);
    QVERIFY(nodes.remove("sdb"));
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList());
    QCOMPARE(presentNames(), (QStringList{"sdb1", "sdz99"}));
}

void TestDiskNotification::aNameThatIsPresentAlreadyIsPrinted()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    createAll(nodes, {"sdb1"});
    const RunningService service(nodes);
    const QByteArray printed = captureStandardError([&] {
        // Moved away unseen, so the name stays present.
        QVERIFY(QFile::rename(nodes.path() + "/sdb1", nodes.path() + "/moved"));
        createAll(nodes, {"sdb1"});
        QCOMPARE(recorder.changesUpToNow(nodes), QStringList());
    });
    QCOMPARE(printed, QByteArray("DiskNotification Error - sdb1 already present\n"));
    QCOMPARE(presentNames(), (QStringList{"sdb1", "sdz99"}));
}

void TestDiskNotification::theScanListsWhatIsThere_data()
{
    QTest::addColumn<QStringList>("nodes");
    QTest::addColumn<QStringList>("present");
    const auto row = [](const char *name, const QStringList &nodes, const QStringList &present) {
        QTest::newRow(name) << nodes << present;
    };
    row("nothing", {}, {});
    row("a disk without partitions", {"sdb"}, {"sdb"});
    row("a disk with partitions", {"sdb", "sdb1", "sdb2"}, {"sdb1", "sdb2"});
    row("an old controller's disk", {"hda"}, {"hda"});
    row("with partitions", {"hda", "hda1", "hdb"}, {"hda1", "hdb"});
    row("another disk's partitions do not count", {"sda", "sdb1"}, {"sda", "sdb1"});
    row("anything after the disk's name counts", {"sda", "sdax"}, {"sdax"});
    row("wherever the disk's name is", {"sda", "sdbsda1"}, {"sdbsda1"});
    row("but something has to follow", {"sda", "sdbsda"}, {"sda", "sdbsda"});
    row("a digit makes no disk of sd", {"sd1", "sd12"}, {"sd1", "sd12"});
    row("but one of hd", {"hd1", "hd12"}, {"hd12"});
    row("longer names are listed", {"sdaa", "sdaa1"}, {"sdaa", "sdaa1"});
    row("prefixes alone are listed", {"sd", "hd"}, {"sd", "hd"});
    row("other devices", {"sg0", "xsda", "SDA1", "Hda", "tty", "s"}, {});
}

void TestDiskNotification::theScanListsWhatIsThere()
{
    QFETCH(QStringList, nodes);
    QFETCH(QStringList, present);
    const DiskNodes folder;
    createAll(folder, nodes);
    QVERIFY(folder.createFolder("sdq1"));
    const RunningService service(folder);
    QCOMPARE(sorted(presentNames()), sorted(present));
    QCOMPARE(DiskNotification::deviceCount(), present.size());
}

void TestDiskNotification::theScanTellsNobody()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    createAll(nodes, {"sda", "sdb1"});
    const RunningService service(nodes);
    QVERIFY(DiskNotification::isPresent("sda"));
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList());
}

void TestDiskNotification::whatTheScanListedCanGo()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    createAll(nodes, {"sda", "sdb1"});
    const RunningService service(nodes);
    QVERIFY(nodes.remove("sda"));
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList("-sda"));
    QCOMPARE(presentNames(), (QStringList{"sdb1", "sdz99"}));
}

void TestDiskNotification::shuttingDownForgetsDevicesButNotListeners()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    createAll(nodes, {"sda1"});
    DiskNotification::initialise(nodes.path());
    createAll(nodes, {"sdb1"});
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    DiskNotification::shutdown();
    QCOMPARE(DiskNotification::deviceCount(), 0);
    QVERIFY(!DiskNotification::isPresent("sdb1"));
    QVERIFY(DiskNotification::deviceAt(0).isNull());

    createAll(nodes, {"sdc1"});
    QVERIFY(nodes.remove("sda1"));
    DiskNotification::initialise(nodes.path());
    QCOMPARE(sorted(presentNames()), (QStringList{"sdb1", "sdc1"}));
    createAll(nodes, {"sdd1"});
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "+sdd1"}));
}

void TestDiskNotification::callsOutOfTurnAreHarmless()
{
    const DiskNodes nodes;
    const DiskNodes others;
    const ChangeRecorder recorder;
    DiskNotification::shutdown();

    DiskNotification::initialise(nodes.path());
    const std::vector<int> descriptors = openDescriptors();
    const int threads = threadCount();
    DiskNotification::initialise(others.path());
    QCOMPARE(openDescriptors(), descriptors);
    QCOMPARE(threadCount(), threads);
    createAll(others, {"sdc1"});
    QCOMPARE(recorder.changesUpToNow(nodes), QStringList());

    DiskNotification::shutdown();
    DiskNotification::shutdown();
    QCOMPARE(DiskNotification::deviceCount(), 0);
}

void TestDiskNotification::theDescriptorsAreNotInherited()
{
    const DiskNodes nodes;
    const std::vector<int> before = openDescriptors();
    const RunningService service(nodes);
    const std::vector<int> after = openDescriptors();
    QCOMPARE(after.size(), before.size() + 3);
    for (const int descriptor : after) {
        if (std::find(before.cbegin(), before.cend(), descriptor) == before.cend())
            QCOMPARE(fcntl(descriptor, F_GETFD), FD_CLOEXEC);
    }
}

void TestDiskNotification::standardStreamsThatAreClosedStayClosed()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const int saved = fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
    close(STDIN_FILENO);
    DiskNotification::initialise(nodes.path());
    createAll(nodes, {"sdb1"});
    const QStringList changes = recorder.changesOnceThereAre(1);
    const int flags = fcntl(STDIN_FILENO, F_GETFD);
    DiskNotification::shutdown();
    dup2(saved, STDIN_FILENO);
    close(saved);
    QCOMPARE(changes, QStringList("+sdb1"));
    QCOMPARE(flags, -1);
}

QTEST_GUILESS_MAIN(TestDiskNotification)
#include "tst_disk_notification.moc"
