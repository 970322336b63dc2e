#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"
#include "vireling/gallery/state_grid.h"

#include <QDateTimeEdit>
#include <QDoubleSpinBox>
#include <QSpinBox>

namespace Vireling {

namespace {

QSpinBox *makeSpinBox(PageWidget *page)
{
    auto *box = new QSpinBox;
    box->setRange(0, 9999);
    box->setValue(1200);
    return page->say(box, &QSpinBox::setSuffix, " ms");
}

const QDateTime &sampleTime()
{
    static const QDateTime time(QDate(2021, 6, 14), QTime(9, 30));
    return time;
}

void addSpinBoxes(PageWidget *page)
{
    StateGrid grid(page, "Spin boxes", fieldStates());
    grid.addRow("Whole numbers", [=] { return makeSpinBox(page); });
    grid.addRow("Plus and minus", [=] {
        QSpinBox *box = makeSpinBox(page);
        box->setButtonSymbols(QAbstractSpinBox::PlusMinus);
        return box;
    });
    grid.addRow("Without buttons", [=] {
        QSpinBox *box = makeSpinBox(page);
        box->setButtonSymbols(QAbstractSpinBox::NoButtons);
        return box;
    });
    grid.addRow("Without frame", [=] {
        QSpinBox *box = makeSpinBox(page);
        box->setFrame(false);
        return box;
    });
    grid.addRow("At its maximum", [=] {
        QSpinBox *box = makeSpinBox(page);
        box->setValue(box->maximum());
        return box;
    });
    grid.addRow("Fractions", [=] {
        auto *box = new QDoubleSpinBox;
        box->setValue(2.5);
        return page->say(box, &QDoubleSpinBox::setSuffix, " bar");
    });
}

void addDates(PageWidget *page)
{
    StateGrid grid(page, "Dates and times", fieldStates());
    grid.addRow("Date", [] { return new QDateEdit(sampleTime().date()); });
    grid.addRow("Time", [] { return new QTimeEdit(sampleTime().time()); });
    grid.addRow("With calendar", [] {
        auto *edit = new QDateEdit(sampleTime().date());
        edit->setCalendarPopup(true);
        return edit;
    });
}

} // namespace

QWidget *makeSpinBoxesPage(QWidget *parent)
{
    auto *page = new PageWidget("Spin boxes", parent);
    addSpinBoxes(page);
    addDates(page);
    page->endSections();
    return page;
}

} // namespace Vireling
