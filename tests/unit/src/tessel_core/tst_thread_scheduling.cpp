#include "pthread_fakes.h"
#include "support/log_capture.h"
#include "thread_workers.h"

#include <QtTest>

#include <atomic>
#include <cerrno>
#include <vector>

using Tessel::Thread;
using TestSupport::captureStandardError;

namespace {

using Refusal = void (*)(PthreadFakes &);

// The text a whole life of one worker prints.
QByteArray errorsOfOneThread(quint32 priority = mediumPriority)
{
    return captureStandardError([priority] {
        std::atomic<bool> ran = false;
        Thread thread;
        startWorker(thread, setFlag, &ran, priority);
        thread.wait();
        QVERIFY(ran);
    });
}

} // namespace

Q_DECLARE_METATYPE(Refusal)

/**
 * A handle cut to 32 bits names no thread on a machine with wider ones, so a
 * priority is never changed there, not even in front of fakes.
 */
constexpr bool handlesFit = sizeof(pthread_t) <= sizeof(quint32);
constexpr char widerHandles[] = "the appliance's 32-bit thread handles are wider here";

class TestThreadScheduling : public QObject
{
    Q_OBJECT

private slots:
    void init() { PthreadFakes::instance().reset(); }
    void cleanup() { PthreadFakes::instance().reset(); }

    void prioritiesMapOntoThePolicysRange_data();
    void prioritiesMapOntoThePolicysRange();
    void theWorkerIsDetachedAndScheduledExplicitly();
    void theStackSizeHintIsNotUsed();
    void thePriorityIsAskedForInThePolicyOfTheAttributes();
    void aRefusedSchedulingAttributeLeavesTheThreadAtInheritedPriority_data();
    void aRefusedSchedulingAttributeLeavesTheThreadAtInheritedPriority();
    void withoutPermissionTheThreadRunsAtInheritedPriority();
    void aThreadThatCannotBeCreatedCountsAsFinished_data();
    void aThreadThatCannotBeCreatedCountsAsFinished();
    void changingThePriorityUsesTheThreadsOwnPolicy_data();
    void changingThePriorityUsesTheThreadsOwnPolicy();
    void changingThePriorityPassesTheNarrowIdAsTheHandle();
    void aRefusedPriorityChangeIsPrinted_data();
    void aRefusedPriorityChangeIsPrinted();
};

void TestThreadScheduling::prioritiesMapOntoThePolicysRange_data()
{
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<quint32>("priority");
    QTest::addColumn<int>("expected");
    QTest::newRow("0 is the minimum") << 1 << 99 << 0u << 1;
    QTest::newRow("6 is the maximum") << 1 << 99 << 6u << 99;
    QTest::newRow("3 is the middle") << 1 << 99 << 3u << 50;
    QTest::newRow("1 truncates 16.3") << 1 << 99 << 1u << 17;
    QTest::newRow("5 truncates 81.7") << 1 << 99 << 5u << 82;
    QTest::newRow("time sharing, lowest") << 0 << 0 << 0u << 0;
    QTest::newRow("time sharing, medium") << 0 << 0 << 3u << 0;
    QTest::newRow("time sharing, highest") << 0 << 0 << 6u << 0;
    QTest::newRow("descending range truncates towards zero") << 10 << 0 << 1u << 9;
    QTest::newRow("no overflow at 32 bits") << 0 << 0x7fffffff << 6u << 0x7fffffff;
}

void TestThreadScheduling::prioritiesMapOntoThePolicysRange()
{
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    QFETCH(quint32, priority);
    QTEST(Tessel::schedulingPriority(minimum, maximum, priority), "expected");
}

void TestThreadScheduling::theWorkerIsDetachedAndScheduledExplicitly()
{
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    QCOMPARE(errorsOfOneThread(), QByteArray());
    QCOMPARE(fakes.creations.size(), std::size_t(1));
    QCOMPARE(fakes.creations[0].detachState, int(PTHREAD_CREATE_DETACHED));
    QCOMPARE(fakes.creations[0].inherit, int(PTHREAD_EXPLICIT_SCHED));
    QCOMPARE(fakes.creations[0].policy, SCHED_OTHER);
    QCOMPARE(fakes.creations[0].priority, 0);
}

