#pragma once

#include <cstdarg>
#include <string>

namespace Tessel {

/*
 * Reports that must be seen whether or not anybody listens to the log: they go
 * straight to standard error, without time stamp and past the log sinks. Any
 * thread may report. Texts are cut at 511 characters, which also takes the line
 * end of a report that long.
 */

/**
 * Titles of the two kinds of report, for a display that would show them. The
 * appliance has none: only a debugger looking at an aborted process sees them.
 */
constexpr char internalErrorTitle[] = "Internal Error";
constexpr char fatalErrorTitle[] = "Fatal Error";

/** Writes a printf-style text as it is: no line end is added. */
void printError(const char *format, ...) __attribute__((format(printf, 1, 2)));

/** printError() for a caller that already holds its arguments. */
void vprintError(const char *format, std::va_list arguments) __attribute__((format(printf, 1, 0)));

/**
 * Prints "Error <message> at line <line> in file <file>" and returns. `file` is
 * the source path without its extension, never null.
 */
void reportError(const std::string &message, int line, const char *file);

/**
 * Prints the line of reportError() and aborts the process: the target of every
 * failed assertion. Nothing is unwound and no exit handler runs.
 */
[[noreturn]] void reportFatal(const std::string &message, int line, const char *file);

} // namespace Tessel
