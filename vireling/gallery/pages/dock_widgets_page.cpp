#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QDockWidget>
#include <QLabel>
#include <QMainWindow>

namespace Vireling {

namespace {

constexpr int windowHeight = 320;
constexpr int dockMargin = 8;

QLabel *makeContents(PageWidget *page)
{
    auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
    contents->setMargin(page->scaled(dockMargin));
    contents->setAlignment(Qt::AlignTop);
    contents->setWordWrap(true);
    return contents;
}

QDockWidget *makeDock(PageWidget *page, const char *title)
{
    auto *dock = new QDockWidget;
    page->say<QWidget>(dock, &QWidget::setWindowTitle, title);
    dock->setWidget(makeContents(page));
    return dock;
}

} // namespace

QWidget *makeDockWidgetsPage(QWidget *parent)
{
    auto *page = new PageWidget("Dock widgets", parent);
    auto *window = new QMainWindow;
    window->setCentralWidget(makeContents(page));
    window->addDockWidget(Qt::LeftDockWidgetArea, makeDock(page, "Log"));
    QDockWidget *fixed = makeDock(page, "Details");
    fixed->setFeatures(QDockWidget::NoDockWidgetFeatures);
    window->addDockWidget(Qt::LeftDockWidgetArea, fixed);
    QDockWidget *vertical = makeDock(page, "Files");
    vertical->setFeatures(vertical->features() | QDockWidget::DockWidgetVerticalTitleBar);
    window->addDockWidget(Qt::RightDockWidgetArea, vertical);
    QDockWidget *disabled = makeDock(page, "Disabled");
    disabled->setEnabled(false);
    window->addDockWidget(Qt::BottomDockWidgetArea, disabled);
    QDockWidget *tabbed = makeDock(page, "Settings");
    window->addDockWidget(Qt::BottomDockWidgetArea, tabbed);
    window->tabifyDockWidget(disabled, tabbed);
    disabled->raise(); // in front of the other
    window->setMinimumHeight(page->scaled(windowHeight));
    page->addRow("In a window")->addWidget(framed(window));
    page->endSections();
    return page;
}

} // namespace Vireling
