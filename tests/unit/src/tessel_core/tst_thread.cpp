#include "gate.h"
#include "pthread_fakes.h"
#include "support/log_capture.h"
#include "thread_workers.h"

#include <QtTest>

#include <atomic>
#include <chrono>
#include <csignal>
#include <memory>
#include <stdexcept>
#include <thread>
#include <vector>

#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using Tessel::Thread;
using TestSupport::captureStandardError;

namespace {

void doNothing(void * /*argument*/) {}

void passGate(void *argument)
{
    static_cast<Gate *>(argument)->pass();
}

void countUp(void *argument)
{
    ++*static_cast<std::atomic<int> *>(argument);
}

void throwNumber(void * /*argument*/)
{
    throw 42;
}

void throwException(void * /*argument*/)
{
    throw std::runtime_error("out of luck");
}

void leaveByPthreadExit(void * /*argument*/)
{
    pthread_exit(nullptr);
}

enum class Flag
{
    NotSeen,
    Down,
    Up
};

Thread *watchedThread = nullptr;
thread_local bool onWatchedThread = false;
std::atomic<Flag> flagAtBroadcast = Flag::NotSeen;

void lookAtTheFlag()
{
    if (onWatchedThread)
        flagAtBroadcast = watchedThread->isRunning() ? Flag::Down : Flag::Up;
}

} // namespace

Q_DECLARE_METATYPE(Thread::Entry)

class TestThread : public QObject
{
    Q_OBJECT

private slots:
    void init() { PthreadFakes::instance().reset(); }
    void cleanup() { PthreadFakes::instance().reset(); }

    void aThreadNeverStartedCountsAsFinished();
    void theEntryRunsOnAThreadOfItsOwn();
    void aThreadRunsUntilItsEntryReturns();
    void theDestructorWaitsForTheEntry();
    void aFinishedThreadCanBeStartedAgain();
    void manyThreadsShareTheHandshake();
    void theFlagIsUpWhenTheWorkerBroadcasts();
    void waitReturnsEvenWhenTheBroadcastIsLost();
    void aNullNameIsAFailedAssertion();

    void anEscapingExceptionIsSwallowedWithItsMessage_data();
    void anEscapingExceptionIsSwallowedWithItsMessage();
    void pthreadExitInTheEntryFinishesTheThread();

    void theThreadIdIsTheLowHalfOfTheHandle();
    void sleepingSplitsTheTime_data();
    void sleepingSplitsTheTime();
    void anInterruptedSleepIsNotResumed();
    void yieldingGivesTheProcessorAway();
};

void TestThread::aThreadNeverStartedCountsAsFinished()
{
    Thread thread;
    QVERIFY(!thread.isRunning());
    thread.wait();
    QVERIFY(!thread.isRunning());
}

void TestThread::theEntryRunsOnAThreadOfItsOwn()
{
    pthread_t worker = pthread_self();
    Thread thread;
    startWorker(thread, storeHandle, &worker);
    thread.wait();
    QVERIFY(pthread_equal(worker, pthread_self()) == 0);
}

void TestThread::aThreadRunsUntilItsEntryReturns()
{
    Gate gate;
    Thread thread;
    startWorker(thread, passGate, &gate);
    QVERIFY(thread.isRunning());
    gate.open();
    thread.wait();
    QVERIFY(!thread.isRunning());
}

void TestThread::theDestructorWaitsForTheEntry()
{
    struct Work
    {
        Gate started;
        Gate mayEnd;
        std::atomic<bool> ended = false;
    } work;
    auto thread = std::make_unique<Thread>();
    startWorker(
        *thread,
        [](void *argument) {
            auto *own = static_cast<Work *>(argument);
            own->started.open();
            // Longer than a destructor takes that does not wait.
            own->mayEnd.opensWithin(std::chrono::milliseconds(50));
            own->ended = true;
        },
        &work);
    work.started.pass();
    thread.reset();
    QVERIFY(work.ended);
}

void TestThread::aFinishedThreadCanBeStartedAgain()
{
    std::atomic<int> runs = 0;
    Thread thread;
    startWorker(thread, countUp, &runs);
    thread.wait();
    Gate gate;
    startWorker(thread, passGate, &gate);
    QVERIFY(thread.isRunning());
    gate.open();
    thread.wait();
    startWorker(thread, countUp, &runs);
    thread.wait();
    QCOMPARE(runs.load(), 2);
}

void TestThread::manyThreadsShareTheHandshake()
{
    constexpr int rounds = 20;
    constexpr int workers = 8;
    std::atomic<int> runs = 0;
    for (int round = 0; round < rounds; ++round) {
        std::vector<std::unique_ptr<Thread>> threads;
        for (int i = 0; i < workers; ++i) {
            threads.push_back(std::make_unique<Thread>());
            startWorker(*threads.back(), countUp, &runs);
        }
    }
    QCOMPARE(runs.load(), rounds * workers);
}

