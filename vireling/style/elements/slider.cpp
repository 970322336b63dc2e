#include "vireling/style/elements/slider.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal tickLength = 4;
constexpr int leastTickSpacing = 3; // pixels of the screen: closer ticks run into a bar

/** A slider's measures along its travel and across it, whichever way it lies. */
struct SliderLayout
{
    SliderLayout(const ElementContext &context, const QStyleOptionSlider &slider);

    /** A rectangle of the lying slider, from its top left, as the slider stands. */
    QRect place(int x, int y, int width, int height) const
    {
        return horizontal ? QRect(bounds.x() + x, bounds.y() + y, width, height)
                          : QRect(bounds.x() + y, bounds.y() + x, height, width);
    }
    int positionOf(const QStyleOptionSlider &slider, int value) const
    {
        return QStyle::sliderPositionFromValue(slider.minimum, slider.maximum, value, travel,
                                               slider.upsideDown);
    }

    QRect bounds;
    bool horizontal;
    bool ticksBefore; ///< above or to the left
    bool ticksAfter;
    int control;    ///< the side of the square handle
    int length;     ///< of the slider along its travel
    int travel;     ///< how far the handle can go
    int across;     ///< where the handle begins
    int tickOffset; ///< between handle and ticks
    int tick;       ///< how long a tick is
};

SliderLayout::SliderLayout(const ElementContext &context, const QStyleOptionSlider &slider)
    : bounds(slider.rect)
    , horizontal(slider.orientation == Qt::Horizontal)
    , ticksBefore(slider.tickPosition & QSlider::TicksAbove)
    , ticksAfter(slider.tickPosition & QSlider::TicksBelow)
    , control(context.metric(QStyle::PM_SliderControlThickness))
    , length(horizontal ? bounds.width() : bounds.height())
    , travel(std::max(0, context.metric(QStyle::PM_SliderSpaceAvailable)))
    , across(0)
    , tickOffset(context.metric(QStyle::PM_SliderTickmarkOffset))
    , tick(context.scaled(tickLength))
{
    const int thickness = horizontal ? bounds.height() : bounds.width();
    const int before = ticksBefore ? tickOffset + tick : 0;
    const int after = ticksAfter ? tickOffset + tick : 0;
    const int centred = (thickness - before - control - after) / 2 + before;
    across = std::clamp(centred, 0, std::max(0, thickness - control));
}

QRect handleRect(const SliderLayout &layout, const QStyleOptionSlider &slider)
{
    return layout.place(layout.positionOf(slider, slider.sliderPosition), layout.across,
                        layout.control, layout.control);
}

/** Where the handle goes. It is as thick as the handle, so that it is as easy to hit. */
QRect grooveRect(const SliderLayout &layout)
{
    return layout.place(0, layout.across, layout.length, layout.control);
}

void paintGroove(const ElementContext &context, const SliderLayout &layout,
                 const QStyleOptionSlider &slider)
{
    const int thickness = context.scaled(Design::grooveThickness);
    const int inset = (layout.control - thickness) / 2;
    const int end = layout.length - inset;
    const int value = layout.positionOf(slider, slider.sliderPosition) + layout.control / 2;
    const auto piece = [&](int from, int to) {
        return layout.place(from, layout.across + inset, to - from, thickness);
    };
    const qreal radius = thickness / 2.0;
    drawPanel(*context.painter, piece(inset, end), radius, context.colour(ColourRole::SliderBase),
              QColor(), 0);
    drawPanel(*context.painter, slider.upsideDown ? piece(value, end) : piece(inset, value), radius,
              context.colour(QPalette::Highlight), QColor(), 0);
}

void paintTicks(const ElementContext &context, const SliderLayout &layout,
                const QStyleOptionSlider &slider)
{
    const QColor colour = tickColour(context);
    const int middle = (layout.control - 1) / 2;
    const int before = layout.across - layout.tickOffset - layout.tick;
    const int after = layout.across + layout.control + layout.tickOffset;
    for (const int value : tickValues(slider, layout.travel)) {
        const int along = layout.positionOf(slider, value) + middle;
        if (layout.ticksBefore)
            context.painter->fillRect(layout.place(along, before, 1, layout.tick), colour);
        if (layout.ticksAfter)
            context.painter->fillRect(layout.place(along, after, 1, layout.tick), colour);
    }
}

