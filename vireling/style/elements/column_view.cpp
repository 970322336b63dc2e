#include "vireling/style/elements/column_view.h"

#include "vireling/style/elements/item_view.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal gripLineSpacing = 3;

} // namespace

bool paintColumnArrow(const ElementContext &context)
{
    const int size = std::min({context.metric(QStyle::PM_SmallIconSize), context.rect().width(),
                               context.rect().height()});
    const bool onRow = context.state.selected || context.state.hovered;
    drawChevron(
        *context.painter,
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(size, size), context.rect()),
        context.state.rightToLeft ? Qt::LeftArrow : Qt::RightArrow,
        onRow ? rowForeground(context) : context.colour(ColourRole::MenuIconBase),
        context.lineWidth(LineWidth::Glyph));
    return true;
}

/** Two upright lines: what is taken hold of to make a column wider. */
bool paintColumnGrip(const ElementContext &context)
{
    const QRect rect = context.rect();
    const int width = context.metric(QStyle::PM_DefaultFrameWidth);
    const int distance = context.scaled(gripLineSpacing);
    const int height = rect.height() / 2;
    const QRect first(rect.center().x() - distance / 2, rect.center().y() - height / 2, width,
                      height);
    const QColor colour = context.colour(ColourRole::MenuIconBase);
    context.painter->fillRect(rect, context.colour(QPalette::Window));
    context.painter->fillRect(first, colour);
    context.painter->fillRect(first.translated(distance, 0), colour);
    return true;
}

} // namespace Vireling
