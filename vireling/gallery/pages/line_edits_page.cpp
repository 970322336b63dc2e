#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/gallery/state_grid.h"
#include "vireling/style/style.h"

#include <QBoxLayout>
#include <QLineEdit>

namespace Vireling {

namespace {

/** In characters: five states side by side fit the page. */
constexpr int stateWidth = 12;

QLineEdit *makeEdit(PageWidget *page)
{
    auto *edit = page->say(new QLineEdit, &QLineEdit::setText, "Press 4");
    Style::setDisplayCharCount(edit, stateWidth);
    return edit;
}

void addStates(PageWidget *page)
{
    StateGrid grid(page, "States", fieldStates());
    grid.addRow("Text", [=] { return makeEdit(page); });
    grid.addRow("Placeholder", [=] {
        auto *edit = page->say(new QLineEdit, &QLineEdit::setPlaceholderText, "Operator");
        Style::setDisplayCharCount(edit, stateWidth);
        return edit;
    });
    grid.addRow("Clear button", [=] {
        QLineEdit *edit = makeEdit(page);
        edit->setClearButtonEnabled(true);
        return edit;
    });
    grid.addRow("Selection", [=] {
        QLineEdit *edit = makeEdit(page);
        page->addText([=] { edit->selectAll(); });
        return edit;
    });
    grid.addRow("Password", [=] {
        QLineEdit *edit = makeEdit(page);
        edit->setEchoMode(QLineEdit::Password);
        return edit;
    });
    grid.addRow("Without frame", [=] {
        QLineEdit *edit = makeEdit(page);
        edit->setFrame(false);
        return edit;
    });
}

void addWidths(PageWidget *page)
{
    QBoxLayout *row = page->addRow("Width in characters");
    for (const int characters : {4, 8, 16}) {
        auto *edit = new QLineEdit(QString(characters, QLatin1Char('x')));
        Style::setDisplayCharCount(edit, characters);
        edit->setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        page->nameControl(edit, [=] { return galleryText("%1 characters").arg(characters); });
        row->addWidget(edit);
    }
    auto *withAction = makeEdit(page);
    withAction->addAction(usbKeyIcon(), QLineEdit::LeadingPosition);
    page->nameControl(withAction, [] { return galleryText("Field with an icon"); });
    row->addWidget(withAction);
    row->addStretch();
}

} // namespace

QWidget *makeLineEditsPage(QWidget *parent)
{
    auto *page = new PageWidget("Line edits", parent);
    addStates(page);
    addWidths(page);
    page->endSections();
    return page;
}

} // namespace Vireling
