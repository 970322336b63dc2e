#include "vireling/style/elements/scroll_bar.h"

#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>
#include <limits>

namespace Vireling {

namespace {

/** Between the handle that is seen and the bar's edges; the whole breadth can be gripped. */
constexpr qreal sideInset = 4;
constexpr qreal hoveredSideInset = 3;
constexpr qreal endInset = 2;

/** What lies where along a scroll bar, before mirroring. */
struct ScrollBarLayout
{
    int length;
    int handleStart;
    int handleLength;
};

int handleLength(const ElementContext &context, const QStyleOptionSlider &bar, int length)
{
    const qint64 range = qint64(bar.maximum) - bar.minimum;
    if (range <= 0)
        return length;
    const qint64 page = std::max(bar.pageStep, 0);
    const int share = int(page * length / (range + page));
    return std::min(std::max(share, context.metric(QStyle::PM_ScrollBarSliderMin)), length);
}

ScrollBarLayout scrollBarLayout(const ElementContext &context, const QStyleOptionSlider &bar)
{
    const int length =
        std::max(0, bar.orientation == Qt::Horizontal ? bar.rect.width() : bar.rect.height());
    const int handle = handleLength(context, bar, length);
    const int start = QStyle::sliderPositionFromValue(bar.minimum, bar.maximum, bar.sliderPosition,
                                                      length - handle, bar.upsideDown);
    return {length, start, handle};
}

/** A piece of the whole breadth of the bar, on the screen. */
QRect piece(const ElementContext &context, const QStyleOptionSlider &bar, int start, int length)
{
    if (length <= 0)
        return {};
    if (bar.orientation == Qt::Vertical)
        return {bar.rect.x(), bar.rect.y() + start, bar.rect.width(), length};
    return context.visual({bar.rect.x() + start, bar.rect.y(), length, bar.rect.height()});
}

void paintPart(const ElementContext &context, const QStyleOptionSlider &bar,
               QStyle::SubControl part, QStyle::ControlElement element)
{
    QStyleOptionSlider option(bar);
    option.rect =
        context.style.proxy()->subControlRect(QStyle::CC_ScrollBar, &bar, part, context.widget);
    const bool pressedElsewhere = !(bar.activeSubControls & part);
    if (pressedElsewhere)
        option.state &= ~QStyle::State_Sunken;
    if ((bar.subControls & part) && !option.rect.isEmpty())
        context.style.proxy()->drawControl(element, &option, context.painter, context.widget);
}

} // namespace

bool paintScrollBar(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionSlider>();
    if (!bar)
        return false;
    if (bar->rect.isEmpty())
        return true;
    if (bar->subControls & QStyle::SC_ScrollBarGroove)
        context.painter->fillRect(bar->rect, context.colour(ColourRole::ScrollBarBase));
    paintPart(context, *bar, QStyle::SC_ScrollBarSubPage, QStyle::CE_ScrollBarSubPage);
    paintPart(context, *bar, QStyle::SC_ScrollBarAddPage, QStyle::CE_ScrollBarAddPage);
    // Bars that are always there, as in column views, keep still while nothing scrolls.
    if (bar->maximum > bar->minimum)
        paintPart(context, *bar, QStyle::SC_ScrollBarSlider, QStyle::CE_ScrollBarSlider);
    return true;
}

bool paintScrollBarSlider(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionSlider>();
    if (!bar)
        return false;
    const bool wide = context.state.hovered || context.state.pressed;
    const int across = context.scaled(wide ? hoveredSideInset : sideInset);
    const int along = context.scaled(endInset);
    const QRect handle = bar->orientation == Qt::Horizontal
                             ? bar->rect.adjusted(along, across, -along, -across)
                             : bar->rect.adjusted(across, along, -across, -along);
    if (handle.isEmpty())
        return true;

    QColor fill = context.colour(ColourRole::ScrollBarControlBase);
    QColor frame = context.colour(ColourRole::ScrollBarControlFrame);
    if (context.state.pressed) {
        // Not the highlight: views give that role, and with it their bars, the colour of rows.
        fill = context.colour(ColourRole::AlternateHighlight);
        frame = fill;
    } else if (context.state.hovered && (bar->activeSubControls & QStyle::SC_ScrollBarSlider)) {
        fill = frame;
        frame = context.colour(ColourRole::PanelFrame);
    }
    const qreal radius = std::min(handle.width(), handle.height()) / 2.0;
    drawPanel(*context.painter, handle, radius, fill, frame,
              context.metric(QStyle::PM_DefaultFrameWidth));
    if (context.state.focused)
        drawFocusRing(context, handle, radius);
    return true;
}

bool paintScrollBarPage(const ElementContext &context, QStyle::ControlElement)
{
    return context.as<QStyleOptionSlider>(); // the groove shows through
}

bool paintScrollBarButton(const ElementContext &context, QStyle::ControlElement)
{
    return context.as<QStyleOptionSlider>(); // the bars have none
}

bool paintScrollAreaCorner(const ElementContext &context)
{
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    return true;
}

std::optional<QRect> scrollBarPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *bar = context.as<QStyleOptionSlider>();
    if (!bar)
        return std::nullopt;
    const ScrollBarLayout layout = scrollBarLayout(context, *bar);
    const int handleEnd = layout.handleStart + layout.handleLength;
    const auto before = [&] { return piece(context, *bar, 0, layout.handleStart); };
    const auto after = [&] { return piece(context, *bar, handleEnd, layout.length - handleEnd); };
    // A press beside the handle brings the handle there, also where the bar counts backwards.
    switch (part) {
    case QStyle::SC_ScrollBarGroove:
        return bar->rect;
    case QStyle::SC_ScrollBarSlider:
        return piece(context, *bar, layout.handleStart, layout.handleLength);
    case QStyle::SC_ScrollBarSubPage:
        return bar->upsideDown ? after() : before();
    case QStyle::SC_ScrollBarAddPage:
        return bar->upsideDown ? before() : after();
    default:
        return QRect();
    }
}

std::optional<QSize> scrollBarSize(const ElementContext &context, const QSize &)
{
    const auto *bar = context.as<QStyleOptionSlider>();
    if (!bar)
        return std::nullopt;
    // Without line buttons a bar may be short; its handle still has room to move.
    const QSize size(2 * context.metric(QStyle::PM_ScrollBarSliderMin),
                     context.metric(QStyle::PM_ScrollBarExtent));
    return bar->orientation == Qt::Horizontal ? size : size.transposed();
}

} // namespace Vireling
