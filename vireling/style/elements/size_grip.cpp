#include "vireling/style/elements/size_grip.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal dotSize = 2;
constexpr qreal gripExtent = 16;
constexpr int rows = 3;

} // namespace

/** A triangle of dots in the corner that is dragged. */
bool paintSizeGrip(const ElementContext &context)
{
    const auto *grip = context.as<QStyleOptionSizeGrip>();
    const Qt::Corner corner = grip ? grip->corner : Qt::BottomRightCorner;
    const bool atLeft = corner == Qt::TopLeftCorner || corner == Qt::BottomLeftCorner;
    const bool atTop = corner == Qt::TopLeftCorner || corner == Qt::TopRightCorner;
    const int dot = std::max(1, context.scaled(dotSize));
    const int pitch = 2 * dot;
    const QColor colour = context.colour(ColourRole::MenuIconBase);
    const QRect rect = context.rect();
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column + row < rows; ++column) {
            const int across = dot + column * pitch;
            const int along = dot + row * pitch;
            const QPoint at(atLeft ? rect.left() + across : rect.right() - across - dot + 1,
                            atTop ? rect.top() + along : rect.bottom() - along - dot + 1);
            context.painter->fillRect(QRect(at, QSize(dot, dot)).intersected(rect), colour);
        }
    return true;
}

std::optional<QSize> sizeGripSize(const ElementContext &context, const QSize &contents)
{
    const int extent = context.scaled(gripExtent);
    return contents.expandedTo(QSize(extent, extent));
}

} // namespace Vireling
