#include "vireling/palette/current_palette.h"
#include "vireling/palette/fonts.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style.h"

#include <QPushButton>
#include <QToolTip>
#include <QtTest>

using namespace Vireling;

namespace {

/** The first group and role in which the two differ; empty if they are alike. */
QString difference(const QPalette &actual, const QPalette &expected)
{
    for (int group = 0; group < QPalette::NColorGroups; ++group)
        for (int role = 0; role < QPalette::NColorRoles; ++role) {
            const auto colourGroup = QPalette::ColorGroup(group);
            const auto colourRole = QPalette::ColorRole(role);
            if (colourRole != QPalette::NoRole &&
                actual.brush(colourGroup, colourRole) != expected.brush(colourGroup, colourRole))
                return QStringLiteral("group %1, role %2").arg(group).arg(role);
        }
    return QString();
}

} // namespace

class TestAppearance : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void iconsAreFoundInTheThemesFolderFirst();
    void theStyleIsOursInTheThemesColours();
    void theApplicationsPaletteIsTheStyles();
    void widgetsShowThatPalette();
    void fontsAreTheStyleFonts();
    void toolTipsHaveTheStylesPalette();
    void theThemeCanBeChanged();
    void aThemedIconIsThemed();
};

void TestAppearance::init()
{
    installAppearance(Theme::Dark);
}

void TestAppearance::iconsAreFoundInTheThemesFolderFirst()
{
    QCOMPARE(QDir::searchPaths("vireling"), (QStringList{":/dark", ":/"}));
}

void TestAppearance::theStyleIsOursInTheThemesColours()
{
    QVERIFY(qobject_cast<Style *>(QApplication::style()));
    QVERIFY(currentPalette() == themePalette(Theme::Dark));
}

/** Also while a platform theme brings a palette of its own. */
void TestAppearance::theApplicationsPaletteIsTheStyles()
{
    QCOMPARE(difference(QApplication::palette(), themePalette(Theme::Dark)), QString());
}

void TestAppearance::widgetsShowThatPalette()
{
    QWidget window;
    QPushButton button(&window);
    button.ensurePolished();
    QCOMPARE(window.palette().color(QPalette::Window), QColor("#181c21"));
    QCOMPARE(button.palette().color(QPalette::Disabled, QPalette::ButtonText), QColor("#77808a"));
}

void TestAppearance::fontsAreTheStyleFonts()
{
    const QFont font = QApplication::font();
    QCOMPARE(font.family(), QString("Titillium Web"));
    QCOMPARE(font.weight(), 25);
    QCOMPARE(font.pointSizeF(), 8.25);
    QCOMPARE(QToolTip::font().family(), QString("Titillium Web"));
    QCOMPARE(QToolTip::font().weight(), 63);
    QCOMPARE(QToolTip::font().pointSizeF(), 9.75);
}

void TestAppearance::toolTipsHaveTheStylesPalette()
{
    QCOMPARE(difference(QToolTip::palette(), QApplication::style()->standardPalette()), QString());
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipBase), QColor("#181c21"));
}

void TestAppearance::theThemeCanBeChanged()
{
    installAppearance(Theme::Light);
    QCOMPARE(QDir::searchPaths("vireling"), (QStringList{":/light", ":/"}));
    QVERIFY(currentPalette() == themePalette(Theme::Light));
    QCOMPARE(difference(QApplication::palette(), themePalette(Theme::Light)), QString());
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipBase), QColor("#f6f7f8"));
}

void TestAppearance::aThemedIconIsThemed()
{
    const auto contents = [] {
        QFile file("vireling:/vireling_style/icons/window_close.svg");
        return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    };
    const QByteArray dark = contents();
    installAppearance(Theme::Light);
    const QByteArray light = contents();
    QVERIFY(!dark.isEmpty());
    QVERIFY(!light.isEmpty());
    QVERIFY(dark != light);
}

int main(int argc, char **argv)
{
    initialiseResources();
    QApplication application(argc, argv);
    TestAppearance tests;
    return QTest::qExec(&tests, argc, argv);
}
#include "tst_appearance.moc"
