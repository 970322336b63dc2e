#include "tessel_core/log.h"

#include "tessel_core/error_report.h"

#include <QMutex>
#include <QMutexLocker>

#include <cstdio>
#include <cstring>
#include <functional>
#include <set>
#include <utility>

namespace Tessel {

namespace {

constexpr quint32 severityCount = 8;
constexpr const char *severityNames[severityCount] = {"emergency", "alert",  "critical", "error",
                                                      "warning",   "notice", "info",     "debug"};

constexpr quint32 categoryOf(quint32 priority)
{
    return priority / severityCount;
}

constexpr quint32 severityOf(quint32 priority)
{
    return priority % severityCount;
}

using RegisteredSink = std::pair<LogSink, void *>;

/** std::less, because a bare < promises no order between unrelated addresses. */
struct SinkOrder
{
    bool operator()(const RegisteredSink &left, const RegisteredSink &right) const
    {
        if (left.first != right.first)
            return std::less<LogSink>()(left.first, right.first);
        return std::less<void *>()(left.second, right.second);
    }
};

using SinkRegistry = std::set<RegisteredSink, SinkOrder>;

QMutex &registryMutex()
{
    static QMutex mutex;
    return mutex;
}

/** Only to be touched with registryMutex() held. */
SinkRegistry &registry()
{
    static SinkRegistry sinks;
    return sinks;
}

template <std::size_t Size>
void addMissingLineEnd(char (&text)[Size])
{
    const std::size_t length = std::strlen(text);
    if (length == 0 || length + 1 >= Size || text[length - 1] == '\n')
        return;
    text[length] = '\n';
    text[length + 1] = '\0';
}

void dispatch(quint32 priority, std::time_t time, const char *text)
{
    const QMutexLocker lock(&registryMutex());
    for (const auto &[sink, context] : registry())
        sink(priority, time, text, context);
}

} // namespace

void log(quint32 priority, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    vlog(priority, format, arguments);
    va_end(arguments);
}

void vlog(quint32 priority, const char *format, std::va_list arguments)
{
    char text[512] = {}; // a conversion that fails may leave it without an end
    std::vsnprintf(text, sizeof text, format, arguments);
    if (categoryOf(priority) != traceCategory)
        addMissingLineEnd(text);
    // Stamped before the lock: the time is that of the event, not of its turn.
    dispatch(priority, std::time(nullptr), text);
}

void trace(quint32 severity, const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    vlog(traceCategory * severityCount + severity, format, arguments);
    va_end(arguments);
}

void logString(quint32 priority, const QString &text)
{
    // The text is the format on purpose: callers of this entry point rely on
    // their conversions being read, so no "%s" goes in front.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat-security"
#pragma GCC diagnostic ignored "-Wformat-nonliteral"
    log(priority, text.toLatin1().constData());
#pragma GCC diagnostic pop
}

void registerLogSink(LogSink sink, void *context)
{
    const QMutexLocker lock(&registryMutex());
    registry().emplace(sink, context);
}

void unregisterLogSink(LogSink sink, void *context)
{
    const QMutexLocker lock(&registryMutex());
    registry().erase({sink, context});
}

void consoleLogSink(quint32 priority, std::time_t /*time*/, const char *text, void * /*context*/)
{
    const quint32 severity = severityOf(priority);
    if (categoryOf(priority) != traceCategory)
        printError("Log[%s] %s", severityNames[severity], text);
    else if (severity == 0)
        printError("TRACE %s", text);
    else
        printError("%s", text);
}

} // namespace Tessel