void TestThreadScheduling::theStackSizeHintIsNotUsed()
{
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    std::size_t usual = 0;
    pthread_attr_getstacksize(&attributes, &usual);
    pthread_attr_destroy(&attributes);

    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    QCOMPARE(errorsOfOneThread(), QByteArray());
    QCOMPARE(fakes.creations.at(0).stackSize, usual);
}

void TestThreadScheduling::thePriorityIsAskedForInThePolicyOfTheAttributes()
{
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    fakes.attributePolicy = SCHED_FIFO;
    fakes.createResults = {EPERM};
    QCOMPARE(errorsOfOneThread(6), QByteArray());
    QCOMPARE(fakes.creations.at(0).policy, SCHED_FIFO);
    QCOMPARE(fakes.creations.at(0).priority, sched_get_priority_max(SCHED_FIFO));
}

void TestThreadScheduling::aRefusedSchedulingAttributeLeavesTheThreadAtInheritedPriority_data()
{
    QTest::addColumn<Refusal>("refusal");
    QTest::addColumn<QByteArray>("message");
    const QByteArray noPolicy = "Unable to set thread priority: couldn't get policy\n";
    const QByteArray noRange = "Unable to set thread priority: couldn't get range\n";
    const QByteArray refused = "Unable to set thread priority\n";
    const auto add = [](const char *name, Refusal refusal, const QByteArray &message) {
        QTest::newRow(name) << refusal << message;
    };
    add(
        "policy unknown", [](PthreadFakes &f) { f.attributePolicyResult = EINVAL; }, noPolicy);
    add(
        "minimum unknown", [](PthreadFakes &f) { f.minimum = -1; }, noRange);
    add(
        "maximum unknown", [](PthreadFakes &f) { f.maximum = -1; }, noRange);
    add(
        "explicit refused", [](PthreadFakes &f) { f.setExplicitResult = EINVAL; }, refused);
    add(
        "policy refused", [](PthreadFakes &f) { f.setPolicyResult = EINVAL; }, refused);
    add(
        "priority refused", [](PthreadFakes &f) { f.setParameterResult = EINVAL; }, refused);
}

void TestThreadScheduling::aRefusedSchedulingAttributeLeavesTheThreadAtInheritedPriority()
{
    QFETCH(Refusal, refusal);
    QFETCH(QByteArray, message);
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    refusal(fakes);
    QCOMPARE(errorsOfOneThread(), message);
    QCOMPARE(fakes.creations.size(), std::size_t(1));
    QCOMPARE(fakes.creations[0].inherit, int(PTHREAD_INHERIT_SCHED));
}

void TestThreadScheduling::withoutPermissionTheThreadRunsAtInheritedPriority()
{
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    fakes.createResults = {EPERM};
    QCOMPARE(errorsOfOneThread(), QByteArray());
    QCOMPARE(fakes.creations.size(), std::size_t(2));
    QCOMPARE(fakes.creations[0].inherit, int(PTHREAD_EXPLICIT_SCHED));
    QCOMPARE(fakes.creations[1].inherit, int(PTHREAD_INHERIT_SCHED));
    QCOMPARE(fakes.creations[1].detachState, int(PTHREAD_CREATE_DETACHED));
}

void TestThreadScheduling::aThreadThatCannotBeCreatedCountsAsFinished_data()
{
    QTest::addColumn<QVector<int>>("results");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no resources, not tried again")
        << QVector<int>{EAGAIN} << QByteArray("Unable to create thread, error code 11\n");
    QTest::newRow("not permitted twice")
        << QVector<int>{EPERM, EPERM} << QByteArray("Unable to create thread, error code 1\n");
    QTest::newRow("not permitted, then no resources")
        << QVector<int>{EPERM, EAGAIN} << QByteArray("Unable to create thread, error code 11\n");
}

