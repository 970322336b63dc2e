#include "vireling/style/elements/tab_bar.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/tab_bar_geometry.h"
#include "vireling/style/paint_utils.h"

#include <QLinearGradient>
#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal crossInset = 2; ///< of a close button's cross, which is less than a title bar's

/** A surface whose corners away from the pane are round and whose edge towards it is open. */
void drawOpenPanel(const ElementContext &context, TabSide side, const QRect &rect,
                   const QRect &clip, const QColor &fill, const QColor &frame)
{
    const int radius = context.scaled(Design::controlRadius);
    context.painter->save();
    context.painter->setClipRect(clip, Qt::IntersectClip);
    drawPanel(*context.painter, reachingInwards(rect, side, 2 * radius), radius, fill, frame,
              context.lineWidth(LineWidth::TabFrame));
    context.painter->restore();
}

/** It covers the pane's line, so that tab and pane are one. */
void paintSelectedTab(const ElementContext &context, TabSide side, const QRect &body)
{
    drawOpenPanel(context, side, body, body, context.colour(QPalette::Window),
                  context.colour(ColourRole::Frame));
    const QColor bar = context.colour(QPalette::Highlight);
    const int thickness = emphasisWidth(context);
    drawOpenPanel(context, side, body, outerStrip(body, side, thickness), bar, QColor());
}

/** It stops short of the pane's line. */
void paintUnselectedTab(const ElementContext &context, TabSide side, const QRect &body)
{
    const QRect rect = reachingInwards(body, side, -context.metric(QStyle::PM_TabBarBaseOverlap));
    QColor fill = context.colour(ColourRole::TabBase);
    if (!context.state.enabled)
        fill = QColor();
    else if (context.state.hovered || context.state.pressed)
        fill = buttonSurface(context);
    drawOpenPanel(context, side, rect, rect, fill, frameColour(context));
}

/** Within the frame and below the bar of the selected tab, which stays to be seen. */
void paintTabFocus(const ElementContext &context, TabSide side, const QRect &body)
{
    const int frame = qRound(context.lineWidth(LineWidth::TabFrame));
    const int bar = emphasisWidth(context);
    const int depth = isUpright(side) ? body.width() : body.height();
    const QRect below = innerStrip(body, side, depth - bar);
    drawFocusRing(context, below.adjusted(frame, frame, -frame, -frame),
                  context.scaled(Design::indicatorRadius));
}

void drawTabIcon(const ElementContext &context, const QStyleOptionTab &tab, const QRect &rect)
{
    const auto mode = context.state.enabled ? QIcon::Normal : QIcon::Disabled;
    const auto state = context.state.selected ? QIcon::On : QIcon::Off;
    tab.icon.paint(context.painter, rect, Qt::AlignCenter, mode, state);
}

} // namespace

bool paintTab(const ElementContext &context)
{
    const auto *tab = context.as<QStyleOptionTab>();
    if (!tab)
        return false;
    const QStyle &style = *context.style.proxy();
    style.drawControl(QStyle::CE_TabBarTabShape, tab, context.painter, context.widget);
    style.drawControl(QStyle::CE_TabBarTabLabel, tab, context.painter, context.widget);
    return true;
}

bool paintTabShape(const ElementContext &context)
{
    const auto *tab = context.as<QStyleOptionTab>();
    if (!tab)
        return false;
    const TabSide side = tabSide(tab->shape);
    const QRect body = tabBody(context, *tab);
    if (body.isEmpty())
        return true;
    if (context.state.selected)
        paintSelectedTab(context, side, body);
    else
        paintUnselectedTab(context, side, body);
    if (context.state.focused)
        paintTabFocus(context, side, body);
    return true;
}

bool paintTabLabel(const ElementContext &context)
{
    const auto *tab = context.as<QStyleOptionTab>();
    if (!tab)
        return false;
    const TabLabelLayout layout = tabLabelLayout(context, *tab);
    // Icon and text are centred together where the tab is wider than they are.
    const int textWidth = tab->fontMetrics.size(Qt::TextShowMnemonic, tab->text).width();
    const int spare = std::max(0, layout.text.width() - textWidth) / 2;
    const bool mirrored = !isUpright(tabSide(tab->shape)) && context.state.rightToLeft;
    if (!layout.icon.isNull())
        drawTabIcon(context, *tab,
                    layout.toWidget.mapRect(layout.icon.translated(mirrored ? -spare : spare, 0)));

    context.painter->setTransform(layout.toWidget, true);
    context.painter->setPen(context.colour(QPalette::WindowText));
    const bool underlined = context.style.proxy()->styleHint(QStyle::SH_UnderlineShortcut,
                                                             &context.option, context.widget);
    context.painter->drawText(
        layout.text, Qt::AlignCenter | (underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
        tab->text);
    return true;
}

bool paintTabBarBase(const ElementContext &context)
{
    const auto *base = context.as<QStyleOptionTabBarBase>();
    if (!base)
        return false;
    const int width = qRound(context.lineWidth(LineWidth::TabFrame));
    context.painter->fillRect(innerStrip(base->rect, tabSide(base->shape), width),
                              context.colour(ColourRole::Frame));
    return true;
}

/** A tab that is cut off fades into the window and does not show through the scroll buttons. */
bool paintTabBarTear(const ElementContext &context, QStyle::PrimitiveElement element)
{
    const auto *tab = context.as<QStyleOptionTab>();
    if (!tab)
        return false;
    const TabSide side = tabSide(tab->shape);
    const bool upright = isUpright(side);
    const QRect tear =
        reachingInwards(tab->rect, side, -context.metric(QStyle::PM_TabBarBaseOverlap));
    if (tear.isEmpty())
        return true;
    const bool outwards = element == QStyle::PE_IndicatorTabTearRight;
    const bool towardsEnd = outwards != (!upright && context.state.rightToLeft);

    const QRectF edges(tear);
    const QPointF end = upright ? edges.bottomLeft() : edges.topRight();
    QLinearGradient fade(towardsEnd ? edges.topLeft() : end, towardsEnd ? end : edges.topLeft());
    const QColor ground = context.colour(QPalette::Window);
    QColor clear = ground;
    clear.setAlpha(0);
    const qreal length = upright ? edges.height() : edges.width();
    fade.setColorAt(0, clear);
    fade.setColorAt(std::min<qreal>(1, context.scaled(tabTearLength) / length), ground);
    context.painter->fillRect(tear, fade);
    return true;
}

bool paintTabClose(const ElementContext &context)
{
    QStyleOption option(context.option);
    if (option.state & QStyle::State_Raised) // says the button that the pointer is on it
        option.state |= QStyle::State_MouseOver;
    const ElementContext button = context.with(option);
    const bool active = button.state.hovered || button.state.pressed;
    if (active)
        drawPanel(*context.painter, context.rect(), context.scaled(Design::indicatorRadius),
                  buttonSurface(button), QColor(), 0);
    const int inset = context.scaled(crossInset);
    drawCross(*context.painter, context.rect().adjusted(inset, inset, -inset, -inset),
              context.colour(active ? QPalette::WindowText : QPalette::PlaceholderText),
              context.lineWidth(LineWidth::Glyph));
    return true;
}

} // namespace Vireling
