#include "vireling/style/elements/progress_bar.h"

#include "vireling/style/busy_indicator_animator.h"
#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal busyShare = 0.3; // of the bar's length, for the segment of a busy bar

bool isHorizontal(const QStyleOptionProgressBar &bar)
{
    return bar.orientation == Qt::Horizontal;
}

/** Whether the bar fills from the far end: the right or the bottom one. */
bool fillsFromEnd(const QStyleOptionProgressBar &bar)
{
    const bool byDefault = !isHorizontal(bar) || bar.direction == Qt::RightToLeft;
    return byDefault != bar.invertedAppearance;
}

QRect withinFrame(const ElementContext &context)
{
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    return context.rect().adjusted(frame, frame, -frame, -frame);
}

/** The filled piece of `groove`, as the share of its length where it begins and its length. */
QRect pieceOf(const QRect &groove, const QStyleOptionProgressBar &bar, qreal from, qreal share)
{
    const int whole = isHorizontal(bar) ? groove.width() : groove.height();
    const int start = qRound(whole * from);
    const int length = qRound(whole * (from + share)) - start;
    const int along = fillsFromEnd(bar) ? whole - start - length : start;
    return isHorizontal(bar) ? QRect(groove.x() + along, groove.y(), length, groove.height())
                             : QRect(groove.x(), groove.y() + along, groove.width(), length);
}

QRect chunkRect(const ElementContext &context, const QStyleOptionProgressBar &bar)
{
    const QRect groove = withinFrame(context);
    if (isBusy(bar))
        return pieceOf(groove, bar, busyPosition(context.widget) * (1 - busyShare), busyShare);
    const qreal range = qreal(bar.maximum) - bar.minimum;
    const qreal done = range > 0 ? (qreal(bar.progress) - bar.minimum) / range : 0;
    return pieceOf(groove, bar, 0, std::clamp<qreal>(done, 0, 1));
}

/** Only the ends of the groove are round; a chunk that ends in between ends straight. */
void paintFill(const ElementContext &context, const QRect &groove, const QRect &chunk)
{
    if (chunk.isEmpty())
        return;
    context.painter->setClipRect(chunk, Qt::IntersectClip);
    drawPanel(*context.painter, groove, context.scaled(Design::controlRadius) - 1,
              accentBase(context), QColor(), 0);
}

/** The label of an upright bar is turned; draws within the bar's own length and breadth. */
void drawLabel(const ElementContext &context, const QStyleOptionProgressBar &bar,
               const QRegion &clip, QPalette::ColorRole role)
{
    QPainter &painter = *context.painter;
    painter.save();
    painter.setClipRegion(clip, Qt::IntersectClip);
    QRect area = bar.rect;
    if (!isHorizontal(bar)) {
        painter.translate(bar.bottomToTop ? area.bottomLeft() + QPoint(0, 1)
                                          : area.topRight() + QPoint(1, 0));
        painter.rotate(bar.bottomToTop ? -90 : 90);
        area = QRect(0, 0, area.height(), area.width());
    }
    const int padding = context.scaled(Design::fieldPadding);
    area.adjust(padding, 0, -padding, 0);
    painter.setPen(context.colour(role));
    const QString text = fittingText(bar.fontMetrics, bar.text, area.width(), Qt::TextSingleLine);
    painter.drawText(area, Qt::AlignCenter | Qt::TextSingleLine, text);
    painter.restore();
}

void paintPart(const ElementContext &context, const QStyleOptionProgressBar &bar,
               QStyle::SubElement part, QStyle::ControlElement element)
{
    QStyleOptionProgressBar option(bar);
    option.rect = context.style.proxy()->subElementRect(part, &bar, context.widget);
    context.style.proxy()->drawControl(element, &option, context.painter, context.widget);
}

} // namespace

bool paintProgressBar(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionProgressBar>();
    if (!bar)
        return false;
    if (bar->rect.isEmpty())
        return true;
    paintPart(context, *bar, QStyle::SE_ProgressBarGroove, QStyle::CE_ProgressBarGroove);
    paintPart(context, *bar, QStyle::SE_ProgressBarContents, QStyle::CE_ProgressBarContents);
    if (bar->textVisible)
        paintPart(context, *bar, QStyle::SE_ProgressBarLabel, QStyle::CE_ProgressBarLabel);
    return true;
}

bool paintProgressBarGroove(const ElementContext &context)
{
    if (!context.as<QStyleOptionProgressBar>())
        return false;
    drawPanel(*context.painter, context.rect(), context.scaled(Design::controlRadius),
              context.state.enabled ? context.colour(QPalette::Base) : QColor(),
              frameColour(context), context.metric(QStyle::PM_DefaultFrameWidth));
    return true;
}

bool paintProgressBarContents(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionProgressBar>();
    if (!bar)
        return false;
    paintFill(context, withinFrame(context), chunkRect(context, *bar));
    return true;
}

bool paintProgressBarLabel(const ElementContext &context)
{
    const auto *bar = context.as<QStyleOptionProgressBar>();
    if (!bar)
        return false;
    if (bar->text.isEmpty() || bar->rect.isEmpty())
        return true;
    context.painter->setFont(context.widget ? context.widget->font() : context.painter->font());
    const QRegion over = chunkRect(context, *bar);
    drawLabel(context, *bar, QRegion(bar->rect) - over, QPalette::Text);
    if (!over.isEmpty())
        drawLabel(context, *bar, over, QPalette::HighlightedText);
    return true;
}

bool paintProgressChunk(const ElementContext &context)
{
    paintFill(context, context.rect(), context.rect());
    return true;
}

std::optional<QRect> progressBarPart(const ElementContext &context, QStyle::SubElement)
{
    // Groove, contents and label share the place: the text stands within the bar.
    if (!context.as<QStyleOptionProgressBar>())
        return std::nullopt;
    return context.rect();
}

std::optional<QSize> progressBarSize(const ElementContext &context, const QSize &contents)
{
    const auto *bar = context.as<QStyleOptionProgressBar>();
    if (!bar)
        return std::nullopt;
    const int breadth = fieldHeight(context, bar->fontMetrics.height());
    return isHorizontal(*bar) ? QSize(contents.width(), breadth)
                              : QSize(breadth, contents.height());
}

} // namespace Vireling
