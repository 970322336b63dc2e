#include "vireling/gallery/page_widget.h"
#include "vireling/gallery/pages.h"

#include <QCalendarWidget>
#include <QGridLayout>
#include <QLocale>
#include <QToolButton>

namespace Vireling {

namespace {

/** The arrows of Qt's calendar have no text for assistive techniques. */
void nameArrows(PageWidget *page, QCalendarWidget *calendar)
{
    const struct
    {
        const char *button;
        const char *name;
    } arrows[]{{"qt_calendar_prevmonth", "Previous month"},
               {"qt_calendar_nextmonth", "Next month"}};
    for (const auto &arrow : arrows)
        if (auto *button = calendar->findChild<QToolButton *>(QLatin1String(arrow.button)))
            page->say<QWidget>(button, &QWidget::setAccessibleName, arrow.name);
    if (auto *days = calendar->findChild<QWidget *>(QStringLiteral("qt_calendar_calendarview")))
        page->say(days, &QWidget::setAccessibleName, "Days");
}

QCalendarWidget *makeCalendar(PageWidget *page)
{
    auto *calendar = new QCalendarWidget;
    calendar->setLocale(QLocale(QLocale::English, QLocale::UnitedKingdom));
    calendar->setSelectedDate(QDate(2021, 6, 14));
    nameArrows(page, calendar);
    return calendar;
}

} // namespace

QWidget *makeCalendarPage(QWidget *parent)
{
    auto *page = new PageWidget("Calendar", parent);
    QGridLayout *grid = page->addGrid("States");
    grid->addLayout(page->captioned("Default", makeCalendar(page)), 0, 0);
    QCalendarWidget *disabled = makeCalendar(page);
    disabled->setEnabled(false);
    grid->addLayout(page->captioned("Disabled", disabled), 0, 1);
    QCalendarWidget *range = makeCalendar(page);
    range->setGridVisible(true);
    range->setDateRange(QDate(2021, 6, 7), QDate(2021, 6, 25));
    grid->addLayout(page->captioned("With grid, within a range", range), 1, 0);
    QCalendarWidget *bare = makeCalendar(page);
    bare->setVerticalHeaderFormat(QCalendarWidget::NoVerticalHeader);
    bare->setNavigationBarVisible(false);
    grid->addLayout(page->captioned("Days alone", bare), 1, 1);
    page->endSections();
    return page;
}

} // namespace Vireling
