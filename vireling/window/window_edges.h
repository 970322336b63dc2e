#pragma once

#include "vireling/window/window_operation.h"

#include <QMargins>
#include <QPoint>
#include <QRegion>
#include <QSize>
#include <QSizePolicy>

#include <optional>

class QWidget;

namespace Vireling {

/*
 * What a point at the edge of a window means. No state, no events: the widgets of
 * the frame ask, and the rules can be tested as tables.
 */

/** In which directions a window can change its size. */
struct WindowSizing
{
    bool width = false;
    bool height = false;
};

/** Whether one direction can change: its limits differ and its policy gives way at all. */
bool canChange(int minimum, int maximum, QSizePolicy::Policy policy);

WindowSizing windowSizing(const QWidget &window);

/** Whether the window can change its size in either direction. */
bool isResizable(const QWidget &window);

/** Each margin bounded to what a widget of `size` has of it; none is negative. */
QMargins clippedMargins(const QMargins &margins, const QSize &size);

/**
 * The four border strips of a widget of `size`, or all of it when clipped margins
 * leave nothing inside. Empty without margins.
 */
QRegion resizeMask(const QMargins &clipped, const QSize &size);

/** The resizing that dragging from `point` asks for; `clipped` as from clippedMargins(). */
std::optional<WindowOperation> resizeOperationAt(const QPoint &point, const QSize &size,
                                                 const QMargins &clipped,
                                                 const WindowSizing &sizing);

/** The cursor that announces an operation; none for those that no edge offers. */
std::optional<Qt::CursorShape> cursorShape(WindowOperation operation);

/** A mouse position in whole pixels, halves rounded away from zero. */
QPoint wholePosition(const QPointF &position);

} // namespace Vireling
