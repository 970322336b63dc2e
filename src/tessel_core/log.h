#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdarg>
#include <ctime>

namespace Tessel {

/*
 * The process-wide log. A message is formatted once, stamped once and handed to
 * every registered sink; with no sink registered it goes nowhere, and nothing
 * here registers one.
 *
 * A priority is category * 8 + severity. Severities are those of syslog:
 * 0 emergency, 1 alert, 2 critical, 3 error, 4 warning, 5 notice, 6 info,
 * 7 debug.
 *
 * Any thread may log until the process begins to exit. Sinks run one at a time
 * under the registry's lock, which is not recursive: a sink that logs, registers
 * or unregisters waits for itself for ever. Texts are cut at 511 characters.
 */

/** Category of trace texts, which carry their own line ends (priorities 104 to 111). */
constexpr quint32 traceCategory = 13;

/**
 * Logs a printf-style message. A missing line end is added, except to trace
 * texts, to an empty text and to one of 511 characters, which has no room for it.
 */
void log(quint32 priority, const char *format, ...) __attribute__((format(printf, 2, 3)));

/** log() for a caller that already holds its arguments. */
void vlog(quint32 priority, const char *format, std::va_list arguments)
    __attribute__((format(printf, 2, 0)));

/** Logs on the trace channel, at priority 104 + `severity` (0 to 7). */
void trace(quint32 severity, const char *format, ...) __attribute__((format(printf, 2, 3)));

/**
 * Logs `text`, converted to Latin-1, as the format itself: a per-cent sign in it
 * starts a conversion, with no argument behind it. Never for texts from outside
 * the program; those go through log() and "%s".
 */
void logString(quint32 priority, const QString &text);

/**
 * Receives one message: its priority, its time in seconds since the epoch, its
 * text, which is valid only during the call, and the context it was registered
 * with. Called on the thread that logs.
 */
using LogSink = void (*)(quint32 priority, std::time_t time, const char *text, void *context);

/**
 * Adds a sink. A pair of sink and context that is already there is not added
 * again. Sinks are called in the order of the pairs' addresses, not of their
 * registration. The registry owns nothing: `context`, which may be null, must
 * live until the pair is unregistered.
 */
void registerLogSink(LogSink sink, void *context);

/** Removes a sink, waiting for a message on its way to it; unknown pairs are ignored. */
void unregisterLogSink(LogSink sink, void *context);

/**
 * The sink that prints to standard error: "TRACE <text>" for trace severity 0,
 * the bare text for other trace severities, else "Log[<severity name>] <text>".
 * Uses neither time nor context. Cut at 511 characters, heading included.
 */
void consoleLogSink(quint32 priority, std::time_t time, const char *text, void *context);

} // namespace Tessel