void paintHandle(const ElementContext &context, const QRect &handle, bool active)
{
    const qreal radius = handle.width() / 2.0;
    const qreal halo = context.scaledExactly(1);
    drawPanel(*context.painter, QRectF(handle).adjusted(-halo, -halo, halo, halo), radius + halo,
              context.colour(QPalette::Window), QColor(), 0);

    const bool pressed = active && context.state.pressed;
    const bool hovered = active && context.state.hovered;
    const QColor fill =
        pressed ? context.colour(QPalette::Highlight) : context.colour(ColourRole::IndicatorBase);
    if (context.state.focused) {
        const qreal inset = emphasisWidth(context) + context.scaledExactly(1);
        drawPanel(*context.painter, QRectF(handle).adjusted(inset, inset, -inset, -inset),
                  radius - inset, fill, QColor(), 0);
        drawFocusRing(context, handle, radius);
    } else if (hovered && !pressed) {
        drawPanel(*context.painter, handle, radius, fill, focusColour(context),
                  emphasisWidth(context));
    } else {
        drawPanel(*context.painter, handle, radius, fill, context.colour(ColourRole::PanelFrame),
                  context.metric(QStyle::PM_DefaultFrameWidth));
    }
}

} // namespace

QVector<int> tickValues(const QStyleOptionSlider &range, int span)
{
    const qint64 steps = qint64(range.maximum) - range.minimum;
    if (steps <= 0 || span <= 0)
        return {};
    const qint64 wanted = std::max(range.tickInterval > 0 ? range.tickInterval : range.pageStep, 1);
    const qint64 least = (leastTickSpacing * steps + span - 1) / span;
    const qint64 interval = wanted * std::max<qint64>(1, (least + wanted - 1) / wanted);

    QVector<int> values;
    for (qint64 value = range.minimum; value <= range.maximum; value += interval)
        values.append(int(value));
    // Ranges like 0 to 99 in tens end on a tick as well.
    if (interval > 1 && values.last() + interval == qint64(range.maximum) + 1)
        values.append(range.maximum);
    return values;
}

QColor tickColour(const ElementContext &context)
{
    return context.colour(QPalette::PlaceholderText);
}

bool paintSlider(const ElementContext &context)
{
    const auto *slider = context.as<QStyleOptionSlider>();
    if (!slider)
        return false;
    if (slider->rect.isEmpty())
        return true;
    const SliderLayout layout(context, *slider);
    if (slider->subControls & QStyle::SC_SliderTickmarks)
        paintTicks(context, layout, *slider);
    if (slider->subControls & QStyle::SC_SliderGroove)
        paintGroove(context, layout, *slider);
    if (slider->subControls & QStyle::SC_SliderHandle)
        paintHandle(context, handleRect(layout, *slider),
                    slider->activeSubControls & QStyle::SC_SliderHandle);
    return true;
}

std::optional<QRect> sliderPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *slider = context.as<QStyleOptionSlider>();
    if (!slider)
        return std::nullopt;
    const SliderLayout layout(context, *slider);
    switch (part) {
    case QStyle::SC_SliderHandle:
        return handleRect(layout, *slider);
    case QStyle::SC_SliderGroove:
        return grooveRect(layout);
    case QStyle::SC_SliderTickmarks:
        return layout.ticksBefore || layout.ticksAfter ? slider->rect : QRect();
    default:
        return QRect();
    }
}

std::optional<QRect> sliderFocusRect(const ElementContext &context)
{
    return sliderPart(context, QStyle::SC_SliderHandle);
}

std::optional<QSize> sliderSize(const ElementContext &context, const QSize &contents)
{
    const auto *slider = context.as<QStyleOptionSlider>();
    if (!slider)
        return std::nullopt;
    const SliderLayout layout(context, *slider);
    const int length = std::max(context.metric(QStyle::PM_SliderLength),
                                layout.horizontal ? contents.width() : contents.height());
    const int thickness =
        context.metric(QStyle::PM_SliderThickness) +
        (int(layout.ticksBefore) + int(layout.ticksAfter)) * (layout.tickOffset + layout.tick);
    return layout.horizontal ? QSize(length, thickness) : QSize(thickness, length);
}

} // namespace Vireling
