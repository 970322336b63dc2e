#include "tessel_core/watchdog.h"

#include <QtTest>

#include <atomic>
#include <memory>
#include <thread>
#include <vector>

using namespace Tessel;

namespace {

constexpr quint32 allClients = 32;

// A driver that only counts.
struct Driver
{
    std::atomic<int> kicks = 0;
    std::vector<quint32> timeouts;
    int clears = 0;

    void install()
    {
        installWatchdogHooks([this] { ++kicks; },
                             [this](quint32 seconds) { timeouts.push_back(seconds); },
                             [this] { ++clears; });
    }
};

using Timeouts = std::vector<quint32>;

} // namespace

class TestWatchdog : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void aSingleRequiredClientKicksWithEveryReport();
    void aClientThatIsNotRequiredDoesNothing();
    void aKickNeedsAllRequiredClientsAndStartsTheNextRound();
    void requiringAClientTwiceIsRequiringItOnce();
    void removingASilentClientLetsTheOthersKick();
    void removingAClientForgetsItsReport();
    void clientNumbersCountModulo32_data();
    void clientNumbersCountModulo32();
    void withoutADriverReportsOnlyKeepTheBooks();
    void reportsFromManyThreadsKickOncePerRound();

    void theFirstPushSetsTheTimeout();
    void onlyALongerTimeoutIsPassedOn();
    void theLongestTimeoutStaysUntilTheLastPop();
    void timeoutsCompareUnsigned();
    void aFirstPushOfNothingIsPassedOn();
    void aPopWithoutAPushDoesNothing();
    void theTimeoutIsStillThereWhileTheClearHookRuns();
    void withoutAClearHookTheExtendedTimeoutStays();
    void installingHooksDestroysTheEarlierOnes();

private:
    std::unique_ptr<Driver> driver;
};

// The service lives as long as the process: every test leaves it as it found it.
void TestWatchdog::init()
{
    driver = std::make_unique<Driver>();
    driver->install();
}

void TestWatchdog::cleanup()
{
    for (quint32 id = 0; id < allClients; ++id)
        setWatchdogClient(id, false);
    driver->install();
    pushWatchdogTimeout(0);
    popWatchdogTimeout();
    installWatchdogHooks({}, {}, {});
}

void TestWatchdog::aSingleRequiredClientKicksWithEveryReport()
{
    setWatchdogClient(0, true);
    QCOMPARE(driver->kicks.load(), 0);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 2);
}

void TestWatchdog::aClientThatIsNotRequiredDoesNothing()
{
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 0);
    setWatchdogClient(0, true);
    watchdogClientAlive(1);
    QCOMPARE(driver->kicks.load(), 0);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::aKickNeedsAllRequiredClientsAndStartsTheNextRound()
{
    setWatchdogClient(0, true);
    setWatchdogClient(1, true);
    for (int round = 1; round <= 2; ++round) {
        watchdogClientAlive(0);
        watchdogClientAlive(0);
        QCOMPARE(driver->kicks.load(), round - 1);
        watchdogClientAlive(1);
        QCOMPARE(driver->kicks.load(), round);
    }
}

