#pragma once

#include <cstdarg>
#include <string>

namespace Tessel
{

/**
 * Writes a formatted text to standard error, unstamped and past the log sinks.
 * Texts are cut at 511 characters; no line end is added. Any thread.
 */
void printError(const char *format, ...) __attribute__((format(printf, 1, 2)));

/** printError() for a caller that already holds its arguments. */
void vprintError(const char *format, std::va_list arguments) __attribute__((format(printf, 1, 0)));

/** Prints "Error <message> at line <line> in file <file>" and returns. */
void reportError(const std::string &message, int line, const char *file);

/**
 * Prints the line of reportError() and aborts the process: the target of every
 * failed assertion. `file` is the source path without its extension.
 */
[[noreturn]] void reportFatal(const std::string &message, int line, const char *file);

} // namespace Tessel
