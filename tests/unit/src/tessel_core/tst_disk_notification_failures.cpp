#include "disk_nodes.h"
#include "piped_input.h"
#include "pthread_fakes.h"
#include "support/log_capture.h"
#include "tessel_core/disk_notification.h"
#include "watch_fakes.h"

#include <QtTest>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <optional>
#include <thread>

#include <sys/inotify.h>
#include <sys/resource.h>
#include <sys/select.h>

using Tessel::DiskNotification;
using TestSupport::captureStandardError;
using Function = WatchFakes::Function;
using namespace std::chrono_literals;

namespace {

using Clock = std::chrono::steady_clock;

WatchFakes &kernel()
{
    return WatchFakes::instance();
}

// The service's second wait shows that it has dealt with what ended the first.
void waitForSelects(int count)
{
    QTRY_VERIFY_WITH_TIMEOUT(kernel().count(Function::Select) >= count, 20000);
}

std::atomic<bool> announcedBeforeScan = false;

void waitForTheWatcher()
{
    for (int attempt = 0; attempt < 1000 && !announcedBeforeScan; ++attempt) {
        announcedBeforeScan = DiskNotification::isPresent("sdb1");
        std::this_thread::sleep_for(10ms);
    }
}

const DiskNodes *earlyNodes = nullptr;

void plug()
{
    // A sanitiser makes pipes of its own, before there is a watch.
    if (WatchFakes::instance().count(WatchFakes::Function::InotifyAddWatch) != 0)
        earlyNodes->create("sdb1");
}

} // namespace

class TestDiskNotificationFailures : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theFolderIsWatchedForComingAndGoing();
    void theThreadIsOfMediumPriority();
    void theThreadRunsBeforeTheScan();
    void aThreadThatCannotBeCreatedLeavesTheScan();

    void withoutInotifyTheScanStillWorks_data();
    void withoutInotifyTheScanStillWorks();
    void withoutInotifyStandardInputIsLeftAlone();
    void aDescriptorTooHighToWaitOnIsAFailure();
    void aWatchThatIsRefusedIsPrinted_data();
    void aWatchThatIsRefusedIsPrinted();
    void aMissingFolderIsPrinted();
    void withoutStopPipeTheServiceStops();
    void everythingFailsAndTheServiceStops();

    void aFailedWaitIsPrinted_data();
    void aFailedWaitIsPrinted();
    void waitsThatFailForGoodDoNotSpin();
    void aFailedReadIsPrinted_data();
    void aFailedReadIsPrinted();
    void readsThatFailForGoodDoNotSpin();

    void theWaitIsForEverUnlessADiskIsPending();
    void anInterruptionDoesNotStartTheSecondAnew();
    void aReadIsOf320Bytes();
    void stoppingAnnouncesThePendingDisk();
};

void TestDiskNotificationFailures::init()
{
    kernel().reset();
    PthreadFakes::instance().reset();
    announcedBeforeScan = false;
}

void TestDiskNotificationFailures::cleanup()
{
    kernel().reset();
    DiskNotification::shutdown();
    PthreadFakes::instance().reset();
}

void TestDiskNotificationFailures::theFolderIsWatchedForComingAndGoing()
{
    const DiskNodes nodes;
    const RunningService service(nodes);
    const std::vector<WatchFakes::Call> watches = kernel().calls(Function::InotifyAddWatch);
    QCOMPARE(watches.size(), std::size_t(1));
    QCOMPARE(watches[0].path, QFile::encodeName(nodes.path()));
    QCOMPARE(watches[0].mask, quint32(0x300));
    QCOMPARE(watches[0].descriptor, inotifyDescriptor());
}

void TestDiskNotificationFailures::theThreadIsOfMediumPriority()
{
    PthreadFakes &threads = PthreadFakes::instance();
    threads.recordCreations = true;
    threads.attributePolicy = SCHED_FIFO;
    threads.minimum = 0;
    threads.maximum = 60;
    const DiskNodes nodes;
    const RunningService service(nodes);
    QVERIFY(!threads.creations.empty());
    QCOMPARE(threads.creations[0].priority, 30);
}

