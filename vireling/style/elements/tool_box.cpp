#include "vireling/style/elements/tool_box.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

namespace Vireling {

namespace {

constexpr qreal accentWidth = 3;

QRect chevronBox(const ElementContext &context)
{
    QRect box = context.rect();
    box.setWidth(context.scaled(Design::arrowBoxWidth));
    return context.visual(box.translated(context.scaled(accentWidth), 0));
}

Qt::ArrowType chevronDirection(const ElementContext &context)
{
    if (context.state.selected)
        return Qt::DownArrow;
    return context.state.rightToLeft ? Qt::LeftArrow : Qt::RightArrow;
}

/** Draws the icon at the leading edge and answers what is left for the text. */
QRect paintIcon(const ElementContext &context, const QIcon &icon, const QRect &room)
{
    if (icon.isNull())
        return room;
    const int extent = context.metric(QStyle::PM_SmallIconSize);
    const QRect box = QStyle::alignedRect(
        context.option.direction, Qt::AlignLeft | Qt::AlignVCenter, QSize(extent, extent), room);
    icon.paint(context.painter, box, Qt::AlignCenter,
               context.state.enabled ? QIcon::Normal : QIcon::Disabled);
    const int taken = extent + context.scaled(Design::iconTextSpacing);
    return context.state.rightToLeft ? room.adjusted(0, 0, -taken, 0)
                                     : room.adjusted(taken, 0, 0, 0);
}

} // namespace

bool paintToolBoxTabShape(const ElementContext &context)
{
    if (!context.as<QStyleOptionToolBox>())
        return false;
    drawPanel(*context.painter, context.rect(), context.scaledExactly(Design::controlRadius),
              buttonSurface(context), frameColour(context), context.lineWidth(LineWidth::Frame));
    if (context.state.selected) {
        const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
        QRect bar = context.rect().adjusted(frame, frame, -frame, -frame);
        bar.setWidth(context.scaled(accentWidth));
        context.painter->fillRect(context.visual(bar), context.colour(QPalette::Highlight));
    }
    drawChevron(*context.painter, chevronBox(context), chevronDirection(context),
                context.colour(QPalette::ButtonText), context.lineWidth(LineWidth::Glyph));
    return true;
}

bool paintToolBoxTabLabel(const ElementContext &context)
{
    const auto *tab = context.as<QStyleOptionToolBox>();
    if (!tab)
        return false;
    const QRect contents =
        context.style.proxy()->subElementRect(QStyle::SE_ToolBoxTabContents, tab, context.widget);
    const QRect text = paintIcon(context, tab->icon, contents);
    const bool underline =
        context.style.proxy()->styleHint(QStyle::SH_UnderlineShortcut, tab, context.widget);
    const auto side = QStyle::visualAlignment(tab->direction, Qt::AlignLeft | Qt::AlignVCenter);
    context.painter->setPen(context.colour(QPalette::ButtonText));
    context.painter->drawText(
        text, int(side) | (underline ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
        fittingText(tab->fontMetrics, tab->text, text.width(), Qt::TextShowMnemonic));
    if (context.state.focused)
        drawFocusRing(context, context.rect(), context.scaledExactly(Design::controlRadius));
    return true;
}

std::optional<QRect> toolBoxTabContents(const ElementContext &context)
{
    const int leading = context.scaled(accentWidth) + context.scaled(Design::arrowBoxWidth);
    const int trailing = context.scaled(Design::fieldPadding);
    const QRect contents = context.rect().adjusted(leading, 0, -trailing, 0);
    return context.visual(contents);
}

} // namespace Vireling
