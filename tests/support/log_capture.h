#pragma once

#include <QByteArray>
#include <QByteArrayList>
#include <QtGlobal>

#include <ctime>
#include <functional>
#include <mutex>
#include <vector>

namespace TestSupport {

/**
 * Collects what the process logs while it lives. Several may live at once, and
 * messages may come from any thread.
 */
class LogCapture
{
public:
    struct Entry
    {
        quint32 priority;
        std::time_t time;
        QByteArray text;
    };

    /** Registers itself as a log sink. */
    LogCapture();

    /** Unregisters itself. */
    ~LogCapture();

    Q_DISABLE_COPY(LogCapture)

    /** All messages so far, in the order of their delivery. */
    std::vector<Entry> entries() const;

    /** The texts of entries(). */
    QByteArrayList texts() const;

    void clear();

private:
    static void sink(quint32 priority, std::time_t time, const char *text, void *context);

    mutable std::mutex mutex;
    std::vector<Entry> collected;
};

/**
 * Calls `function` with standard error (descriptor 2) sent to a temporary file,
 * and returns what was written there. Standard error is back afterwards, also
 * when `function` throws. A failure of the redirection itself aborts the test.
 */
QByteArray captureStandardError(const std::function<void()> &function);

/** The same for standard output (descriptor 1). */
QByteArray captureStandardOutput(const std::function<void()> &function);

} // namespace TestSupport
