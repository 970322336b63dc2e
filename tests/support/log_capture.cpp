#include "support/log_capture.h"

#include "tessel_core/log.h"

#include <QTemporaryFile>

#include <cstdio>
#include <unistd.h>

namespace TestSupport {

namespace {

/** A standard stream sent to another descriptor, for the length of a scope. */
class Redirection
{
public:
    Redirection(int redirected, int target)
        : stream(redirected)
        , saved(dup(redirected))
    {
        std::fflush(nullptr);
        if (saved < 0 || dup2(target, stream) < 0)
            qFatal("cannot redirect descriptor %d", stream);
    }

    ~Redirection()
    {
        std::fflush(nullptr);
        dup2(saved, stream);
        close(saved);
    }

    Q_DISABLE_COPY(Redirection)

private:
    int stream;
    int saved;
};

QByteArray capture(int stream, const std::function<void()> &function)
{
    QTemporaryFile file;
    if (!file.open())
        qFatal("cannot create a temporary file");
    {
        const Redirection redirection(stream, file.handle());
        function();
    }
    // The descriptor was written behind the file object's back.
    file.seek(0);
    return file.readAll();
}

} // namespace

LogCapture::LogCapture()
{
    Tessel::registerLogSink(sink, this);
}

LogCapture::~LogCapture()
{
    Tessel::unregisterLogSink(sink, this);
}

std::vector<LogCapture::Entry> LogCapture::entries() const
{
    const std::lock_guard lock(mutex);
    return collected;
}

QByteArrayList LogCapture::texts() const
{
    QByteArrayList texts;
    for (const Entry &entry : entries())
        texts << entry.text;
    return texts;
}

void LogCapture::clear()
{
    const std::lock_guard lock(mutex);
    collected.clear();
}

void LogCapture::sink(quint32 priority, std::time_t time, const char *text, void *context)
{
    auto *capture = static_cast<LogCapture *>(context);
    const std::lock_guard lock(capture->mutex);
    capture->collected.push_back({priority, time, text});
}

QByteArray captureStandardError(const std::function<void()> &function)
{
    return capture(STDERR_FILENO, function);
}

QByteArray captureStandardOutput(const std::function<void()> &function)
{
    return capture(STDOUT_FILENO, function);
}

} // namespace TestSupport
