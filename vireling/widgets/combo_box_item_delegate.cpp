#include "vireling/widgets/combo_box_item_delegate.h"

namespace Vireling {

void ComboBoxItemDelegate::initStyleOption(QStyleOptionViewItem *option,
                                           const QModelIndex &index) const
{
    static const QBrush invisible(QColor(0, 0, 0, 0), Qt::SolidPattern);
    QStyledItemDelegate::initStyleOption(option, index);
    if (option->backgroundBrush.style() == Qt::NoBrush)
        option->backgroundBrush = invisible;
}

} // namespace Vireling