// A node that appears after the watch is announced by the watcher and listed once.
void TestDiskNotificationFailures::theThreadRunsBeforeTheScan()
{
    const DiskNodes nodes;
    earlyNodes = &nodes;
    PthreadFakes::instance().recordCreations = true;
    PthreadFakes::instance().afterCreation = waitForTheWatcher;
    kernel().insidePipe = plug;
    const ChangeRecorder recorder;
    const QByteArray printed =
        captureStandardError([&nodes] { DiskNotification::initialise(nodes.path()); });
    QVERIFY(announcedBeforeScan);
    QCOMPARE(recorder.changes(), QStringList("+sdb1"));
    QCOMPARE(DiskNotification::deviceCount(), 1);
    QCOMPARE(printed, QByteArray());
}

void TestDiskNotificationFailures::aThreadThatCannotBeCreatedLeavesTheScan()
{
    const DiskNodes nodes;
    QVERIFY(nodes.create("sdb1"));
    PthreadFakes::instance().recordCreations = true;
    PthreadFakes::instance().createResults = {EAGAIN};
    const QByteArray printed = captureStandardError([&nodes] {
        const RunningService service(nodes);
        QVERIFY(DiskNotification::isPresent("sdb1"));
    });
    QCOMPARE(printed, QByteArray("Unable to create thread, error code 11\n"));
}

void TestDiskNotificationFailures::withoutInotifyTheScanStillWorks_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("process") << int(EMFILE) << QByteArray("Too many open files");
    QTest::newRow("system") << int(ENFILE) << QByteArray("Too many open files in system");
    QTest::newRow("memory") << int(ENOMEM) << QByteArray("Cannot allocate memory");
}

// Kept: the second message is there to be searched for together with the first.
void TestDiskNotificationFailures::withoutInotifyTheScanStillWorks()
{
    QFETCH(int, error);
    QFETCH(QByteArray, reason);
    const PipedInput input;
    const DiskNodes nodes;
    QVERIFY(nodes.create("sdb1"));
    kernel().failNext(Function::InotifyInit, error);
    const QByteArray printed = captureStandardError([&nodes] {
        const RunningService service(nodes);
        QCOMPARE(DiskNotification::deviceAt(0), QString("sdb1"));
    });
    QCOMPARE(printed, "DiskNotification::initialise() failed " + reason +
                          "\ninotify_add_watch failed Invalid argument\n");
    QCOMPARE(kernel().calls(Function::InotifyAddWatch).at(0).descriptor, 0);
    QCOMPARE(DiskNotification::deviceCount(), 0);
}

void TestDiskNotificationFailures::withoutInotifyStandardInputIsLeftAlone()
{
    const PipedInput input;
    QVERIFY(input.type("operator\n"));
    const DiskNodes nodes;
    kernel().failNext(Function::InotifyInit, EMFILE);
    captureStandardError([&] {
        const RunningService service(nodes);
        waitForSelects(1);
        QVERIFY(input.type("more\n"));
        QVERIFY(nodes.create("sdb1"));
    });
    QCOMPARE(PipedInput::unreadBytes(), 14);
    QVERIFY(fcntl(STDIN_FILENO, F_GETFD) >= 0);
    QVERIFY((fcntl(STDIN_FILENO, F_GETFL) & O_NONBLOCK) == 0);
    // One wait, ended by the stop byte.
    QCOMPARE(kernel().count(Function::Select), 1);
    QCOMPARE(kernel().calls(Function::Select).at(0).timeout,
             std::optional<std::chrono::microseconds>());
}

