#include "vireling/style/combo_popup.h"

#include "vireling/palette/current_palette.h"
#include "vireling/style/paint_utils.h"
#include "vireling/widgets/combo_box_item_delegate.h"

#include <QComboBox>
#include <QPainter>

namespace Vireling {

namespace {

int frameWidth(const QWidget &widget)
{
    return widget.style()->pixelMetric(QStyle::PM_DefaultFrameWidth, nullptr, &widget);
}

class ComboPopupDelegate : public ComboBoxItemDelegate
{
public:
    explicit ComboPopupDelegate(QComboBox *servedBox)
        : ComboBoxItemDelegate(servedBox)
        , box(*servedBox)
    {}

    void paint(QPainter *painter, const QStyleOptionViewItem &option,
               const QModelIndex &index) const override
    {
        if (isComboSeparator(index))
            drawSeparator(*painter, option.rect, Qt::Horizontal,
                          currentPalette().colour(QPalette::Active, ColourRole::Frame),
                          frameWidth(box));
        else
            ComboBoxItemDelegate::paint(painter, option, index);
    }

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        if (!isComboSeparator(index))
            return ComboBoxItemDelegate::sizeHint(option, index);
        const int margin = box.style()->pixelMetric(QStyle::PM_MenuVMargin, nullptr, &box);
        const int height = 2 * margin + frameWidth(box);
        return {height, height};
    }

private:
    const QComboBox &box; // our parent
};

/** What QComboBox installs where no menu-like popup is asked for; its class is not public. */
bool isQtDefault(const QAbstractItemDelegate *delegate)
{
    return delegate && delegate->inherits("QComboBoxDelegate");
}

} // namespace

bool isComboSeparator(const QModelIndex &index)
{
    return index.data(Qt::AccessibleDescriptionRole).toString() == QLatin1String("separator");
}

void polishComboPopup(QWidget *widget)
{
    auto *box = qobject_cast<QComboBox *>(widget);
    if (box && isQtDefault(box->itemDelegate()))
        box->setItemDelegate(new ComboPopupDelegate(box));
}

} // namespace Vireling
