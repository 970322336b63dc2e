#include "vireling/style/busy_indicator_animator.h"

#include <QEvent>
#include <QProgressBar>
#include <QStyleOptionProgressBar>
#include <QTimerEvent>
#include <QVariant>
#include <QWindow>

#include <algorithm>
#include <chrono>

namespace Vireling {

namespace {

using namespace std::chrono_literals;

constexpr std::chrono::milliseconds frameTime = 33ms;
constexpr std::chrono::milliseconds roundTrip = 2400ms;

bool isExposed(const QWidget &widget)
{
    const QWindow *window = widget.window()->windowHandle();
    return window && window->isExposed() && !widget.visibleRegion().isEmpty();
}

bool isMoving(const QWidget &widget)
{
    const auto *progressBar = qobject_cast<const QProgressBar *>(&widget);
    if (!progressBar)
        return false;
    const QProgressBar &bar = *progressBar;
    return bar.minimum() == 0 && bar.maximum() == 0 && bar.isEnabled() && bar.isVisible() &&
           !bar.property(busyPhaseProperty).isValid() && isExposed(bar);
}

} // namespace

bool isBusy(const QStyleOptionProgressBar &bar)
{
    return bar.minimum == 0 && bar.maximum == 0;
}

qreal busyPosition(const QWidget *bar)
{
    const QVariant fixed = bar ? bar->property(busyPhaseProperty) : QVariant();
    if (fixed.isValid())
        return std::clamp(fixed.toReal(), 0.0, 1.0);
    const auto *progressBar = qobject_cast<const QProgressBar *>(bar);
    if (!progressBar || !progressBar->isEnabled())
        return 0.5; // nobody would repaint it
    const auto now = std::chrono::steady_clock::now().time_since_epoch();
    const auto since = std::chrono::duration_cast<std::chrono::milliseconds>(now) % roundTrip;
    const qreal turn = qreal(since.count()) / qreal(roundTrip.count());
    const qreal there = turn < 0.5 ? 2 * turn : 2 - 2 * turn;
    return there * there * (3 - 2 * there); // slows down where it turns back
}

BusyIndicatorAnimator::BusyIndicatorAnimator(QObject *parent)
    : QObject(parent)
{}

void BusyIndicatorAnimator::watch(QWidget *widget)
{
    if (qobject_cast<QProgressBar *>(widget))
        widget->installEventFilter(this);
}

void BusyIndicatorAnimator::unwatch(QWidget *widget)
{
    widget->removeEventFilter(this);
    moving.erase(std::remove(moving.begin(), moving.end(), widget), moving.end());
    dropIdleBars();
}

bool BusyIndicatorAnimator::eventFilter(QObject *watched, QEvent *event)
{
    // A bar gets busy without a signal, but never without a repaint.
    if (event->type() == QEvent::Paint)
        animate(static_cast<QWidget *>(watched));
    else if (event->type() == QEvent::Hide)
        dropIdleBars();
    return false;
}

void BusyIndicatorAnimator::timerEvent(QTimerEvent *event)
{
    if (event->timerId() != timer.timerId())
        return;
    dropIdleBars();
    for (const QPointer<QWidget> &bar : moving)
        bar->update();
}

void BusyIndicatorAnimator::animate(QWidget *bar)
{
    if (!isMoving(*bar) || std::find(moving.cbegin(), moving.cend(), bar) != moving.cend())
        return;
    moving.emplace_back(bar);
    if (!timer.isActive())
        timer.start(int(frameTime.count()), this);
}

void BusyIndicatorAnimator::dropIdleBars()
{
    const auto idle = [](const QPointer<QWidget> &bar) { return !bar || !isMoving(*bar); };
    moving.erase(std::remove_if(moving.begin(), moving.end(), idle), moving.end());
    if (moving.empty())
        timer.stop();
}

} // namespace Vireling
