#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QGridLayout>
#include <QHeaderView>
#include <QStandardItemModel>
#include <QTableView>

namespace Vireling {

namespace {

constexpr int tableWidth = 420;
constexpr int tableHeight = 210;

QTableView *makeTable(PageWidget *page)
{
    auto *table = new QTableView;
    table->setModel(makeFileTable(page));
    table->setMinimumSize(page->scaled(tableWidth), page->scaled(tableHeight));
    table->setCurrentIndex(table->model()->index(1, 0));
    page->addText([=] { table->resizeColumnsToContents(); });
    return table;
}

QTableView *makeSorted(PageWidget *page, Qt::SortOrder order)
{
    QTableView *table = makeTable(page);
    table->setAlternatingRowColors(true);
    table->setSelectionBehavior(QAbstractItemView::SelectRows);
    table->setSortingEnabled(true);
    table->sortByColumn(0, order);
    table->verticalHeader()->hide();
    table->horizontalHeader()->setStretchLastSection(true);
    page->addText([=] { table->resizeColumnsToContents(); });
    return table;
}

} // namespace

QWidget *makeTablesPage(QWidget *parent)
{
    auto *page = new PageWidget("Tables", parent);
    QGridLayout *grid = page->addGrid("States");
    int position = 0;
    for (const Pose state : {Pose::Default, Pose::Focused, Pose::Hovered, Pose::Disabled}) {
        QTableView *table = makeTable(page);
        pose(table, state, table);
        if (state == Pose::Focused)
            page->setFocusProxy(table);
        if (state == Pose::Hovered) {
            poseHovered(table->viewport(), 0.3, 0.5);
            poseHovered(table->horizontalHeader()->viewport(), 0.2, 0.5);
        }
        grid->addLayout(page->captioned(poseName(state), table), position / 2, position % 2);
        ++position;
    }
    QGridLayout *sorted = page->addGrid("Sorted, alternating rows");
    sorted->addLayout(page->captioned("Ascending", makeSorted(page, Qt::AscendingOrder)), 0, 0);
    sorted->addLayout(page->captioned("Descending", makeSorted(page, Qt::DescendingOrder)), 0, 1);
    page->endSections();
    return page;
}

} // namespace Vireling
