#include "support/kernel_fakes.h"
#include "support/log_capture.h"
#include "tessel_core/talvorin_watchdog.h"
#include "tessel_core/watchdog.h"

#include <QtTest>

#include <cerrno>
#include <functional>
#include <memory>
#include <optional>
#include <vector>

#include <fcntl.h>
#include <linux/watchdog.h>
#include <unistd.h>

using Tessel::TalvorinWatchdog;
using TestSupport::KernelCall;
using TestSupport::KernelFakes;
using TestSupport::KernelFunction;
using TestSupport::LogCapture;

namespace {

using Action = std::function<void(TalvorinWatchdog &)>;

constexpr char devicePath[] = "/dev/watchdog";
constexpr quint32 logPriority = 130;

// One request as the device saw it.
struct Request
{
    unsigned long code;
    int value;

    bool operator==(const Request &other) const
    {
        return code == other.code && value == other.value;
    }
};
using Requests = std::vector<Request>;

KernelFakes &kernel()
{
    return KernelFakes::instance();
}

// Everything asked of `descriptor`; a request for another one shows as code 0.
Requests requestsTo(int descriptor)
{
    Requests requests;
    for (const KernelCall &call : kernel().calls(KernelFunction::Ioctl)) {
        const bool expected = call.descriptor == descriptor;
        requests.push_back({expected ? call.code : 0, call.value.value_or(-1)});
    }
    return requests;
}

int openedDescriptor()
{
    return kernel().calls(KernelFunction::Open).at(0).descriptor;
}

void scriptIoctl(int result, std::optional<int> accepted = {})
{
    kernel().script(KernelFunction::Ioctl, {result, result < 0 ? EIO : 0, accepted});
}

// No standard input while it lives, so that open() hands out descriptor 0.
class ClosedInput
{
public:
    ClosedInput()
        : saved(fcntl(STDIN_FILENO, F_DUPFD_CLOEXEC, STDERR_FILENO + 1))
    {
        close(STDIN_FILENO);
    }
    ~ClosedInput()
    {
        if (dup2(saved, STDIN_FILENO) == STDIN_FILENO)
            close(saved);
    }

    ClosedInput(const ClosedInput &) = delete;
    ClosedInput &operator=(const ClosedInput &) = delete;

private:
    int saved;
};

} // namespace

Q_DECLARE_METATYPE(Action)

class TestTalvorinWatchdog : public QObject
{
    Q_OBJECT

private slots:
    void init() { kernel().reset(); }
    void cleanup();

    void theWatchdogDeviceIsOpenedForReadingAndWriting();
    void theDescriptorIsNotInherited();
    void aMissingDeviceIsLogged_data();
    void aMissingDeviceIsLogged();
    void anUnopenedWatchdogIgnoresEveryCall();
    void descriptorZeroIsMovedAndCountsAsOpen();
    void aDescriptorThatCannotBeMovedIsAFailedOpen();

    void kickingKeepsTheBoardAlive();
    void theCallbackRunsAfterASuccessfulAndAfterAFailedKick();
    void enablingAndDisablingSetTheCardsOption();
    void deviceErrorsAreLoggedWithTheReturnValue_data();
    void deviceErrorsAreLoggedWithTheReturnValue();

    void theLongerTimeoutIsApplied_data();
    void theLongerTimeoutIsApplied();
    void clearingTheExtendedTimeoutGoesBackToTheTimeout();
    void aTimeoutOfZeroAppliesNothing();
    void theAcceptedTimesDoNotBecomeTheTimeouts();
    void bothTimeoutErrorsAreLogged();

    void theServiceDrivesTheDevice();
    void aSecondDriverReplacesTheHooksOfTheFirst();
    void theDestructorEmptiesTheHooksAndClosesTheDevice();
    void anUnopenedWatchdogLeavesTheHooksOfAnother();
    void aFailedCloseIsLogged();
};

void TestTalvorinWatchdog::cleanup()
{
    Tessel::setWatchdogClient(0, false);
    kernel().reset();
}

