#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/pose.h"
#include "vireling/gallery/samples.h"

#include <QActionGroup>
#include <QBoxLayout>
#include <QCloseEvent>
#include <QMenu>
#include <QMenuBar>

namespace Vireling {

namespace {

/** A menu that is a part of the page: it stays when an action is chosen. */
class InlineMenu : public QMenu
{
public:
    InlineMenu() { setWindowFlags(Qt::Widget); }

protected:
    void closeEvent(QCloseEvent *event) override { event->ignore(); }
};

QAction *addAction(PageWidget *page, QMenu *menu, const char *text, const QIcon &icon = QIcon())
{
    return page->say(menu->addAction(icon, QString()), &QAction::setText, text);
}

QMenu *makeFileMenu(PageWidget *page)
{
    auto *menu = new InlineMenu;
    QAction *folder = addAction(page, menu, "&New folder", newFolderIcon());
    folder->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_N));
    addAction(page, menu, "&Save to the USB key", usbKeyIcon())
        ->setShortcut(QKeySequence(Qt::CTRL + Qt::Key_S));
    addAction(page, menu, "Save to internal storage", storageIcon())->setEnabled(false);
    menu->addSeparator();
    auto *places = page->say(menu->addMenu(QString()), &QMenu::setTitle, "Send &to");
    addAction(page, places, "Service");
    menu->addSeparator();
    addAction(page, menu, "&Quit");
    menu->setActiveAction(folder);
    return menu;
}

QMenu *makeCheckedMenu(PageWidget *page)
{
    auto *menu = new InlineMenu;
    page->say(menu->addSection(QString()), &QAction::setText, "Attach");
    int number = 0;
    for (const char *text : {"Core image", "System log", "Settings"}) {
        QAction *action = addAction(page, menu, text);
        action->setCheckable(true);
        action->setChecked(number != 1);
        action->setEnabled(number++ != 2);
    }
    page->say(menu->addSection(QString()), &QAction::setText, "Sort by");
    auto *group = new QActionGroup(menu);
    for (const char *text : {"Name", "Size", "Date"}) {
        QAction *action = group->addAction(addAction(page, menu, text));
        action->setCheckable(true);
        action->setChecked(group->actions().size() == 2);
    }
    return menu;
}

QMenu *makeTearOffMenu(PageWidget *page)
{
    auto *menu = new InlineMenu;
    menu->setTearOffEnabled(true);
    menu->setDefaultAction(addAction(page, menu, "Restart"));
    QAction *chosen = addAction(page, menu, "Switch off");
    addAction(page, menu, "Leave it on");
    menu->setActiveAction(chosen);
    return menu;
}

QMenuBar *makeMenuBar(PageWidget *page)
{
    auto *bar = new QMenuBar;
    bar->setNativeMenuBar(false);
    for (const char *title : {"&File", "&Edit", "&Help"}) {
        auto *menu = page->say(bar->addMenu(QString()), &QMenu::setTitle, title);
        addAction(page, menu, "&Quit");
    }
    bar->actions().at(1)->setEnabled(false);
    bar->setSizePolicy(QSizePolicy::Maximum, QSizePolicy::Fixed);
    return bar;
}

} // namespace

QWidget *makeMenusPage(QWidget *parent)
{
    auto *page = new PageWidget("Menus", parent);
    QBoxLayout *bars = page->addRow("Menu bars");
    bars->addLayout(page->captioned("Second menu disabled", makeMenuBar(page)));
    QMenuBar *hovered = makeMenuBar(page);
    poseHovered(hovered, 0.1, 0.5);
    bars->addLayout(page->captioned("Hover", hovered));
    bars->addStretch();
    QBoxLayout *menus = page->addRow("Menus");
    menus->addLayout(page->captioned("Icons, shortcuts, submenu", makeFileMenu(page)));
    menus->addLayout(page->captioned("Checks and sections", makeCheckedMenu(page)));
    menus->addLayout(page->captioned("Tear-off, default action", makeTearOffMenu(page)));
    menus->addStretch();
    page->endSections();
    return page;
}

} // namespace Vireling
