#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"

#include <QGridLayout>
#include <QLabel>
#include <QTabWidget>
#include <QToolButton>

namespace Vireling {

namespace {

constexpr int widgetHeight = 130;

QTabWidget *makeTabs(PageWidget *page, QTabWidget::TabPosition position)
{
    auto *tabs = new QTabWidget;
    tabs->setTabPosition(position);
    for (const char *title : {"Report", "Log"}) {
        auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
        contents->setMargin(page->scaled(8));
        contents->setAlignment(Qt::AlignTop);
        contents->setWordWrap(true);
        const int index = tabs->addTab(contents, QString());
        page->addText([=] { tabs->setTabText(index, galleryText(title)); });
    }
    tabs->setMinimumHeight(page->scaled(widgetHeight));
    return tabs;
}

QTabWidget *makeCornered(PageWidget *page)
{
    QTabWidget *tabs = makeTabs(page, QTabWidget::North);
    auto *corner = new QToolButton;
    corner->setIcon(newFolderIcon());
    corner->setAutoRaise(true);
    page->say(corner, &QToolButton::setToolTip, "New folder");
    page->say<QWidget>(corner, &QWidget::setAccessibleName, "New folder");
    tabs->setCornerWidget(corner);
    return tabs;
}

} // namespace

QWidget *makeTabWidgetsPage(QWidget *parent)
{
    auto *page = new PageWidget("Tab widgets", parent);
    QGridLayout *sides = page->addGrid("Sides");
    sides->addLayout(page->captioned("Top", makeTabs(page, QTabWidget::North)), 0, 0);
    sides->addLayout(page->captioned("Bottom", makeTabs(page, QTabWidget::South)), 0, 1);
    sides->addLayout(page->captioned("Left", makeTabs(page, QTabWidget::West)), 1, 0);
    sides->addLayout(page->captioned("Right", makeTabs(page, QTabWidget::East)), 1, 1);
    QGridLayout *kinds = page->addGrid("Kinds");
    QTabWidget *document = makeTabs(page, QTabWidget::North);
    document->setDocumentMode(true);
    kinds->addLayout(page->captioned("Document mode", document), 0, 0);
    kinds->addLayout(page->captioned("With a corner button", makeCornered(page)), 0, 1);
    QTabWidget *disabled = makeTabs(page, QTabWidget::North);
    disabled->setEnabled(false);
    kinds->addLayout(page->captioned("Disabled", disabled), 0, 2);
    page->endSections();
    return page;
}

} // namespace Vireling
