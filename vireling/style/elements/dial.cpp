#include "vireling/style/elements/dial.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/slider.h"
#include "vireling/style/kept_picture.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>
#include <QtMath>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

constexpr qreal tickLength = 4;
constexpr qreal tickOffset = 2;
constexpr qreal grooveToKnob = 4;
constexpr qreal pointerThickness = 3;

/*
 * Where QDial reads the mouse: counter-clockwise degrees from three o'clock. A
 * wrapping dial turns round from six o'clock, others leave a gap at the bottom.
 */
constexpr qreal wrappingStart = 270;
constexpr qreal wrappingSweep = 360;
constexpr qreal start = 240;
constexpr qreal sweep = 300;

/** A dial's circles, from the outside inwards. */
struct DialLayout
{
    DialLayout(const ElementContext &context, const QStyleOptionSlider &dial);

    bool isEmpty() const { return knob < 1; }
    QPointF at(qreal degrees, qreal radius) const
    {
        const qreal angle = qDegreesToRadians(degrees);
        return centre + QPointF(std::cos(angle), -std::sin(angle)) * radius;
    }
    QRectF circle(qreal radius) const
    {
        return {centre.x() - radius, centre.y() - radius, 2 * radius, 2 * radius};
    }
    qreal degreesOf(const QStyleOptionSlider &dial, int value) const;

    QPointF centre;
    qreal outer;        ///< the outer radius of all
    qreal tick;         ///< how far ticks reach inwards from there; 0 without ticks
    qreal grooveStroke; ///< the groove's thickness
    qreal groove;       ///< the radius of the groove's middle line
    qreal knob;
};

DialLayout::DialLayout(const ElementContext &context, const QStyleOptionSlider &dial)
    : centre(QRectF(dial.rect).center())
    , outer(std::floor(std::min(dial.rect.width(), dial.rect.height()) / 2.0))
    , tick(dial.subControls & QStyle::SC_DialTickmarks ? context.scaledExactly(tickLength) : 0)
    , grooveStroke(context.scaledExactly(Design::grooveThickness))
    , groove(outer - (tick > 0 ? tick + context.scaledExactly(tickOffset) : 0) - grooveStroke / 2)
    , knob(groove - grooveStroke / 2 - context.scaledExactly(grooveToKnob))
{}

qreal DialLayout::degreesOf(const QStyleOptionSlider &dial, int value) const
{
    const qreal range = qreal(dial.maximum) - dial.minimum;
    const qreal risen = range > 0 ? (qreal(value) - dial.minimum) / range : 0;
    // Qt calls a dial that rises clockwise, the usual one, upside down.
    const qreal share = std::clamp<qreal>(dial.upsideDown ? risen : 1 - risen, 0, 1);
    return dial.dialWrapping ? wrappingStart - share * wrappingSweep : start - share * sweep;
}

void paintArc(QPainter &painter, const DialLayout &layout, qreal from, qreal to,
              const QColor &colour)
{
    painter.setPen(QPen(colour, layout.grooveStroke, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawArc(layout.circle(layout.groove), qRound(from * 16), qRound((to - from) * 16));
}

/** The whole groove, which is the same for every value. */
void paintGround(const ElementContext &context, const DialLayout &layout, PictureShape shape)
{
    const QColor colour = context.colour(ColourRole::SliderBase);
    const QRectF rect = layout.circle(layout.groove + layout.grooveStroke / 2);
    const PictureKey key{shape, colour, Qt::transparent, layout.grooveStroke, layout.groove};
    drawKept(*context.painter, rect, key, [&](QPainter &fresh) {
        fresh.translate(-rect.topLeft());
        if (shape == PictureShape::DialRing)
            paintArc(fresh, layout, 0, wrappingSweep, colour);
        else
            paintArc(fresh, layout, start, start - sweep, colour);
    });
}

void paintGroove(const ElementContext &context, const DialLayout &layout,
                 const QStyleOptionSlider &dial)
{
    if (dial.dialWrapping) {
        paintGround(context, layout, PictureShape::DialRing); // it has no end to fill from
        return;
    }
    paintGround(context, layout, PictureShape::DialArc);
    const qreal from = layout.degreesOf(dial, dial.minimum);
    const qreal to = layout.degreesOf(dial, dial.sliderPosition);
    if (!qFuzzyCompare(from, to))
        paintArc(*context.painter, layout, from, to, context.colour(QPalette::Highlight));
}

void paintNotches(const ElementContext &context, const DialLayout &layout,
                  const QStyleOptionSlider &dial)
{
    const qreal turn = dial.dialWrapping ? wrappingSweep : sweep;
    const int span = int(qDegreesToRadians(turn) * (layout.outer - layout.tick));
    context.painter->setPen(
        QPen(tickColour(context), context.scaledExactly(1), Qt::SolidLine, Qt::FlatCap));
    for (const int value : tickValues(dial, span)) {
        const qreal degrees = layout.degreesOf(dial, value);
        context.painter->drawLine(layout.at(degrees, layout.outer - layout.tick),
                                  layout.at(degrees, layout.outer));
    }
}

void paintKnob(const ElementContext &context, const DialLayout &layout,
               const QStyleOptionSlider &dial)
{
    const QRectF circle = layout.circle(layout.knob);
    drawPanel(*context.painter, circle, layout.knob, buttonSurface(context), frameColour(context),
              context.metric(QStyle::PM_DefaultFrameWidth));
    if (context.state.focused)
        drawFocusRing(context, circle, layout.knob);

    const qreal degrees = layout.degreesOf(dial, dial.sliderPosition);
    context.painter->setRenderHint(QPainter::Antialiasing);
    context.painter->setPen(QPen(buttonForeground(context), context.scaledExactly(pointerThickness),
                                 Qt::SolidLine, Qt::RoundCap));
    context.painter->drawLine(layout.at(degrees, layout.knob * 0.5),
                              layout.at(degrees, layout.knob * 0.75));
}

} // namespace

bool paintDial(const ElementContext &context)
{
    const auto *dial = context.as<QStyleOptionSlider>();
    if (!dial)
        return false;
    const DialLayout layout(context, *dial);
    if (layout.isEmpty())
        return true;
    context.painter->setRenderHint(QPainter::Antialiasing);
    if (dial->subControls & QStyle::SC_DialTickmarks)
        paintNotches(context, layout, *dial);
    if (dial->subControls & QStyle::SC_DialGroove)
        paintGroove(context, layout, *dial);
    if (dial->subControls & QStyle::SC_DialHandle)
        paintKnob(context, layout, *dial);
    return true;
}

std::optional<QRect> dialPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *dial = context.as<QStyleOptionSlider>();
    if (!dial)
        return QRect(); // QCommonStyle knows no dials and says so in the log
    const DialLayout layout(context, *dial);
    if (layout.isEmpty())
        return QRect();
    switch (part) {
    case QStyle::SC_DialHandle:
        return layout.circle(layout.knob).toAlignedRect();
    case QStyle::SC_DialGroove:
        return layout.circle(layout.groove + layout.grooveStroke / 2).toAlignedRect();
    case QStyle::SC_DialTickmarks:
        return layout.tick > 0 ? layout.circle(layout.outer).toAlignedRect() : QRect();
    default:
        return QRect();
    }
}

} // namespace Vireling
