#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QLabel>
#include <QMdiArea>
#include <QMdiSubWindow>

namespace Vireling {

namespace {

constexpr int areaHeight = 360;

QMdiSubWindow *addWindow(PageWidget *page, QMdiArea *area, const char *title)
{
    auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
    contents->setAlignment(Qt::AlignCenter);
    contents->setMargin(page->scaled(8));
    contents->setWordWrap(true);
    QMdiSubWindow *window = area->addSubWindow(contents);
    window->setWindowIcon(storageIcon());
    page->say<QWidget>(window, &QWidget::setWindowTitle, title);
    return window;
}

QMdiArea *makeArea(PageWidget *page, QMdiArea::ViewMode mode)
{
    auto *area = new QMdiArea;
    area->setViewMode(mode);
    QMdiSubWindow *inactive = addWindow(page, area, "Inactive");
    inactive->setGeometry(page->scaled(24), page->scaled(24), page->scaled(300), page->scaled(160));
    QMdiSubWindow *minimised = addWindow(page, area, "Minimised");
    minimised->setGeometry(page->scaled(40), page->scaled(200), page->scaled(220),
                           page->scaled(120));
    if (mode == QMdiArea::SubWindowView)
        minimised->showMinimized();
    QMdiSubWindow *active = addWindow(page, area, "Active");
    active->setGeometry(page->scaled(240), page->scaled(96), page->scaled(300), page->scaled(180));
    area->setActiveSubWindow(active);
    area->setFixedHeight(page->scaled(areaHeight / (mode == QMdiArea::TabbedView ? 2 : 1)));
    return area;
}

} // namespace

QWidget *makeMdiPage(QWidget *parent)
{
    auto *page = new PageWidget("Windows within a window", parent);
    QBoxLayout *column = page->addColumn("Sub-windows");
    column->addLayout(page->captioned("Free", makeArea(page, QMdiArea::SubWindowView)));
    column->addLayout(page->captioned("As tabs", makeArea(page, QMdiArea::TabbedView)));
    page->endSections();
    return page;
}

} // namespace Vireling
