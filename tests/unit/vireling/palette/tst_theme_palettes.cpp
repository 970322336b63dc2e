#include "vireling/palette/theme.h"

#include <QMetaEnum>
#include <QtTest>

#include <algorithm>
#include <cstdlib>
#include <vector>

using namespace Vireling;

namespace {

/** Colours by QPalette::ColorGroup: Active, Disabled, Inactive. */
using GroupColours = const char *[colourGroupCount];

struct ExpectedColours
{
    PaletteRoleKey key;
    GroupColours dark;
    GroupColours light;
};

const std::vector<ExpectedColours> expectedColours{
    {QPalette::WindowText, {"#ffffff", "#77808a", "#ffffff"}, {"#3c4147", "#a9afb6", "#3c4147"}},
    {QPalette::Button, {"#212831", "#212831", "#212831"}, {"#e5e7e9", "#e5e7e9", "#e5e7e9"}},
    {QPalette::Light, {"#c8cdd3", "#42484e", "#c8cdd3"}, {"#fbfbfb", "#a9afb6", "#fbfbfb"}},
    {QPalette::Midlight, {"#42484e", "#42484e", "#42484e"}, {"#f6f7f8", "#f6f7f8", "#f6f7f8"}},
    {QPalette::Dark, {"#191a1a", "#191a1a", "#191a1a"}, {"#3c4147", "#3c4147", "#3c4147"}},
    {QPalette::Mid, {"#181c21", "#181c21", "#181c21"}, {"#eeeff0", "#eeeff0", "#eeeff0"}},
    {QPalette::Text, {"#ffffff", "#77808a", "#ffffff"}, {"#3c4147", "#a9afb6", "#3c4147"}},
    {QPalette::BrightText, {"#ffffff", "#ffffff", "#ffffff"}, {"#ffffff", "#ffffff", "#ffffff"}},
    {QPalette::ButtonText, {"#ffffff", "#77808a", "#ffffff"}, {"#3c4147", "#a9afb6", "#3c4147"}},
    {QPalette::Base, {"#181c21", "#181c21", "#181c21"}, {"#eeeff0", "#eeeff0", "#eeeff0"}},
    {QPalette::Window, {"#181c21", "#181c21", "#181c21"}, {"#eeeff0", "#eeeff0", "#eeeff0"}},
    {QPalette::Shadow, {"#000000", "#000000", "#000000"}, {"#000000", "#000000", "#000000"}},
    {QPalette::Highlight, {"#227cc2", "#1b3951", "#227cc2"}, {"#227cc2", "#b1cce2", "#227cc2"}},
    {QPalette::HighlightedText,
     {"#ffffff", "#ffffff", "#ffffff"},
     {"#ffffff", "#ffffff", "#ffffff"}},
    {QPalette::Link, {"#5ca3da", "#5ca3da", "#5ca3da"}, {"#5ca3da", "#5ca3da", "#5ca3da"}},
    {QPalette::LinkVisited, {"#c8cdd3", "#c8cdd3", "#c8cdd3"}, {"#77808a", "#77808a", "#77808a"}},
    {QPalette::AlternateBase, {"#212831", "#212831", "#212831"}, {"#fbfbfb", "#fbfbfb", "#fbfbfb"}},
    {QPalette::ToolTipBase, {"#181c21", "#181c21", "#181c21"}, {"#f6f7f8", "#f6f7f8", "#f6f7f8"}},
    {QPalette::ToolTipText, {"#ffffff", "#ffffff", "#ffffff"}, {"#3c4147", "#3c4147", "#3c4147"}},
    {QPalette::PlaceholderText,
     {"#c8cdd3", "#77808a", "#c8cdd3"},
     {"#77808a", "#a9afb6", "#77808a"}},
    {ColourRole::ActiveBase, {"#ffffff", "#ffffff", "#ffffff"}, {"#141618", "#141618", "#141618"}},
    {ColourRole::ActiveText, {"#181c21", "#77808a", "#181c21"}, {"#ffffff", "#a9afb6", "#ffffff"}},
    {ColourRole::HoverBase, {"#42484e", "#42484e", "#42484e"}, {"#a9afb6", "#a9afb6", "#a9afb6"}},
    {ColourRole::Frame, {"#42484e", "#42484e", "#42484e"}, {"#a9afb6", "#a9afb6", "#a9afb6"}},
    {ColourRole::PanelFrame, {"#c8cdd3", "#42484e", "#c8cdd3"}, {"#3c4147", "#a9afb6", "#3c4147"}},
    {ColourRole::CellBase, {"#77808a", "#77808a", "#77808a"}, {"#eeeff0", "#eeeff0", "#eeeff0"}},
    {ColourRole::CellAltBase, {"#a0abbb", "#a0abbb", "#a0abbb"}, {"#e7eaee", "#e7eaee", "#e7eaee"}},
    {ColourRole::CellText, {"#ffffff", "#292c33", "#ffffff"}, {"#3c4147", "#9199a2", "#3c4147"}},
    {ColourRole::TableGrid, {"#181c21", "#181c21", "#181c21"}, {"#3c4147", "#3c4147", "#3c4147"}},
    {ColourRole::ViewItemBase,
     {"#212831", "#212831", "#212831"},
     {"#e5e7e9", "#e5e7e9", "#e5e7e9"}},
    {ColourRole::ViewItemAltBase,
     {"#323a46", "#323a46", "#323a46"},
     {"#d0d5dd", "#d0d5dd", "#d0d5dd"}},
    {ColourRole::ViewItemText,
     {"#ffffff", "#77808a", "#ffffff"},
     {"#3c4147", "#9199a2", "#3c4147"}},
    {ColourRole::ViewItemActiveBase,
     {"#ffffff", "#ffffff", "#ffffff"},
     {"#9199a2", "#9199a2", "#9199a2"}},
    {ColourRole::ViewItemActiveText,
     {"#181c21", "#77808a", "#181c21"},
     {"#fbfbfb", "#f6f7f8", "#fbfbfb"}},
    {ColourRole::HeaderBase, {"#212831", "#212831", "#212831"}, {"#e5e7e9", "#e5e7e9", "#e5e7e9"}},
    {ColourRole::HeaderText, {"#ffffff", "#77808a", "#ffffff"}, {"#3c4147", "#9199a2", "#3c4147"}},
    {ColourRole::SliderBase, {"#c8cdd3", "#42484e", "#c8cdd3"}, {"#a9afb6", "#c8cdd3", "#a9afb6"}},
    {ColourRole::ScrollBarBase,
     {"#00000000", "#00000000", "#00000000"},
     {"#00000000", "#00000000", "#00000000"}},
    {ColourRole::ScrollBarControlBase,
     {"#212831", "#212831", "#212831"},
     {"#a9afb6", "#c8cdd3", "#a9afb6"}},
    {ColourRole::ScrollBarControlFrame,
     {"#77808a", "#42484e", "#77808a"},
     {"#9199a2", "#c8cdd3", "#9199a2"}},
    {ColourRole::TabBase, {"#212831", "#212831", "#212831"}, {"#fbfbfb", "#fbfbfb", "#fbfbfb"}},
    {ColourRole::IndicatorBase,
     {"#ffffff", "#5d6064", "#ffffff"},
     {"#f6f7f8", "#f0f1f2", "#f6f7f8"}},
    {ColourRole::ArrowIconBase,
     {"#0072fd", "#113663", "#0561d1"},
     {"#0072fd", "#a7c9f4", "#308bfa"}},
    {ColourRole::MenuIconBase,
     {"#77808a", "#343a40", "#646c75"},
     {"#77808a", "#caced1", "#8f969e"}},
    {ColourRole::AlternateHighlight,
     {"#5ca3da", "#c8cdd3", "#5ca3da"},
     {"#5ca3da", "#fbfbfb", "#5ca3da"}},
    {ColourRole::Success, {"#10b981", "#10b981", "#10b981"}, {"#10b981", "#10b981", "#10b981"}},
    {ColourRole::Warning, {"#f59e0b", "#f59e0b", "#f59e0b"}, {"#f59e0b", "#f59e0b", "#f59e0b"}},
    {ColourRole::Error, {"#ef4444", "#ef4444", "#ef4444"}, {"#ef4444", "#ef4444", "#ef4444"}},
};

const char *nameOf(PaletteRoleKey key)
{
    if (key.kind == PaletteRoleKey::QtRole)
        return QMetaEnum::fromType<QPalette::ColorRole>().valueToKey(key.role);
    return QMetaEnum::fromType<ColourRole>().valueToKey(key.role);
}

QBrush brushOf(const Palette &palette, QPalette::ColorGroup group, PaletteRoleKey key)
{
    if (key.kind == PaletteRoleKey::QtRole)
        return palette.brush(group, QPalette::ColorRole(key.role));
    return palette.brush(group, ColourRole(key.role));
}

/** Mixed colours may be one off in a channel, the others are exact. */
int allowedDifference(QPalette::ColorGroup group, PaletteRoleKey key)
{
    const auto is = [key](PaletteRoleKey other) {
        return key.kind == other.kind && key.role == other.role;
    };
    const bool icon = is(ColourRole::ArrowIconBase) || is(ColourRole::MenuIconBase);
    const bool fades = icon || is(QPalette::Highlight) || is(ColourRole::IndicatorBase);
    if (group == QPalette::Disabled)
        return fades ? 1 : 0;
    return group == QPalette::Inactive && icon ? 1 : 0;
}

int largestDifference(const QColor &first, const QColor &second)
{
    return std::max({std::abs(first.red() - second.red()), std::abs(first.green() - second.green()),
                     std::abs(first.blue() - second.blue()),
                     std::abs(first.alpha() - second.alpha())});
}

} // namespace

