#include "vireling/style/elements/tab_widget.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/tab_bar_geometry.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

namespace Vireling {

bool paintTabWidgetFrame(const ElementContext &context)
{
    const auto *pane = context.as<QStyleOptionTabWidgetFrame>();
    if (!pane)
        return false;
    if (pane->lineWidth <= 0 || pane->rect.isEmpty())
        return true;
    const TabSide side = tabSide(pane->shape);
    const int radius = context.scaled(Design::controlRadius);
    const QColor frame = context.colour(ColourRole::Frame);

    // Square where the tabs stand, round on the other side.
    context.painter->setClipRect(pane->rect, Qt::IntersectClip);
    drawPanel(*context.painter, reachingOutwards(pane->rect, side, radius), radius, QColor(), frame,
              pane->lineWidth);
    context.painter->fillRect(outerStrip(pane->rect, side, pane->lineWidth), frame);
    return true;
}

namespace {

/** QCommonStyle places them above the pane, which overlaps the tabs: a high one would stick out. */
QRect cornerWidget(const ElementContext &context, QStyle::SubElement corner)
{
    QRect rect =
        context.style.QCommonStyle::subElementRect(corner, &context.option, context.widget);
    if (rect.bottom() > context.rect().bottom())
        rect.moveBottom(context.rect().bottom());
    if (rect.top() < context.rect().top())
        rect.moveTop(context.rect().top());
    return rect;
}

} // namespace

std::optional<QRect> tabWidgetPart(const ElementContext &context, QStyle::SubElement element)
{
    const auto *pane = context.as<QStyleOptionTabWidgetFrame>();
    if (!pane)
        return std::nullopt;
    if (element == QStyle::SE_TabWidgetLeftCorner || element == QStyle::SE_TabWidgetRightCorner)
        return cornerWidget(context, element);
    if (element != QStyle::SE_TabWidgetTabContents)
        return std::nullopt;
    const QRect rect =
        context.style.proxy()->subElementRect(QStyle::SE_TabWidgetTabPane, pane, context.widget);
    const int frame = pane->lineWidth;
    return rect.adjusted(frame, frame, -frame, -frame);
}

std::optional<QSize> tabWidgetSize(const ElementContext &context, const QSize &contents)
{
    const auto *pane = context.as<QStyleOptionTabWidgetFrame>();
    if (!pane)
        return std::nullopt;
    return contents + QSize(2 * pane->lineWidth, 2 * pane->lineWidth);
}

} // namespace Vireling
