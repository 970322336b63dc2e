#pragma once

#include "tessel_core/disk_events.h"

#include <atomic>
#include <chrono>
#include <optional>

#include <sys/time.h>

namespace Tessel {

/**
 * The loop of the watcher thread: waits on an inotify descriptor and a stop pipe,
 * and announces what DiskEvents makes of what it reads.
 *
 * The descriptors are the caller's. One that is 0 is not there and never touched: it
 * would be the process's standard input. Failures of the kernel are printed to
 * standard error; the loop goes on, but never without a pause.
 */
class DiskWatcher
{
public:
    using Announce = void (*)(const DiskChange &change);

    struct Descriptors
    {
        int inotify = 0;
        /** Readable once the loop shall look at its flag. */
        int stop = 0;
    };

    DiskWatcher(const Descriptors &watched, Announce announcer)
        : descriptors(watched)
        , announce(announcer)
    {}

    /** Returns after `running` has become false. Announces on the calling thread. */
    void run(const std::atomic<bool> &running);

private:
    using Clock = std::chrono::steady_clock;

    enum class Wake
    {
        Failed,
        Events,
        NoEvents
    };

    Wake wait() const;
    std::optional<Clock::duration> waitingTime() const;
    void readEvents();

    Descriptors descriptors;
    Announce announce;
    DiskEvents events;
    // When the pending disk has been held back long enough.
    Clock::time_point quietEnd;
};

} // namespace Tessel