void TestTalvorinWatchdog::theWatchdogDeviceIsOpenedForReadingAndWriting()
{
    kernel().provideDevice(devicePath);
    const LogCapture log;
    const TalvorinWatchdog watchdog;
    QVERIFY(watchdog.isOpen());
    const std::vector<KernelCall> calls = kernel().calls();
    QCOMPARE(calls.size(), std::size_t(1));
    QCOMPARE(calls[0].function, KernelFunction::Open);
    QCOMPARE(calls[0].path, QByteArray(devicePath));
    QCOMPARE(int(calls[0].code) & O_ACCMODE, O_RDWR);
    QCOMPARE(log.texts(), QByteArrayList());
}

void TestTalvorinWatchdog::theDescriptorIsNotInherited()
{
    kernel().provideDevice(devicePath);
    const TalvorinWatchdog watchdog;
    QCOMPARE(fcntl(openedDescriptor(), F_GETFD), FD_CLOEXEC);
}

void TestTalvorinWatchdog::aMissingDeviceIsLogged_data()
{
    QTest::addColumn<int>("error");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("no device") << int(ENOENT)
                               << QByteArray(
                                      "Watchdog failed to open, No such file or directory\n");
    QTest::newRow("in use") << int(EBUSY)
                            << QByteArray("Watchdog failed to open, Device or resource busy\n");
}

void TestTalvorinWatchdog::aMissingDeviceIsLogged()
{
    QFETCH(int, error);
    kernel().scriptOpen(devicePath, {-1, error, {}});
    const LogCapture log;
    const TalvorinWatchdog watchdog;
    QVERIFY(!watchdog.isOpen());
    QCOMPARE(log.entries().size(), std::size_t(1));
    QCOMPARE(log.entries()[0].priority, logPriority);
    QTEST(log.entries()[0].text, "message");
}

void TestTalvorinWatchdog::anUnopenedWatchdogIgnoresEveryCall()
{
    int callbacks = 0;
    {
        TalvorinWatchdog watchdog;
        const LogCapture log;
        watchdog.setKickedCallback([&callbacks] { ++callbacks; });
        watchdog.enable();
        watchdog.disable();
        watchdog.kick();
        watchdog.setTimeout(240);
        watchdog.setExtendedTimeout(300);
        watchdog.clearExtendedTimeout();
        QCOMPARE(log.texts(), QByteArrayList());
    }
    QCOMPARE(kernel().calls(KernelFunction::Ioctl).size(), std::size_t(0));
    QCOMPARE(callbacks, 0);
}

void TestTalvorinWatchdog::descriptorZeroIsMovedAndCountsAsOpen()
{
    const ClosedInput closedInput;
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    QCOMPARE(openedDescriptor(), 0);
    QVERIFY(watchdog.isOpen());
    QCOMPARE(fcntl(0, F_GETFD), -1);

    watchdog.kick();
    const int used = kernel().calls(KernelFunction::Ioctl).at(0).descriptor;
    QVERIFY(used > STDERR_FILENO);
    QCOMPARE(fcntl(used, F_GETFD), FD_CLOEXEC);
}

void TestTalvorinWatchdog::aDescriptorThatCannotBeMovedIsAFailedOpen()
{
    const ClosedInput closedInput;
    // Descriptor 0 stays closed, so duplicating it fails.
    kernel().scriptOpen(devicePath, {0, 0, {}});
    const LogCapture log;
    const TalvorinWatchdog watchdog;
    QVERIFY(!watchdog.isOpen());
    QCOMPARE(log.texts(), QByteArrayList{"Watchdog failed to open, Bad file descriptor\n"});
}

void TestTalvorinWatchdog::kickingKeepsTheBoardAlive()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    watchdog.kick();
    QCOMPARE(requestsTo(openedDescriptor()), (Requests{{WDIOC_KEEPALIVE, 0}}));
}

void TestTalvorinWatchdog::theCallbackRunsAfterASuccessfulAndAfterAFailedKick()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    std::vector<std::size_t> requestsBeforeCallback;
    watchdog.setKickedCallback([&requestsBeforeCallback] {
        requestsBeforeCallback.push_back(kernel().calls(KernelFunction::Ioctl).size());
    });
    scriptIoctl(0);
    scriptIoctl(-1);
    watchdog.kick();
    watchdog.kick();
    QCOMPARE(requestsBeforeCallback, (std::vector<std::size_t>{1, 2}));
    watchdog.setKickedCallback({});
    watchdog.kick();
    QCOMPARE(requestsBeforeCallback.size(), std::size_t(2));
}

