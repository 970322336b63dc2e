#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"

#include <QBoxLayout>
#include <QLabel>
#include <QToolBox>

namespace Vireling {

namespace {

constexpr int boxWidth = 280;
constexpr int boxHeight = 240;

QToolBox *makeBox(PageWidget *page)
{
    auto *box = new QToolBox;
    for (const char *title : {"Report", "Core image", "System log"}) {
        auto *contents = page->say(new QLabel, &QLabel::setText, sampleSentence);
        contents->setAlignment(Qt::AlignTop);
        contents->setWordWrap(true);
        const int index = box->addItem(contents, QString());
        page->addText([=] { box->setItemText(index, galleryText(title)); });
        // The area that the box puts around each page takes the focus.
        if (QWidget *area = contents->parentWidget()->parentWidget())
            page->say<QWidget>(area, &QWidget::setAccessibleName, title);
    }
    box->setItemIcon(0, storageIcon());
    box->setMinimumSize(page->scaled(boxWidth), page->scaled(boxHeight));
    return box;
}

} // namespace

QWidget *makeToolBoxesPage(QWidget *parent)
{
    auto *page = new PageWidget("Tool boxes", parent);
    QBoxLayout *row = page->addRow("States");
    row->addLayout(page->captioned("First page open", makeBox(page)));
    QToolBox *second = makeBox(page);
    second->setCurrentIndex(1);
    second->setItemEnabled(2, false);
    row->addLayout(page->captioned("Second page open, third disabled", second));
    QToolBox *disabled = makeBox(page);
    disabled->setEnabled(false);
    row->addLayout(page->captioned("Disabled", disabled));
    page->endSections();
    return page;
}

} // namespace Vireling
