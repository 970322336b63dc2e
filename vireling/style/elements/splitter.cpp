#include "vireling/style/elements/splitter.h"

#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal dotSize = 2;
constexpr int handleDots = 3;

} // namespace

/**
 * A line that lights up under the pointer. Handles made wider by their program
 * show dots to grip as well; the usual one is as thin as the line itself.
 */
bool paintSplitter(const ElementContext &context)
{
    const bool active = context.state.hovered || context.state.pressed;
    const bool upright = context.state.horizontal;
    const QRect rect = context.rect();
    const int thickness = upright ? rect.width() : rect.height();
    const int line = std::min(thickness, context.metric(QStyle::PM_SplitterWidth));
    const int dot = std::max(1, context.scaled(dotSize));
    const QColor colour = active ? focusColour(context) : context.colour(ColourRole::Frame);
    if (thickness < 2 * dot) {
        drawSeparator(*context.painter, rect, upright ? Qt::Vertical : Qt::Horizontal, colour,
                      active ? thickness : line);
        return true;
    }
    drawGripDots(*context.painter, rect, upright ? QSize(1, handleDots) : QSize(handleDots, 1), dot,
                 active ? focusColour(context) : context.colour(ColourRole::MenuIconBase));
    if (active)
        drawPanel(*context.painter, rect, 0, QColor(), colour, line);
    return true;
}

} // namespace Vireling
