#include "disk_nodes.h"
#include "tessel_core/disk_notification.h"

#include <QCoreApplication>
#include <QProcess>
#include <QtTest>

#include <array>
#include <atomic>
#include <chrono>
#include <cstdlib>
#include <optional>
#include <thread>
#include <vector>

using Tessel::DiskNotification;

namespace {

constexpr char exitMode[] = "--exit-while-watching";

/** The folder and last deeds of a process that ends without shutting the service down. */
class LateNode
{
public:
    ~LateNode()
    {
        if (!watched)
            return;
        // Every static of the service's own would be gone by now.
        const QString name = QStringLiteral("sdb1");
        bool announced = false;
        watched->create(name);
        for (int attempt = 0; attempt < 500 && !announced; ++attempt) {
            announced = DiskNotification::isPresent(name);
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        watched->remove(name);
        watched.reset();
        _exit(announced ? EXIT_SUCCESS : EXIT_FAILURE);
    }

    int watch()
    {
        watched.emplace();
        DiskNotification::initialise(watched->path());
        return EXIT_FAILURE; // unless the destructor thinks better of it
    }

private:
    std::optional<DiskNodes> watched;
};

// Made before main(), so torn down after all that main() made.
LateNode lateNode;

// Asks until it is told to stop; how often it was answered.
int queryUntil(const std::atomic<bool> &ended)
{
    int answers = 0;
    while (!ended) {
        const int count = DiskNotification::deviceCount();
        if (DiskNotification::deviceAt(count).isNull() || DiskNotification::isPresent("sda1"))
            ++answers;
        std::this_thread::yield();
    }
    return answers;
}

} // namespace

class TestDiskNotificationLoad : public QObject
{
    Q_OBJECT

private slots:
    void aThousandNodesComeAndGoWhileEverybodyAsks();
    void cyclesLeaveNoDescriptorAndNoThread();
    void aProcessMayEndWithoutShuttingDown();
};

// In steps the kernel's queue of events holds, so that none may be lost.
void TestDiskNotificationLoad::aThousandNodesComeAndGoWhileEverybodyAsks()
{
    constexpr int nodeCount = 1000;
    const DiskNodes nodes;
    std::atomic<int> wrongAnswers = 0;
    ChangeRecorder recorder;
    recorder.observe([&wrongAnswers](const QString &name, bool /*inserted*/) {
        const int count = DiskNotification::deviceCount();
        if (!DiskNotification::isPresent(name) || DiskNotification::deviceAt(count - 1).isNull())
            ++wrongAnswers;
    });
    const RunningService service(nodes);

    std::atomic<bool> ended = false;
    std::atomic<int> answers = 0;
    std::array<std::thread, 3> askers;
    for (std::thread &asker : askers)
        asker = std::thread([&] { answers += queryUntil(ended); });

    QStringList expected;
    for (int index = 1; index <= nodeCount; ++index) {
        const QString name = QString("sda%1").arg(index);
        const bool done = nodes.create(name) && (index % 2 == 0 || nodes.remove(name));
        QVERIFY(done);
        expected << "+" + name;
        if (index % 2 != 0)
            expected << "-" + name;
    }
    const QStringList changes = recorder.changesOnceThereAre(expected.size());
    ended = true;
    for (std::thread &asker : askers)
        asker.join();

    QCOMPARE(changes, expected);
    QCOMPARE(DiskNotification::deviceCount(), nodeCount / 2);
    QCOMPARE(DiskNotification::deviceAt(0), QString("sda2"));
    QCOMPARE(wrongAnswers, 0);
    QVERIFY(answers > 0);
}

void TestDiskNotificationLoad::cyclesLeaveNoDescriptorAndNoThread()
{
    const DiskNodes nodes;
    QVERIFY(nodes.create("sdb1"));
    const std::vector<int> descriptors = openDescriptors();
    const int threads = threadCount();
    for (int cycle = 0; cycle < 200; ++cycle) {
        const RunningService service(nodes);
        QCOMPARE(DiskNotification::deviceCount(), 1);
    }
    QCOMPARE(openDescriptors(), descriptors);
    // A worker has handed its object back some instructions before it is gone.
    QTRY_VERIFY(threadCount() <= threads);
}

// The applications never shut the service down: its thread outlives main().
void TestDiskNotificationLoad::aProcessMayEndWithoutShuttingDown()
{
    QProcess process;
    process.start(QCoreApplication::applicationFilePath(), {exitMode});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), EXIT_SUCCESS);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

int main(int argc, char *argv[])
{
    QCoreApplication application(argc, argv);
    if (application.arguments().contains(exitMode))
        return lateNode.watch();
    TestDiskNotificationLoad test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_disk_notification_load.moc"
