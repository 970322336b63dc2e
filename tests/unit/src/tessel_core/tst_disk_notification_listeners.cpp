#include "disk_nodes.h"
#include "gate.h"
#include "tessel_core/disk_notification.h"

#include <QtTest>

#include <atomic>
#include <chrono>
#include <thread>

using Tessel::DiskNotification;

namespace {

struct Calls
{
    QStringList names;
    std::mutex mutex;

    void add(const QString &name)
    {
        const std::lock_guard lock(mutex);
        names << name;
    }
    QStringList all()
    {
        const std::lock_guard lock(mutex);
        return names;
    }
};

Calls calls;

void first(const QString & /*name*/, bool /*inserted*/, void *context)
{
    calls.add(QString("first %1").arg(reinterpret_cast<quintptr>(context)));
}

void second(const QString & /*name*/, bool /*inserted*/, void *context)
{
    calls.add(QString("second %1").arg(reinterpret_cast<quintptr>(context)));
}

void third(const QString & /*name*/, bool /*inserted*/, void *context)
{
    calls.add(QString("third %1").arg(reinterpret_cast<quintptr>(context)));
}

void removesItselfAndThird(const QString & /*name*/, bool /*inserted*/, void * /*context*/)
{
    calls.add("remover");
    DiskNotification::removeListener(removesItselfAndThird);
    DiskNotification::removeListener(third);
}

void *number(quintptr value)
{
    return reinterpret_cast<void *>(value); // NOLINT(performance-no-int-to-ptr)
}

} // namespace

class TestDiskNotificationListeners : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();

    void anIndexPastTheEndHasNoName();
    void listenersAreCalledInTheirOrder();
    void aListenerIsRemovedByItsFunctionOnly();
    void aListenerMayRemoveListeners();
    void aListenerMayQuery();
    void queriesOfOtherThreadsWaitForTheListeners();
};

void TestDiskNotificationListeners::cleanup()
{
    DiskNotification::shutdown();
    for (const DiskNotification::Listener listener :
         {first, first, second, third, removesItselfAndThird})
        DiskNotification::removeListener(listener);
    const std::lock_guard lock(calls.mutex);
    calls.names.clear();
}

void TestDiskNotificationListeners::anIndexPastTheEndHasNoName()
{
    const DiskNodes nodes;
    QVERIFY(nodes.create("sdb1"));
    QVERIFY(nodes.create("sdb2"));
    const RunningService service(nodes);
    QCOMPARE(DiskNotification::deviceCount(), 2);
    QCOMPARE(sorted({DiskNotification::deviceAt(0), DiskNotification::deviceAt(1)}),
             (QStringList{"sdb1", "sdb2"}));
    for (const int index : {2, 3, 1000, -1})
        QVERIFY(DiskNotification::deviceAt(index).isNull());
}

void TestDiskNotificationListeners::listenersAreCalledInTheirOrder()
{
    const DiskNodes nodes;
    DiskNotification::addListener(second, number(1));
    DiskNotification::addListener(first, number(2));
    DiskNotification::addListener(second, number(3));
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    QVERIFY(nodes.create("sdb1"));
    recorder.changesOnceThereAre(1);
    QVERIFY(nodes.remove("sdb1"));
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "-sdb1"}));
    QCOMPARE(calls.all(),
             (QStringList{"second 1", "first 2", "second 3", "second 1", "first 2", "second 3"}));
    DiskNotification::removeListener(second);
}

void TestDiskNotificationListeners::aListenerIsRemovedByItsFunctionOnly()
{
    const DiskNodes nodes;
    DiskNotification::addListener(second, number(1));
    DiskNotification::addListener(first, number(2));
    DiskNotification::addListener(first, number(3));
    DiskNotification::removeListener(first);
    DiskNotification::removeListener(third);
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    QVERIFY(nodes.create("sdb1"));
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    QCOMPARE(calls.all(), (QStringList{"second 1", "first 3"}));
}

void TestDiskNotificationListeners::aListenerMayRemoveListeners()
{
    const DiskNodes nodes;
    DiskNotification::addListener(removesItselfAndThird, nullptr);
    DiskNotification::addListener(second, number(1));
    DiskNotification::addListener(third, number(2));
    const ChangeRecorder recorder;
    const RunningService service(nodes);
    QVERIFY(nodes.create("sdb1"));
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    QCOMPARE(calls.all(), (QStringList{"remover", "second 1"}));
}

void TestDiskNotificationListeners::aListenerMayQuery()
{
    const DiskNodes nodes;
    QStringList seen;
    ChangeRecorder recorder;
    recorder.observe([&seen](const QString &name, bool inserted) {
        if (inserted && DiskNotification::isPresent(name))
            seen = QStringList(presentNames());
    });
    const RunningService service(nodes);
    QVERIFY(nodes.create("sdb1"));
    QVERIFY(nodes.create("sdb2"));
    QCOMPARE(recorder.changesOnceThereAre(2), (QStringList{"+sdb1", "+sdb2"}));
    QCOMPARE(seen, (QStringList{"sdb1", "sdb2"}));
}

void TestDiskNotificationListeners::queriesOfOtherThreadsWaitForTheListeners()
{
    const DiskNodes nodes;
    Gate told;
    Gate queryReturned;
    std::atomic<bool> returnedTooSoon = false;
    ChangeRecorder recorder;
    recorder.observe([&](const QString &, bool) {
        told.open();
        // Longer than a query takes that does not wait.
        returnedTooSoon = queryReturned.opensWithin(std::chrono::milliseconds(50));
    });
    const RunningService service(nodes);
    std::thread query([&] {
        told.pass();
        DiskNotification::deviceCount();
        queryReturned.open();
    });
    QVERIFY(nodes.create("sdb1"));
    query.join();
    QCOMPARE(recorder.changesOnceThereAre(1), QStringList("+sdb1"));
    QVERIFY(!returnedTooSoon);
}

QTEST_GUILESS_MAIN(TestDiskNotificationListeners)
#include "tst_disk_notification_listeners.moc"
