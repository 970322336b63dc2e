#pragma once

#include <QtGlobal>

#include <atomic>

#include <pthread.h>

namespace Tessel {

/**
 * A mutex its owner may lock again: it takes as many unlocks as locks before
 * another thread can have it. Must outlive every lock on it and be free when it
 * is destroyed.
 *
 * Threads are told apart by currentThreadId(), 32 bits of pthread_self().
 */
class RecursiveMutex
{
public:
    RecursiveMutex();
    ~RecursiveMutex();

    RecursiveMutex(const RecursiveMutex &) = delete;
    RecursiveMutex &operator=(const RecursiveMutex &) = delete;

    /** Blocks while another thread owns the mutex. */
    void lock();

    /** Undoes one lock() of the calling thread; does nothing when it is not the owner. */
    void unlock();

private:
    static constexpr qint32 noOwner = -1;

    // Read without the lock to recognise a re-entry. Another thread's value, old
    // or new, is never the caller's own, so only the owner can find itself here.
    std::atomic<qint32> owner = noOwner;
    // Touched by the owner only.
    quint32 depth = 0;
    pthread_mutex_t mutex;
};

/** Holds a RecursiveMutex for the length of a scope. The mutex must outlive it. */
class [[nodiscard]] RecursiveMutexGuard
{
public:
    explicit RecursiveMutexGuard(RecursiveMutex &guarded)
        : mutex(guarded)
    {
        mutex.lock();
    }
    ~RecursiveMutexGuard() { mutex.unlock(); }

    RecursiveMutexGuard(const RecursiveMutexGuard &) = delete;
    RecursiveMutexGuard &operator=(const RecursiveMutexGuard &) = delete;

private:
    RecursiveMutex &mutex;
};

} // namespace Tessel
