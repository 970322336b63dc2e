#pragma once

#include <QBasicTimer>
#include <QObject>
#include <QPointer>

#include <vector>

class QStyleOptionProgressBar;
class QWidget;

namespace Vireling {

/**
 * On a progress bar, a number from 0 to 1: the bar's busy segment stands still there
 * instead of travelling. For pictures that must not depend on the time.
 */
constexpr char busyPhaseProperty[] = "vrl_busy_phase";

/** Whether a bar shows that work goes on without saying how much is done: 0 of 0. */
bool isBusy(const QStyleOptionProgressBar &bar);

/**
 * How far the busy segment of `bar` has travelled now, from 0 at the start of the
 * bar to 1 at its end; it goes to and fro. Follows a monotonic clock, so that all
 * bars move alike. `bar` may be null or of another type.
 */
qreal busyPosition(const QWidget *bar);

/**
 * Keeps the segments of busy progress bars moving: QProgressBar itself repaints only
 * when its value changes. The one timer for all bars runs only while a busy bar can
 * be seen; an idle appliance is not woken up. Owned by the style; GUI thread.
 */
class BusyIndicatorAnimator : public QObject
{
    Q_OBJECT

public:
    explicit BusyIndicatorAnimator(QObject *parent = nullptr);

    /** Starts and stops caring for `widget`; nothing for what is no progress bar. */
    void watch(QWidget *widget);
    void unwatch(QWidget *widget);

    bool isRunning() const { return timer.isActive(); }

    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    void timerEvent(QTimerEvent *event) override;

private:
    void animate(QWidget *bar);
    void dropIdleBars();

    // Not as progress bars: one that is being destroyed is only a widget any more.
    std::vector<QPointer<QWidget>> moving;
    QBasicTimer timer;
};

} // namespace Vireling
