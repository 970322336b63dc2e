#include "vireling/style/elements/header.h"

#include "vireling/style/elements/item_view.h"
#include "vireling/style/paint_utils.h"

#include <QHeaderView>
#include <QPainter>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

bool isHorizontal(const ElementContext &context)
{
    const auto *header = context.as<QStyleOptionHeader>();
    return header ? header->orientation == Qt::Horizontal : context.state.horizontal;
}

/** The edge towards the items the header belongs to, `width` pixels thick. */
QRect inwardEdge(const ElementContext &context, int width)
{
    const QRect rect = context.rect();
    if (isHorizontal(context))
        return {rect.left(), rect.bottom() + 1 - width, rect.width(), width};
    return context.visual({rect.right() + 1 - width, rect.top(), width, rect.height()});
}

/** The edge towards the next section. */
QRect followingEdge(const ElementContext &context, int width)
{
    const QRect rect = context.rect();
    if (isHorizontal(context))
        return context.visual({rect.right() + 1 - width, rect.top(), width, rect.height()});
    return {rect.left(), rect.bottom() + 1 - width, rect.width(), width};
}

/** Whether the section reaches the end of its header, where the view's frame is the line. */
bool endsWithView(const ElementContext &context)
{
    const auto *header = qobject_cast<const QHeaderView *>(context.widget);
    if (!header)
        return false;
    const QRect all = header->viewport()->rect();
    return all.contains(context.rect()) &&
           (isHorizontal(context) ? followingEdge(context, 1).left() ==
                                        (context.state.rightToLeft ? all.left() : all.right())
                                  : context.rect().bottom() == all.bottom());
}

/** Lines do not follow the pointer as frames do, but fade with them. */
QColor lineColour(const ElementContext &context)
{
    return context.state.enabled ? context.colour(ColourRole::Frame) : frameColour(context);
}

QColor sectionSurface(const ElementContext &context)
{
    // "On" means here that cells of the section are selected: the bar tells, not the surface.
    QStyleOption unchecked = context.option;
    unchecked.state &= ~QStyle::State_On;
    return context.state.enabled ? buttonSurface(context.with(unchecked))
                                 : context.colour(QPalette::Button);
}

/** The colours of the ground and of the line towards the items. */
void drawGround(const ElementContext &context, const QColor &surface)
{
    context.painter->fillRect(context.rect(), surface);
    context.painter->fillRect(inwardEdge(context, context.metric(QStyle::PM_DefaultFrameWidth)),
                              lineColour(context));
}

bool isSorted(const QStyleOptionHeader &header)
{
    return header.sortIndicator != QStyleOptionHeader::None;
}

QRect arrowRect(const ElementContext &context)
{
    const int size = context.metric(QStyle::PM_HeaderMarkSize);
    const QRect rect = context.rect();
    const QRect column(rect.right() + 1 - itemTextInset(context) - size, rect.top(), size,
                       rect.height());
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(size, size), column);
}

QRect labelRect(const ElementContext &context, const QStyleOptionHeader &header)
{
    const int inset = itemTextInset(context);
    const int margin = context.metric(QStyle::PM_HeaderMargin);
    QRect label = header.rect.adjusted(inset, 0, -inset, 0);
    if (isSorted(header))
        label.setRight(arrowRect(context).left() - 1 - margin);
    label.setWidth(std::max(0, label.width()));
    return label;
}

/** Draws the icon at the start of `label` and cuts its place off. */
void drawIcon(const ElementContext &context, const QStyleOptionHeader &header, QRect &label)
{
    if (header.icon.isNull())
        return;
    const int size = std::min(context.metric(QStyle::PM_SmallIconSize), label.width());
    const QRect column(label.left(), label.top(), size, label.height());
    const QRect icon =
        QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(size, size), column);
    header.icon.paint(context.painter, QStyle::visualRect(header.direction, label, icon),
                      Qt::AlignCenter, context.state.enabled ? QIcon::Normal : QIcon::Disabled);
    const int taken = size + context.metric(QStyle::PM_HeaderMargin);
    const QRect rest = label.adjusted(std::min(taken, label.width()), 0, 0, 0);
    label = QStyle::visualRect(header.direction, label, rest);
}

} // namespace

bool paintHeaderSection(const ElementContext &context)
{
    drawGround(context, sectionSurface(context));
    const int line = context.metric(QStyle::PM_DefaultFrameWidth);
    if (!endsWithView(context))
        context.painter->fillRect(followingEdge(context, line), lineColour(context));
    if (context.state.checked && context.state.enabled) {
        const int width = emphasisWidth(context);
        context.painter->fillRect(inwardEdge(context, width), rowAccent(context));
    }
    return true;
}

bool paintHeaderLabel(const ElementContext &context)
{
    const auto *header = context.as<QStyleOptionHeader>();
    if (!header)
        return false;
    QRect label = header->rect;
    drawIcon(context, *header, label);
    const bool lines =
        header->textAlignment & Qt::TextWordWrap || header->text.contains(QLatin1Char('\n'));
    const QString text =
        lines ? header->text
              : fittingText(context.painter->fontMetrics(), header->text, label.width());
    context.painter->setPen(context.colour(QPalette::ButtonText));
    const auto alignment = int(QStyle::visualAlignment(header->direction, header->textAlignment));
    const int flags = int(header->textAlignment) & Qt::TextWordWrap;
    context.painter->drawText(label,
                              (alignment & Qt::AlignHorizontal_Mask) |
                                  (alignment & Qt::AlignVertical_Mask) | flags,
                              text);
    return true;
}

bool paintHeaderEmptyArea(const ElementContext &context)
{
    drawGround(context, context.colour(QPalette::Button));
    return true;
}

bool paintHeaderArrow(const ElementContext &context)
{
    const auto *header = context.as<QStyleOptionHeader>();
    if (!header)
        return false;
    if (!isSorted(*header))
        return true;
    const bool onSurface = context.state.hovered || context.state.pressed;
    drawChevron(*context.painter, header->rect,
                header->sortIndicator == QStyleOptionHeader::SortUp ? Qt::UpArrow : Qt::DownArrow,
                onSurface ? context.colour(QPalette::ButtonText)
                          : context.colour(ColourRole::ArrowIconBase),
                context.lineWidth(LineWidth::Glyph));
    return true;
}

std::optional<QRect> headerPart(const ElementContext &context, QStyle::SubElement element)
{
    const auto *header = context.as<QStyleOptionHeader>();
    if (!header)
        return std::nullopt;
    return context.visual(element == QStyle::SE_HeaderArrow ? arrowRect(context)
                                                            : labelRect(context, *header));
}

std::optional<QSize> headerSectionSize(const ElementContext &context, const QSize &)
{
    const auto *header = context.as<QStyleOptionHeader>();
    if (!header)
        return std::nullopt;
    const int margin = context.metric(QStyle::PM_HeaderMargin);
    const int line = context.metric(QStyle::PM_DefaultFrameWidth);
    QSize inner = header->fontMetrics.size(0, header->text);
    inner.setHeight(std::max(inner.height(), header->fontMetrics.height()));
    const auto putBeside = [&](int extent) {
        inner = QSize(inner.width() + margin + extent, std::max(inner.height(), extent));
    };
    if (!header->icon.isNull())
        putBeside(context.metric(QStyle::PM_SmallIconSize));
    if (isSorted(*header))
        putBeside(context.metric(QStyle::PM_HeaderMarkSize));
    return inner + QSize(2 * itemTextInset(context) + line, 2 * margin + line);
}

} // namespace Vireling