void TestWatchdog::requiringAClientTwiceIsRequiringItOnce()
{
    setWatchdogClient(0, true);
    setWatchdogClient(0, true);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
    setWatchdogClient(0, false);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::removingASilentClientLetsTheOthersKick()
{
    setWatchdogClient(0, true);
    setWatchdogClient(1, true);
    watchdogClientAlive(0);
    setWatchdogClient(1, false);
    QCOMPARE(driver->kicks.load(), 0);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::removingAClientForgetsItsReport()
{
    setWatchdogClient(0, true);
    setWatchdogClient(1, true);
    watchdogClientAlive(1);
    setWatchdogClient(1, false);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
    setWatchdogClient(1, true);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::clientNumbersCountModulo32_data()
{
    QTest::addColumn<quint32>("required");
    QTest::addColumn<quint32>("reporting");
    QTest::newRow("31 is the last") << 31u << 31u;
    QTest::newRow("32 is 0") << 32u << 0u;
    QTest::newRow("0 is 32") << 0u << 32u;
    QTest::newRow("the largest is 31") << 0xffffffffu << 31u;
}

void TestWatchdog::clientNumbersCountModulo32()
{
    QFETCH(quint32, required);
    QFETCH(quint32, reporting);
    setWatchdogClient(required, true);
    watchdogClientAlive(reporting);
    QCOMPARE(driver->kicks.load(), 1);
    setWatchdogClient(reporting, false);
    watchdogClientAlive(required);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::withoutADriverReportsOnlyKeepTheBooks()
{
    installWatchdogHooks({}, {}, {});
    setWatchdogClient(0, true);
    setWatchdogClient(1, true);
    watchdogClientAlive(0);
    watchdogClientAlive(1); // Completes a round nobody hears of.
    watchdogClientAlive(0);
    driver->install();
    watchdogClientAlive(1);
    QCOMPARE(driver->kicks.load(), 1);
}

void TestWatchdog::reportsFromManyThreadsKickOncePerRound()
{
    constexpr quint32 clients = 4;
    constexpr int reports = 2000;
    // Clients 4 to 7 come and go meanwhile but never report: they only delay.
    for (quint32 id = 0; id < clients; ++id)
        setWatchdogClient(id, true);
    std::vector<std::thread> threads;
    threads.reserve(clients);
    for (quint32 id = 0; id < clients; ++id) {
        threads.emplace_back([id] {
            for (int i = 0; i < reports; ++i) {
                setWatchdogClient(id + clients, true);
                watchdogClientAlive(id);
                setWatchdogClient(id + clients, false);
            }
        });
    }
    for (std::thread &thread : threads)
        thread.join();

    // A round takes a report of every client, and whatever the threads left half
    // done, one more report of each completes it.
    QVERIFY(driver->kicks <= reports);
    const int before = driver->kicks;
    for (quint32 id = 0; id < clients; ++id)
        watchdogClientAlive(id);
    QCOMPARE(driver->kicks.load(), before + 1);
}

void TestWatchdog::theFirstPushSetsTheTimeout()
{
    pushWatchdogTimeout(240);
    QCOMPARE(driver->timeouts, Timeouts{240});
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 1);
}

void TestWatchdog::onlyALongerTimeoutIsPassedOn()
{
    pushWatchdogTimeout(240);
    pushWatchdogTimeout(240);
    pushWatchdogTimeout(100);
    pushWatchdogTimeout(300);
    QCOMPARE(driver->timeouts, (Timeouts{240, 300}));
    for (int i = 0; i < 4; ++i)
        popWatchdogTimeout();
    QCOMPARE(driver->clears, 1);
}

void TestWatchdog::theLongestTimeoutStaysUntilTheLastPop()
{
    pushWatchdogTimeout(300);
    pushWatchdogTimeout(240);
    QCOMPARE(driver->timeouts, Timeouts{300});
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 0);
    QCOMPARE(driver->timeouts, Timeouts{300});
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 1);
    pushWatchdogTimeout(240);
    QCOMPARE(driver->timeouts, (Timeouts{300, 240}));
    popWatchdogTimeout();
}

void TestWatchdog::timeoutsCompareUnsigned()
{
    pushWatchdogTimeout(240);
    pushWatchdogTimeout(0x80000000u);
    pushWatchdogTimeout(300);
    QCOMPARE(driver->timeouts, (Timeouts{240, 0x80000000u}));
    for (int i = 0; i < 3; ++i)
        popWatchdogTimeout();
}

void TestWatchdog::aFirstPushOfNothingIsPassedOn()
{
    pushWatchdogTimeout(0);
    QCOMPARE(driver->timeouts, Timeouts{0});
    popWatchdogTimeout();
}

void TestWatchdog::aPopWithoutAPushDoesNothing()
{
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 0);
    pushWatchdogTimeout(240);
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 1);
    popWatchdogTimeout();
    QCOMPARE(driver->clears, 1);
}

void TestWatchdog::theTimeoutIsStillThereWhileTheClearHookRuns()
{
    Timeouts timeouts;
    installWatchdogHooks(
        {}, [&timeouts](quint32 seconds) { timeouts.push_back(seconds); },
        [] { pushWatchdogTimeout(100); });
    pushWatchdogTimeout(300);
    popWatchdogTimeout();
    QCOMPARE(timeouts, (Timeouts{300, 300}));
    driver->install();
    popWatchdogTimeout();
}

void TestWatchdog::withoutAClearHookTheExtendedTimeoutStays()
{
    installWatchdogHooks({}, {}, {});
    pushWatchdogTimeout(300);
    popWatchdogTimeout();
    driver->install();
    pushWatchdogTimeout(240);
    QCOMPARE(driver->timeouts, Timeouts{300});
    popWatchdogTimeout();
    pushWatchdogTimeout(240);
    QCOMPARE(driver->timeouts, (Timeouts{300, 240}));
    popWatchdogTimeout();
}

void TestWatchdog::installingHooksDestroysTheEarlierOnes()
{
    const auto held = std::make_shared<int>(0);
    installWatchdogHooks([held] {}, [held](quint32) {}, [held] {});
    QCOMPARE(held.use_count(), 4L);
    driver->install();
    QCOMPARE(held.use_count(), 1L);
    setWatchdogClient(0, true);
    watchdogClientAlive(0);
    QCOMPARE(driver->kicks.load(), 1);
}

QTEST_APPLESS_MAIN(TestWatchdog)
#include "tst_watchdog.moc"
