#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/samples.h"
#include "vireling/gallery/state_grid.h"

#include <QMenu>
#include <QToolButton>

namespace Vireling {

namespace {

QToolButton *makeToolButton(PageWidget *page, Qt::ToolButtonStyle style)
{
    auto *button = page->say(new QToolButton, &QToolButton::setText, "New folder");
    button->setIcon(newFolderIcon());
    button->setToolButtonStyle(style);
    button->setFocusPolicy(Qt::StrongFocus);
    return button;
}

QToolButton *makeMenuToolButton(PageWidget *page, QToolButton::ToolButtonPopupMode mode)
{
    QToolButton *button = makeToolButton(page, Qt::ToolButtonTextBesideIcon);
    auto *menu = new QMenu(button);
    page->say(menu->addAction(usbKeyIcon(), QString()), &QAction::setText, "On the USB key");
    page->say(menu->addAction(storageIcon(), QString()), &QAction::setText, "On internal storage");
    button->setMenu(menu);
    button->setPopupMode(mode);
    return button;
}

void addContents(PageWidget *page)
{
    StateGrid grid(page, "Contents", buttonStates());
    grid.addRow("Icon", [=] { return makeToolButton(page, Qt::ToolButtonIconOnly); });
    grid.addRow("Text", [=] { return makeToolButton(page, Qt::ToolButtonTextOnly); });
    grid.addRow("Text beside icon",
                [=] { return makeToolButton(page, Qt::ToolButtonTextBesideIcon); });
    grid.addRow("Text under icon",
                [=] { return makeToolButton(page, Qt::ToolButtonTextUnderIcon); });
    grid.addRow("Arrow", [=] {
        QToolButton *button = makeToolButton(page, Qt::ToolButtonIconOnly);
        button->setArrowType(Qt::DownArrow);
        return button;
    });
}

void addKinds(PageWidget *page)
{
    StateGrid grid(page, "Kinds", buttonStates());
    grid.addRow("Checked", [=] {
        QToolButton *button = makeToolButton(page, Qt::ToolButtonTextBesideIcon);
        button->setCheckable(true);
        button->setChecked(true);
        return button;
    });
    grid.addRow("Auto-raise", [=] {
        QToolButton *button = makeToolButton(page, Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        return button;
    });
    grid.addRow("Auto-raise, checked", [=] {
        QToolButton *button = makeToolButton(page, Qt::ToolButtonTextBesideIcon);
        button->setAutoRaise(true);
        button->setCheckable(true);
        button->setChecked(true);
        return button;
    });
    grid.addRow("Menu", [=] { return makeMenuToolButton(page, QToolButton::InstantPopup); });
    grid.addRow("Button and menu",
                [=] { return makeMenuToolButton(page, QToolButton::MenuButtonPopup); });
    grid.addRow("Delayed menu",
                [=] { return makeMenuToolButton(page, QToolButton::DelayedPopup); });
}

} // namespace

QWidget *makeToolButtonsPage(QWidget *parent)
{
    auto *page = new PageWidget("Tool buttons", parent);
    addContents(page);
    addKinds(page);
    page->endSections();
    return page;
}

} // namespace Vireling
