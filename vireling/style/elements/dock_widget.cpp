#include "vireling/style/elements/dock_widget.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

namespace Vireling {

namespace {

/** A rectangle of a title bar read bottom to top, in the coordinates of the turned painter. */
QRect turned(const QRect &part, const QRect &titleBar)
{
    return {titleBar.left() + titleBar.bottom() - part.bottom(),
            titleBar.top() + part.left() - titleBar.left(), part.height(), part.width()};
}

void turnPainter(QPainter &painter, const QRect &titleBar)
{
    painter.translate(titleBar.left(), titleBar.top() + titleBar.height());
    painter.rotate(-90);
    painter.translate(-titleBar.left(), -titleBar.top());
}

} // namespace

bool paintDockWidgetTitle(const ElementContext &context)
{
    const auto *dock = context.as<QStyleOptionDockWidget>();
    if (!dock)
        return false;
    QPainter &painter = *context.painter;
    const QRect bar = context.rect();
    QRect edge = bar;
    if (dock->verticalTitleBar)
        edge.setLeft(bar.right());
    else
        edge.setTop(bar.bottom());
    painter.fillRect(bar, context.colour(ColourRole::HeaderBase));
    painter.fillRect(edge, context.colour(ColourRole::Frame));
    QRect text = context.style.proxy()->subElementRect(QStyle::SE_DockWidgetTitleBarText, dock,
                                                       context.widget);
    if (text.isEmpty())
        return true;
    Qt::Alignment side = QStyle::visualAlignment(dock->direction, Qt::AlignLeft);
    if (dock->verticalTitleBar) {
        turnPainter(painter, bar);
        text = turned(text, bar);
        side = Qt::AlignLeft; // the buttons are at the top in both directions
    }
    painter.setPen(context.colour(ColourRole::HeaderText));
    painter.drawText(
        text, int(side | Qt::AlignVCenter | Qt::TextHideMnemonic),
        fittingText(dock->fontMetrics, dock->title, text.width(), Qt::TextShowMnemonic));
    return true;
}

bool paintDockWidgetFrame(const ElementContext &context)
{
    drawPanel(*context.painter, context.rect(), 0, QColor(), context.colour(ColourRole::PanelFrame),
              context.metric(QStyle::PM_DockWidgetFrameWidth));
    return true;
}

bool paintDockWidgetResizeHandle(const ElementContext &context)
{
    const bool upright = context.rect().height() > context.rect().width();
    drawSeparator(*context.painter, context.rect(), upright ? Qt::Vertical : Qt::Horizontal,
                  context.state.hovered ? focusColour(context) : context.colour(ColourRole::Frame),
                  context.metric(QStyle::PM_DockWidgetSeparatorExtent));
    return true;
}

std::optional<QRect> dockWidgetTitleText(const ElementContext &context)
{
    const auto *dock = context.as<QStyleOptionDockWidget>();
    if (!dock)
        return std::nullopt;
    const QRect room = context.style.QCommonStyle::subElementRect(QStyle::SE_DockWidgetTitleBarText,
                                                                  dock, context.widget);
    const int padding = context.scaled(Design::fieldPadding);
    const QRect text = dock->verticalTitleBar ? room.adjusted(0, padding, 0, -padding)
                                              : room.adjusted(padding, 0, -padding, 0);
    return text.intersected(context.rect());
}

} // namespace Vireling
