#pragma once

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

namespace TestSupport {

/**
 * Calls `function` in a child process, as what it does may be fatal, and tells how that ended
 * in the words of waitpid(). A child that aborts leaves no core file.
 */
inline int statusOfChild(const std::function<void()> &function)
{
    const pid_t child = fork();
    if (child == 0) {
        // QtTest catches the signal to write a report of its own.
        std::signal(SIGABRT, SIG_DFL);
        const rlimit noCoreFile = {0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        function();
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

} // namespace TestSupport
