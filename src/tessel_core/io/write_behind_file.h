#pragma once

#include <QFile>

namespace Tessel {

/**
 * A file to be written from front to end whose data moves to its medium while it
 * grows, with never more than two windows of it waiting in memory.
 *
 * A kernel left alone collects the data and writes it all in the final sync: a
 * large package on a slow key would keep that one call, and with it the thread
 * that feeds the watchdog, for longer than the watchdog waits. syncFile() is still
 * needed at the end, and short.
 *
 * Open it write-only and unbuffered. Once the medium has failed, every further
 * write fails too (-1, errno as the kernel gave it). One thread at a time.
 */
class WriteBehindFile : public QFile
{
public:
    /** Bytes; a key of 4 MB/s writes one in two seconds. */
    static constexpr qint64 defaultWindow = 8LL * 1024 * 1024;

    explicit WriteBehindFile(const QString &path, qint64 windowBytes = defaultWindow);

protected:
    qint64 writeData(const char *data, qint64 length) override;

private:
    bool pushWindow();

    const qint64 window;
    /** The file in order: on the medium, on its way there since the last push, in memory. */
    qint64 onMedium = 0;
    qint64 onItsWay = 0;
    qint64 written = 0;
    int mediumError = 0;
};

} // namespace Tessel
