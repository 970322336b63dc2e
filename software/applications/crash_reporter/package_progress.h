#pragma once

#include "tessel_core/io/archive_progress.h"

#include <QElapsedTimer>
#include <QPointer>

class ProgressWindow;
class QWidget;

/**
 * Keeps the appliance alive while a package is made, and the operator informed.
 *
 * As long as bytes move, the event loop turns, without user input, at most every 50 ms:
 * the watchdog is fed and the screen painted. When writing hangs, nothing turns and the
 * watchdog bites. A package that takes longer than a second is shown in a window that
 * cannot be cancelled; what the operator typed and clicked behind it is dropped at its end.
 *
 * One object a package, made when the work begins. GUI thread. The event loop is nested:
 * timers and posted events of the whole program arrive inside advance().
 */
class PackageProgress : public Tessel::ArchiveProgress
{
public:
    /** `screen` is what the operator looks at; null, and no window is ever shown. */
    explicit PackageProgress(QWidget *screen);
    ~PackageProgress() override;
    Q_DISABLE_COPY(PackageProgress)

    /** How many payload bytes there are to be; before the first advance(). */
    void setBytesInAll(quint64 bytes) { bytesInAll = bytes; }

    void advance(quint64 payloadBytesDone) override;

private:
    void show(quint64 payloadBytesDone);

    QPointer<QWidget> screen;
    QPointer<ProgressWindow> window; ///< the screen's child, which may take it along
    QElapsedTimer sinceStart;
    QElapsedTimer sinceTurn;
    quint64 bytesInAll = 0;
};
