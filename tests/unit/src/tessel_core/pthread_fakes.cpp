#include "pthread_fakes.h"

#include <cerrno>

#include <dlfcn.h>

namespace {

PthreadFakes &fakes()
{
    return PthreadFakes::instance();
}

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int takeCreateResult()
{
    if (fakes().createResults.empty())
        return 0;
    const int result = fakes().createResults.front();
    fakes().createResults.pop_front();
    return result;
}

PthreadFakes::Creation describe(const pthread_attr_t *attributes)
{
    PthreadFakes::Creation creation;
    pthread_attr_getinheritsched(attributes, &creation.inherit);
    next<int (*)(const pthread_attr_t *, int *)>("pthread_attr_getschedpolicy")(attributes,
                                                                                &creation.policy);
    sched_param parameter = {};
    pthread_attr_getschedparam(attributes, &parameter);
    creation.priority = parameter.sched_priority;
    pthread_attr_getdetachstate(attributes, &creation.detachState);
    pthread_attr_getstacksize(attributes, &creation.stackSize);
    return creation;
}

} // namespace

PthreadFakes &PthreadFakes::instance()
{
    static auto *const instance = new PthreadFakes;
    return *instance;
}

void PthreadFakes::reset()
{
    recordCreations = false;
    creations.clear();
    createResults.clear();
    afterCreation = nullptr;
    attributePolicyResult = setPolicyResult = setParameterResult = setExplicitResult = 0;
    attributePolicy.reset();
    minimum.reset();
    maximum.reset();
    readParameterResult = changeParameterResult = 0;
    threadPolicy = SCHED_OTHER;
    readHandles.clear();
    changes.clear();
    recordSleeps = false;
    sleepResult = 0;
    sleeps.clear();
    yields = 0;
    beforeBroadcast = nullptr;
    loseBroadcasts = false;
}

extern "C" {

int pthread_create(pthread_t *handle, const pthread_attr_t *attributes, void *(*run)(void *),
                   void *argument) noexcept
{
    using Function = int (*)(pthread_t *, const pthread_attr_t *, void *(*)(void *), void *);
    static const auto function = next<Function>("pthread_create");
    if (!fakes().recordCreations)
        return function(handle, attributes, run, argument);
    fakes().creations.push_back(describe(attributes));
    const int scripted = takeCreateResult();
    if (scripted != 0)
        return scripted;
    const int result = function(handle, attributes, run, argument);
    if (void (*const hook)() = fakes().afterCreation; hook != nullptr && result == 0)
        hook();
    return result;
}

int pthread_attr_getschedpolicy(const pthread_attr_t *attributes, int *policy) noexcept
{
    if (fakes().attributePolicyResult != 0)
        return fakes().attributePolicyResult;
    if (fakes().attributePolicy) {
        *policy = *fakes().attributePolicy;
        return 0;
    }
    using Function = int (*)(const pthread_attr_t *, int *);
    return next<Function>("pthread_attr_getschedpolicy")(attributes, policy);
}

int pthread_attr_setinheritsched(pthread_attr_t *attributes, int inherit) noexcept
{
    if (inherit == PTHREAD_EXPLICIT_SCHED && fakes().setExplicitResult != 0)
        return fakes().setExplicitResult;
    using Function = int (*)(pthread_attr_t *, int);
    return next<Function>("pthread_attr_setinheritsched")(attributes, inherit);
}

int pthread_attr_setschedpolicy(pthread_attr_t *attributes, int policy) noexcept
{
    if (fakes().setPolicyResult != 0)
        return fakes().setPolicyResult;
    using Function = int (*)(pthread_attr_t *, int);
    return next<Function>("pthread_attr_setschedpolicy")(attributes, policy);
}

int pthread_attr_setschedparam(pthread_attr_t *attributes, const sched_param *parameter) noexcept
{
    if (fakes().setParameterResult != 0)
        return fakes().setParameterResult;
    using Function = int (*)(pthread_attr_t *, const sched_param *);
    return next<Function>("pthread_attr_setschedparam")(attributes, parameter);
}

int sched_get_priority_min(int policy) noexcept
{
    if (fakes().minimum)
        return *fakes().minimum;
    return next<int (*)(int)>("sched_get_priority_min")(policy);
}

int sched_get_priority_max(int policy) noexcept
{
    if (fakes().maximum)
        return *fakes().maximum;
    return next<int (*)(int)>("sched_get_priority_max")(policy);
}

int pthread_getschedparam(pthread_t handle, int *policy, sched_param *parameter) noexcept
{
    fakes().readHandles.push_back(handle);
    *policy = fakes().threadPolicy;
    parameter->sched_priority = 0;
    return fakes().readParameterResult;
}

int pthread_setschedparam(pthread_t handle, int policy, const sched_param *parameter) noexcept
{
    fakes().changes.push_back({handle, policy, parameter->sched_priority});
    return fakes().changeParameterResult;
}

int nanosleep(const timespec *time, timespec *remaining)
{
    if (!fakes().recordSleeps)
        return next<int (*)(const timespec *, timespec *)>("nanosleep")(time, remaining);
    fakes().sleeps.push_back(*time);
    if (fakes().sleepResult < 0)
        errno = EINTR;
    return fakes().sleepResult;
}

int sched_yield() noexcept
{
    ++fakes().yields;
    return next<int (*)()>("sched_yield")();
}

int pthread_cond_broadcast(pthread_cond_t *condition) noexcept
{
    static const auto function = next<int (*)(pthread_cond_t *)>("pthread_cond_broadcast");
    if (void (*const hook)() = fakes().beforeBroadcast)
        hook();
    return fakes().loseBroadcasts ? 0 : function(condition);
}
}
