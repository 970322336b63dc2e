#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/gallery/state_grid.h"

#include <QBoxLayout>
#include <QCommandLinkButton>
#include <QDialogButtonBox>
#include <QMenu>
#include <QPushButton>

namespace Vireling {

namespace {

QPushButton *makeButton(PageWidget *page)
{
    auto *button = page->say(new QPushButton, &QPushButton::setText, "&Save");
    button->setAutoDefault(false);
    return button;
}

QPushButton *makeMenuButton(PageWidget *page)
{
    QPushButton *button = makeButton(page);
    auto *menu = new QMenu(button);
    page->say(menu->addAction(QString()), &QAction::setText, "To the USB key");
    page->say(menu->addAction(QString()), &QAction::setText, "To internal storage");
    button->setMenu(menu);
    return button;
}

void addPushButtons(PageWidget *page)
{
    StateGrid grid(page, "Push buttons", buttonStates());
    grid.addRow("Text", [=] { return makeButton(page); });
    grid.addRow("Default button", [=] {
        QPushButton *button = makeButton(page);
        button->setDefault(true);
        return button;
    });
    grid.addRow("Icon and text", [=] {
        QPushButton *button = makeButton(page);
        button->setIcon(usbKeyIcon());
        return button;
    });
    grid.addRow("Checked", [=] {
        QPushButton *button = makeButton(page);
        button->setCheckable(true);
        button->setChecked(true);
        return button;
    });
    grid.addRow("Flat", [=] {
        QPushButton *button = makeButton(page);
        button->setFlat(true);
        return button;
    });
    grid.addRow("With menu", [=] { return makeMenuButton(page); });
}

void addCommandLinks(PageWidget *page)
{
    StateGrid grid(page, "Command links", controlStates());
    grid.addRow("Text", [=] {
        return page->say(new QCommandLinkButton, &QCommandLinkButton::setText, "Restart");
    });
    grid.addRow("With description", [=] {
        auto *button = page->say(new QCommandLinkButton, &QCommandLinkButton::setText, "Restart");
        return page->say(button, &QCommandLinkButton::setDescription, "Keeps the report.");
    });
}

void addButtonBox(PageWidget *page)
{
    auto *box = new QDialogButtonBox(QDialogButtonBox::Save | QDialogButtonBox::Discard |
                                     QDialogButtonBox::Cancel | QDialogButtonBox::Help);
    page->addRow("Button row of a dialog")->addWidget(box);
}

} // namespace

QWidget *makeButtonsPage(QWidget *parent)
{
    auto *page = new PageWidget("Buttons", parent);
    addPushButtons(page);
    addCommandLinks(page);
    addButtonBox(page);
    page->endSections();
    return page;
}

} // namespace Vireling
