#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"

#include <QGridLayout>
#include <QMessageBox>
#include <QStyle>

namespace Vireling {

namespace {

struct Message
{
    const char *title;
    const char *text;
    const char *details;
    QMessageBox::Icon icon;
    QMessageBox::StandardButtons buttons;
};

const Message messages[]{
    {"Information", "The report has been saved.", "It is on the USB key.", QMessageBox::Information,
     QMessageBox::Ok},
    {"Question", "Restart now?", "What is not saved is lost.", QMessageBox::Question,
     QMessageBox::Yes | QMessageBox::No},
    {"Warning", "The USB key is nearly full.", "Free some space on it.", QMessageBox::Warning,
     QMessageBox::Retry | QMessageBox::Cancel},
    {"Error", "The report could not be saved.", "The USB key was pulled out.",
     QMessageBox::Critical, QMessageBox::Ok | QMessageBox::Cancel},
};

QWidget *makeBox(PageWidget *page, const Message &message)
{
    auto *box = new QMessageBox;
    box->setIcon(message.icon);
    box->setStandardButtons(message.buttons);
    page->say(box, &QMessageBox::setText, message.text);
    page->addText([box, details = message.details] {
        box->setInformativeText(galleryText(details));
        // Which lays the box out anew: only polishing gives it its least width again.
        box->style()->polish(box);
    });
    return framed(box);
}

} // namespace

QWidget *makeMessageBoxesPage(QWidget *parent)
{
    auto *page = new PageWidget("Message boxes", parent);
    QGridLayout *grid = page->addGrid("Kinds");
    int position = 0;
    for (const Message &message : messages) {
        grid->addLayout(page->captioned(message.title, makeBox(page, message)), position / 2,
                        position % 2, Qt::AlignLeft | Qt::AlignTop);
        ++position;
    }
    page->endSections();
    return page;
}

} // namespace Vireling
