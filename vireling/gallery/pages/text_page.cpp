#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QGridLayout>
#include <QPlainTextEdit>

namespace Vireling {

namespace {

constexpr int editWidth = 280;
constexpr int editHeight = 120;

QPlainTextEdit *makeEdit(PageWidget *page)
{
    auto *edit = new QPlainTextEdit;
    edit->setMinimumSize(page->scaled(editWidth), page->scaled(editHeight));
    return page->say(edit, &QPlainTextEdit::setPlainText,
                     "The press stopped while the sheet was being fed.\n\nIt had run for an "
                     "hour. Nothing was on the display but the question whether to restart.");
}

} // namespace

QWidget *makeTextPage(QWidget *parent)
{
    auto *page = new PageWidget("Plain text", parent);
    QGridLayout *grid = page->addGrid("States");
    int position = 0;
    for (const Pose state :
         {Pose::Default, Pose::Focused, Pose::Hovered, Pose::ReadOnly, Pose::Disabled}) {
        QPlainTextEdit *edit = makeEdit(page);
        pose(edit, state, edit);
        if (state == Pose::Focused)
            page->setFocusProxy(edit);
        grid->addLayout(page->captioned(poseName(state), edit), position / 3, position % 3);
        ++position;
    }
    auto *empty =
        page->say(new QPlainTextEdit, &QPlainTextEdit::setPlaceholderText, "What were you doing?");
    empty->setMinimumHeight(page->scaled(editHeight));
    grid->addLayout(page->captioned("Placeholder", empty), 1, 2);
    page->endSections();
    return page;
}

} // namespace Vireling
