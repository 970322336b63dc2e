#pragma once

#include <QStyledItemDelegate>

namespace Vireling {

/**
 * For the popups of combo boxes: items without a background of their own draw none,
 * so that the style's highlight shows through. One from the model is kept.
 */
class ComboBoxItemDelegate : public QStyledItemDelegate
{
    Q_OBJECT

public:
    using QStyledItemDelegate::QStyledItemDelegate;

protected:
    void initStyleOption(QStyleOptionViewItem *option, const QModelIndex &index) const override;
};

} // namespace Vireling
