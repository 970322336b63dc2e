#include "gate.h"
#include "tessel_core/recursive_mutex.h"

#include <QtTest>

#include <chrono>
#include <optional>
#include <thread>
#include <vector>

using Tessel::RecursiveMutex;
using Tessel::RecursiveMutexGuard;

namespace {

// Long enough for a waiting thread to take a mutex it may have.
constexpr std::chrono::milliseconds refusalTime(50);

// A thread that takes the mutex, says so, and gives it back.
class Contender
{
public:
    explicit Contender(RecursiveMutex &contended)
        : thread([this, &contended] {
            arrived.open();
            const RecursiveMutexGuard guard(contended);
            taken.open();
        })
    {
        arrived.pass();
    }
    ~Contender() { thread.join(); }

    Contender(const Contender &) = delete;
    Contender &operator=(const Contender &) = delete;

    bool isKeptOut() { return !taken.opensWithin(refusalTime); }
    void waitUntilTaken() { taken.pass(); }

private:
    Gate arrived;
    Gate taken;
    std::thread thread;
};

} // namespace

class TestRecursiveMutex : public QObject
{
    Q_OBJECT

private slots:
    void threeLocksTakeThreeUnlocks();
    void anUnlockByAnotherThreadDoesNothing();
    void anUnlockOfAFreeMutexDoesNothing();
    void guardsNestAndUnlockOnLeavingTheirScope();
    void onlyOneThreadAtATimeIsInside();
};

void TestRecursiveMutex::threeLocksTakeThreeUnlocks()
{
    RecursiveMutex mutex;
    for (int i = 0; i < 3; ++i)
        mutex.lock();
    Contender contender(mutex);
    mutex.unlock();
    mutex.unlock();
    const bool keptOut = contender.isKeptOut();
    mutex.unlock();
    contender.waitUntilTaken();
    QVERIFY(keptOut);
}

void TestRecursiveMutex::anUnlockByAnotherThreadDoesNothing()
{
    RecursiveMutex mutex;
    mutex.lock();
    std::thread([&mutex] { mutex.unlock(); }).join();
    Contender contender(mutex);
    const bool keptOut = contender.isKeptOut();
    mutex.unlock();
    contender.waitUntilTaken();
    QVERIFY(keptOut);
}

void TestRecursiveMutex::anUnlockOfAFreeMutexDoesNothing()
{
    RecursiveMutex mutex;
    mutex.unlock();
    mutex.lock();
    mutex.unlock();
    mutex.unlock();
    // Neither the depth nor the inner mutex has suffered: one lock, one unlock.
    mutex.lock();
    Contender contender(mutex);
    const bool keptOut = contender.isKeptOut();
    mutex.unlock();
    contender.waitUntilTaken();
    QVERIFY(keptOut);
}

void TestRecursiveMutex::guardsNestAndUnlockOnLeavingTheirScope()
{
    RecursiveMutex mutex;
    std::optional<RecursiveMutexGuard> outer(std::in_place, mutex);
    {
        const RecursiveMutexGuard inner(mutex);
    }
    Contender contender(mutex);
    const bool keptOut = contender.isKeptOut();
    outer.reset();
    contender.waitUntilTaken();
    QVERIFY(keptOut);
}

void TestRecursiveMutex::onlyOneThreadAtATimeIsInside()
{
    constexpr int rounds = 2000;
    RecursiveMutex mutex;
    int counter = 0; // Guarded by the mutex, as the thread sanitiser sees too.
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([&] {
            for (int round = 0; round < rounds; ++round) {
                const RecursiveMutexGuard outer(mutex);
                const RecursiveMutexGuard inner(mutex);
                ++counter;
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(counter, 4 * rounds);
}

QTEST_APPLESS_MAIN(TestRecursiveMutex)
#include "tst_recursive_mutex.moc"
