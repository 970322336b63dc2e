#include "vireling/style/elements/item_view.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/check_box.h"
#include "vireling/style/elements/tree_view.h"
#include "vireling/style/paint_utils.h"
#include "vireling/style/style_polish.h"

#include <QHeaderView>
#include <QPainter>
#include <QTableView>
#include <qdrawutil.h>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

/** Holds the bar and the outline of a selected row that has the focus, and air after them. */
constexpr qreal itemPadding = 8;
constexpr qreal itemVerticalPadding = 4;
constexpr qreal accentBarWidth = 3;

/** What QCommonStyle keeps free on each side of the text within its rectangle. */
int commonTextMargin(const ElementContext &context)
{
    return context.metric(QStyle::PM_FocusFrameHMargin) + 1;
}

bool has(const QStyleOptionViewItem &item, QStyleOptionViewItem::ViewItemFeature feature)
{
    return item.features & feature;
}

bool isDecoratedBeside(const QStyleOptionViewItem &item)
{
    return item.decorationPosition == QStyleOptionViewItem::Left ||
           item.decorationPosition == QStyleOptionViewItem::Right;
}

struct ItemParts
{
    QRect check;
    QRect icon;
    QRect text;
};

/** Cuts the column or row of the icon off `free`, which is left with what the text may have. */
QRect takeIconSpace(const ElementContext &context, const QStyleOptionViewItem &item, QRect &free)
{
    const int gap = context.scaled(Design::iconTextSpacing);
    const int padding = context.scaled(itemVerticalPadding);
    const QSize size = item.decorationSize.expandedTo({0, 0}).boundedTo(free.size());
    QRect space = free;
    switch (item.decorationPosition) {
    case QStyleOptionViewItem::Left:
        space.setWidth(size.width());
        free.setLeft(space.right() + 1 + gap);
        break;
    case QStyleOptionViewItem::Right:
        space.setLeft(free.right() + 1 - size.width());
        free.setRight(space.left() - 1 - gap);
        break;
    case QStyleOptionViewItem::Top:
        space.adjust(0, padding, 0, 0);
        space.setHeight(size.height());
        free.setTop(space.bottom() + 1);
        break;
    case QStyleOptionViewItem::Bottom:
        space.adjust(0, 0, 0, -padding);
        space.setTop(space.bottom() + 1 - size.height());
        free.setBottom(space.top() - 1);
        break;
    }
    return QStyle::alignedRect(Qt::LeftToRight, item.decorationAlignment, size, space);
}

ItemParts layOut(const ElementContext &context, const QStyleOptionViewItem &item)
{
    const int padding = context.scaled(itemPadding);
    const auto within = [&](const QRect &logical) {
        return context.visual(logical.isValid() ? logical & item.rect : QRect());
    };
    QRect free = item.rect.adjusted(padding, 0, -padding, 0);
    ItemParts parts;
    if (has(item, QStyleOptionViewItem::HasCheckIndicator)) {
        const QSize size(context.metric(QStyle::PM_IndicatorWidth),
                         context.metric(QStyle::PM_IndicatorHeight));
        const QRect column(free.topLeft(), QSize(size.width(), free.height()));
        parts.check = within(QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, column));
        free.setLeft(column.right() + 1 + context.scaled(Design::iconTextSpacing));
    }
    free.setWidth(std::max(0, free.width()));
    if (has(item, QStyleOptionViewItem::HasDecoration))
        parts.icon = within(takeIconSpace(context, item, free));
    parts.text = within(free);
    return parts;
}

/** The size of the text alone; broken into lines where the view has given a width. */
QSize textSize(const ElementContext &context, const QStyleOptionViewItem &item)
{
    QStyleOptionViewItem text = item;
    text.features &=
        ~(QStyleOptionViewItem::HasCheckIndicator | QStyleOptionViewItem::HasDecoration);
    if (item.rect.isValid()) {
        text.rect = layOut(context, item).text;
        text.rect.setWidth(std::max(1, text.rect.width()));
        text.rect.setHeight(std::max(1, text.rect.height()));
    }
    return context.style.QCommonStyle::sizeFromContents(QStyle::CT_ItemViewItem, &text, QSize(),
                                                        context.widget);
}