class TestThemePalettes : public QObject
{
    Q_OBJECT

private slots:
    void theTablesCoverEveryRole();
    void everyRoleHasItsColourInEveryGroup_data();
    void everyRoleHasItsColourInEveryGroup();
    void everyOwnRoleIsSetInEveryGroup();
    void darkKeepsItsDisabledScrollBarControlBase();
    void systemIsDark();
    void aThemeIsBuiltOnce();
};

void TestThemePalettes::theTablesCoverEveryRole()
{
    const int qtRoleCount = QPalette::NColorRoles - 1; // without NoRole
    QCOMPARE(int(expectedColours.size()), qtRoleCount + colourRoleCount);
}

void TestThemePalettes::everyRoleHasItsColourInEveryGroup_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<int>("row");
    QTest::addColumn<int>("group");
    for (const Theme theme : {Theme::Dark, Theme::Light})
        for (int row = 0; row < int(expectedColours.size()); ++row)
            for (int group = 0; group < colourGroupCount; ++group)
                QTest::addRow("%s, group %d: %s", qPrintable(themeName(theme)), group,
                              nameOf(expectedColours[std::size_t(row)].key))
                    << int(theme) << row << group;
}

void TestThemePalettes::everyRoleHasItsColourInEveryGroup()
{
    QFETCH(int, theme);
    QFETCH(int, row);
    QFETCH(int, group);
    const ExpectedColours &expected = expectedColours[std::size_t(row)];
    const auto colourGroup = QPalette::ColorGroup(group);
    const QColor wanted(Theme(theme) == Theme::Light ? expected.light[group]
                                                     : expected.dark[group]);

    const QBrush brush = brushOf(themePalette(Theme(theme)), colourGroup, expected.key);

    QCOMPARE(brush.style(), Qt::SolidPattern);
    QVERIFY2(largestDifference(brush.color(), wanted) <=
                 allowedDifference(colourGroup, expected.key),
             qPrintable(brush.color().name(QColor::HexArgb) + " instead of " +
                        wanted.name(QColor::HexArgb)));
}

