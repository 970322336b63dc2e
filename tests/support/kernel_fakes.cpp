// The fortified headers define open() themselves.
#undef _FORTIFY_SOURCE

#include "support/kernel_fakes.h"

#include <cerrno>
#include <cstdarg>
#include <cstdint>
#include <utility>

#include <dlfcn.h>
#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/reboot.h>

namespace TestSupport {

namespace {

using OpenFunction = int (*)(const char *, int, ...);
using IoctlFunction = int (*)(int, unsigned long, ...) noexcept;

template <typename Function>
Function realFunction(const char *name)
{
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

int realOpen(const char *path, int flags, mode_t mode)
{
    static const auto function = realFunction<OpenFunction>("open");
    return function(path, flags, mode);
}

int realIoctl(int descriptor, unsigned long request, void *argument)
{
    static const auto function = realFunction<IoctlFunction>("ioctl");
    return function(descriptor, request, argument);
}

bool takesPointer(unsigned long request)
{
    return request == WDIOC_SETOPTIONS || request == WDIOC_SETTIMEOUT ||
           request == WDIOC_SETPRETIMEOUT;
}

int watchdogIoctl(int descriptor, unsigned long request, void *argument)
{
    KernelCall call;
    call.function = KernelFunction::Ioctl;
    call.code = request;
    call.descriptor = descriptor;
    int *const pointer = takesPointer(request) ? static_cast<int *>(argument) : nullptr;
    if (pointer != nullptr)
        call.value = *pointer;
    else if (!takesPointer(request))
        call.value = static_cast<int>(reinterpret_cast<std::intptr_t>(argument));
    return KernelFakes::instance().answer(std::move(call), pointer);
}

} // namespace

// Never destroyed: exit handlers of other libraries still open files.
KernelFakes &KernelFakes::instance()
{
    static auto *const fakes = new KernelFakes;
    return *fakes;
}

void KernelFakes::reset()
{
    const std::lock_guard lock(mutex);
    recorded.clear();
    plans.clear();
    openPlans.clear();
    observers.clear();
}

void KernelFakes::script(KernelFunction function, const KernelOutcome &outcome)
{
    const std::lock_guard lock(mutex);
    plans[function].push_back({outcome, false});
}

void KernelFakes::scriptOpen(const QByteArray &path, const KernelOutcome &outcome)
{
    const std::lock_guard lock(mutex);
    openPlans[path].push_back({outcome, false});
}

void KernelFakes::provideDevice(const QByteArray &path)
{
    const std::lock_guard lock(mutex);
    openPlans[path].push_back({{}, true});
}

void KernelFakes::observe(KernelFunction function, Observer observer)
{
    const std::lock_guard lock(mutex);
    observers[function] = std::move(observer);
}

std::vector<KernelCall> KernelFakes::calls() const
{
    const std::lock_guard lock(mutex);
    return recorded;
}

std::vector<KernelCall> KernelFakes::calls(KernelFunction function) const
{
    const std::lock_guard lock(mutex);
    std::vector<KernelCall> matching;
    for (const KernelCall &call : recorded)
        if (call.function == function)
            matching.push_back(call);
    return matching;
}

bool KernelFakes::owns(const QByteArray &path) const
{
    const std::lock_guard lock(mutex);
    return path.startsWith("/dev/watchdog") || openPlans.count(path) > 0;
}

KernelFakes::Plan KernelFakes::takePlan(const KernelCall &call)
{
    const bool opening = call.function == KernelFunction::Open;
    Plans &queue = opening ? openPlans[call.path] : plans[call.function];
    if (queue.empty())
        return opening ? Plan{{-1, ENOENT, {}}, false} : Plan{};
    const Plan plan = queue.front();
    queue.pop_front();
    return plan;
}

int KernelFakes::answer(KernelCall call, int *argument)
{
    std::unique_lock lock(mutex);
    const Plan plan = takePlan(call);
    KernelOutcome outcome = plan.outcome;
    if (plan.opensDevice)
        outcome.result = realOpen("/dev/null", O_RDWR, 0);
    if (call.function == KernelFunction::Open)
        call.descriptor = outcome.result;
    recorded.push_back(call);
    const auto found = observers.find(call.function);
    const Observer observer = found == observers.end() ? Observer() : found->second;
    lock.unlock();

    if (observer)
        observer(call);
    if (argument != nullptr && outcome.accepted)
        *argument = *outcome.accepted;
    if (outcome.error != 0)
        errno = outcome.error;
    return outcome.result;
}

} // namespace TestSupport

using TestSupport::KernelCall;
using TestSupport::KernelFakes;
using TestSupport::KernelFunction;

extern "C" {

int mount(const char *source, const char *target, const char *fileSystem, unsigned long flags,
          const void *data) noexcept
{
    KernelCall call;
    call.function = KernelFunction::Mount;
    call.path = target;
    call.source = source;
    call.fileSystem = fileSystem;
    call.code = flags;
    if (data != nullptr)
        call.options = static_cast<const char *>(data);
    return KernelFakes::instance().answer(std::move(call));
}

int umount(const char *target) noexcept
{
    KernelCall call;
    call.function = KernelFunction::Unmount;
    call.path = target;
    return KernelFakes::instance().answer(std::move(call));
}

int reboot(int command) noexcept
{
    KernelCall call;
    call.function = KernelFunction::Reboot;
    call.code = static_cast<unsigned int>(command);
    return KernelFakes::instance().answer(std::move(call));
}

int ioctl(int descriptor, unsigned long request, ...) noexcept
{
    va_list arguments;
    va_start(arguments, request);
    void *const argument = va_arg(arguments, void *);
    va_end(arguments);
    if (_IOC_TYPE(request) == WATCHDOG_IOCTL_BASE)
        return TestSupport::watchdogIoctl(descriptor, request, argument);
    return TestSupport::realIoctl(descriptor, request, argument);
}

int open(const char *path, int flags, ...)
{
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0 || (flags & O_TMPFILE) == O_TMPFILE) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    if (!KernelFakes::instance().owns(path))
        return TestSupport::realOpen(path, flags, mode);
    KernelCall call;
    call.function = KernelFunction::Open;
    call.path = path;
    call.code = static_cast<unsigned int>(flags);
    return KernelFakes::instance().answer(std::move(call));
}
}
