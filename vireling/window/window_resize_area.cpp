#include "vireling/window/window_resize_area.h"

#include "vireling/window/window_edges.h"

#include <QApplication>
#include <QMouseEvent>

namespace Vireling {

WindowResizeArea::WindowResizeArea(QWidget *parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("windowResizeArea"));
    setAttribute(Qt::WA_MouseTracking);
    setAttribute(Qt::WA_StaticContents);
    setAutoFillBackground(false);
    updateMask();
}

void WindowResizeArea::setMargins(int left, int top, int right, int bottom)
{
    const QMargins margins(left, top, right, bottom);
    if (margins == ownMargins)
        return;
    ownMargins = margins;
    updateMask();
}

void WindowResizeArea::updateMask()
{
    const bool offScreen = ownMargins.isNull();
    if (offScreen != testAttribute(Qt::WA_DontShowOnScreen)) {
        setAttribute(Qt::WA_DontShowOnScreen, offScreen);
        // The attribute alone would leave an unmasked child that swallows every click.
        setHidden(offScreen);
    }
    const QRegion mask = resizeMask(clippedMargins(ownMargins, size()), size());
    if (mask.isEmpty())
        clearMask();
    else
        setMask(mask);
}

std::optional<WindowOperation> WindowResizeArea::operationAt(const QPoint &point) const
{
    return resizeOperationAt(point, size(), clippedMargins(ownMargins, size()),
                             windowSizing(*window()));
}

void WindowResizeArea::showCursorAt(const QPoint &point)
{
    const auto operation = operationAt(point);
    const auto shape = operation ? cursorShape(*operation) : std::nullopt;
    if (shape == shownCursor)
        return;
    shownCursor = shape;
    if (shape)
        setCursor(*shape);
    else
        unsetCursor();
}

void WindowResizeArea::mousePressEvent(QMouseEvent *event)
{
    if (event->button() == Qt::LeftButton) {
        const QPoint point = wholePosition(event->localPos());
        if (const auto operation = operationAt(point))
            press = Press{*operation, point};
    } else {
        QWidget::mousePressEvent(event);
    }
    event->accept();
}

void WindowResizeArea::mouseMoveEvent(QMouseEvent *event)
{
    const QPoint point = wholePosition(event->localPos());
    event->accept();
    if (!press) {
        showCursorAt(point);
        return;
    }
    if ((point - press->point).manhattanLength() < QApplication::startDragDistance())
        return;
    const WindowOperation operation = press->operation;
    press.reset();
    emit operationRequested(operation);
}

void WindowResizeArea::mouseReleaseEvent(QMouseEvent *event)
{
    if (press) {
        press.reset();
        showCursorAt(wholePosition(event->localPos()));
    } else {
        QWidget::mouseReleaseEvent(event);
    }
    event->accept();
}

void WindowResizeArea::resizeEvent(QResizeEvent *event)
{
    QWidget::resizeEvent(event);
    updateMask();
}

} // namespace Vireling
