#include "tessel_core/thread.h"

#include "tessel_core/error_report.h"

#include <cerrno>
#include <ctime>
#include <exception>
#include <optional>

#include <sched.h>

namespace Tessel {

namespace {

constexpr qint64 highestPriority = 6;

// One pair for every Thread. Being static, it outlives each of them: a worker
// still broadcasts after its owner has seen the flag and destroyed the object.
pthread_mutex_t finishedMutex = PTHREAD_MUTEX_INITIALIZER;
pthread_cond_t finishedCondition = PTHREAD_COND_INITIALIZER;

// Workers broadcast without the mutex, so a waiter between its look at the flag
// and its sleep can miss the call. It looks again after this long.
constexpr long recheckNanoseconds = 50'000'000;

struct PriorityRange
{
    int minimum;
    int maximum;
};

std::optional<PriorityRange> priorityRange(int policy)
{
    const PriorityRange range = {sched_get_priority_min(policy), sched_get_priority_max(policy)};
    if (range.minimum != -1 && range.maximum != -1)
        return range;
    printError("Unable to set thread priority: couldn't get range\n");
    return std::nullopt;
}

void requestPriority(pthread_attr_t *attributes, quint32 priority)
{
    int policy = 0;
    if (pthread_attr_getschedpolicy(attributes, &policy) != 0) {
        printError("Unable to set thread priority: couldn't get policy\n");
        return;
    }
    const std::optional<PriorityRange> range = priorityRange(policy);
    if (!range)
        return;

    sched_param parameter = {};
    parameter.sched_priority = schedulingPriority(range->minimum, range->maximum, priority);
    if (pthread_attr_setinheritsched(attributes, PTHREAD_EXPLICIT_SCHED) != 0 ||
        pthread_attr_setschedpolicy(attributes, policy) != 0 ||
        pthread_attr_setschedparam(attributes, &parameter) != 0) {
        pthread_attr_setinheritsched(attributes, PTHREAD_INHERIT_SCHED);
        printError("Unable to set thread priority\n");
    }
}

// The steady clock: setting the appliance's time must not stretch a wait.
timespec recheckTime()
{
    timespec time = {};
    clock_gettime(CLOCK_MONOTONIC, &time);
    time.tv_nsec += recheckNanoseconds;
    if (time.tv_nsec >= 1'000'000'000) {
        time.tv_nsec -= 1'000'000'000;
        ++time.tv_sec;
    }
    return time;
}

} // namespace

Thread::~Thread()
{
    wait();
}

void Thread::start(Entry newEntry, void *newArgument, const char *newName, quint32 priority,
                   std::size_t /*stackSizeHint*/)
{
    if (newName == nullptr)
        reportFatal("Assert: 'name != nullptr' is FALSE", __LINE__, "src/tessel_core/thread");

    finished = false;
    entry = newEntry;
    argument = newArgument;
    name = newName;

    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    pthread_attr_setdetachstate(&attributes, PTHREAD_CREATE_DETACHED);
    requestPriority(&attributes, priority);
    const int error = create(&attributes);
    pthread_attr_destroy(&attributes);
    if (error != 0) {
        printError("Unable to create thread, error code %d\n", error);
        finished = true;
    }
    // 32 bits on purpose: the controllers' own handles are that wide.
    nativeId = static_cast<quint32>(handle);
}

int Thread::create(pthread_attr_t *attributes)
{
    const int error = pthread_create(&handle, attributes, &Thread::run, this);
    if (error != EPERM)
        return error;
    pthread_attr_setinheritsched(attributes, PTHREAD_INHERIT_SCHED);
    return pthread_create(&handle, attributes, &Thread::run, this);
}

void *Thread::run(void *object)
{
    auto *thread = static_cast<Thread *>(object);
    try {
        thread->entry(thread->argument);
    } catch (...) {
        // pthread_exit() in the entry unwinds as something that is no C++
        // exception, and glibc aborts the process if that is not passed on.
        if (std::current_exception() == nullptr) {
            thread->finish();
            throw;
        }
        printError("Thread %s exited due to uncaught exception\n", thread->name.c_str());
    }
    thread->finish();
    return nullptr;
}

// Flag first, then the call, and the call without the mutex: the background
// services rely on a worker that never blocks on its way out. The flag hands the
// object back to its owner, who may destroy it at once: nothing after it touches
// the object.
void Thread::finish()
{
    finished = true;
    pthread_cond_broadcast(&finishedCondition);
}

void Thread::wait()
{
    pthread_mutex_lock(&finishedMutex);
    while (!finished) {
        const timespec time = recheckTime();
        pthread_cond_clockwait(&finishedCondition, &finishedMutex, CLOCK_MONOTONIC, &time);
    }
    pthread_mutex_unlock(&finishedMutex);
    std::string().swap(name);
}

bool setThreadPriority(const Thread &thread, quint32 priority)
{
    const auto handle = static_cast<pthread_t>(thread.nativeId);
    int policy = 0;
    sched_param parameter = {};
    if (pthread_getschedparam(handle, &policy, &parameter) != 0) {
        printError("Unable to set thread priority: couldn't get policy\n");
        return false;
    }
    const std::optional<PriorityRange> range = priorityRange(policy);
    if (!range)
        return false;

    parameter.sched_priority = schedulingPriority(range->minimum, range->maximum, priority);
    if (pthread_setschedparam(handle, policy, &parameter) == 0)
        return true;
    // "process" for a thread: the wording the service department knows, kept.
    printError("Failed to change process priority\n");
    return false;
}

int schedulingPriority(int minimum, int maximum, quint32 priority)
{
    const qint64 span = static_cast<qint64>(maximum) - minimum;
    return static_cast<int>(minimum + span * static_cast<qint64>(priority) / highestPriority);
}

qint32 currentThreadId()
{
    return static_cast<qint32>(pthread_self());
}

void sleepMilliseconds(quint32 milliseconds)
{
    timespec time = {};
    time.tv_sec = static_cast<time_t>(milliseconds / 1000);
    time.tv_nsec = static_cast<long>(milliseconds % 1000) * 1'000'000;
    nanosleep(&time, nullptr);
}

void yieldThread()
{
    sched_yield();
}

} // namespace Tessel