/** Whether the neighbour before a table's cell is selected: the row then began earlier. */
bool continuesSelection(const QTableView &table, const QModelIndex &cell)
{
    const QHeaderView *columns = table.horizontalHeader();
    int visual = columns->visualIndex(cell.column()) - 1;
    while (visual >= 0 && columns->isSectionHidden(columns->logicalIndex(visual)))
        --visual;
    return visual >= 0 && table.selectionModel() &&
           table.selectionModel()->isSelected(
               cell.sibling(cell.row(), columns->logicalIndex(visual)));
}

/** Whether the leading edge of the item is that of the selected row. */
bool beginsSelectedRow(const ElementContext &context, const QStyleOptionViewItem &item)
{
    if (item.viewItemPosition == QStyleOptionViewItem::Middle ||
        item.viewItemPosition == QStyleOptionViewItem::End)
        return false;
    const auto *table = qobject_cast<const QTableView *>(context.widget);
    if (table && item.index.isValid())
        return !continuesSelection(*table, item.index);
    return true;
}

/** The row in the context's state: selected, pointed at, or not filled at all. */
void fillRow(const ElementContext &context)
{
    if (context.state.selected)
        context.painter->fillRect(context.rect(), context.colour(QPalette::Highlight));
    else if (context.state.hovered)
        context.painter->fillRect(context.rect(), context.colour(ColourRole::HoverBase));
}

/** Selection is told by more than its colour: a bar at the row's leading edge. */
void drawAccentBar(const ElementContext &context)
{
    const QRect bar(context.rect().topLeft(),
                    QSize(context.scaled(accentBarWidth), context.rect().height()));
    context.painter->fillRect(context.visual(bar) & context.rect(), rowAccent(context));
}

bool showsAccentBar(const ElementContext &context, const QStyleOptionViewItem &item)
{
    return context.state.selected && beginsSelectedRow(context, item) &&
           !hasBranches(context.widget, item);
}

/** A little within the row, so that it stands out from rows that are dark on dark. */
void drawFocusOutline(const ElementContext &context, const QStyleOptionViewItem &item)
{
    const int inset = context.scaled(1);
    const int bar = showsAccentBar(context, item) ? context.scaled(accentBarWidth) : 0;
    const QRect outline = item.rect.adjusted(bar + inset, inset, -inset, -inset);
    qDrawPlainRect(context.painter, context.visual(outline), rowForeground(context),
                   context.metric(QStyle::PM_DefaultFrameWidth));
}

} // namespace

int itemTextInset(const ElementContext &context)
{
    return context.scaled(itemPadding) + commonTextMargin(context);
}

QColor rowForeground(const ElementContext &context)
{
    return context.colour(context.state.selected ? QPalette::HighlightedText : QPalette::Text);
}

QColor rowAccent(const ElementContext &context)
{
    return selectedRowAccent(context.style.palette(), context.state.colourGroup());
}

bool paintItem(const ElementContext &context)
{
    const auto *item = context.as<QStyleOptionViewItem>();
    if (!item)
        return false;
    QStyleOptionViewItem unfocused = *item;
    unfocused.state &= ~QStyle::State_HasFocus;
    context.style.QCommonStyle::drawControl(QStyle::CE_ItemViewItem, &unfocused, context.painter,
                                            context.widget);
    if (context.state.focused)
        drawFocusOutline(context, *item);
    return true;
}

