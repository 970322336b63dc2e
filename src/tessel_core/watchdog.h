#pragma once

#include <QtGlobal>

#include <functional>

namespace Tessel {

/*
 * The process-wide watchdog service. It decides when the hardware watchdog is
 * kicked (once every required client has reported alive) and how much time the
 * appliance asks for at most. A driver plugs itself in through three hooks; with
 * no driver the service only keeps its books.
 *
 * setWatchdogClient() and watchdogClientAlive() may be called from any thread.
 * The rest is not locked and belongs to the main thread; hooks are installed
 * before other threads report, because a report may run the kick hook.
 */

/**
 * Says whether client `id` (its number modulo 32) must report before a kick.
 * A client stops reporting before it is taken off the list: a report under way
 * on another thread could otherwise leave its mark behind and stop the kicks.
 */
void setWatchdogClient(quint32 id, bool required);

/**
 * Reports client `id` alive, on the calling thread. The report that makes all
 * required clients complete kicks the watchdog and starts the next round. A
 * client that is not required is ignored.
 */
void watchdogClientAlive(quint32 id);

/** Asks for at least `seconds` until the matching popWatchdogTimeout(). Calls nest. */
void pushWatchdogTimeout(quint32 seconds);

/**
 * Takes one push back; without one it does nothing. The time asked for shrinks
 * only when the last push is gone.
 */
void popWatchdogTimeout();

using WatchdogKick = std::function<void()>;
using WatchdogSetTimeout = std::function<void(quint32 seconds)>;
using WatchdogClearTimeout = std::function<void()>;

/** Replaces all three hooks; empty ones take the driver out. Main thread. */
void installWatchdogHooks(WatchdogKick kick, WatchdogSetTimeout setExtended,
                          WatchdogClearTimeout clearExtended);

} // namespace Tessel
