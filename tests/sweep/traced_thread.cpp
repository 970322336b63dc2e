#include "traced_thread.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>

#include <fcntl.h>
#include <sys/ptrace.h>
#include <sys/uio.h>
#include <unistd.h>

namespace {

std::string procOf(pid_t id)
{
    return "/proc/" + std::to_string(id) + '/';
}

unsigned long long user_regs_struct::*const argumentRegisters[] = {
    &user_regs_struct::rdi, &user_regs_struct::rsi, &user_regs_struct::rdx,
    &user_regs_struct::r10, &user_regs_struct::r8,  &user_regs_struct::r9,
};

} // namespace

TracedThread::TracedThread(pid_t threadId)
    : id(threadId)
{
    ptrace(PTRACE_GETREGS, id, nullptr, &registers);
}

void TracedThread::store() const
{
    if (ptrace(PTRACE_SETREGS, id, nullptr, &registers) != 0)
        std::perror("fault_injector: registers");
}

long TracedThread::callNumber() const
{
    return long(registers.orig_rax);
}

unsigned long TracedThread::argument(int index) const
{
    return registers.*argumentRegisters[index];
}

long TracedThread::result() const
{
    return long(registers.rax);
}

void TracedThread::skipCall(long value)
{
    registers.orig_rax = static_cast<unsigned long long>(-1);
    setResult(value);
}

void TracedThread::setArgument(int index, unsigned long value)
{
    registers.*argumentRegisters[index] = value;
    store();
}

void TracedThread::setResult(long value)
{
    registers.rax = static_cast<unsigned long long>(value);
    store();
}

std::string TracedThread::text(unsigned long address) const
{
    std::string found;
    std::array<char, 256> piece{};
    while (address != 0) {
        // Not beyond the page: the next one may not be there.
        const std::size_t length = std::min(piece.size(), 4096 - address % 4096);
        const iovec here{piece.data(), length};
        const iovec there{reinterpret_cast<void *>(address), length};
        const ssize_t count = process_vm_readv(id, &here, 1, &there, 1, 0);
        if (count <= 0)
            return found;
        const std::size_t end = strnlen(piece.data(), std::size_t(count));
        found.append(piece.data(), end);
        if (end < std::size_t(count))
            return found;
        address += std::size_t(count);
    }
    return found;
}

std::string TracedThread::link(const std::string &entry) const
{
    std::array<char, 4096> target{};
    const ssize_t length = readlink((procOf(id) + entry).c_str(), target.data(), target.size() - 1);
    return length > 0 ? std::string(target.data(), std::size_t(length)) : std::string();
}

std::string TracedThread::descriptor(unsigned long number) const
{
    return link("fd/" + std::to_string(int(number)));
}

std::string TracedThread::pathAt(unsigned long folder, unsigned long address) const
{
    std::string path = text(address);
    if (!path.empty() && path.front() == '/')
        return path;
    const std::string base = int(folder) == AT_FDCWD ? link("cwd") : descriptor(folder);
    return path.empty() ? base : base + '/' + path;
}

std::string TracedThread::subjectOf(const CallKind &call) const
{
    switch (call.subject) {
    case Subject::Path:
        return pathAt(static_cast<unsigned long>(AT_FDCWD), argument(0));
    case Subject::PathAt:
        return pathAt(argument(0), argument(1));
    case Subject::PathToMake:
        return pathAt(argument(2), argument(3));
    case Subject::SecondPath:
        return pathAt(static_cast<unsigned long>(AT_FDCWD), argument(1));
    case Subject::Descriptor:
        return descriptor(argument(0));
    case Subject::Always:
        break;
    }
    if (std::strcmp(call.name, "inotify_add_watch") == 0 || std::strcmp(call.name, "mount") == 0)
        return text(argument(1));
    return std::strcmp(call.name, "umount2") == 0 ? text(argument(0)) : std::string();
}

std::string TracedThread::name() const
{
    const std::string status = procOf(id) + "status";
    std::ifstream lines(status);
    std::string line;
    std::string name;
    while (std::getline(lines, line)) {
        if (line.compare(0, 6, "Name:\t") == 0)
            name = line.substr(6);
        if (line.compare(0, 6, "Tgid:\t") == 0 && line.substr(6) == std::to_string(id))
            return "main";
    }
    return name;
}