void TestThread::theFlagIsUpWhenTheWorkerBroadcasts()
{
    Thread thread;
    watchedThread = &thread;
    flagAtBroadcast = Flag::NotSeen;
    PthreadFakes::instance().beforeBroadcast = lookAtTheFlag;
    startWorker(thread, [](void * /*argument*/) { onWatchedThread = true; });
    const QDeadlineTimer deadline(5000);
    while (flagAtBroadcast == Flag::NotSeen && !deadline.hasExpired())
        std::this_thread::yield();
    thread.wait();
    QCOMPARE(flagAtBroadcast.load(), Flag::Up);
}

void TestThread::waitReturnsEvenWhenTheBroadcastIsLost()
{
    PthreadFakes::instance().loseBroadcasts = true;
    Gate started;
    Thread thread;
    startWorker(
        thread,
        [](void *argument) {
            // Not opened by anybody: time for the owner to fall asleep in wait().
            static_cast<Gate *>(argument)->opensWithin(std::chrono::milliseconds(30));
        },
        &started);
    thread.wait();
    QVERIFY(!thread.isRunning());
}

void TestThread::aNullNameIsAFailedAssertion()
{
    int status = 0;
    const QByteArray errors = captureStandardError([&status] {
        const pid_t child = fork();
        if (child == 0) {
            const rlimit noCore = {0, 0};
            setrlimit(RLIMIT_CORE, &noCore);
            std::signal(SIGABRT, SIG_DFL);
            Thread thread;
            thread.start(doNothing, nullptr, nullptr, mediumPriority, stackHint);
            _exit(0);
        }
        waitpid(child, &status, 0);
    });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QVERIFY2(errors.startsWith("Error Assert: 'name != nullptr' is FALSE at line "), errors);
    QVERIFY2(errors.contains(" in file src/tessel_core/thread\n"), errors);
}

void TestThread::anEscapingExceptionIsSwallowedWithItsMessage_data()
{
    QTest::addColumn<Thread::Entry>("entry");
    QTest::newRow("a number") << Thread::Entry(throwNumber);
    QTest::newRow("a standard exception") << Thread::Entry(throwException);
}

void TestThread::anEscapingExceptionIsSwallowedWithItsMessage()
{
    QFETCH(Thread::Entry, entry);
    const QByteArray errors = captureStandardError([entry] {
        Thread thread;
        thread.start(entry, nullptr, "disk notification", mediumPriority, stackHint);
        thread.wait();
        QVERIFY(!thread.isRunning());
    });
    QCOMPARE(errors, QByteArray("Thread disk notification exited due to uncaught exception\n"));
}

void TestThread::pthreadExitInTheEntryFinishesTheThread()
{
    const QByteArray errors = captureStandardError([] {
        Thread thread;
        startWorker(thread, leaveByPthreadExit);
        thread.wait();
        QVERIFY(!thread.isRunning());
    });
    QCOMPARE(errors, QByteArray());
}

void TestThread::theThreadIdIsTheLowHalfOfTheHandle()
{
    QCOMPARE(quint32(Tessel::currentThreadId()), quint32(pthread_self() & 0xffffffffU));
}

void TestThread::sleepingSplitsTheTime_data()
{
    QTest::addColumn<quint32>("milliseconds");
    QTest::addColumn<qint64>("seconds");
    QTest::addColumn<qint64>("nanoseconds");
    QTest::newRow("nothing") << 0u << qint64(0) << qint64(0);
    QTest::newRow("one") << 1u << qint64(0) << qint64(1'000'000);
    QTest::newRow("below a second") << 999u << qint64(0) << qint64(999'000'000);
    QTest::newRow("a second") << 1000u << qint64(1) << qint64(0);
    QTest::newRow("both") << 61'234u << qint64(61) << qint64(234'000'000);
    QTest::newRow("the most") << 0xffffffffu << qint64(4'294'967) << qint64(295'000'000);
}

void TestThread::sleepingSplitsTheTime()
{
    QFETCH(quint32, milliseconds);
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.recordSleeps = true;
    Tessel::sleepMilliseconds(milliseconds);
    fakes.recordSleeps = false;
    QCOMPARE(fakes.sleeps.size(), std::size_t(1));
    QTEST(qint64(fakes.sleeps[0].tv_sec), "seconds");
    QTEST(qint64(fakes.sleeps[0].tv_nsec), "nanoseconds");
}

void TestThread::anInterruptedSleepIsNotResumed()
{
    PthreadFakes &fakes = PthreadFakes::instance();
    fakes.sleepResult = -1;
    fakes.recordSleeps = true;
    Tessel::sleepMilliseconds(10'000);
    fakes.recordSleeps = false;
    QCOMPARE(fakes.sleeps.size(), std::size_t(1));
}

void TestThread::yieldingGivesTheProcessorAway()
{
    PthreadFakes &fakes = PthreadFakes::instance();
    const int before = fakes.yields;
    Tessel::yieldThread();
    QVERIFY(fakes.yields > before);
}

QTEST_APPLESS_MAIN(TestThread)
#include "tst_thread.moc"
