#pragma once

#include "vireling/style/tree_menu_item.h"

#include <QAbstractItemDelegate>

class QComboBox;

/**
 * Draws the entries of a combo box's popup as menu items, indented as a tree of folders.
 *
 * An entry's Qt::UserRole is a list of variants; with more than one element, the last is
 * its level of indentation. An entry described as "separator" (Qt::AccessibleDescriptionRole)
 * is drawn as a separator.
 */
class FileComboMenuDelegate : public QAbstractItemDelegate
{
    Q_OBJECT

public:
    /** Serves `combo`, not null, which must outlive it. */
    FileComboMenuDelegate(QObject *parent, QComboBox *combo);

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override;
    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override;

private:
    Vireling::TreeMenuItemOption menuItem(const QStyleOptionViewItem &option,
                                          const QModelIndex &index) const;

    QComboBox *comboBox;
};
