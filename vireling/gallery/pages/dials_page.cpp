#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/state_grid.h"

#include <QDial>

namespace Vireling {

namespace {

constexpr int dialSize = 96;

QDial *makeDial(PageWidget *page)
{
    auto *dial = new QDial;
    dial->setRange(0, 100);
    dial->setValue(65);
    dial->setFixedSize(page->scaled(dialSize), page->scaled(dialSize));
    return dial;
}

} // namespace

QWidget *makeDialsPage(QWidget *parent)
{
    auto *page = new PageWidget("Dials", parent);
    StateGrid grid(page, "States", controlStates());
    grid.addRow("Plain", [=] { return makeDial(page); });
    grid.addRow("Notches", [=] {
        QDial *dial = makeDial(page);
        dial->setNotchesVisible(true);
        return dial;
    });
    grid.addRow("Wrapping", [=] {
        QDial *dial = makeDial(page);
        dial->setNotchesVisible(true);
        dial->setWrapping(true);
        return dial;
    });
    grid.addRow("At its minimum", [=] {
        QDial *dial = makeDial(page);
        dial->setValue(dial->minimum());
        return dial;
    });
    page->endSections();
    return page;
}

} // namespace Vireling
