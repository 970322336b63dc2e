#include "watch_fakes.h"

#include <algorithm>
#include <cerrno>
#include <thread>
#include <utility>

#include <dlfcn.h>
#include <sys/inotify.h>
#include <sys/select.h>
#include <unistd.h>

namespace {

WatchFakes &fakes()
{
    return WatchFakes::instance();
}

template <typename Function>
Function next(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

std::optional<WatchFakes::Microseconds> asTime(const timeval *time)
{
    if (time == nullptr)
        return std::nullopt;
    return std::chrono::seconds(time->tv_sec) + WatchFakes::Microseconds(time->tv_usec);
}

bool fails(const WatchFakes::Call &call)
{
    const int error = fakes().record(call);
    errno = error;
    return error != 0;
}

} // namespace

WatchFakes &WatchFakes::instance()
{
    static auto *const instance = new WatchFakes;
    return *instance;
}

void WatchFakes::reset()
{
    const std::lock_guard lock(mutex);
    recorded.clear();
    failures.clear();
    lastingFailures.clear();
    initDescriptor.reset();
    insidePipe = nullptr;
}

void WatchFakes::failNext(Function function, int error, Microseconds delay)
{
    const std::lock_guard lock(mutex);
    failures.push_back({function, error, delay});
}

void WatchFakes::failAlways(Function function, int error)
{
    const std::lock_guard lock(mutex);
    lastingFailures.clear();
    if (error != 0)
        lastingFailures.push_back({function, error, Microseconds::zero()});
}

void WatchFakes::returnFromInit(int descriptor)
{
    const std::lock_guard lock(mutex);
    initDescriptor = descriptor;
}

std::vector<WatchFakes::Call> WatchFakes::calls(Function function) const
{
    const std::lock_guard lock(mutex);
    std::vector<Call> matching;
    std::copy_if(recorded.cbegin(), recorded.cend(), std::back_inserter(matching),
                 [function](const Call &call) { return call.function == function; });
    return matching;
}

int WatchFakes::record(const Call &call)
{
    std::unique_lock lock(mutex);
    recorded.push_back(call);
    const auto matches = [&call](const Failure &failure) {
        return failure.function == call.function;
    };
    const auto once = std::find_if(failures.begin(), failures.end(), matches);
    if (once != failures.end()) {
        const Failure failure = *once;
        failures.erase(once);
        lock.unlock();
        std::this_thread::sleep_for(failure.delay);
        return failure.error;
    }
    const auto lasting = std::find_if(lastingFailures.cbegin(), lastingFailures.cend(), matches);
    return lasting != lastingFailures.cend() ? lasting->error : 0;
}

std::optional<int> WatchFakes::takeInitDescriptor()
{
    const std::lock_guard lock(mutex);
    return std::exchange(initDescriptor, std::nullopt);
}

extern "C" {

int inotify_init() noexcept
{
    WatchFakes::Call call;
    call.function = WatchFakes::Function::InotifyInit;
    if (fails(call))
        return -1;
    const std::optional<int> scripted = fakes().takeInitDescriptor();
    const int descriptor = scripted ? *scripted : next<int (*)()>("inotify_init")();
    fakes().inotify = descriptor;
    return descriptor;
}

int inotify_add_watch(int descriptor, const char *path, uint32_t mask) noexcept
{
    WatchFakes::Call call;
    call.function = WatchFakes::Function::InotifyAddWatch;
    call.descriptor = descriptor;
    call.path = path;
    call.mask = mask;
    if (fails(call))
        return -1;
    using Function = int (*)(int, const char *, uint32_t);
    return next<Function>("inotify_add_watch")(descriptor, path, mask);
}

int pipe(int *ends) noexcept
{
    WatchFakes::Call call;
    call.function = WatchFakes::Function::Pipe;
    if (void (*const hook)() = fakes().insidePipe; hook != nullptr)
        hook();
    return fails(call) ? -1 : next<int (*)(int *)>("pipe")(ends);
}

int select(int count, fd_set *readable, fd_set *writable, fd_set *exceptional, timeval *timeout)
{
    WatchFakes::Call call;
    call.function = WatchFakes::Function::Select;
    call.timeout = asTime(timeout);
    if (fails(call))
        return -1;
    using Function = int (*)(int, fd_set *, fd_set *, fd_set *, timeval *);
    return next<Function>("select")(count, readable, writable, exceptional, timeout);
}

ssize_t read(int descriptor, void *buffer, std::size_t size)
{
    using Function = ssize_t (*)(int, void *, std::size_t);
    static const auto function = next<Function>("read");
    if (descriptor != fakes().inotify)
        return function(descriptor, buffer, size);
    WatchFakes::Call call;
    call.function = WatchFakes::Function::Read;
    call.descriptor = descriptor;
    call.size = size;
    return fails(call) ? -1 : function(descriptor, buffer, size);
}
}
