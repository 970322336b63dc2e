#include "vireling/style/elements/tool_bar.h"

#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal dotSize = 2;
constexpr qreal separatorInset = 4;
constexpr int handleDots = 4;

/** The line between a docked tool bar and what it serves; a floating one is framed. */
void paintEdge(const ElementContext &context, Qt::ToolBarArea area)
{
    const QColor colour = context.colour(ColourRole::Frame);
    QRect edge = context.rect();
    const int width = context.metric(QStyle::PM_ToolBarFrameWidth);
    switch (area) {
    case Qt::TopToolBarArea:
        edge.setTop(edge.bottom() - width + 1);
        break;
    case Qt::BottomToolBarArea:
        edge.setHeight(width);
        break;
    case Qt::LeftToolBarArea:
        edge.setLeft(edge.right() - width + 1);
        break;
    case Qt::RightToolBarArea:
        edge.setWidth(width);
        break;
    default:
        drawPanel(*context.painter, context.rect(), 0, QColor(), colour, width);
        return;
    }
    context.painter->fillRect(edge, colour);
}

} // namespace

bool paintToolBar(const ElementContext &context)
{
    const auto *toolBar = context.as<QStyleOptionToolBar>();
    if (!toolBar)
        return false;
    paintToolBarPanel(context);
    paintEdge(context, toolBar->toolBarArea);
    return true;
}

bool paintToolBarPanel(const ElementContext &context)
{
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    return true;
}

bool paintToolBarHandle(const ElementContext &context)
{
    const int dot = std::max(1, context.scaled(dotSize));
    const QSize counts = context.state.horizontal ? QSize(2, handleDots) : QSize(handleDots, 2);
    drawGripDots(*context.painter, context.rect(), counts, dot,
                 context.colour(ColourRole::MenuIconBase));
    return true;
}

bool paintToolBarSeparator(const ElementContext &context)
{
    const int inset = context.scaled(separatorInset);
    const bool upright = context.state.horizontal;
    const QRect rect = upright ? context.rect().adjusted(0, inset, 0, -inset)
                               : context.rect().adjusted(inset, 0, -inset, 0);
    if (rect.isEmpty())
        return true;
    drawSeparator(*context.painter, rect, upright ? Qt::Vertical : Qt::Horizontal,
                  context.colour(ColourRole::Frame),
                  context.metric(QStyle::PM_ToolBarSeparatorExtent));
    return true;
}

} // namespace Vireling
