#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/gallery/state_grid.h"
#include "vireling/widgets/combo_box_item_delegate.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QComboBox>
#include <QHBoxLayout>

namespace Vireling {

namespace {

/** What frames and margins of a list take around its rows. */
constexpr int listExtraWidth = 48;
constexpr int listExtraHeight = 6;

QComboBox *makeBox(PageWidget *page)
{
    auto *box = new QComboBox;
    const char *const places[]{"USB key", "Storage", "Network"};
    for (int index = 0; index < 3; ++index) {
        box->addItem(QString());
        page->addText([=] { box->setItemText(index, galleryText(places[index])); });
    }
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    return box;
}

QComboBox *makeIconBox(PageWidget *page)
{
    QComboBox *box = makeBox(page);
    box->setItemIcon(0, usbKeyIcon());
    box->setItemIcon(1, storageIcon());
    return box;
}

void addStates(PageWidget *page)
{
    StateGrid grid(page, "States", buttonStates());
    grid.addRow("Choice", [=] { return makeBox(page); });
    grid.addRow("With icons", [=] { return makeIconBox(page); });
    grid.addRow("Without frame", [=] {
        QComboBox *box = makeBox(page);
        box->setFrame(false);
        return box;
    });
    grid.addRow("Editable", [=] {
        QComboBox *box = makeBox(page);
        box->setEditable(true);
        return box;
    });
    grid.addRow("Editable, with icons", [=] {
        QComboBox *box = makeIconBox(page);
        box->setEditable(true);
        return box;
    });
}

/** Makes the open list of `box` so large that nothing in it scrolls. */
void showAllRows(PageWidget *page, QComboBox *box)
{
    QAbstractItemView *view = box->view();
    box->ensurePolished(); // the style may give the list another delegate
    view->ensurePolished();
    int height = 0;
    for (int row = 0; row < box->count(); ++row)
        height += view->sizeHintForRow(row);
    QWidget *list = view->parentWidget();
    list->setFixedSize(view->sizeHintForColumn(0) + page->scaled(listExtraWidth),
                       height + page->scaled(listExtraHeight));
}

/** The list of `box`, which stays hidden, as a part of the page that does not close. */
QWidget *makeOpenList(PageWidget *page, QComboBox *box)
{
    auto *holder = new QWidget;
    box->setParent(holder);
    box->hide();
    box->view()->setCurrentIndex(box->model()->index(1, 0));
    QWidget *list = box->view()->parentWidget();
    list->setParent(holder, Qt::Widget);
    list->setAttribute(Qt::WA_TransparentForMouseEvents);
    box->view()->setFocusPolicy(Qt::NoFocus);
    page->addText([=] { showAllRows(page, box); });
    auto *layout = new QHBoxLayout(holder);
    layout->setContentsMargins({});
    layout->addWidget(list);
    return holder;
}

void addLists(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Open lists");
    row->addLayout(page->captioned("Plain", makeOpenList(page, makeBox(page))));
    QComboBox *withIcons = makeIconBox(page);
    withIcons->setItemDelegate(new ComboBoxItemDelegate(withIcons));
    row->addLayout(page->captioned("With icons", makeOpenList(page, withIcons)));
    QComboBox *separated = makeIconBox(page);
    separated->insertSeparator(3);
    separated->addItem(QString());
    page->addText([=] { separated->setItemText(4, galleryText("Elsewhere")); });
    row->addLayout(page->captioned("With a separator", makeOpenList(page, separated)));
    row->addStretch();
}

} // namespace

QWidget *makeComboBoxesPage(QWidget *parent)
{
    auto *page = new PageWidget("Combo boxes", parent);
    addStates(page);
    addLists(page);
    page->endSections();
    return page;
}

} // namespace Vireling
