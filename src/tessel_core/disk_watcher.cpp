#include "tessel_core/disk_watcher.h"

#include "tessel_core/error_report.h"
#include "tessel_core/thread.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cstring>

#include <sys/select.h>
#include <unistd.h>

namespace Tessel {

namespace {

// Ten events with names as short as a disk's: how many nodes make up a batch decides
// which disks are announced at once, so this is not a mere tuning value.
constexpr std::size_t batchBytes = 320;

// Without a stop pipe the loop looks at its flag this often.
constexpr std::chrono::milliseconds flagPeriod(1000);

// A call that fails for good must not take the processor from the screens.
constexpr quint32 failurePauseMilliseconds = 200;

// Not after a signal: it says nothing about the next call.
void pauseUnlessInterrupted(int error)
{
    if (error != EINTR)
        sleepMilliseconds(failurePauseMilliseconds);
}

timeval toTimeval(std::chrono::microseconds time)
{
    constexpr std::chrono::microseconds second = std::chrono::seconds(1);
    timeval value = {};
    value.tv_sec = static_cast<time_t>(time / second);
    value.tv_usec = static_cast<suseconds_t>((time % second).count());
    return value;
}

} // namespace

void DiskWatcher::run(const std::atomic<bool> &running)
{
    while (running) {
        const Wake wake = wait();
        if (wake == Wake::Events)
            readEvents();
        else if (wake == Wake::NoEvents && events.isDiskPending())
            announce(events.takePendingDisk());
    }
}

DiskWatcher::Wake DiskWatcher::wait() const
{
    fd_set readable;
    FD_ZERO(&readable);
    for (const int descriptor : {descriptors.inotify, descriptors.stop}) {
        if (descriptor != 0)
            FD_SET(descriptor, &readable);
    }
    const std::optional<Clock::duration> time = waitingTime();
    timeval timeout = {};
    if (time)
        timeout = toTimeval(std::chrono::ceil<std::chrono::microseconds>(*time));
    if (select(std::max(descriptors.inotify, descriptors.stop) + 1, &readable, nullptr, nullptr,
               time ? &timeout : nullptr) < 0) {
        const int error = errno;
        // The misspelling is what the service department searches its logs for.
        printError("Error wating on inotify: %s\n", std::strerror(error));
        pauseUnlessInterrupted(error);
        return Wake::Failed;
    }
    const bool hasEvents = descriptors.inotify != 0 && FD_ISSET(descriptors.inotify, &readable);
    return hasEvents ? Wake::Events : Wake::NoEvents;
}

// Counted to a point in time, so that signals and failed calls do not start the
// second of quiet anew. Empty: for ever.
std::optional<DiskWatcher::Clock::duration> DiskWatcher::waitingTime() const
{
    if (events.isDiskPending())
        return std::max(quietEnd - Clock::now(), Clock::duration::zero());
    if (descriptors.stop == 0)
        return flagPeriod;
    return std::nullopt;
}

void DiskWatcher::readEvents()
{
    std::array<char, batchBytes> buffer;
    const ssize_t size = read(descriptors.inotify, buffer.data(), buffer.size());
    if (size < 0) {
        const int error = errno;
        printError("Error reading inotify: %s\n", std::strerror(error));
        pauseUnlessInterrupted(error);
        return;
    }
    const std::vector<DiskChange> changes =
        events.takeBatch(buffer.data(), static_cast<std::size_t>(size));
    // From the read on: how long listeners take must not shorten or stretch the wait.
    quietEnd = Clock::now() + std::chrono::milliseconds(DiskEvents::quietMilliseconds);
    for (const DiskChange &change : changes)
        announce(change);
}

} // namespace Tessel
