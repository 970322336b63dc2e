/*
 * Runs a program and lets one of its system calls fail, the k-th of its kind among those
 * that are about given files. The program is the one that ships, unchanged and unaware.
 *
 *     fault_injector --log FILE --road PREFIX... [--fault THREAD:CALL:K:WHAT] -- PROGRAM...
 *
 * WHAT is an errno number, "short" (the call gets only half of what it asks for: the real
 * call, with half the length) or "end" (a read that finds the end of the file). A "+" behind
 * it lets the same call fail for that file from then on, as on a medium that is full.
 *
 * The kernel's filter stops the program only at the calls of call_table.cpp, so that its
 * start is hardly slower. strace could inject failures too, but not by file, not by halves,
 * and it leaves a failing close undone, where Linux always gives the descriptor up.
 *
 * One line per call on the road in the log, written at once, for the machine may be
 * switched off at any moment: thread, call, k, file, result, and "injected" or nothing,
 * parted by tabs. The program's end is the last line: "end", its status, or "signal", its
 * number. A watchdog in /dev that is a plain file answers every request with success.
 */
#include "call_table.h"
#include "traced_thread.h"

#include <csignal>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <vector>

#include <fcntl.h>
#include <linux/audit.h>
#include <linux/filter.h>
#include <linux/seccomp.h>
#include <sys/prctl.h>
#include <sys/ptrace.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <unistd.h>

namespace {

constexpr int wrongUsage = 2;
constexpr int cannotRun = 125;
constexpr int notFound = 127;
constexpr char watchdog[] = "/dev/watchdog";

/** Calls whose end is perhaps never seen: they are told beforehand. */
bool mayNotReturn(long number)
{
    return number == SYS_reboot || number == SYS_select || number == SYS_pselect6;
}

[[noreturn]] void die(int status, const std::string &reason)
{
    std::fprintf(stderr, "fault_injector: %s\n", reason.c_str());
    std::exit(status);
}

struct Fault
{
    std::string thread;
    std::string call;
    int turn = 0;
    std::string what;
    bool isLasting = false;
};

struct Order
{
    int log = -1;
    std::vector<std::string> road;
    std::optional<Fault> fault;
    char **program = nullptr;
};

Fault readFault(const std::string &text)
{
    const std::size_t first = text.find(':');
    const std::size_t second = text.find(':', first + 1);
    const std::size_t third = text.find(':', second + 1);
    if (third == std::string::npos || third + 1 == text.size())
        die(wrongUsage, "no fault: " + text);
    Fault fault{text.substr(0, first), text.substr(first + 1, second - first - 1),
                int(std::strtol(text.c_str() + second + 1, nullptr, 10)), text.substr(third + 1)};
    if (!callOfName(fault.call.c_str()) || fault.turn < 1)
        die(wrongUsage, "no fault: " + text);
    fault.isLasting = fault.what.back() == '+';
    if (fault.isLasting)
        fault.what.pop_back();
    return fault;
}

Order readOrder(char **words)
{
    Order order;
    while (*++words) {
        const std::string word = *words;
        if (word == "--") {
            order.program = words + 1;
            break;
        }
        if (!*++words)
            break;
        if (word == "--log")
            order.log = open(*words, O_WRONLY | O_CREAT | O_TRUNC | O_APPEND | O_CLOEXEC, 0644);
        else if (word == "--road")
            order.road.emplace_back(*words);
        else if (word == "--fault")
            order.fault = readFault(*words);
        else
            die(wrongUsage, "unknown option " + word);
    }
    if (order.log < 0 || !order.program || !*order.program)
        die(wrongUsage, "a log and a program are needed");
    return order;
}

/** From here on the kernel stops this process before each call of the table. */
bool installFilter()
{
    std::vector<sock_filter> filter;
    const auto load = [](unsigned offset) {
        return sock_filter BPF_STMT(BPF_LD | BPF_W | BPF_ABS, offset);
    };
    filter.push_back(load(offsetof(seccomp_data, nr)));
    for (const CallKind &call : callTable()) {
        filter.push_back(BPF_JUMP(BPF_JMP | BPF_JEQ | BPF_K, unsigned(call.number), 0, 1));
        filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_TRACE));
    }
    filter.push_back(BPF_STMT(BPF_RET | BPF_K, SECCOMP_RET_ALLOW));
    const sock_fprog program{static_cast<unsigned short>(filter.size()), filter.data()};
    return prctl(PR_SET_NO_NEW_PRIVS, 1, 0, 0, 0) == 0 &&
           prctl(PR_SET_SECCOMP, SECCOMP_MODE_FILTER, &program) == 0;
}

pid_t start(char **program)
{
    const pid_t id = fork();
    if (id != 0)
        return id;
    ptrace(PTRACE_TRACEME, 0, nullptr, nullptr);
    raise(SIGSTOP);
    if (!installFilter())
        die(cannotRun, "no filter to be had");
    execvp(program[0], program);
    die(notFound, std::string(program[0]) + ": " + std::strerror(errno));
}

/** Follows a program to its end. */
class Injector
{
public:
    Injector(const Order &givenOrder, pid_t program)
        : order(givenOrder)
        , first(program)
    {}

    int follow();

private:
    /** A call on the road, from the stop before it to the stop behind it. */
    struct Call
    {
        const CallKind *kind;
        std::string thread;
        int turn;
        std::string file;
        bool injected;
        std::optional<long> forcedResult;
    };

