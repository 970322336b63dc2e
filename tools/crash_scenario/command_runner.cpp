#include "command_runner.h"

#include <QFile>

#include <cstdio>
#include <cstring>
#include <vector>

#include <csignal>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

namespace CrashScenario {

namespace {

/** Holds back the signals that runCommand() answers for, until it goes. */
class SignalsHeld
{
public:
    SignalsHeld()
    {
        sigemptyset(&held);
        for (const int signal : {SIGCHLD, SIGTERM, SIGINT})
            sigaddset(&held, signal);
        sigprocmask(SIG_BLOCK, &held, &before);
    }
    ~SignalsHeld() { sigprocmask(SIG_SETMASK, &before, nullptr); }
    Q_DISABLE_COPY(SignalsHeld)

    int wait() const { return sigwaitinfo(&held, nullptr); }
    const sigset_t &maskBefore() const { return before; }

private:
    sigset_t held = {};
    sigset_t before = {};
};

/** Starts the command with the signal mask we were started with; 0 when that fails. */
pid_t startCommand(const QStringList &words, const sigset_t &mask)
{
    std::vector<QByteArray> encoded;
    for (const QString &word : words)
        encoded.push_back(QFile::encodeName(word));
    std::vector<char *> arguments;
    arguments.reserve(encoded.size() + 1);
    for (QByteArray &word : encoded)
        arguments.push_back(word.data());
    arguments.push_back(nullptr);

    posix_spawnattr_t attributes;
    posix_spawnattr_init(&attributes);
    posix_spawnattr_setsigmask(&attributes, &mask);
    posix_spawnattr_setflags(&attributes, POSIX_SPAWN_SETSIGMASK);
    pid_t pid = 0;
    const int error =
        posix_spawnp(&pid, arguments[0], nullptr, &attributes, arguments.data(), environ);
    posix_spawnattr_destroy(&attributes);
    if (error == 0)
        return pid;
    std::fprintf(stderr, "crash_scenario: %s: %s\n", arguments[0], std::strerror(error));
    return 0;
}

} // namespace

QStringList withCrashFile(const QStringList &words, const QString &crashFile)
{
    const QString placeholder = QStringLiteral("{}");
    if (!words.contains(placeholder))
        return words + QStringList(crashFile);
    QStringList result;
    for (const QString &word : words)
        result.append(word == placeholder ? crashFile : word);
    return result;
}

int runCommand(const QStringList &words)
{
    const SignalsHeld held;
    const pid_t pid = startCommand(words, held.maskBefore());
    if (pid == 0)
        return commandNotStarted;
    int status = 0;
    while (waitpid(pid, &status, WNOHANG) == 0)
        if (held.wait() == SIGTERM)
            kill(pid, SIGTERM);
    return WIFSIGNALED(status) ? 128 + WTERMSIG(status) : WEXITSTATUS(status);
}

} // namespace CrashScenario
