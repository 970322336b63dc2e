#include "vireling/palette/current_palette.h"
#include "vireling/palette/theme.h"
#include "vireling/style/style.h"

#include <QCommonStyle>
#include <QtTest>

using namespace Vireling;

class TestCurrentPalette : public QObject
{
    Q_OBJECT

private slots:
    void itIsThatOfTheApplicationsStyle();
    void itFollowsAChangeOfStyle();
    void aForeignStyleGivesOneWithoutOwnRoles();
    void rolesAreReadInTheGroupAskedFor();
    void aStyleWithoutPaletteIsDark();
    void aStyleKeepsItsOwnCopy();
    void onlyOurStyleHasAPalette();
};

void TestCurrentPalette::itIsThatOfTheApplicationsStyle()
{
    auto *style = new Style(themePalette(Theme::Light));
    QApplication::setStyle(style);
    QCOMPARE(&currentPalette(), &style->palette());
    QVERIFY(currentPalette() == themePalette(Theme::Light));
}

void TestCurrentPalette::itFollowsAChangeOfStyle()
{
    QApplication::setStyle(new Style(themePalette(Theme::Light)));
    QApplication::setStyle(new Style(themePalette(Theme::Dark)));
    QVERIFY(currentPalette() == themePalette(Theme::Dark));
}

void TestCurrentPalette::aForeignStyleGivesOneWithoutOwnRoles()
{
    QApplication::setStyle(new QCommonStyle);
    const Palette &palette = currentPalette();
    QVERIFY(palette.extended() == UserPalette());
    QCOMPARE(currentBrush(ColourRole::Error), QBrush());
    QCOMPARE(&currentPalette(), &palette); // made once
}

void TestCurrentPalette::rolesAreReadInTheGroupAskedFor()
{
    QApplication::setStyle(new Style(themePalette(Theme::Light)));
    QCOMPARE(currentColour(ColourRole::SliderBase), QColor("#a9afb6"));
    QCOMPARE(currentColour(ColourRole::SliderBase, QPalette::Disabled), QColor("#c8cdd3"));
    QCOMPARE(currentBrush(ColourRole::SliderBase, QPalette::Disabled), QBrush(QColor("#c8cdd3")));
}

void TestCurrentPalette::aStyleWithoutPaletteIsDark()
{
    QVERIFY(Style().palette() == themePalette(Theme::Dark));
}

void TestCurrentPalette::aStyleKeepsItsOwnCopy()
{
    Palette palette = themePalette(Theme::Light);
    const Style style(palette);
    palette.setBrush(ColourRole::Error, QBrush(Qt::black));
    QVERIFY(style.palette() == themePalette(Theme::Light));
}

void TestCurrentPalette::onlyOurStyleHasAPalette()
{
    const Style ours;
    const QCommonStyle foreign;
    QCOMPARE(paletteOf(&ours), &ours.palette());
    QVERIFY(!paletteOf(&foreign));
    QVERIFY(!paletteOf(nullptr));
}

QTEST_MAIN(TestCurrentPalette)
#include "tst_current_palette.moc"
