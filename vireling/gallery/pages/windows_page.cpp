#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pages/inactive_picture.h"
#include "vireling/gallery/samples.h"
#include "vireling/window/dialog.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QVBoxLayout>

namespace Vireling {

namespace {

constexpr int windowWidth = 400;
constexpr int windowHeight = 220;

constexpr Qt::WindowFlags allControls =
    Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint | Qt::WindowSystemMenuHint;

std::unique_ptr<Dialog> makeDialog(PageWidget *page, const char *title)
{
    auto dialog = std::make_unique<Dialog>();
    page->say<QWidget>(dialog.get(), &QWidget::setWindowTitle, title);
    dialog->setWindowIcon(storageIcon());
    auto *column = new QVBoxLayout(dialog.get());
    column->addWidget(page->say(new QLabel, &QLabel::setText, "Operator"));
    auto *edit = page->say(new QLineEdit, &QLineEdit::setText, "Press 4");
    page->nameControl(edit, [] { return galleryText("Operator"); });
    column->addWidget(edit);
    auto *box = page->say(new QCheckBox, &QCheckBox::setText, "Core image");
    box->setChecked(true);
    column->addWidget(box);
    column->addStretch();
    column->addWidget(new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Cancel));
    dialog->setMinimumSize(page->scaled(windowWidth), page->scaled(windowHeight));
    return dialog;
}

/** A dialog as a part of the page; Qt::Widget, lest it become a window again. */
Dialog *makeInlineDialog(PageWidget *page, const char *title, Qt::WindowFlags controls)
{
    Dialog *dialog = makeDialog(page, title).release();
    dialog->setParent(page, Qt::Widget | controls);
    return dialog;
}

} // namespace

QWidget *makeWindowsPage(QWidget *parent)
{
    auto *page = new PageWidget("Windows", parent);
    QGridLayout *grid = page->addGrid("Title bars");
    Dialog *active = makeInlineDialog(page, "Crash report", allControls);
    grid->addLayout(page->captioned("Active", active), 0, 0);
    auto inactive = makeDialog(page, "Crash report");
    inactive->setWindowFlags(inactive->windowFlags() | allControls);
    inactive->updateControls(); // else done when it is shown, which it is not
    grid->addLayout(page->captioned("Inactive", new InactivePicture(std::move(inactive))), 0, 1);
    Dialog *fixed = makeInlineDialog(page, "Crash report", Qt::WindowCloseButtonHint);
    fixed->setFixedSize(fixed->minimumSize());
    grid->addLayout(page->captioned("Of fixed size", fixed), 1, 0);
    Dialog *disabled = makeInlineDialog(page, "Crash report", allControls);
    disabled->setEnabled(false);
    grid->addLayout(page->captioned("Disabled", disabled), 1, 1);
    for (Dialog *dialog : {active, fixed, disabled})
        dialog->show();
    page->endSections();
    return page;
}

} // namespace Vireling