void TestTalvorinWatchdog::enablingAndDisablingSetTheCardsOption()
{
    kernel().provideDevice(devicePath);
    const LogCapture log;
    TalvorinWatchdog watchdog;
    watchdog.enable();
    watchdog.disable();
    QCOMPARE(requestsTo(openedDescriptor()),
             (Requests{{WDIOC_SETOPTIONS, 2}, {WDIOC_SETOPTIONS, 1}}));
    QCOMPARE(log.texts(), QByteArrayList());
}

void TestTalvorinWatchdog::deviceErrorsAreLoggedWithTheReturnValue_data()
{
    QTest::addColumn<Action>("action");
    QTest::addColumn<int>("result");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("enable") << Action(&TalvorinWatchdog::enable) << -1
                            << QByteArray("Watchdog enable error -1\n");
    QTest::newRow("disable") << Action(&TalvorinWatchdog::disable) << -1
                             << QByteArray("Watchdog disable error -1\n");
    QTest::newRow("kick") << Action(&TalvorinWatchdog::kick) << -1
                          << QByteArray("Watchdog kick error -1\n");
    QTest::newRow("another value")
        << Action(&TalvorinWatchdog::kick) << -22 << QByteArray("Watchdog kick error -22\n");
    QTest::newRow("set timeout") << Action([](TalvorinWatchdog &watchdog) {
        watchdog.setTimeout(240);
    }) << -1 << QByteArray("Watchdog set timeout error -1\n");
}

void TestTalvorinWatchdog::deviceErrorsAreLoggedWithTheReturnValue()
{
    QFETCH(Action, action);
    QFETCH(int, result);
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    scriptIoctl(result);
    const LogCapture log;
    action(watchdog);
    QCOMPARE(log.entries().size(), std::size_t(1));
    QCOMPARE(log.entries()[0].priority, logPriority);
    QTEST(log.entries()[0].text, "message");
}

void TestTalvorinWatchdog::theLongerTimeoutIsApplied_data()
{
    QTest::addColumn<quint32>("timeout");
    QTest::addColumn<quint32>("extended");
    QTest::addColumn<int>("applied");
    QTest::newRow("extended is longer") << 240u << 300u << 300;
    QTest::newRow("extended is shorter") << 240u << 100u << 240;
    QTest::newRow("the same") << 240u << 240u << 240;
    QTest::newRow("compared unsigned") << 240u << 0x80000000u << int(0x80000000u);
}

void TestTalvorinWatchdog::theLongerTimeoutIsApplied()
{
    QFETCH(quint32, timeout);
    QFETCH(quint32, extended);
    QFETCH(int, applied);
    kernel().provideDevice(devicePath);
    const LogCapture log;
    TalvorinWatchdog watchdog;
    watchdog.setTimeout(timeout);
    watchdog.setExtendedTimeout(extended);
    QCOMPARE(requestsTo(openedDescriptor()), (Requests{{WDIOC_SETTIMEOUT, int(timeout)},
                                                       {WDIOC_SETPRETIMEOUT, 1},
                                                       {WDIOC_SETTIMEOUT, applied},
                                                       {WDIOC_SETPRETIMEOUT, 1}}));
    QCOMPARE(log.texts(), QByteArrayList());
}

void TestTalvorinWatchdog::clearingTheExtendedTimeoutGoesBackToTheTimeout()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    watchdog.setTimeout(240);
    watchdog.setExtendedTimeout(300);
    watchdog.clearExtendedTimeout();
    const Requests requests = requestsTo(openedDescriptor());
    QCOMPARE(requests.size(), std::size_t(6));
    QCOMPARE(requests[4], (Request{WDIOC_SETTIMEOUT, 240}));
    QCOMPARE(requests[5], (Request{WDIOC_SETPRETIMEOUT, 1}));
}

void TestTalvorinWatchdog::aTimeoutOfZeroAppliesNothing()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    watchdog.setExtendedTimeout(300);
    watchdog.setTimeout(0);
    QCOMPARE(requestsTo(openedDescriptor()), Requests());
    watchdog.setTimeout(240);
    QCOMPARE(requestsTo(openedDescriptor()),
             (Requests{{WDIOC_SETTIMEOUT, 300}, {WDIOC_SETPRETIMEOUT, 1}}));
}

