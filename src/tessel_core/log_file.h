#pragma once

#include <QFile>
#include <QString>
#include <QTextStream>
#include <QtGlobal>

#include <ctime>

namespace Tessel {

/**
 * A log sink that writes "<date> <time> - <text>" lines to a text file, each
 * flushed as it comes: the last one before a crash is the one that matters.
 *
 * Log texts do not tell their encoding: they are read as Latin-1, that of
 * logString(), and written in the locale's encoding.
 *
 * The owner must call `unregisterLogSink(LogFile::sink, &logFile)` before it
 * destroys the object. The registry owns nothing, and the object does not
 * unregister itself: a log file that could not be opened is not registered.
 */
class LogFile
{
public:
    /**
     * Opens `path`, after its present content with `append`, else emptying it,
     * and registers the object as a sink. If the file cannot be opened, the
     * object stays unregistered and logs nothing, and nobody is told.
     */
    LogFile(const QString &path, bool append);

    /** Closes the file. */
    ~LogFile() = default;

    Q_DISABLE_COPY(LogFile)

    /**
     * Writes one line, stamped with the local time in the locale's form. A time
     * whose stamp is longer than 19 bytes, or that has no local form, is left out.
     */
    void write(std::time_t time, const char *text);

    /** The registered sink: forwards to write() of the LogFile that `context` is. */
    static void sink(quint32 priority, std::time_t time, const char *text, void *context);

private:
    QFile file;
    QTextStream stream;
};

} // namespace Tessel
