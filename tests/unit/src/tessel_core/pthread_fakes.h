#pragma once

#include <atomic>
#include <cstddef>
#include <ctime>
#include <deque>
#include <optional>
#include <vector>

#include <pthread.h>
#include <sched.h>

/*
 * What a program that links pthread_fakes.cpp makes of the thread calls of the C
 * library. Each is forwarded to the real one, or to the sanitiser's, unless a
 * member below says otherwise; pthread_getschedparam and pthread_setschedparam
 * never are. The members belong to the test's main thread, which starts the
 * threads under test; the atomic ones are read by every thread.
 */
struct PthreadFakes
{
    /** What pthread_create was given. */
    struct Creation
    {
        int inherit = 0;
        int policy = 0;
        int priority = 0;
        int detachState = 0;
        std::size_t stackSize = 0;
    };
    /** What pthread_setschedparam was given. */
    struct Change
    {
        pthread_t handle = 0;
        int policy = 0;
        int priority = 0;
    };

    /** Off: pthread_create is neither recorded nor scripted. */
    bool recordCreations = false;
    std::vector<Creation> creations;
    /** Runs after each recorded thread was created, on the thread that created it. */
    std::atomic<void (*)()> afterCreation = nullptr;
    /** Results of the next calls of pthread_create; 0 creates the thread. */
    std::deque<int> createResults;

    /** Results of every call, 0 forwards. */
    int attributePolicyResult = 0;
    int setPolicyResult = 0;
    int setParameterResult = 0;
    /** For the request of explicit scheduling only. */
    int setExplicitResult = 0;
    /** The policy a new attribute is said to have. */
    std::optional<int> attributePolicy;

    /** Results of sched_get_priority_min and _max. */
    std::optional<int> minimum;
    std::optional<int> maximum;

    int readParameterResult = 0;
    int changeParameterResult = 0;
    int threadPolicy = SCHED_OTHER;
    std::vector<pthread_t> readHandles;
    std::vector<Change> changes;

    /** When set, nanosleep is recorded and answers `sleepResult` at once. */
    std::atomic<bool> recordSleeps = false;
    int sleepResult = 0;
    std::vector<timespec> sleeps;
    std::atomic<int> yields = 0;

    /** Runs before each broadcast, on the thread that broadcasts. */
    std::atomic<void (*)()> beforeBroadcast = nullptr;
    std::atomic<bool> loseBroadcasts = false;

    static PthreadFakes &instance();
    void reset();
};