void TestDiskNotificationFailures::aDescriptorTooHighToWaitOnIsAFailure()
{
    rlimit limit = {};
    getrlimit(RLIMIT_NOFILE, &limit);
    rlimit raised = limit;
    raised.rlim_cur = FD_SETSIZE + 100;
    if (raised.rlim_cur > limit.rlim_max || setrlimit(RLIMIT_NOFILE, &raised) != 0)
        QSKIP("this process may not have as many descriptors");
    const int low = inotify_init1(IN_CLOEXEC);
    const int high = fcntl(low, F_DUPFD_CLOEXEC, FD_SETSIZE);
    close(low);
    QCOMPARE(high, FD_SETSIZE);

    const DiskNodes nodes;
    kernel().returnFromInit(high);
    const QByteArray printed =
        captureStandardError([&nodes] { const RunningService service(nodes); });
    setrlimit(RLIMIT_NOFILE, &limit);
    QVERIFY2(printed.startsWith("DiskNotification::initialise() failed Too many open files\n"),
             printed.constData());
    QCOMPARE(fcntl(high, F_GETFD), -1);
}

void TestDiskNotificationFailures::aWatchThatIsRefusedIsPrinted_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("watches") << int(ENOSPC) << QByteArray("No space left on device");
    QTest::newRow("rights") << int(EACCES) << QByteArray("Permission denied");
}

void TestDiskNotificationFailures::aWatchThatIsRefusedIsPrinted()
{
    QFETCH(int, error);
    QFETCH(QByteArray, reason);
    const DiskNodes nodes;
    QVERIFY(nodes.create("sdb1"));
    kernel().failNext(Function::InotifyAddWatch, error);
    const QByteArray printed = captureStandardError([&nodes] {
        const RunningService service(nodes);
        QVERIFY(DiskNotification::isPresent("sdb1"));
    });
    QCOMPARE(printed, "inotify_add_watch failed " + reason + "\n");
}

void TestDiskNotificationFailures::aMissingFolderIsPrinted()
{
    const DiskNodes nodes;
    const QByteArray printed = captureStandardError([&nodes] {
        DiskNotification::initialise(nodes.path() + "/missing");
        QCOMPARE(DiskNotification::deviceCount(), 0);
        DiskNotification::shutdown();
    });
    QCOMPARE(printed, QByteArray("inotify_add_watch failed No such file or directory\n"));
}

void TestDiskNotificationFailures::withoutStopPipeTheServiceStops()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const std::vector<int> descriptors = openDescriptors();
    kernel().failNext(Function::Pipe, EMFILE);
    const QByteArray printed = captureStandardError([&] {
        const RunningService service(nodes);
        QVERIFY(nodes.create("sdb1"));
        QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    });
    QCOMPARE(printed, QByteArray());
    QCOMPARE(openDescriptors(), descriptors);
}

void TestDiskNotificationFailures::everythingFailsAndTheServiceStops()
{
    const PipedInput input;
    const DiskNodes nodes;
    kernel().failNext(Function::InotifyInit, EMFILE);
    kernel().failNext(Function::Pipe, EMFILE);
    captureStandardError([&nodes] {
        const RunningService service(nodes);
        waitForSelects(1);
    });
    QCOMPARE(kernel().calls(Function::Select).at(0).timeout,
             std::optional<std::chrono::microseconds>(1s));
}

void TestDiskNotificationFailures::aFailedWaitIsPrinted_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("signal") << int(EINTR) << QByteArray("Interrupted system call");
    QTest::newRow("descriptor") << int(EBADF) << QByteArray("Bad file descriptor");
}

void TestDiskNotificationFailures::aFailedWaitIsPrinted()
{
    QFETCH(int, error);
    QFETCH(QByteArray, reason);
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    kernel().failNext(Function::Select, error);
    const QByteArray printed = captureStandardError([&] {
        const RunningService service(nodes);
        QVERIFY(nodes.create("sdb1"));
        QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    });
    // The misspelling included.
    QCOMPARE(printed, "Error wating on inotify: " + reason + "\n");
}

