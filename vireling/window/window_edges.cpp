#include "vireling/window/window_edges.h"

#include <QWidget>

#include <cmath>

namespace Vireling {

namespace {

enum Edge : unsigned
{
    NoEdge = 0,
    LeftEdge = 1,
    RightEdge = 2,
    TopEdge = 4,
    BottomEdge = 8
};

unsigned edgesAt(const QPoint &point, const QSize &size, const QMargins &clipped)
{
    const auto within = [](int value, int begin, int end) { return value >= begin && value < end; };
    unsigned edges = NoEdge;
    if (within(point.x(), 0, clipped.left()))
        edges |= LeftEdge;
    if (within(point.x(), size.width() - clipped.right(), size.width()))
        edges |= RightEdge;
    if (within(point.y(), 0, clipped.top()))
        edges |= TopEdge;
    if (within(point.y(), size.height() - clipped.bottom(), size.height()))
        edges |= BottomEdge;
    return edges;
}

} // namespace

bool canChange(int minimum, int maximum, QSizePolicy::Policy policy)
{
    constexpr int givesWay =
        QSizePolicy::GrowFlag | QSizePolicy::ExpandFlag | QSizePolicy::ShrinkFlag;
    return minimum != maximum && (int(policy) & givesWay);
}

WindowSizing windowSizing(const QWidget &window)
{
    const QSizePolicy policy = window.sizePolicy();
    return {canChange(window.minimumWidth(), window.maximumWidth(), policy.horizontalPolicy()),
            canChange(window.minimumHeight(), window.maximumHeight(), policy.verticalPolicy())};
}

bool isResizable(const QWidget &window)
{
    const WindowSizing sizing = windowSizing(window);
    return sizing.width || sizing.height;
}

QMargins clippedMargins(const QMargins &margins, const QSize &size)
{
    const auto clipped = [](int margin, int extent) { return qBound(0, margin, qMax(0, extent)); };
    return {clipped(margins.left(), size.width()), clipped(margins.top(), size.height()),
            clipped(margins.right(), size.width()), clipped(margins.bottom(), size.height())};
}

QRegion resizeMask(const QMargins &clipped, const QSize &size)
{
    const QRect whole(QPoint(0, 0), size);
    const QRect inner = whole.marginsRemoved(clipped);
    if (inner.isEmpty())
        return whole;
    QRegion mask(0, 0, clipped.left(), size.height());
    mask += QRect(inner.left(), 0, inner.width(), clipped.top());
    mask += QRect(inner.right() + 1, 0, clipped.right(), size.height());
    mask += QRect(inner.left(), inner.bottom() + 1, inner.width(), clipped.bottom());
    return mask;
}

std::optional<WindowOperation> resizeOperationAt(const QPoint &point, const QSize &size,
                                                 const QMargins &clipped,
                                                 const WindowSizing &sizing)
{
    const unsigned edges = edgesAt(point, size, clipped);
    if ((edges & (LeftEdge | RightEdge)) && !sizing.width)
        return std::nullopt;
    if ((edges & (TopEdge | BottomEdge)) && !sizing.height)
        return std::nullopt;
    switch (edges) {
    case TopEdge:
        return WindowOperation::ResizeTop;
    case LeftEdge:
        return WindowOperation::ResizeLeft;
    case TopEdge | LeftEdge:
        return WindowOperation::ResizeTopLeft;
    case RightEdge:
        return WindowOperation::ResizeRight;
    case TopEdge | RightEdge:
        return WindowOperation::ResizeTopRight;
    case BottomEdge:
        return WindowOperation::ResizeBottom;
    case LeftEdge | BottomEdge:
        return WindowOperation::ResizeBottomLeft;
    case RightEdge | BottomEdge:
        return WindowOperation::ResizeBottomRight;
    default: // none, or opposite edges at once in a window too small to tell them apart
        return std::nullopt;
    }
}

std::optional<Qt::CursorShape> cursorShape(WindowOperation operation)
{
    switch (operation) {
    case WindowOperation::ResizeBottom:
    case WindowOperation::ResizeTop:
        return Qt::SizeVerCursor;
    case WindowOperation::ResizeLeft:
    case WindowOperation::ResizeRight:
        return Qt::SizeHorCursor;
    case WindowOperation::ResizeBottomLeft:
    case WindowOperation::ResizeTopRight:
        return Qt::SizeBDiagCursor;
    case WindowOperation::ResizeBottomRight:
    case WindowOperation::ResizeTopLeft:
        return Qt::SizeFDiagCursor;
    case WindowOperation::Move:
    case WindowOperation::ToggleMaximise:
        break;
    }
    return std::nullopt;
}

QPoint wholePosition(const QPointF &position)
{
    return {int(std::lround(position.x())), int(std::lround(position.y()))};
}

} // namespace Vireling
