#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QGridLayout>
#include <QTabBar>

namespace Vireling {

namespace {

constexpr int narrowWidth = 260;

QTabBar *makeBar(PageWidget *page, QTabBar::Shape shape)
{
    auto *bar = new QTabBar;
    bar->setShape(shape);
    const char *const tabs[]{"Report", "Log", "Details"};
    for (int index = 0; index < 3; ++index) {
        bar->addTab(QString());
        page->addText([=] { bar->setTabText(index, galleryText(tabs[index])); });
    }
    bar->setCurrentIndex(1);
    bar->setExpanding(false);
    return bar;
}

void addStates(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("States");
    grid->addLayout(page->captioned("Default", makeBar(page, QTabBar::RoundedNorth)), 0, 0);
    QTabBar *focused = makeBar(page, QTabBar::RoundedNorth);
    page->setFocusProxy(focused);
    grid->addLayout(page->captioned("Focused", focused), 0, 1);
    QTabBar *hovered = makeBar(page, QTabBar::RoundedNorth);
    poseHovered(hovered, 0.1, 0.5);
    grid->addLayout(page->captioned("Hover", hovered), 0, 2);
    QTabBar *oneOff = makeBar(page, QTabBar::RoundedNorth);
    oneOff->setTabEnabled(2, false);
    grid->addLayout(page->captioned("Third tab disabled", oneOff), 1, 0);
    QTabBar *disabled = makeBar(page, QTabBar::RoundedNorth);
    disabled->setEnabled(false);
    grid->addLayout(page->captioned("Disabled", disabled), 1, 1);
    QTabBar *document = makeBar(page, QTabBar::RoundedNorth);
    document->setDocumentMode(true);
    grid->addLayout(page->captioned("Document mode", document), 1, 2);
}

void addKinds(PageWidget *page)
{
    QGridLayout *grid = page->addGrid("Kinds");
    QTabBar *closable = makeBar(page, QTabBar::RoundedNorth);
    closable->setTabsClosable(true);
    grid->addLayout(page->captioned("Closable", closable), 0, 0);
    QTabBar *icons = makeBar(page, QTabBar::RoundedNorth);
    icons->setTabIcon(0, storageIcon());
    icons->setTabIcon(1, usbKeyIcon());
    grid->addLayout(page->captioned("With icons", icons), 0, 1);
    QTabBar *scrolling = makeBar(page, QTabBar::RoundedNorth);
    for (int index = 0; index < 4; ++index) {
        scrolling->addTab(QString());
        page->addText([=] { scrolling->setTabText(3 + index, galleryText("More details")); });
    }
    scrolling->setFixedWidth(page->scaled(narrowWidth));
    grid->addLayout(page->captioned("Scrolling", scrolling), 0, 2);
}

void addSides(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Sides");
    auto *flat = new QVBoxLayout;
    flat->addLayout(page->captioned("Top", makeBar(page, QTabBar::RoundedNorth)));
    flat->addLayout(page->captioned("Bottom", makeBar(page, QTabBar::RoundedSouth)));
    flat->addStretch();
    row->addLayout(flat);
    row->addLayout(page->captioned("Left", makeBar(page, QTabBar::RoundedWest)));
    row->addLayout(page->captioned("Right", makeBar(page, QTabBar::RoundedEast)));
    row->addLayout(page->captioned("Triangular", makeBar(page, QTabBar::TriangularNorth)));
    row->addStretch();
}

} // namespace

QWidget *makeTabBarsPage(QWidget *parent)
{
    auto *page = new PageWidget("Tab bars", parent);
    addStates(page);
    addKinds(page);
    addSides(page);
    page->endSections();
    return page;
}

} // namespace Vireling
