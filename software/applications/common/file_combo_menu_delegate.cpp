#include "common/file_combo_menu_delegate.h"

#include "vireling/style/combo_popup.h"
#include "vireling/style/tree_menu_item.h"

#include <QApplication>
#include <QComboBox>
#include <QPainter>

namespace {

/** 0 where the entry tells none. */
int levelOf(const QModelIndex &index)
{
    const QVariantList data = index.data(Qt::UserRole).toList();
    return data.size() > 1 ? qMax(0, data.last().toInt()) : 0;
}

QIcon transparentIcon(const QSize &size)
{
    QPixmap placeholder(size);
    placeholder.fill(Qt::transparent);
    return placeholder;
}

/** The model may hold the picture in any form that the views take. */
QIcon iconOf(const QModelIndex &index, const QSize &placeholderSize)
{
    const QVariant decoration = index.data(Qt::DecorationRole);
    QIcon icon = decoration.value<QIcon>();
    if (icon.isNull())
        icon = decoration.value<QPixmap>();
    // The texts of entries with and without a picture line up.
    return icon.isNull() ? transparentIcon(placeholderSize) : icon;
}

/** In a menu "&" marks a mnemonic, and a tab what stands in the column of the shortcuts. */
QString asMenuText(QString name)
{
    return name.replace(QLatin1Char('&'), QLatin1String("&&"))
        .replace(QLatin1Char('\t'), QLatin1Char(' '));
}

} // namespace

FileComboMenuDelegate::FileComboMenuDelegate(QObject *parent, QComboBox *combo)
    : QAbstractItemDelegate(parent)
    , comboBox(combo)
{}

void FileComboMenuDelegate::paint(QPainter *painter, const QStyleOptionViewItem &option,
                                  const QModelIndex &index) const
{
    const Vireling::TreeMenuItemOption item = menuItem(option, index);
    painter->eraseRect(option.rect);
    comboBox->style()->drawControl(QStyle::CE_MenuItem, &item, painter, comboBox);
}

QSize FileComboMenuDelegate::sizeHint(const QStyleOptionViewItem &option,
                                      const QModelIndex &index) const
{
    const Vireling::TreeMenuItemOption item = menuItem(option, index);
    const QSize text = item.fontMetrics.size(Qt::TextSingleLine | Qt::TextShowMnemonic, item.text);
    return comboBox->style()->sizeFromContents(QStyle::CT_MenuItem, &item, text, comboBox);
}

Vireling::TreeMenuItemOption FileComboMenuDelegate::menuItem(const QStyleOptionViewItem &option,
                                                             const QModelIndex &index) const
{
    const bool active = comboBox->isActiveWindow();
    const bool enabled =
        option.state.testFlag(QStyle::State_Enabled) && index.flags().testFlag(Qt::ItemIsEnabled);

    Vireling::TreeMenuItemOption item;
    item.rect = option.rect;
    item.menuRect = option.widget ? option.widget->rect() : option.rect;
    item.direction = option.direction;
    item.state.setFlag(QStyle::State_Active, active);
    item.state.setFlag(QStyle::State_Enabled, enabled);
    item.state.setFlag(QStyle::State_Selected, option.state.testFlag(QStyle::State_Selected));
    item.palette = QApplication::palette("QMenu");
    item.palette.setCurrentColorGroup(!enabled ? QPalette::Disabled
                                      : active ? QPalette::Active
                                               : QPalette::Inactive);
    item.menuHasCheckableItems = false;
    item.font = comboBox->font();
    item.fontMetrics = QFontMetrics(item.font);
    item.menuItemType = Vireling::isComboSeparator(index) ? QStyleOptionMenuItem::Separator
                                                          : QStyleOptionMenuItem::Normal;
    if (item.menuItemType == QStyleOptionMenuItem::Separator)
        return item; // with a text it would be a heading
    item.text = asMenuText(index.data(Qt::DisplayRole).toString());
    item.icon = iconOf(index, comboBox->iconSize());
    item.maxIconWidth = comboBox->iconSize().width();
    item.level = levelOf(index);
    return item;
}
