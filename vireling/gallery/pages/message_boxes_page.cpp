#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"

#include <QGridLayout>
#include <QMessageBox>
#include <QStyle>

namespace Vireling {

namespace {

struct Message
{
    QMessageBox::Icon icon;
    const char *title;
    const char *text;
    const char *details;
    QMessageBox::StandardButtons buttons;
};

const Message messages[]{
    {QMessageBox::Information, "Information", "The report has been saved.", "It is on the USB key.",
     QMessageBox::Ok},
    {QMessageBox::Question, "Question", "Restart now?", "What is not saved is lost.",
     QMessageBox::Yes | QMessageBox::No},
    {QMessageBox::Warning, "Warning", "The USB key is nearly full.", "Free some space on it.",
     QMessageBox::Retry | QMessageBox::Cancel},
    {QMessageBox::Critical, "Error", "The report could not be saved.",
     "The USB key was pulled out.", QMessageBox::Ok | QMessageBox::Cancel},
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
