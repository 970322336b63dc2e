#include "tessel_core/error_report.h"

#include <cstdio>
#include <cstdlib>

namespace Tessel {

namespace {

struct ErrorReport
{
    const char *title;
    const std::string &message;
    int line;
    const char *file;
};

void print(const ErrorReport &report)
{
    printError("Error %s at line %d in file %s\n", report.message.c_str(), report.line,
               report.file);
}

} // namespace

void printError(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    vprintError(format, arguments);
    va_end(arguments);
}

void vprintError(const char *format, std::va_list arguments)
{
    // On the stack and of fixed size: an error report must not need memory.
    char text[512] = {}; // a conversion that fails may leave it without an end
    std::vsnprintf(text, sizeof text, format, arguments);
    std::fputs(text, stderr);
}

void reportError(const std::string &message, int line, const char *file)
{
    print({internalErrorTitle, message, line, file});
}

void reportFatal(const std::string &message, int line, const char *file)
{
    print({fatalErrorTitle, message, line, file});
    std::abort();
}

} // namespace Tessel
