#include "vireling/widgets/combo_box_item_delegate.h"
namespace Vireling {
void ComboBoxItemDelegate::initStyleOption(QStyleOptionViewItem *option,
                                           const QModelIndex &index) const
{
    QStyledItemDelegate::initStyleOption(option, index);
}
} // namespace Vireling
