#pragma once

#include <QString>
#include <QtGlobal>

#include <cstdarg>
#include <ctime>

namespace Tessel
{

/*
 * The process-wide log. A message is formatted once, stamped once and handed to
 * every registered sink; with no sink registered it goes nowhere.
 *
 * A priority is category * 8 + severity, severities 0 "emergency" to 7 "debug".
 * Any thread may log. Sinks run one at a time under the registry's lock and must
 * not log themselves. Texts are cut at 511 characters.
 */

/** Category of trace texts, which carry their own line ends (priorities 104 to 111). */
constexpr quint32 traceCategory = 13;

/** Logs a printf-style message; a missing line end is added except to trace texts. */
void log(quint32 priority, const char *format, ...) __attribute__((format(printf, 2, 3)));

/** log() for a caller that already holds its arguments. */
void vlog(quint32 priority, const char *format, std::va_list arguments)
    __attribute__((format(printf, 2, 0)));

/** Logs on the trace channel: priority 104 + severity, the text as it is. */
void trace(quint32 severity, const char *format, ...) __attribute__((format(printf, 2, 3)));

/** Logs `text`, converted to Latin-1, as the format itself: "%d" in it is a conversion. */
void logString(quint32 priority, const QString &text);

/** Receives one message: its priority, its time in seconds since the epoch, its text. */
using LogSink = void (*)(quint32 priority, std::time_t time, const char *text, void *context);

/** Adds a sink. A pair already there is not added again. The registry owns nothing. */
void registerLogSink(LogSink sink, void *context);

/** Removes a sink; unknown pairs are ignored. */
void unregisterLogSink(LogSink sink, void *context);

/** The sink that prints to standard error, as "TRACE ..." or "Log[severity] ...". */
void consoleLogSink(quint32 priority, std::time_t time, const char *text, void *context);

} // namespace Tessel
