#include "vireling/style/paint_utils.h"

#include "vireling/palette/colour_mixing.h"
#include "vireling/style/design.h"

#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

class AntiAliasing
{
public:
    explicit AntiAliasing(QPainter &usedPainter)
        : painter(usedPainter)
        , before(usedPainter.testRenderHint(QPainter::Antialiasing))
    {
        painter.setRenderHint(QPainter::Antialiasing);
    }
    ~AntiAliasing() { painter.setRenderHint(QPainter::Antialiasing, before); }
    Q_DISABLE_COPY(AntiAliasing)

private:
    QPainter &painter;
    const bool before;
};

bool isVisible(const QColor &colour)
{
    return colour.isValid() && colour.alpha() > 0;
}

void strokePolyline(QPainter &painter, const QPointF *points, int count, const QColor &colour,
                    qreal strokeWidth)
{
    const AntiAliasing smooth(painter);
    const QPen before = painter.pen();
    painter.setPen(QPen(colour, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    painter.drawPolyline(points, count);
    painter.setPen(before);
}

/** White on the plain highlight reads at 4.4:1; a tenth of shadow makes that 5.2:1. */
constexpr qreal accentShare = 0.9;

constexpr qreal disabledFrameShare = 0.5;
constexpr qreal hoverShare = 0.5;
constexpr qreal pressedShare = 0.4;

} // namespace

void drawPanel(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill,
               const QColor &frame, qreal frameWidth)
{
    const bool framed = frameWidth > 0 && isVisible(frame);
    if (rect.isEmpty() || (!framed && !isVisible(fill)))
        return;
    const QPen penBefore = painter.pen();
    const QBrush brushBefore = painter.brush();
    painter.setBrush(isVisible(fill) ? QBrush(fill) : QBrush(Qt::NoBrush));
    painter.setPen(framed ? QPen(frame, frameWidth, Qt::SolidLine, Qt::SquareCap, Qt::MiterJoin)
                          : QPen(Qt::NoPen));
    const qreal inset = framed ? frameWidth / 2 : 0;
    const QRectF outline = rect.adjusted(inset, inset, -inset, -inset);
    const qreal corner = std::max<qreal>(0, radius - inset);
    const AntiAliasing smooth(painter);
    if (corner > 0)
        painter.drawRoundedRect(outline, corner, corner);
    else
        painter.drawRect(outline);
    painter.setPen(penBefore);
    painter.setBrush(brushBefore);
}

void drawChevron(QPainter &painter, const QRectF &rect, Qt::ArrowType direction,
                 const QColor &colour, qreal strokeWidth)
{
    if (rect.isEmpty() || direction == Qt::NoArrow)
        return;
    const qreal reach = std::min(rect.width(), rect.height()) / 4; // half the open side
    const qreal depth = reach / 2;                                 // half the tip's height
    const QPointF centre = rect.center();
    const bool upright = direction == Qt::UpArrow || direction == Qt::DownArrow;
    const qreal tip = direction == Qt::DownArrow || direction == Qt::RightArrow ? depth : -depth;
    const auto at = [&](qreal across, qreal along) {
        return centre + (upright ? QPointF(across, along) : QPointF(along, across));
    };
    const QPointF points[] = {at(-reach, -tip), at(0, tip), at(reach, -tip)};
    strokePolyline(painter, points, 3, colour, strokeWidth);
}

void drawCheckMark(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth)
{
    const qreal unit = std::min(rect.width(), rect.height()) / 12;
    const QPointF centre = rect.center();
    const QPointF points[] = {centre + QPointF(-3, 0.25) * unit, centre + QPointF(-0.9, 2.4) * unit,
                              centre + QPointF(3.1, -2.2) * unit};
    strokePolyline(painter, points, 3, colour, strokeWidth);
}

void drawCross(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth)
{
    const qreal reach = std::min(rect.width(), rect.height()) / 4;
    const QPointF centre = rect.center();
    const QPointF falling[] = {centre + QPointF(-reach, -reach), centre + QPointF(reach, reach)};
    const QPointF rising[] = {centre + QPointF(-reach, reach), centre + QPointF(reach, -reach)};
    strokePolyline(painter, falling, 2, colour, strokeWidth);
    strokePolyline(painter, rising, 2, colour, strokeWidth);
}

void drawSeparator(QPainter &painter, const QRect &rect, Qt::Orientation orientation,
                   const QColor &colour, int width)
{
    QRect line = rect;
    if (orientation == Qt::Horizontal) {
        line.setTop(rect.top() + (rect.height() - width) / 2);
        line.setHeight(width);
    } else {
        line.setLeft(rect.left() + (rect.width() - width) / 2);
        line.setWidth(width);
    }
    painter.fillRect(line, colour);
}

QColor focusColour(const ElementContext &context)
{
    return context.colour(QPalette::Highlight, QPalette::Active);
}

void drawFocusRing(const ElementContext &context, const QRectF &rect, qreal radius)
{
    const qreal width = context.lineWidth(LineWidth::Emphasis);
    const qreal gap = context.scaledExactly(1);
    drawPanel(*context.painter, rect.adjusted(width, width, -width, -width), radius - width,
              QColor(), context.colour(QPalette::Window), gap);
    drawPanel(*context.painter, rect, radius, QColor(), focusColour(context), width);
}

QColor accentBase(const ElementContext &context)
{
    return mixColours(context.colour(QPalette::Highlight), context.colour(QPalette::Shadow),
                      accentShare);
}

QColor frameColour(const ElementContext &context)
{
    const QColor frame = context.colour(ColourRole::Frame);
    if (!context.state.enabled)
        return mixColours(frame, context.colour(QPalette::Window), disabledFrameShare);
    return context.state.hovered ? context.colour(ColourRole::PanelFrame) : frame;
}

QColor buttonSurface(const ElementContext &context)
{
    const QColor button = context.colour(QPalette::Button);
    if (!context.state.enabled)
        return context.state.checked
                   ? mixColours(context.colour(ColourRole::ActiveText), button, 0.4)
                   : QColor(Qt::transparent);
    if (context.state.pressed)
        return mixColours(context.colour(QPalette::Highlight), button, pressedShare);
    if (context.state.checked)
        return context.colour(ColourRole::ActiveBase);
    if (context.state.hovered)
        return mixColours(context.colour(ColourRole::HoverBase), button, hoverShare);
    return button;
}

QColor buttonForeground(const ElementContext &context)
{
    const bool inverted = context.state.enabled && context.state.checked && !context.state.pressed;
    return inverted ? context.colour(ColourRole::ActiveText) : context.colour(QPalette::ButtonText);
}

int fieldHeight(const ElementContext &context, int contentsHeight)
{
    const int frame = int(std::ceil(context.metric(QStyle::PM_DefaultFrameWidth)));
    const int inner = std::max({contentsHeight, context.option.fontMetrics.height(),
                                context.metric(QStyle::PM_SmallIconSize)});
    return inner + 2 * (frame + context.scaled(Design::fieldVerticalPadding));
}

} // namespace Vireling