void TestTalvorinWatchdog::theAcceptedTimesDoNotBecomeTheTimeouts()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    scriptIoctl(0, 60);
    scriptIoctl(0, 0);
    watchdog.setTimeout(240);
    watchdog.clearExtendedTimeout();
    QCOMPARE(requestsTo(openedDescriptor()), (Requests{{WDIOC_SETTIMEOUT, 240},
                                                       {WDIOC_SETPRETIMEOUT, 1},
                                                       {WDIOC_SETTIMEOUT, 240},
                                                       {WDIOC_SETPRETIMEOUT, 1}}));
}

void TestTalvorinWatchdog::bothTimeoutErrorsAreLogged()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    scriptIoctl(-1);
    scriptIoctl(-1);
    const LogCapture log;
    watchdog.setTimeout(240);
    QCOMPARE(log.texts(), (QByteArrayList{"Watchdog set timeout error -1\n",
                                          "Watchdog set pre timeout error -1\n"}));
}

void TestTalvorinWatchdog::theServiceDrivesTheDevice()
{
    kernel().provideDevice(devicePath);
    TalvorinWatchdog watchdog;
    watchdog.setTimeout(240);
    Tessel::pushWatchdogTimeout(300);
    Tessel::popWatchdogTimeout();
    Tessel::setWatchdogClient(0, true);
    Tessel::watchdogClientAlive(0);
    QCOMPARE(requestsTo(openedDescriptor()), (Requests{{WDIOC_SETTIMEOUT, 240},
                                                       {WDIOC_SETPRETIMEOUT, 1},
                                                       {WDIOC_SETTIMEOUT, 300},
                                                       {WDIOC_SETPRETIMEOUT, 1},
                                                       {WDIOC_SETTIMEOUT, 240},
                                                       {WDIOC_SETPRETIMEOUT, 1},
                                                       {WDIOC_KEEPALIVE, 0}}));
}

void TestTalvorinWatchdog::aSecondDriverReplacesTheHooksOfTheFirst()
{
    kernel().provideDevice(devicePath);
    kernel().provideDevice(devicePath);
    const TalvorinWatchdog first;
    const TalvorinWatchdog second;
    Tessel::setWatchdogClient(0, true);
    Tessel::watchdogClientAlive(0);
    const int descriptor = kernel().calls(KernelFunction::Open).at(1).descriptor;
    QCOMPARE(requestsTo(descriptor), (Requests{{WDIOC_KEEPALIVE, 0}}));
}

void TestTalvorinWatchdog::theDestructorEmptiesTheHooksAndClosesTheDevice()
{
    kernel().provideDevice(devicePath);
    const LogCapture log;
    auto watchdog = std::make_unique<TalvorinWatchdog>();
    Tessel::setWatchdogClient(0, true);
    watchdog.reset();
    QCOMPARE(fcntl(openedDescriptor(), F_GETFD), -1);
    Tessel::watchdogClientAlive(0);
    Tessel::pushWatchdogTimeout(0);
    Tessel::popWatchdogTimeout();
    // Not even the card is disabled.
    QCOMPARE(requestsTo(openedDescriptor()), Requests());
    QCOMPARE(log.texts(), QByteArrayList());
}

void TestTalvorinWatchdog::anUnopenedWatchdogLeavesTheHooksOfAnother()
{
    kernel().provideDevice(devicePath);
    const TalvorinWatchdog open;
    {
        const TalvorinWatchdog unopened;
        QVERIFY(!unopened.isOpen());
    }
    Tessel::setWatchdogClient(0, true);
    Tessel::watchdogClientAlive(0);
    QCOMPARE(requestsTo(openedDescriptor()), (Requests{{WDIOC_KEEPALIVE, 0}}));
}

void TestTalvorinWatchdog::aFailedCloseIsLogged()
{
    kernel().provideDevice(devicePath);
    auto watchdog = std::make_unique<TalvorinWatchdog>();
    const LogCapture log;
    close(openedDescriptor());
    watchdog.reset();
    QCOMPARE(log.entries().size(), std::size_t(1));
    QCOMPARE(log.entries()[0].priority, logPriority);
    QCOMPARE(log.entries()[0].text, QByteArray("Watchdog failed to close, Bad file descriptor\n"));
}

QTEST_APPLESS_MAIN(TestTalvorinWatchdog)
#include "tst_talvorin_watchdog.moc"