bool paintItemPanel(const ElementContext &context)
{
    const auto *item = context.as<QStyleOptionViewItem>();
    if (!item)
        return false;
    const bool filled = context.state.selected || context.state.hovered;
    if (!filled && item->backgroundBrush.style() != Qt::NoBrush) {
        context.painter->setBrushOrigin(item->rect.topLeft());
        context.painter->fillRect(item->rect, item->backgroundBrush);
    }
    fillRow(context);
    if (showsAccentBar(context, *item))
        drawAccentBar(context);
    return true;
}

bool paintRowPanel(const ElementContext &context)
{
    const auto *item = context.as<QStyleOptionViewItem>();
    if (!item)
        return false;
    if (has(*item, QStyleOptionViewItem::Alternate))
        context.painter->fillRect(item->rect, context.colour(QPalette::AlternateBase));
    fillRow(context);
    // Trees mark only the panel under the branches as selected; the row begins there.
    if (context.state.selected && beginsSelectedRow(context, *item))
        drawAccentBar(context);
    return true;
}

bool paintItemCheckMark(const ElementContext &context)
{
    // The indicator is on a ground of its own: the accent is the window's, not the row's.
    QStyleOption indicator = context.option;
    indicator.palette = context.style.palette();
    indicator.state &= ~(QStyle::State_MouseOver | QStyle::State_HasFocus | QStyle::State_Selected);
    return paintCheckBoxIndicator(context.with(indicator));
}

bool paintDropIndicator(const ElementContext &context)
{
    const int width = emphasisWidth(context);
    const QRect rect = context.rect();
    // Views give a rectangle of no height where the item would go between two rows.
    if (rect.height() > 0) {
        drawPanel(*context.painter, rect, context.scaledExactly(Design::indicatorRadius), QColor(),
                  rowAccent(context), width);
    } else if (rect.width() > 0) {
        const int top = std::max(0, rect.top() - width / 2);
        context.painter->fillRect(rect.left(), top, rect.width(), width, rowAccent(context));
    }
    return true;
}

std::optional<QRect> itemPart(const ElementContext &context, QStyle::SubElement element)
{
    const auto *item = context.as<QStyleOptionViewItem>();
    if (!item)
        return std::nullopt;
    switch (element) {
    case QStyle::SE_ItemViewItemCheckIndicator:
        return layOut(context, *item).check;
    case QStyle::SE_ItemViewItemDecoration:
        return layOut(context, *item).icon;
    case QStyle::SE_ItemViewItemText:
        return layOut(context, *item).text;
    default: // SE_ItemViewItemFocusRect: the outline runs within the item's edge
        return item->rect;
    }
}

std::optional<QSize> itemSize(const ElementContext &context, const QSize &)
{
    const auto *item = context.as<QStyleOptionViewItem>();
    if (!item)
        return std::nullopt;
    const int gap = context.scaled(Design::iconTextSpacing);
    const bool decorated = has(*item, QStyleOptionViewItem::HasDecoration);
    const bool beside = decorated && isDecoratedBeside(*item);
    const QSize icon = decorated ? item->decorationSize.expandedTo({0, 0}) : QSize(0, 0);
    QSize inner =
        has(*item, QStyleOptionViewItem::HasDisplay) ? textSize(context, *item) : QSize(0, 0);
    // Rows with and without an icon are equally high.
    inner.setHeight(std::max(
        {inner.height(), item->fontMetrics.height(), context.metric(QStyle::PM_SmallIconSize)}));
    if (beside)
        inner = QSize(inner.width() + gap + icon.width(), std::max(inner.height(), icon.height()));
    else if (decorated)
        inner = QSize(std::max(inner.width(), icon.width()),
                      inner.height() + icon.height() + context.scaled(itemVerticalPadding));
    if (has(*item, QStyleOptionViewItem::HasCheckIndicator)) {
        inner.rwidth() += context.metric(QStyle::PM_IndicatorWidth) + gap;
        inner.setHeight(std::max(inner.height(), context.metric(QStyle::PM_IndicatorHeight)));
    }
    return inner + 2 * QSize(context.scaled(itemPadding), context.scaled(itemVerticalPadding));
}

} // namespace Vireling
