#include "vireling/style/paint_utils.h"

#include "vireling/palette/colour_mixing.h"
#include "vireling/style/design.h"
#include "vireling/style/kept_picture.h"
#include "vireling/style/rounded_panel.h"

#include <QPainter>
#include <QPainterPath>

#include <algorithm>
#include <cmath>
#include <initializer_list>

namespace Vireling {

namespace {

bool isVisible(const QColor &colour)
{
    return colour.isValid() && colour.alpha() > 0;
}

/** Filled, not stroked: a stroke's mitred corners would come out paler than its sides. */
void drawSquarePanel(QPainter &painter, const QRectF &rect, const QColor &fill, const QColor &frame,
                     qreal frameWidth)
{
    const QRectF inner = rect.adjusted(frameWidth, frameWidth, -frameWidth, -frameWidth);
    if (isVisible(fill))
        painter.fillRect(inner, fill);
    if (frameWidth <= 0)
        return;
    const qreal height = rect.height() - 2 * frameWidth;
    painter.fillRect(QRectF(rect.topLeft(), QSizeF(rect.width(), frameWidth)), frame);
    painter.fillRect(QRectF(rect.left(), inner.bottom(), rect.width(), frameWidth), frame);
    painter.fillRect(QRectF(rect.left(), inner.top(), frameWidth, height), frame);
    painter.fillRect(QRectF(inner.right(), inner.top(), frameWidth, height), frame);
}

/** Open lines through `points`, which are relative to the centre of `rect`. */
using Strokes = std::initializer_list<std::initializer_list<QPointF>>;

void drawGlyph(QPainter &painter, const QRectF &rect, PictureShape shape, const Strokes &strokes,
               const QColor &colour, qreal strokeWidth)
{
    const PictureKey key{shape, colour, QColor(Qt::transparent), strokeWidth, 0};
    drawKept(painter, rect, key, [&](QPainter &fresh) {
        fresh.translate(rect.width() / 2, rect.height() / 2);
        fresh.setPen(QPen(colour, strokeWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
        for (const auto &points : strokes)
            fresh.drawPolyline(points.begin(), int(points.size()));
    });
}

PictureShape chevronShape(Qt::ArrowType direction)
{
    switch (direction) {
    case Qt::UpArrow:
        return PictureShape::ChevronUp;
    case Qt::LeftArrow:
        return PictureShape::ChevronLeft;
    case Qt::RightArrow:
        return PictureShape::ChevronRight;
    case Qt::DownArrow:
    case Qt::NoArrow:
        break;
    }
    return PictureShape::ChevronDown;
}

/** White on the plain highlight reads at 4.4:1; a tenth of shadow makes that 5.2:1. */
constexpr qreal accentShare = 0.9;

constexpr qreal disabledFrameShare = 0.5;
constexpr qreal hoverShare = 0.5;
constexpr qreal secondaryTextShare = 0.85;
constexpr qreal pressedShare = 0.4;
constexpr qreal disabledCheckedShare = 0.2;

/** Darker, not brighter: the text on the accent must stay readable. */
constexpr qreal accentHoverShare = 0.88;
constexpr qreal accentPressedShare = 0.74;

} // namespace

void drawPanel(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill,
               const QColor &frame, qreal frameWidth)
{
    const bool framed = frameWidth > 0 && isVisible(frame);
    if (rect.isEmpty() || (!framed && !isVisible(fill)))
        return;
    const qreal width = framed ? frameWidth : 0;
    if (radius <= width / 2) {
        drawSquarePanel(painter, rect, fill, frame, width);
        return;
    }
    const RoundedPanel panel{isVisible(fill) ? fill : QColor(Qt::transparent),
                             framed ? frame : QColor(Qt::transparent), width, radius};
    drawRoundedPanel(painter, rect, panel);
}

void drawChevron(QPainter &painter, const QRectF &rect, Qt::ArrowType direction,
                 const QColor &colour, qreal strokeWidth)
{
    if (rect.isEmpty() || direction == Qt::NoArrow)
        return;
    const qreal reach = std::min(rect.width(), rect.height()) / 4; // half the open side
    const qreal depth = reach / 2;                                 // half the tip's height
    const bool upright = direction == Qt::UpArrow || direction == Qt::DownArrow;
    const qreal tip = direction == Qt::DownArrow || direction == Qt::RightArrow ? depth : -depth;
    const auto at = [&](qreal across, qreal along) {
        return upright ? QPointF(across, along) : QPointF(along, across);
    };
    drawGlyph(painter, rect, chevronShape(direction),
              {{at(-reach, -tip), at(0, tip), at(reach, -tip)}}, colour, strokeWidth);
}

void drawCheckMark(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth)
{
    if (rect.isEmpty())
        return;
    const qreal unit = std::min(rect.width(), rect.height()) / 12;
    drawGlyph(painter, rect, PictureShape::CheckMark,
              {{QPointF(-3, 0.25) * unit, QPointF(-0.9, 2.4) * unit, QPointF(3.1, -2.2) * unit}},
              colour, strokeWidth);
}

void drawCross(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth)
{
    if (rect.isEmpty())
        return;
    const qreal reach = std::min(rect.width(), rect.height()) / 4;
    drawGlyph(painter, rect, PictureShape::Cross,
              {{QPointF(-reach, -reach), QPointF(reach, reach)},
               {QPointF(-reach, reach), QPointF(reach, -reach)}},
              colour, strokeWidth);
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

void drawGripDots(QPainter &painter, const QRect &rect, const QSize &counts, int dotSize,
                  const QColor &colour)
{
    const int pitch = 2 * dotSize;
    const QSize all = counts * pitch - QSize(dotSize, dotSize);
    const int left = rect.left() + (rect.width() - all.width()) / 2;
    const int top = rect.top() + (rect.height() - all.height()) / 2;
    for (int row = 0; row < counts.height(); ++row)
        for (int column = 0; column < counts.width(); ++column)
            painter.fillRect(left + column * pitch, top + row * pitch, dotSize, dotSize, colour);
}

QString fittingText(const QFontMetrics &metrics, const QString &text, int width, int flags)
{
    if (metrics.size(flags, text).width() <= width)
        return text;
    return metrics.elidedText(text, Qt::ElideRight, width, flags);
}

int emphasisWidth(const ElementContext &context)
{
    return std::max(1, qRound(context.lineWidth(LineWidth::Emphasis)));
}

QColor focusColour(const ElementContext &context)
{
    // not the option's: item views carry the colour of their selected rows there
    return context.style.palette().color(QPalette::Active, QPalette::Highlight);
}

void drawFocusRing(const ElementContext &context, const QRectF &rect, qreal radius)
{
    const int width = emphasisWidth(context);
    const qreal gap = std::max(1, context.scaled(1));
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
    QColor button = context.colour(QPalette::Button);
    if (!context.state.enabled)
        return context.state.checked ? mixColours(context.colour(ColourRole::ActiveText), button,
                                                  disabledCheckedShare)
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

QColor buttonSecondaryForeground(const ElementContext &context)
{
    QColor foreground = buttonForeground(context);
    // The pressed surface leaves no room for toning down; disabled text is faded already.
    if (context.state.pressed || !context.state.enabled)
        return foreground;
    return mixColours(foreground, buttonSurface(context), secondaryTextShare);
}

QColor secondaryText(const ElementContext &context)
{
    QColor text = context.colour(QPalette::WindowText);
    if (!context.state.enabled)
        return text; // faded already
    return mixColours(text, context.colour(QPalette::Window), secondaryTextShare);
}

QColor pressedFieldSurface(const ElementContext &context)
{
    return mixColours(context.colour(QPalette::Highlight), context.colour(QPalette::Base),
                      pressedShare);
}

QColor hoveredPartSurface(const ElementContext &context)
{
    return mixColours(context.colour(ColourRole::HoverBase), context.colour(QPalette::Base),
                      hoverShare);
}

QColor accentSurface(const ElementContext &context)
{
    QColor base = accentBase(context);
    if (context.state.pressed)
        return mixColours(base, context.colour(QPalette::Shadow), accentPressedShare);
    if (context.state.hovered)
        return mixColours(base, context.colour(QPalette::Shadow), accentHoverShare);
    return base;
}

QColor errorSurface(const ElementContext &context)
{
    const QColor error = context.colour(ColourRole::Error);
    return context.state.pressed
               ? mixColours(error, context.colour(QPalette::Shadow), accentPressedShare)
               : error;
}

void drawCheckedBar(const ElementContext &context)
{
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    const int height = emphasisWidth(context);
    const int ring = height + std::max(1, context.scaled(1)); // as drawFocusRing()
    const int inset = context.state.focused ? ring : frame;
    const int side =
        inset + (context.state.focused ? 0 : context.scaled(Design::controlRadius) / 2);
    QRect bar = context.rect().adjusted(side, 0, -side, -inset);
    bar.setTop(bar.bottom() + 1 - height);
    context.painter->fillRect(bar, context.colour(QPalette::Highlight));
}

void fillPart(QPainter &painter, const QRectF &outline, qreal radius, const QRectF &part,
              const QColor &fill)
{
    if (!isVisible(fill))
        return;
    painter.save();
    QPainterPath path;
    path.addRoundedRect(outline, radius, radius);
    painter.setClipPath(path, Qt::IntersectClip);
    painter.fillRect(part, fill);
    painter.restore();
}

int fieldHeight(const ElementContext &context, int contentsHeight)
{
    const int frame = int(std::ceil(context.metric(QStyle::PM_DefaultFrameWidth)));
    const int inner = std::max({contentsHeight, context.option.fontMetrics.height(),
                                context.metric(QStyle::PM_SmallIconSize)});
    return inner + 2 * (frame + context.scaled(Design::fieldVerticalPadding));
}

} // namespace Vireling
