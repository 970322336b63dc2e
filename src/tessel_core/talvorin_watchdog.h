#pragma once

#include <QtGlobal>

#include <functional>

namespace Tessel {

/**
 * The appliance's hardware watchdog, through the kernel's watchdog device.
 *
 * Opening the device starts the watchdog: from then on somebody must kick it,
 * and closing it again does not stop it. While open, the object is the driver of
 * the watchdog service (watchdog.h): it installs its hooks there when it opens
 * the device and empties them when it is destroyed. A second object replaces the
 * hooks of the first, so one object at a time is the rule.
 *
 * One that could not open its device ignores every call. Device errors are
 * logged with priority 130 and otherwise ignored. Requests and option values are
 * those of <linux/watchdog.h>, times are seconds. Main thread; kick() on the
 * thread that reports to the service.
 */
class TalvorinWatchdog
{
public:
    explicit TalvorinWatchdog(const char *devicePath = "/dev/watchdog");
    /** Closes the device, which leaves the hardware counting. */
    ~TalvorinWatchdog();

    TalvorinWatchdog(const TalvorinWatchdog &) = delete;
    TalvorinWatchdog &operator=(const TalvorinWatchdog &) = delete;

    bool isOpen() const { return device != 0; }

    void enable();
    void disable();

    /** Gives the appliance another timeout's worth of time, then runs the callback. */
    void kick();

    /** Sets the time between kicks after which the board resets; 0: leave it alone. */
    void setTimeout(quint32 seconds);

    /** Asks for a longer time than the timeout for a while; a shorter one has no effect. */
    void setExtendedTimeout(quint32 seconds);
    void clearExtendedTimeout();

    /** `callback` runs after every kick, also a failed one; empty for none. */
    void setKickedCallback(std::function<void()> callback);

private:
    void installHooks();
    int setOption(int option);
    void apply();

    quint32 timeout = 0;
    quint32 extendedTimeout = 0;
    // 0 means not open; the constructor keeps clear of descriptor 0.
    qint32 device = 0;
    std::function<void()> kickedCallback;
};

} // namespace Tessel
