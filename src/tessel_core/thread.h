#pragma once

#include <QtGlobal>

#include <atomic>
#include <cstddef>
#include <string>

#include <pthread.h>

namespace Tessel {

/**
 * A detached worker thread of the library's background services.
 *
 * Idle when constructed, running after start(), finished when its entry has
 * returned or thrown or when it could not be created; it may then be started
 * again. Idle counts as finished. The object belongs to the thread that starts
 * it: start(), wait() and the destructor are called there, isRunning() anywhere.
 * Nothing here throws; failures are printed to standard error.
 */
class Thread
{
public:
    using Entry = void (*)(void *argument);

    Thread() = default;
    /** Waits for the worker: an entry that never returns keeps its owner here. */
    ~Thread();

    Thread(const Thread &) = delete;
    Thread &operator=(const Thread &) = delete;

    /**
     * Runs entry(argument) on a new thread. An earlier worker must have finished.
     *
     * `argument` must outlive the entry; `name` must not be null and is copied.
     * `priority` is 0 (lowest) to 6 (highest). A process that may not choose its
     * scheduling gets its thread at the priority of the caller. `stackSizeHint`,
     * in bytes, is accepted for the services that state one and not used. An
     * exception that leaves the entry ends the thread only, with a message.
     */
    void start(Entry entry, void *argument, const char *name, quint32 priority,
               std::size_t stackSizeHint);

    /** Blocks until the worker has finished. Never called by the worker itself. */
    void wait();

    bool isRunning() const { return !finished; }

private:
    static void *run(void *object);
    int create(pthread_attr_t *attributes);
    void finish();

    friend bool setThreadPriority(const Thread &thread, quint32 priority);

    // The low 32 bits of `handle`.
    quint32 nativeId = 0;
    Entry entry = nullptr;
    void *argument = nullptr;
    std::string name;
    pthread_t handle = {};
    std::atomic<bool> finished = true;
};

/**
 * Moves a running thread to `priority`, 0 to 6, within its present policy.
 *
 * False after a printed message when the system refuses. The thread is addressed
 * by the low 32 bits of its handle: where pthread_t is wider the call reaches a
 * thread that does not exist, so it is for 32-bit machines only.
 */
bool setThreadPriority(const Thread &thread, quint32 priority);

/**
 * Maps 0 to 6 linearly onto a policy's range from `minimum` to `maximum`, as
 * sched_get_priority_min(2) and sched_get_priority_max(2) give it, rounding
 * towards zero.
 */
int schedulingPriority(int minimum, int maximum, quint32 priority);

/** The low 32 bits of pthread_self(). */
qint32 currentThreadId();

/** Sleeps once: a signal handler that runs meanwhile ends it early. */
void sleepMilliseconds(quint32 milliseconds);

/** Lets other threads of the same priority run. */
void yieldThread();

} // namespace Tessel
