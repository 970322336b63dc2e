#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>

/**
 * Opens once and lets everybody through from then on. Made of the standard
 * library only, whose locks the thread sanitiser sees; those of Qt it does not.
 */
class Gate
{
public:
    void open()
    {
        const std::lock_guard lock(mutex);
        opened = true;
        condition.notify_all();
    }

    void pass()
    {
        std::unique_lock lock(mutex);
        condition.wait(lock, [this] { return opened; });
    }

    /** Whether it opens within the time. */
    bool opensWithin(std::chrono::milliseconds time)
    {
        std::unique_lock lock(mutex);
        return condition.wait_for(lock, time, [this] { return opened; });
    }

private:
    std::mutex mutex;
    std::condition_variable condition;
    bool opened = false;
};