void TestDiskNotificationFailures::waitsThatFailForGoodDoNotSpin()
{
    const DiskNodes nodes;
    kernel().failAlways(Function::Select, EBADF);
    captureStandardError([&nodes] {
        const Clock::time_point begin = Clock::now();
        const RunningService service(nodes);
        waitForSelects(4);
        QVERIFY(Clock::now() - begin >= 3 * 200ms);
    });
}

void TestDiskNotificationFailures::aFailedReadIsPrinted_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("reason");
    QTest::newRow("signal") << int(EINTR) << QByteArray("Interrupted system call");
    QTest::newRow("nothing to read")
        << int(EAGAIN) << QByteArray("Resource temporarily unavailable");
    QTest::newRow("device") << int(EIO) << QByteArray("Input/output error");
}

void TestDiskNotificationFailures::aFailedReadIsPrinted()
{
    QFETCH(int, error);
    QFETCH(QByteArray, reason);
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    kernel().failNext(Function::Read, error);
    const QByteArray printed = captureStandardError([&] {
        const RunningService service(nodes);
        QVERIFY(nodes.create("sdb1"));
        QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    });
    QCOMPARE(printed, "Error reading inotify: " + reason + "\n");
}

void TestDiskNotificationFailures::readsThatFailForGoodDoNotSpin()
{
    const DiskNodes nodes;
    kernel().failAlways(Function::Read, EIO);
    captureStandardError([&nodes] {
        const Clock::time_point begin = Clock::now();
        const RunningService service(nodes);
        QVERIFY(nodes.create("sdb1"));
        waitForSelects(4);
        QVERIFY(Clock::now() - begin >= 3 * 200ms);
    });
}

void TestDiskNotificationFailures::theWaitIsForEverUnlessADiskIsPending()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    waitForSelects(1);
    QVERIFY(nodes.create("sdb"));
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb"));
    waitForSelects(3);
    const std::vector<WatchFakes::Call> waits = kernel().calls(Function::Select);
    QCOMPARE(waits.size(), std::size_t(3));
    QVERIFY(!waits[0].timeout);
    QVERIFY(waits[1].timeout);
    // What the thread did since its read is not waited for a second time.
    QVERIFY(*waits[1].timeout <= 1s);
    QVERIFY(*waits[1].timeout > 0ms);
    QVERIFY(!waits[2].timeout);
}

void TestDiskNotificationFailures::anInterruptionDoesNotStartTheSecondAnew()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const QByteArray printed = captureStandardError([&] {
        const RunningService service(nodes);
        waitForSelects(1);
        kernel().failNext(Function::Select, EINTR, 300ms);
        QVERIFY(nodes.create("sdb"));
        QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb"));
    });
    const std::vector<WatchFakes::Call> waits = kernel().calls(Function::Select);
    QVERIFY(waits.size() >= 3);
    QVERIFY(waits[2].timeout);
    QVERIFY(*waits[2].timeout <= 700ms);
    QCOMPARE(printed, QByteArray("Error wating on inotify: Interrupted system call\n"));
}

void TestDiskNotificationFailures::aReadIsOf320Bytes()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    QVERIFY(nodes.create("sdb1"));
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    QCOMPARE(kernel().calls(Function::Read).at(0).size, std::size_t(320));
}

void TestDiskNotificationFailures::stoppingAnnouncesThePendingDisk()
{
    const DiskNodes nodes;
    const ChangeRecorder recorder;
    DiskNotification::initialise(nodes.path());
    waitForSelects(1);
    QVERIFY(nodes.create("sdb"));
    waitForSelects(2);
    DiskNotification::shutdown();
    QCOMPARE(recorder.changes(), QStringList("+sdb"));
    QCOMPARE(DiskNotification::deviceCount(), 0);
}

QTEST_GUILESS_MAIN(TestDiskNotificationFailures)
#include "tst_disk_notification_failures.moc"
