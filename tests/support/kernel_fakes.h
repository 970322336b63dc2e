#pragma once

#include <QByteArray>

#include <deque>
#include <functional>
#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace TestSupport {

/*
 * The kernel as a unit test sees it. A program that links the object library
 * test_kernel_fakes calls these definitions wherever it, or a library it loads,
 * says mount, umount, reboot, ioctl or open: it does not hold the real mount,
 * umount and reboot at all.
 *
 *   mount, umount, reboot   always recorded, never forwarded
 *   ioctl                   watchdog requests (type 'W') recorded on whatever
 *                           descriptor, never forwarded; others forwarded
 *   open                    recorded for scripted paths and every path that
 *                           begins with "/dev/watchdog"; others forwarded
 *
 * Any thread may call the fakes. Call reset() before each test.
 */

enum class KernelFunction
{
    Mount,
    Unmount,
    Reboot,
    Ioctl,
    Open
};

/** One recorded call. Members the function does not have keep their defaults. */
struct KernelCall
{
    KernelFunction function = KernelFunction::Mount;
    /** The path of open() and umount(), the directory of mount(). */
    QByteArray path;
    /** The device and the file system of mount(). */
    QByteArray source;
    QByteArray fileSystem;
    /** The options of mount(), which are text here; nothing when null. */
    std::optional<QByteArray> options;
    /** Flags of mount() and open(), command of reboot(), request of ioctl(). */
    unsigned long code = 0;
    /** What ioctl() was called on; of a successful open(), what it returned. */
    int descriptor = -1;
    /**
     * The int argument of ioctl(), read through the pointer where the request
     * takes one. Nothing when the pointer was null.
     */
    std::optional<int> value;
};

/** What a faked call answers. */
struct KernelOutcome
{
    int result = 0;
    /** errno afterwards, when not 0. */
    int error = 0;
    /** Written back through the pointer of an ioctl(). */
    std::optional<int> accepted;
};

class KernelFakes
{
public:
    using Observer = std::function<void(const KernelCall &)>;

    static KernelFakes &instance();

    /** Forgets calls, scripts and observers. */
    void reset();

    /**
     * Queues the outcome of one later call of any function but open(). Calls
     * without a queued outcome return 0.
     */
    void script(KernelFunction function, const KernelOutcome &outcome);

    /**
     * Queues the outcome of one later open() of `path`. From now until reset()
     * the path is never opened for real: unscripted opens fail with ENOENT.
     */
    void scriptOpen(const QByteArray &path, const KernelOutcome &outcome);

    /** Queues a successful open() of `path` that yields a new descriptor of /dev/null. */
    void provideDevice(const QByteArray &path);

    /**
     * Runs `observer` inside every later call of `function`, once it is recorded
     * and before it answers, so that a test can look at the world at that moment.
     */
    void observe(KernelFunction function, Observer observer);

    /** Everything recorded since reset(), in order; or what one function did. */
    std::vector<KernelCall> calls() const;
    std::vector<KernelCall> calls(KernelFunction function) const;

    /** For the faked functions themselves: records `call`, answers as scripted. */
    int answer(KernelCall call, int *argument = nullptr);
    /** For the faked functions themselves: whether open() of `path` stays in here. */
    bool owns(const QByteArray &path) const;

private:
    struct Plan
    {
        KernelOutcome outcome;
        bool opensDevice = false;
    };
    using Plans = std::deque<Plan>;

    Plan takePlan(const KernelCall &call);

    mutable std::mutex mutex;
    std::vector<KernelCall> recorded;
    std::map<KernelFunction, Plans> plans;
    std::map<QByteArray, Plans> openPlans;
    std::map<KernelFunction, Observer> observers;
};

} // namespace TestSupport
