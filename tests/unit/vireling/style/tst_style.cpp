#include "vireling/style/style.h"

#include "vireling/palette/fonts.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style_input_focus_helper.h"

#include <QApplication>
#include <QLabel>
#include <QListView>
#include <QPointer>
#include <QToolTip>
#include <QtTest>

using namespace Vireling;

namespace {

Palette paletteOfReds()
{
    Palette palette(themePalette(Theme::Light));
    palette.setBrush(QPalette::Window, QColor(Qt::darkRed));
    palette.setBrush(ColourRole::Frame, QColor(Qt::red));
    return palette;
}

} // namespace

class TestStyle : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void withoutAPaletteTheStyleIsDark();
    void theStyleKeepsItsOwnCopyOfThePalette();
    void theStyleIsKnownByItsName();
    void thePaletteIsFoundThroughTheMetaObject();
    void theStandardPaletteIsTheStyles();
    void polishingAPaletteReplacesItWhole();
    void theStylesPaletteBecomesTheApplications();
    void theFocusHelperBelongsToTheStyle();
    void theApplicationOwnsAnInstalledStyle();
    void installingTheAppearanceSetsFontsAndToolTips();
    void aChangeOfThemeReachesShownWidgets();
    void unpolishingGivesItemViewsTheirPaletteBack();
};

void TestStyle::init()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestStyle::withoutAPaletteTheStyleIsDark()
{
    const Style style;
    QVERIFY(style.palette() == themePalette(Theme::Dark));
}

void TestStyle::theStyleKeepsItsOwnCopyOfThePalette()
{
    Palette given = paletteOfReds();
    const Style style(given);
    given.setBrush(ColourRole::Frame, QColor(Qt::green));
    QVERIFY(style.palette() == paletteOfReds());
}

void TestStyle::theStyleIsKnownByItsName()
{
    const Style style;
    QCOMPARE(style.metaObject()->className(), "Vireling::Style");
    QVERIFY(style.inherits("QCommonStyle"));
}

void TestStyle::thePaletteIsFoundThroughTheMetaObject()
{
    QApplication::setStyle(new Style(paletteOfReds()));
    QVERIFY(currentPalette() == paletteOfReds());
}

void TestStyle::theStandardPaletteIsTheStyles()
{
    const Style style(paletteOfReds());
    QVERIFY(style.standardPalette() == static_cast<const QPalette &>(paletteOfReds()));
}

void TestStyle::polishingAPaletteReplacesItWhole()
{
    Style style(paletteOfReds());
    QPalette palette(Qt::yellow, Qt::cyan);
    static_cast<QStyle &>(style).polish(palette);
    QVERIFY(palette == style.standardPalette());
}

void TestStyle::theStylesPaletteBecomesTheApplications()
{
    QApplication::setStyle(new Style(paletteOfReds()));
    QCOMPARE(QApplication::palette().color(QPalette::Window), QColor(Qt::darkRed));
    const QWidget widget;
    QCOMPARE(widget.palette().color(QPalette::Window), QColor(Qt::darkRed));
}

void TestStyle::theFocusHelperBelongsToTheStyle()
{
    auto *style = new Style;
    const QPointer<StyleInputFocusHelper> helper = style->findChild<StyleInputFocusHelper *>();
    QVERIFY(helper);
    QCOMPARE(helper->parent(), style);
    delete style;
    QVERIFY(!helper);
}

void TestStyle::theApplicationOwnsAnInstalledStyle()
{
    const QPointer<QStyle> installed = QApplication::style();
    installAppearance(Theme::Light);
    QVERIFY(!installed);
    QVERIFY(qobject_cast<Style *>(QApplication::style()));
}

void TestStyle::installingTheAppearanceSetsFontsAndToolTips()
{
    QCOMPARE(QApplication::font(), styleFont(applicationFontSlot));
    QCOMPARE(QToolTip::font(), styleFont(toolTipFontSlot));
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipBase),
             themePalette(Theme::Dark).color(QPalette::ToolTipBase));
}

void TestStyle::aChangeOfThemeReachesShownWidgets()
{
    QWidget window;
    auto *label = new QLabel(QStringLiteral("Label"), &window);
    auto *view = new QListView(&window);
    window.show();
    const QColor darkGround = label->palette().color(QPalette::Window);
    const QColor darkRows = view->palette().color(QPalette::Base);
    installAppearance(Theme::Light);
    const Palette light = themePalette(Theme::Light);
    QVERIFY(darkGround != light.color(QPalette::Window));
    QVERIFY(darkRows != light.colour(QPalette::Active, ColourRole::ViewItemBase));
    QCOMPARE(label->palette().color(QPalette::Window), light.color(QPalette::Window));
    QCOMPARE(view->palette().color(QPalette::Base),
             light.colour(QPalette::Active, ColourRole::ViewItemBase));
    QCOMPARE(QToolTip::palette().color(QPalette::ToolTipText), light.color(QPalette::ToolTipText));
}

void TestStyle::unpolishingGivesItemViewsTheirPaletteBack()
{
    QListView view;
    view.ensurePolished();
    const Palette &palette = currentPalette();
    QCOMPARE(view.palette().color(QPalette::Base),
             palette.colour(QPalette::Active, ColourRole::ViewItemBase));
    QApplication::style()->unpolish(&view);
    QCOMPARE(view.palette().color(QPalette::Base), palette.color(QPalette::Base));
}

QTEST_MAIN(TestStyle)
#include "tst_style.moc"
