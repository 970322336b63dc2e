#include "vireling/style/elements/tree_view.h"

#include "vireling/style/elements/item_view.h"
#include "vireling/style/paint_utils.h"

#include <QHeaderView>
#include <QPainter>
#include <QTreeView>

#include <algorithm>

namespace Vireling {

namespace {

/** The side of the square that a branch's chevron stands in. */
constexpr qreal disclosureSize = 16;

} // namespace

/** Depth shows by indentation alone: lines between the branches would only be noise here. */
bool paintBranch(const ElementContext &context)
{
    if (!(context.option.state & QStyle::State_Children))
        return true;
    const Qt::ArrowType closed = context.state.rightToLeft ? Qt::LeftArrow : Qt::RightArrow;
    const bool onRow = context.state.selected || context.state.hovered;
    drawChevron(*context.painter, disclosureItem(context).value_or(context.rect()),
                context.state.open ? Qt::DownArrow : closed,
                onRow ? rowForeground(context) : context.colour(ColourRole::MenuIconBase),
                context.lineWidth(LineWidth::Glyph));
    return true;
}

std::optional<QRect> disclosureItem(const ElementContext &context)
{
    const int size =
        std::min({context.scaled(disclosureSize), context.rect().width(), context.rect().height()});
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, QSize(size, size), context.rect());
}

bool hasBranches(const QWidget *view, const QStyleOptionViewItem &item)
{
    const auto *tree = qobject_cast<const QTreeView *>(view);
    if (!tree || !item.index.isValid() || tree->indentation() <= 0)
        return false;
    const int column =
        tree->treePosition() >= 0 ? tree->treePosition() : tree->header()->logicalIndex(0);
    const bool isTopLevel = item.index.parent() == tree->rootIndex();
    return item.index.column() == column && (tree->rootIsDecorated() || !isTopLevel);
}

} // namespace Vireling