void TestThemePalettes::everyOwnRoleIsSetInEveryGroup()
{
    for (const Theme theme : {Theme::Dark, Theme::Light})
        QVERIFY(themePalette(theme).extended().setMask().all());
}

/** The handle is dark enough as it is; only the light theme fades it. */
void TestThemePalettes::darkKeepsItsDisabledScrollBarControlBase()
{
    const auto base = [](Theme theme, QPalette::ColorGroup group) {
        return themePalette(theme).colour(group, ColourRole::ScrollBarControlBase);
    };
    QCOMPARE(base(Theme::Dark, QPalette::Disabled), base(Theme::Dark, QPalette::Active));
    QVERIFY(base(Theme::Light, QPalette::Disabled) != base(Theme::Light, QPalette::Active));
}

void TestThemePalettes::systemIsDark()
{
    QVERIFY(themePalette(Theme::System) == themePalette(Theme::Dark));
    QVERIFY(themePalette(Theme::Light) != themePalette(Theme::Dark));
}

void TestThemePalettes::aThemeIsBuiltOnce()
{
    QCOMPARE(&themePalette(Theme::System), &themePalette(Theme::Dark));
    QCOMPARE(&themePalette(Theme::Light), &themePalette(Theme::Light));
}

QTEST_MAIN(TestThemePalettes)
#include "tst_theme_palettes.moc"
