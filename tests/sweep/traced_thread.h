#pragma once

#include "call_table.h"

#include <string>

#include <sys/types.h>
#include <sys/user.h>

/** A thread that stands before a system call or behind one. */
class TracedThread
{
public:
    explicit TracedThread(pid_t id);

    long callNumber() const;
    unsigned long argument(int index) const;
    long result() const;

    /** Leaves the call out; the thread gets `value` for it. */
    void skipCall(long value);
    void setArgument(int index, unsigned long value);
    /** Of a call that has run. */
    void setResult(long value);

    /** The file that the call is about; empty when there is none. */
    std::string subjectOf(const CallKind &call) const;
    /** What the thread calls itself; "main" for the first of its process. */
    std::string name() const;

private:
    void store() const;
    std::string text(unsigned long address) const;
    std::string link(const std::string &entry) const;
    std::string descriptor(unsigned long number) const;
    std::string pathAt(unsigned long folder, unsigned long address) const;

    pid_t id;
    user_regs_struct registers = {};
};