    bool isOnRoad(const CallKind &kind, const std::string &file) const;
    bool isToFail(const Call &call);
    bool enter(pid_t id);
    void inject(TracedThread &thread, Call &call) const;
    void leave(pid_t id);
    void record(const Call &call, const std::string &result) const;
    void tell(const std::string &line) const;
    void resume(pid_t id, int status);
    std::optional<int> ended(pid_t id, int status) const;

    const Order &order;
    const pid_t first;
    std::set<pid_t> known;
    std::map<std::string, int> turns;
    std::string failing; // the file of a lasting fault
    std::map<pid_t, Call> running;
};

bool Injector::isOnRoad(const CallKind &kind, const std::string &file) const
{
    if (kind.subject == Subject::Always)
        return true;
    for (const std::string &prefix : order.road)
        if (file.compare(0, prefix.size(), prefix) == 0)
            return true;
    return false;
}

bool Injector::isToFail(const Call &call)
{
    if (!order.fault || order.fault->thread != call.thread || order.fault->call != call.kind->name)
        return false;
    if (order.fault->turn == call.turn)
        failing = call.file;
    return order.fault->turn == call.turn ||
           (order.fault->isLasting && order.fault->turn < call.turn && failing == call.file);
}

/** Whether the call's end is to be seen as well. */
bool Injector::enter(pid_t id)
{
    TracedThread thread(id);
    const CallKind *kind = callOfNumber(thread.callNumber());
    if (!kind)
        return false;
    const std::string file = thread.subjectOf(*kind);
    if (!isOnRoad(*kind, file))
        return false;
    const std::string name = thread.name();
    Call call{kind, name, ++turns[name + ':' + kind->name], file, false, std::nullopt};
    if (isToFail(call))
        inject(thread, call);
    else if (file == watchdog && kind->number == SYS_ioctl)
        call.forcedResult = 0;
    if (mayNotReturn(kind->number)) {
        record(call, "?");
        return false;
    }
    running.insert_or_assign(id, call);
    return true;
}

void Injector::inject(TracedThread &thread, Call &call) const
{
    constexpr int length = 2;
    const long errorNumber = std::strtol(order.fault->what.c_str(), nullptr, 10);
    call.injected = true;
    if (order.fault->what == "short")
        thread.setArgument(length, (thread.argument(length) + 1) / 2);
    else if (order.fault->what == "end")
        thread.skipCall(0);
    else if (call.kind->number == SYS_close)
        call.forcedResult = -errorNumber;
    else
        thread.skipCall(-errorNumber);
}

void Injector::leave(pid_t id)
{
    const auto found = running.find(id);
    if (found == running.end())
        return;
    TracedThread thread(id);
    if (found->second.forcedResult)
        thread.setResult(*found->second.forcedResult);
    record(found->second, std::to_string(thread.result()));
    running.erase(found);
}

void Injector::record(const Call &call, const std::string &result) const
{
    tell(call.thread + '\t' + call.kind->name + '\t' + std::to_string(call.turn) + '\t' +
         call.file + '\t' + result + '\t' + (call.injected ? "injected" : ""));
}

void Injector::tell(const std::string &line) const
{
    const std::string whole = line + '\n';
    if (write(order.log, whole.data(), whole.size()) != ssize_t(whole.size()))
        die(cannotRun, "the log cannot be written");
}

void Injector::resume(pid_t id, int status)
{
    const int event = status >> 16;
    const int signal = WSTOPSIG(status);
    if (event == PTRACE_EVENT_SECCOMP) {
        ptrace(enter(id) ? PTRACE_SYSCALL : PTRACE_CONT, id, nullptr, nullptr);
        return;
    }
    long toDeliver = 0;
    if (signal == (SIGTRAP | 0x80))
        leave(id);
    else if (event == 0 && !(known.insert(id).second && signal == SIGSTOP))
        toDeliver = signal;
    ptrace(PTRACE_CONT, id, nullptr, toDeliver);
}

std::optional<int> Injector::ended(pid_t id, int status) const
{
    if (id != first || WIFSTOPPED(status))
        return {};
    if (WIFSIGNALED(status)) {
        tell("signal\t" + std::to_string(WTERMSIG(status)));
        return 128 + WTERMSIG(status);
    }
    tell("end\t" + std::to_string(WEXITSTATUS(status)));
    return WEXITSTATUS(status);
}

int Injector::follow()
{
    int status = 0;
    if (waitpid(first, &status, __WALL) != first || !WIFSTOPPED(status))
        die(cannotRun, "the program did not start");
    known.insert(first);
    constexpr long options = PTRACE_O_TRACESECCOMP | PTRACE_O_TRACESYSGOOD | PTRACE_O_TRACECLONE |
                             PTRACE_O_TRACEFORK | PTRACE_O_TRACEVFORK | PTRACE_O_TRACEEXEC |
                             PTRACE_O_EXITKILL;
    if (ptrace(PTRACE_SETOPTIONS, first, nullptr, options) != 0)
        die(cannotRun, "the program cannot be followed");
    ptrace(PTRACE_CONT, first, nullptr, nullptr);
    for (;;) {
        const pid_t id = waitpid(-1, &status, __WALL);
        if (id < 0)
            die(cannotRun, "the program is lost");
        if (const auto result = ended(id, status))
            return *result;
        if (WIFSTOPPED(status))
            resume(id, status);
    }
}

} // namespace

int main(int, char **argv)
{
    const Order order = readOrder(argv);
    return Injector(order, start(order.program)).follow();
}
