#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QComboBox>
#include <QLabel>
#include <QMainWindow>
#include <QProgressBar>
#include <QStatusBar>
#include <QToolBar>

namespace Vireling {

namespace {

constexpr int windowHeight = 240;

void fill(PageWidget *page, QToolBar *bar)
{
    page->say<QWidget>(bar, &QWidget::setWindowTitle, "Files");
    page->say(bar->addAction(parentFolderIcon(), QString()), &QAction::setText, "Up");
    page->say(bar->addAction(newFolderIcon(), QString()), &QAction::setText, "New folder");
    bar->addSeparator();
    QAction *usb = page->say(bar->addAction(usbKeyIcon(), QString()), &QAction::setText, "USB key");
    usb->setCheckable(true);
    usb->setChecked(true);
    page->say(bar->addAction(storageIcon(), QString()), &QAction::setText, "Storage")
        ->setEnabled(false);
}

QStatusBar *makeStatusBar(PageWidget *page)
{
    auto *bar = new QStatusBar;
    bar->addWidget(page->say(new QLabel, &QLabel::setText, "Saving the report"));
    auto *progress = new QProgressBar;
    progress->setValue(60);
    page->nameControl(progress, [] { return galleryText("Progress of saving"); });
    bar->addPermanentWidget(progress);
    bar->addPermanentWidget(page->say(new QLabel, &QLabel::setText, "USB key"));
    return bar;
}

QWidget *makeMainWindow(PageWidget *page)
{
    auto *window = new QMainWindow;
    auto *top = new QToolBar;
    fill(page, top);
    top->setToolButtonStyle(Qt::ToolButtonTextBesideIcon);
    window->addToolBar(Qt::TopToolBarArea, top);
    auto *side = new QToolBar;
    fill(page, side);
    window->addToolBar(Qt::LeftToolBarArea, side);
    auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
    contents->setAlignment(Qt::AlignCenter);
    window->setCentralWidget(contents);
    window->setStatusBar(makeStatusBar(page));
    window->setMinimumHeight(page->scaled(windowHeight));
    return framed(window);
}

} // namespace

QWidget *makeToolBarsPage(QWidget *parent)
{
    auto *page = new PageWidget("Tool bars and status bars", parent);
    page->addRow("In a window")->addWidget(makeMainWindow(page));
    QBoxLayout *kinds = page->addColumn("Kinds");
    auto *under = new QToolBar;
    fill(page, under);
    under->setToolButtonStyle(Qt::ToolButtonTextUnderIcon);
    kinds->addLayout(page->captioned("Text under icons", under));
    auto *fixed = new QToolBar;
    fill(page, fixed);
    fixed->setMovable(false);
    auto *box = new QComboBox;
    box->addItem(QString());
    page->addText([=] { box->setItemText(0, galleryText("Sort by name")); });
    box->setSizeAdjustPolicy(QComboBox::AdjustToContents);
    page->nameControl(box, [] { return galleryText("Order"); });
    fixed->addWidget(box);
    kinds->addLayout(page->captioned("Fixed, with a control", fixed));
    page->endSections();
    return page;
}

} // namespace Vireling
