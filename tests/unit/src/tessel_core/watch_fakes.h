#pragma once

#include <QByteArray>

#include <atomic>
#include <chrono>
#include <cstddef>
#include <deque>
#include <functional>
#include <mutex>
#include <optional>
#include <vector>

/*
 * What a program that links watch_fakes.cpp makes of inotify_init, inotify_add_watch,
 * pipe, select and, on the inotify descriptor only, read: each is recorded and then
 * forwarded to the C library, unless an error is scripted for it. Any thread may call
 * them; the scripts and records are read and written under the members' own lock.
 */
class WatchFakes
{
public:
    enum class Function
    {
        InotifyInit,
        InotifyAddWatch,
        Pipe,
        Select,
        Read
    };

    using Microseconds = std::chrono::microseconds;

    /** One recorded call. Members the function does not have keep their defaults. */
    struct Call
    {
        Function function = Function::InotifyInit;
        /** The descriptor of inotify_add_watch() and read(). */
        int descriptor = -1;
        QByteArray path;
        quint32 mask = 0;
        /** The bytes read() was to read at most. */
        std::size_t size = 0;
        /** How long select() was to wait; empty for ever. */
        std::optional<Microseconds> timeout;
    };

    static WatchFakes &instance();
    void reset();

    /** The next call fails with `error`, `delay` after it was made. */
    void failNext(Function function, int error, Microseconds delay = Microseconds::zero());
    /** Every call fails with `error`, for good; 0 ends it. */
    void failAlways(Function function, int error);
    /** What the next inotify_init() returns, in place of a descriptor of its own. */
    void returnFromInit(int descriptor);

    /** Runs inside each pipe(), which follows the watch and precedes the thread. */
    std::atomic<void (*)()> insidePipe = nullptr;

    std::vector<Call> calls(Function function) const;
    int count(Function function) const { return static_cast<int>(calls(function).size()); }

    /** For the faked functions themselves: the error to fail with, or 0. */
    int record(const Call &call);
    /** For the faked inotify_init(): the descriptor to return, if one was scripted. */
    std::optional<int> takeInitDescriptor();
    /** For the faked read(): what inotify_init() returned last. */
    std::atomic<int> inotify = -1;

private:
    struct Failure
    {
        Function function;
        int error;
        Microseconds delay;
    };

    mutable std::mutex mutex;
    std::vector<Call> recorded;
    std::deque<Failure> failures;
    std::vector<Failure> lastingFailures;
    std::optional<int> initDescriptor;
};
