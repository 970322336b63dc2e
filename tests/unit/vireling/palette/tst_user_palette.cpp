#include "user_palette_events.h"
#include "vireling/palette/theme.h"
#include "vireling/palette/user_palette.h"
#include "vireling/style/style.h"

#include <QCommonStyle>
#include <QtTest>

using namespace Vireling;

namespace {

/** Knows whether it was asked to repaint. */
class PaintedWidget : public QWidget
{
public:
    int updates = 0;

    bool event(QEvent *event) override
    {
        if (event->type() == QEvent::UpdateRequest)
            ++updates;
        return QWidget::event(event);
    }
};

} // namespace

class TestUserPalette : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theChangeEventIsRegisteredOnce();
    void withoutThePropertyThereIsNone();
    void thePropertyIsWhatIsRead();
    void aForeignPropertyCountsAsEmpty_data();
    void aForeignPropertyCountsAsEmpty();
    void withoutThePropertyTheStylesRolesCount();
    void theOwnOneWinsOverTheStyles();
    void aForeignStyleHasNoRoles();
    void settingStoresRepaintsAndTells();
    void theWidgetIsToldBeforeTheCallReturns();
    void settingTheSameTwiceDoesNothing();
    void settingWhatTheStyleShowsDoesNothing();
    void aParentFillsWhatIsUnset();
    void aParentWithoutOneFillsFromItsStyle();
    void withoutAParentNothingIsFilled();
    void propagatingFromAParentWithoutOneDoesNothing();
    void propagatingCopiesToAChildWithoutOne();
    void propagatingResolvesAChildWithItsOwn();
    void propagatingWhatTheChildHasTellsNobody();
    void nullWidgetsAreSurvived();

private:
    UserPalette redFrame = withRole(ColourRole::Frame, Qt::red);
    UserPalette blueFrame = withRole(ColourRole::Frame, Qt::blue);
    UserPalette greenTab = withRole(ColourRole::TabBase, Qt::green);
    Style style;
    QCommonStyle foreignStyle;
    PaintedWidget widget;
    QWidget parent;
};

void TestUserPalette::init()
{
    for (QWidget *each : {static_cast<QWidget *>(&widget), &parent}) {
        each->setStyle(&foreignStyle);
        for (const QByteArray &name : each->dynamicPropertyNames())
            each->setProperty(name.constData(), QVariant());
    }
}

void TestUserPalette::theChangeEventIsRegisteredOnce()
{
    const QEvent::Type type = userPaletteChangeEvent();
    QVERIFY(type >= QEvent::User && type <= QEvent::MaxUser);
    QCOMPARE(userPaletteChangeEvent(), type);
}

void TestUserPalette::withoutThePropertyThereIsNone()
{
    QVERIFY(!userPalette(&widget).has_value());
}

void TestUserPalette::thePropertyIsWhatIsRead()
{
    widget.setProperty("vrl_user_palette", QVariant::fromValue(redFrame));
    QVERIFY(userPalette(&widget) == redFrame);
}

void TestUserPalette::aForeignPropertyCountsAsEmpty_data()
{
    QTest::addColumn<QVariant>("value");
    QTest::newRow("text") << QVariant(QStringLiteral("red"));
    QTest::newRow("number") << QVariant(7);
    QTest::newRow("Qt's palette") << QVariant::fromValue(QPalette(Qt::red));
}

void TestUserPalette::aForeignPropertyCountsAsEmpty()
{
    QFETCH(QVariant, value);
    widget.setProperty("vrl_user_palette", value);
    const std::optional<UserPalette> read = userPalette(&widget);
    QVERIFY(read.has_value());
    QVERIFY(*read == UserPalette());
    QVERIFY(effectiveUserPalette(&widget, &style) == UserPalette());
}

void TestUserPalette::withoutThePropertyTheStylesRolesCount()
{
    QVERIFY(effectiveUserPalette(&widget, &style) == style.palette().extended());
    QVERIFY(effectiveUserPalette(nullptr, &style) == style.palette().extended());
}

void TestUserPalette::theOwnOneWinsOverTheStyles()
{
    widget.setProperty("vrl_user_palette", QVariant::fromValue(redFrame));
    QVERIFY(effectiveUserPalette(&widget, &style) == redFrame);
}

void TestUserPalette::aForeignStyleHasNoRoles()
{
    QVERIFY(effectiveUserPalette(&widget, &foreignStyle) == UserPalette());
    QVERIFY(effectiveUserPalette(&widget, nullptr) == UserPalette());
}

