#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QColumnView>
#include <QGridLayout>
#include <QListView>
#include <QStandardItemModel>
#include <QTreeView>

namespace Vireling {

namespace {

constexpr int viewWidth = 280;
constexpr int viewHeight = 200;

template <typename View>
View *makeView(PageWidget *page, QStandardItemModel *model)
{
    auto *view = new View;
    view->setModel(model);
    view->setMinimumSize(page->scaled(viewWidth), page->scaled(viewHeight));
    return view;
}

QListView *makeList(PageWidget *page)
{
    auto *list = makeView<QListView>(page, makeFileTable(page));
    list->setCurrentIndex(list->model()->index(1, 0));
    return list;
}

QListView *makeCheckedList(PageWidget *page)
{
    QStandardItemModel *model = makeFileTable(page);
    for (int row = 0; row < model->rowCount(); ++row) {
        model->item(row)->setCheckable(true);
        model->item(row)->setCheckState(Qt::CheckState(row % 3));
        model->item(row)->setEnabled(row < 4);
    }
    auto *list = makeView<QListView>(page, model);
    list->setAlternatingRowColors(true);
    return list;
}

QListView *makeIconList(PageWidget *page)
{
    QListView *list = makeList(page);
    list->setViewMode(QListView::IconMode);
    list->setIconSize({page->scaled(32), page->scaled(32)});
    list->setSpacing(page->scaled(8));
    list->setMovement(QListView::Static);
    return list;
}

QTreeView *makeTree(PageWidget *page)
{
    auto *tree = makeView<QTreeView>(page, makeFileTree(page));
    tree->expand(tree->model()->index(0, 0));
    tree->setCurrentIndex(tree->model()->index(1, 0, tree->model()->index(0, 0)));
    tree->hideColumn(2); // two are enough for the width
    page->addText([=] {
        for (const int column : {0, 1})
            tree->resizeColumnToContents(column);
    });
    return tree;
}

/** Default, focused, hover, disabled of a view, two in a row. */
template <typename Make>
int addStates(PageWidget *page, QGridLayout *grid, Make make)
{
    int position = 0;
    for (const Pose state : {Pose::Default, Pose::Focused, Pose::Hovered, Pose::Disabled}) {
        auto *view = make(page);
        pose(view, state, view);
        if (state == Pose::Focused)
            page->setFocusProxy(view);
        if (state == Pose::Hovered)
            poseHovered(view->viewport(), 0.3, 0.45);
        grid->addLayout(page->captioned(poseName(state), view), position / 3, position % 3);
        ++position;
    }
    return position;
}

} // namespace

QWidget *makeListsPage(QWidget *parent)
{
    auto *page = new PageWidget("Lists", parent);
    QGridLayout *grid = page->addGrid("States");
    addStates(page, grid, makeList);
    grid->addLayout(page->captioned("Checks, alternating rows", makeCheckedList(page)), 1, 1);
    grid->addLayout(page->captioned("Icons", makeIconList(page)), 1, 2);
    page->endSections();
    return page;
}

QWidget *makeTreesPage(QWidget *parent)
{
    auto *page = new PageWidget("Trees", parent);
    QGridLayout *grid = page->addGrid("States");
    addStates(page, grid, makeTree);
    QTreeView *alternating = makeTree(page);
    alternating->setAlternatingRowColors(true);
    alternating->setSortingEnabled(true);
    alternating->sortByColumn(0, Qt::AscendingOrder);
    grid->addLayout(page->captioned("Alternating rows, sorted", alternating), 1, 1);
    QTreeView *bare = makeTree(page);
    bare->setHeaderHidden(true);
    bare->setFrameShape(QFrame::NoFrame);
    grid->addLayout(page->captioned("Without header and frame", bare), 1, 2);
    page->endSections();
    return page;
}

QWidget *makeColumnViewPage(QWidget *parent)
{
    auto *page = new PageWidget("Column view", parent);
    QGridLayout *grid = page->addGrid("States");
    int row = 0;
    for (const Pose state : {Pose::Default, Pose::Disabled}) {
        auto *view = makeView<QColumnView>(page, makeFileTree(page));
        view->setCurrentIndex(view->model()->index(2, 0, view->model()->index(0, 0)));
        view->setFixedHeight(page->scaled(viewHeight));
        pose(view, state, nullptr);
        grid->addLayout(page->captioned(poseName(state), view), row++, 0);
    }
    page->endSections();
    return page;
}

} // namespace Vireling
