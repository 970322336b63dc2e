#include "crash_reporter/display_fallback.h"

#include <csignal>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

#include <unistd.h>

namespace {

constexpr char marker[] = "R4_CRASH_REPORTER_NO_DISPLAY";
constexpr char platform[] = "QT_QPA_PLATFORM";

/** What the next start is given. Made beforehand: in a signal handler nothing can be. */
struct NextStart
{
    std::vector<std::string> texts;
    std::vector<char *> arguments;
    std::vector<char *> environment;
};

NextStart &nextStart()
{
    static NextStart start;
    return start;
}

bool names(const char *setting, const char *variable)
{
    const std::size_t length = std::strlen(variable);
    return std::strncmp(setting, variable, length) == 0 && setting[length] == '=';
}

void prepare(char **argv)
{
    NextStart &next = nextStart();
    for (char **argument = argv; *argument; ++argument)
        next.texts.emplace_back(*argument);
    const std::size_t arguments = next.texts.size();
    for (char **setting = environ; *setting; ++setting)
        if (!names(*setting, platform))
            next.texts.emplace_back(*setting);
    next.texts.push_back(std::string(platform) + "=offscreen");
    next.texts.push_back(std::string(marker) + "=1");

    for (std::string &text : next.texts)
        (next.arguments.size() < arguments ? next.arguments : next.environment)
            .push_back(text.data());
    next.arguments.push_back(nullptr);
    next.environment.push_back(nullptr);
}

void startAgain(int)
{
    const NextStart &next = nextStart();
    execve("/proc/self/exe", next.arguments.data(), next.environment.data());
    // No start to be had: back in abort(), which ends the program.
}

} // namespace

void restartWithoutDisplayOnAbort(char **argv)
{
    if (hasNoDisplay())
        return;
    prepare(argv);
    struct sigaction action = {};
    action.sa_handler = startAgain;
    // The next start would inherit a blocked signal.
    action.sa_flags = static_cast<int>(SA_RESETHAND | SA_NODEFER);
    sigaction(SIGABRT, &action, nullptr);
}

void displayIsUp()
{
    std::signal(SIGABRT, SIG_DFL);
}

bool hasNoDisplay()
{
    return std::getenv(marker) != nullptr;
}
