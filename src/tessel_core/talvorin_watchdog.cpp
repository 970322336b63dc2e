#include "tessel_core/talvorin_watchdog.h"

#include "tessel_core/descriptors.h"
#include "tessel_core/log.h"
#include "tessel_core/watchdog.h"

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <utility>

#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <unistd.h>

namespace Tessel {

namespace {

constexpr quint32 logPriority = 130;
constexpr int preTimeoutSeconds = 1;

void logFailure(const char *action, int result)
{
    if (result < 0)
        log(logPriority, "Watchdog %s error %d\n", action, result);
}

int openDevice(const char *path)
{
    return moveClearOfStandardStreams(open(path, O_RDWR));
}

} // namespace

TalvorinWatchdog::TalvorinWatchdog(const char *devicePath)
{
    const int descriptor = openDevice(devicePath);
    if (descriptor < 0) {
        log(logPriority, "Watchdog failed to open, %s\n", std::strerror(errno));
        return;
    }
    device = descriptor;
    fcntl(device, F_SETFD, FD_CLOEXEC);
    installHooks();
}

TalvorinWatchdog::~TalvorinWatchdog()
{
    if (!isOpen())
        return;
    installWatchdogHooks({}, {}, {});
    // The card stays enabled: a reboot that hangs must still be ended by the board.
    if (close(device) < 0)
        log(logPriority, "Watchdog failed to close, %s\n", std::strerror(errno));
    device = 0;
}

void TalvorinWatchdog::installHooks()
{
    installWatchdogHooks([this] { kick(); },
                         [this](quint32 seconds) { setExtendedTimeout(seconds); },
                         [this] { clearExtendedTimeout(); });
}

void TalvorinWatchdog::enable()
{
    logFailure("enable", setOption(WDIOS_ENABLECARD));
}

void TalvorinWatchdog::disable()
{
    logFailure("disable", setOption(WDIOS_DISABLECARD));
}

int TalvorinWatchdog::setOption(int option)
{
    return isOpen() ? ioctl(device, WDIOC_SETOPTIONS, &option) : 0;
}

void TalvorinWatchdog::kick()
{
    if (!isOpen())
        return;
    logFailure("kick", ioctl(device, WDIOC_KEEPALIVE, 0));
    if (kickedCallback)
        kickedCallback();
}

void TalvorinWatchdog::setTimeout(quint32 seconds)
{
    if (!isOpen())
        return;
    timeout = seconds;
    apply();
}

void TalvorinWatchdog::setExtendedTimeout(quint32 seconds)
{
    if (!isOpen())
        return;
    extendedTimeout = seconds;
    apply();
}

void TalvorinWatchdog::clearExtendedTimeout()
{
    setExtendedTimeout(0);
}

void TalvorinWatchdog::setKickedCallback(std::function<void()> callback)
{
    kickedCallback = std::move(callback);
}

void TalvorinWatchdog::apply()
{
    if (!isOpen() || timeout == 0)
        return;
    // The driver writes the time it accepted back through both pointers.
    int seconds = static_cast<int>(std::max(timeout, extendedTimeout));
    logFailure("set timeout", ioctl(device, WDIOC_SETTIMEOUT, &seconds));
    int preTimeout = preTimeoutSeconds;
    logFailure("set pre timeout", ioctl(device, WDIOC_SETPRETIMEOUT, &preTimeout));
}

} // namespace Tessel