void TestThreadScheduling::aThreadThatCannotBeCreatedCountsAsFinished()
{
    QFETCH(QVector<int>, results);
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordCreations = true;
    fakes.createResults.assign(results.begin(), results.end());
    std::atomic<bool> ran = false;
    const QByteArray errors = captureStandardError([&ran] {
        Thread thread;
        startWorker(thread, setFlag, &ran);
        QVERIFY(!thread.isRunning());
        thread.wait();
    });
    QTEST(errors, "message");
    QCOMPARE(int(fakes.creations.size()), results.size());
    QVERIFY(!ran);
}

void TestThreadScheduling::changingThePriorityUsesTheThreadsOwnPolicy_data()
{
    QTest::addColumn<int>("policy");
    QTest::addColumn<quint32>("priority");
    QTest::addColumn<int>("expected");
    QTest::newRow("real time, lowest") << SCHED_FIFO << 0u << sched_get_priority_min(SCHED_FIFO);
    QTest::newRow("real time, highest") << SCHED_RR << 6u << sched_get_priority_max(SCHED_RR);
    QTest::newRow("time sharing") << SCHED_OTHER << 6u << 0;
}

void TestThreadScheduling::changingThePriorityUsesTheThreadsOwnPolicy()
{
    if (!handlesFit)
        QSKIP(widerHandles);
    QFETCH(int, policy);
    QFETCH(quint32, priority);
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.threadPolicy = policy;
    Thread thread;
    QVERIFY(Tessel::setThreadPriority(thread, priority));
    QCOMPARE(fakes.changes.size(), std::size_t(1));
    QCOMPARE(fakes.changes[0].policy, policy);
    QTEST(fakes.changes[0].priority, "expected");
}

void TestThreadScheduling::changingThePriorityPassesTheNarrowIdAsTheHandle()
{
    if (!handlesFit)
        QSKIP(widerHandles);
    pthread_t worker = 0;
    Thread thread;
    startWorker(thread, storeHandle, &worker);
    thread.wait();
    QVERIFY(Tessel::setThreadPriority(thread, mediumPriority));
    const PthreadFakes &fakes = PthreadFakes::instance();
    const pthread_t narrow = worker & 0xffffffffU;
    QCOMPARE(fakes.readHandles, std::vector<pthread_t>{narrow});
    QCOMPARE(fakes.changes.at(0).handle, narrow);
}

void TestThreadScheduling::aRefusedPriorityChangeIsPrinted_data()
{
    QTest::addColumn<int>("readResult");
    QTest::addColumn<int>("minimum");
    QTest::addColumn<int>("maximum");
    QTest::addColumn<int>("changes");
    QTest::addColumn<QByteArray>("message");
    const QByteArray noRange = "Unable to set thread priority: couldn't get range\n";
    QTest::newRow("policy unknown")
        << int(ESRCH) << 0 << 0 << 0
        << QByteArray("Unable to set thread priority: couldn't get policy\n");
    QTest::newRow("minimum unknown") << 0 << -1 << 0 << 0 << noRange;
    QTest::newRow("maximum unknown") << 0 << 0 << -1 << 0 << noRange;
    QTest::newRow("change refused, called a process")
        << 0 << 0 << 0 << 1 << QByteArray("Failed to change process priority\n");
}

void TestThreadScheduling::aRefusedPriorityChangeIsPrinted()
{
    if (!handlesFit)
        QSKIP(widerHandles);
    QFETCH(int, readResult);
    QFETCH(int, minimum);
    QFETCH(int, maximum);
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.readParameterResult = readResult;
    fakes.minimum = minimum;
    fakes.maximum = maximum;
    fakes.changeParameterResult = EPERM;
    bool changed = true;
    const QByteArray errors = captureStandardError([&changed] {
        const Thread thread;
        changed = Tessel::setThreadPriority(thread, mediumPriority);
    });
    QTEST(errors, "message");
    QTEST(int(fakes.changes.size()), "changes");
    QVERIFY(!changed);
}

QTEST_APPLESS_MAIN(TestThreadScheduling)
#include "tst_thread_scheduling.moc"
