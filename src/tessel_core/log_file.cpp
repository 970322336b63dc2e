#include "tessel_core/log_file.h"

#include "tessel_core/log.h"

namespace Tessel {

LogFile::LogFile(const QString &path, bool append)
    : file(path)
{
    const QIODevice::OpenMode mode =
        append ? QIODevice::WriteOnly | QIODevice::Append : QIODevice::WriteOnly;
    if (!file.open(mode))
        return;
    stream.setDevice(&file);
    registerLogSink(sink, this);
}

void LogFile::write(std::time_t time, const char *text)
{
    if (!file.isOpen())
        return;
    char stamp[20];
    std::tm localTime = {};
    // What strftime() leaves behind when the stamp does not fit is undefined.
    if (localtime_r(&time, &localTime) == nullptr ||
        std::strftime(stamp, sizeof stamp, "%x %X", &localTime) == 0)
        stamp[0] = '\0';
    stream << stamp << " - " << text << Qt::flush;
}

void LogFile::sink(quint32 /*priority*/, std::time_t time, const char *text, void *context)
{
    static_cast<LogFile *>(context)->write(time, text);
}

} // namespace Tessel
