#pragma once

#include <QMetaType>

namespace Vireling {

/** What the frame of a window asks for; a plain number in signals. */
enum class WindowOperation : int
{
    Move = 0,
    ResizeBottom = 1,
    ResizeBottomLeft = 2,
    ResizeBottomRight = 3,
    ResizeLeft = 4,
    ResizeRight = 5,
    ResizeTop = 6,
    ResizeTopLeft = 7,
    ResizeTopRight = 8,
    ToggleMaximise = 9,
};

} // namespace Vireling

Q_DECLARE_METATYPE(Vireling::WindowOperation)
