#include "vireling/palette/contrast.h"
#include "vireling/palette/theme.h"
#include "vireling/style/style.h"

#include <QtTest>
#include <QtWidgets>

using namespace Vireling;

namespace {

constexpr QPalette::ColorGroup groups[]{QPalette::Active, QPalette::Inactive, QPalette::Disabled};

template <typename View>
QColor colourOf(Theme theme, QPalette::ColorGroup group, QPalette::ColorRole role)
{
    Style style(themePalette(theme));
    View view;
    style.polish(&view);
    return view.palette().color(group, role);
}

/** No darker than it has to be: the next step of darkening would pass 4.8. */
bool justReads(const QColor &text, const QColor &ground)
{
    const qreal ratio = contrastRatio(text, ground);
    return ratio >= 4.5 && ratio < 4.8;
}

} // namespace

/** What text and sub-windows stand on where the named roles alone would not do. */
class TestStyleGrounds : public QObject
{
    Q_OBJECT

private slots:
    void lightCellsAreTheNamedRoles();
    void darkCellsAreDarkenedUntilTheirTextReads();
    void darkSelectedRowsAreTheNamedRole();
    void lightSelectedRowsAreDarkenedUntilTheirTextReads();
    void weekendsAreBoldAndNotRed();
    void aChosenWeekendColourStays();
    void subWindowsStandOnTheirOwnGround();
};

void TestStyleGrounds::lightCellsAreTheNamedRoles()
{
    for (const QPalette::ColorGroup group : groups) {
        QCOMPARE(colourOf<QTableView>(Theme::Light, group, QPalette::Base), QColor("#eeeff0"));
        QCOMPARE(colourOf<QTableView>(Theme::Light, group, QPalette::AlternateBase),
                 QColor("#e7eaee"));
    }
}

void TestStyleGrounds::darkCellsAreDarkenedUntilTheirTextReads()
{
    for (const QPalette::ColorGroup group : groups) {
        const QColor base = colourOf<QTableView>(Theme::Dark, group, QPalette::Base);
        const QColor alternate = colourOf<QTableView>(Theme::Dark, group, QPalette::AlternateBase);
        QVERIFY(justReads(Qt::white, alternate));
        QVERIFY(contrastRatio(Qt::white, base) > 4.5);
        QVERIFY(contrastRatio(base, alternate) > 1.3); // rows still alternate
    }
}

void TestStyleGrounds::darkSelectedRowsAreTheNamedRole()
{
    for (const QPalette::ColorGroup group : groups) {
        QCOMPARE(colourOf<QTableView>(Theme::Dark, group, QPalette::Highlight), QColor("#ffffff"));
        QCOMPARE(colourOf<QListView>(Theme::Dark, group, QPalette::Highlight), QColor("#ffffff"));
    }
}

void TestStyleGrounds::lightSelectedRowsAreDarkenedUntilTheirTextReads()
{
    for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Inactive}) {
        const QColor text("#fbfbfb");
        QVERIFY(justReads(text, colourOf<QTableView>(Theme::Light, group, QPalette::Highlight)));
        QVERIFY(justReads(text, colourOf<QTreeView>(Theme::Light, group, QPalette::Highlight)));
    }
    QCOMPARE(colourOf<QTreeView>(Theme::Light, QPalette::Disabled, QPalette::Highlight),
             QColor("#9199a2"));
}

void TestStyleGrounds::weekendsAreBoldAndNotRed()
{
    Style style;
    QCalendarWidget calendar;
    style.polish(&calendar);
    for (const Qt::DayOfWeek day : {Qt::Saturday, Qt::Sunday}) {
        QCOMPARE(calendar.weekdayTextFormat(day).foreground().style(), Qt::NoBrush);
        QCOMPARE(calendar.weekdayTextFormat(day).fontWeight(), int(QFont::Bold));
    }
    QVERIFY(calendar.weekdayTextFormat(Qt::Monday).fontWeight() != int(QFont::Bold));
}

void TestStyleGrounds::aChosenWeekendColourStays()
{
    Style style;
    QCalendarWidget calendar;
    QTextCharFormat chosen;
    chosen.setForeground(Qt::green);
    calendar.setWeekdayTextFormat(Qt::Sunday, chosen);
    style.polish(&calendar);
    QCOMPARE(calendar.weekdayTextFormat(Qt::Sunday).foreground(), QBrush(Qt::green));
}

void TestStyleGrounds::subWindowsStandOnTheirOwnGround()
{
    Style light(themePalette(Theme::Light));
    QMdiArea area;
    light.polish(&area);
    QCOMPARE(area.background().color(), QColor("#d0d5dd"));
    light.unpolish(&area);
    QCOMPARE(area.background(), QApplication::palette().brush(QPalette::Dark));

    area.setBackground(Qt::green);
    light.polish(&area);
    QCOMPARE(area.background(), QBrush(Qt::green));
}

QTEST_MAIN(TestStyleGrounds)
#include "tst_style_grounds.moc"