void TestUserPalette::settingStoresRepaintsAndTells()
{
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    widget.updates = 0;
    UserPaletteEvents events(&widget);

    QVERIFY(setUserPalette(&widget, redFrame));

    QCOMPARE(events.count, 1);
    QVERIFY(userPalette(&widget) == redFrame);
    QTRY_VERIFY(widget.updates > 0);
    widget.hide();
}

void TestUserPalette::theWidgetIsToldBeforeTheCallReturns()
{
    UserPaletteEvents events(&widget);
    setUserPalette(&widget, redFrame);
    QCOMPARE(events.count, 1); // without an event loop in between
}

void TestUserPalette::settingTheSameTwiceDoesNothing()
{
    QVERIFY(setUserPalette(&widget, redFrame));
    UserPaletteEvents events(&widget);
    QVERIFY(!setUserPalette(&widget, redFrame));
    QCOMPARE(events.count, 0);
    QVERIFY(setUserPalette(&widget, blueFrame));
    QCOMPARE(events.count, 1);
}

void TestUserPalette::settingWhatTheStyleShowsDoesNothing()
{
    widget.setStyle(&style);
    UserPaletteEvents events(&widget);
    QVERIFY(!setUserPalette(&widget, style.palette().extended()));
    QCOMPARE(events.count, 0);
    QVERIFY(!userPalette(&widget).has_value());
}

void TestUserPalette::aParentFillsWhatIsUnset()
{
    parent.setProperty("vrl_user_palette", QVariant::fromValue(greenTab));
    QVERIFY(setUserPalette(&widget, redFrame, &parent));
    QVERIFY(userPalette(&widget) == redFrame.resolve(greenTab));
    QCOMPARE(shownColour(widget, ColourRole::TabBase), QColor(Qt::green));
    QCOMPARE(shownColour(widget, ColourRole::Frame), QColor(Qt::red));
}

void TestUserPalette::aParentWithoutOneFillsFromItsStyle()
{
    parent.setStyle(&style);
    QVERIFY(setUserPalette(&widget, redFrame, &parent));
    QVERIFY(userPalette(&widget) == redFrame.resolve(style.palette().extended()));
    QCOMPARE(shownColour(widget, ColourRole::Error), QColor("#ef4444"));
}

void TestUserPalette::withoutAParentNothingIsFilled()
{
    widget.setStyle(&style);
    QVERIFY(setUserPalette(&widget, redFrame));
    QVERIFY(userPalette(&widget) == redFrame);
}

void TestUserPalette::propagatingFromAParentWithoutOneDoesNothing()
{
    parent.setStyle(&style); // whose roles are not handed down
    UserPaletteEvents events(&widget);
    propagateUserPalette(&parent, &widget);
    QVERIFY(!userPalette(&widget).has_value());
    QCOMPARE(events.count, 0);
}

void TestUserPalette::propagatingCopiesToAChildWithoutOne()
{
    setUserPalette(&parent, redFrame);
    UserPaletteEvents events(&widget);
    propagateUserPalette(&parent, &widget);
    QVERIFY(userPalette(&widget) == redFrame);
    QCOMPARE(events.count, 1);
}

void TestUserPalette::propagatingResolvesAChildWithItsOwn()
{
    setUserPalette(&parent, blueFrame.resolve(greenTab));
    setUserPalette(&widget, redFrame);
    UserPaletteEvents events(&widget);
    propagateUserPalette(&parent, &widget);
    QVERIFY(userPalette(&widget) == redFrame.resolve(greenTab));
    QCOMPARE(events.count, 1);
}

void TestUserPalette::propagatingWhatTheChildHasTellsNobody()
{
    setUserPalette(&parent, redFrame);
    propagateUserPalette(&parent, &widget);
    UserPaletteEvents events(&widget);
    propagateUserPalette(&parent, &widget);
    QCOMPARE(events.count, 0);
}

void TestUserPalette::nullWidgetsAreSurvived()
{
    QVERIFY(!userPalette(nullptr).has_value());
    QVERIFY(effectiveUserPalette(nullptr, nullptr) == UserPalette());
    QVERIFY(!setUserPalette(nullptr, redFrame));
    setUserPalette(&parent, redFrame);
    propagateUserPalette(&parent, nullptr);
    propagateUserPalette(nullptr, &widget);
    QVERIFY(!userPalette(&widget).has_value());
}

QTEST_MAIN(TestUserPalette)
#include "tst_user_palette.moc"
