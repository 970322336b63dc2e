#include "tessel_core/watchdog.h"

#include <atomic>
#include <utility>

namespace Tessel {

namespace {

struct WatchdogService
{
    std::atomic<quint32> requiredClients = 0;
    std::atomic<quint32> aliveClients = 0;
    quint32 extendedTimeout = 0;
    qint32 extensionDepth = 0;
    WatchdogKick kick;
    WatchdogSetTimeout setExtended;
    WatchdogClearTimeout clearExtended;
};

WatchdogService &service()
{
    static WatchdogService instance;
    return instance;
}

constexpr quint32 clientBit(quint32 id)
{
    return quint32(1) << (id % 32);
}

} // namespace

void setWatchdogClient(quint32 id, bool required)
{
    const quint32 bit = clientBit(id);
    if (required) {
        service().requiredClients.fetch_or(bit);
        return;
    }
    // In this order: a stale alive bit of a client no longer required would keep
    // the two masks apart for ever.
    service().aliveClients.fetch_and(~bit);
    service().requiredClients.fetch_and(~bit);
}

void watchdogClientAlive(quint32 id)
{
    WatchdogService &watchdog = service();
    const quint32 bit = clientBit(id);
    if ((watchdog.requiredClients & bit) == 0)
        return;
    watchdog.aliveClients.fetch_or(bit);
    quint32 complete = watchdog.requiredClients;
    if (watchdog.aliveClients.compare_exchange_strong(complete, 0) && watchdog.kick)
        watchdog.kick();
}

void pushWatchdogTimeout(quint32 seconds)
{
    WatchdogService &watchdog = service();
    ++watchdog.extensionDepth;
    const bool first = watchdog.extensionDepth == 1;
    const bool raised = watchdog.extendedTimeout < seconds;
    if (raised)
        watchdog.extendedTimeout = seconds;
    if ((raised || first) && watchdog.setExtended)
        watchdog.setExtended(watchdog.extendedTimeout);
}

void popWatchdogTimeout()
{
    WatchdogService &watchdog = service();
    if (watchdog.extensionDepth == 0)
        return;
    --watchdog.extensionDepth;
    // Without a driver the time asked for stays: one that comes later, at the
    // next first push, still gets the longest time anybody has needed.
    if (watchdog.extensionDepth > 0 || !watchdog.clearExtended)
        return;
    watchdog.clearExtended();
    watchdog.extendedTimeout = 0;
}

void installWatchdogHooks(WatchdogKick kick, WatchdogSetTimeout setExtended,
                          WatchdogClearTimeout clearExtended)
{
    WatchdogService &watchdog = service();
    watchdog.kick = std::move(kick);
    watchdog.setExtended = std::move(setExtended);
    watchdog.clearExtended = std::move(clearExtended);
}

} // namespace Tessel
