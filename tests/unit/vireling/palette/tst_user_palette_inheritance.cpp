#include "user_palette_events.h"
#include "vireling/palette/user_palette.h"

#include <QCommonStyle>
#include <QtTest>

#include <memory>

using namespace Vireling;

/** A user palette set on a widget shows in everything within it. */
class TestUserPaletteInheritance : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void childrenAndTheirChildrenInherit();
    void aChildKeepsWhatItSetItself();
    void aSecondChangeReachesWhatIsOnlyInherited();
    void whatWasSetBehindOurBackIsTheChildsOwn();
    void aChildAddedLaterInheritsWhenPolished();
    void aPolishedChildMovedInInheritsAtOnce();
    void aChildMovedOnFollowsItsNewParent();
    void aWidgetWithoutOneIsLeftAlone();
    void everyWidgetIsToldOnce();

private:
    UserPalette redFrame = withRole(ColourRole::Frame, Qt::red);
    UserPalette blueFrame = withRole(ColourRole::Frame, Qt::blue);
    UserPalette greenTab = withRole(ColourRole::TabBase, Qt::green);
    std::unique_ptr<QWidget> window;
    QWidget *child = nullptr;
    QWidget *grandchild = nullptr;
};

void TestUserPaletteInheritance::initTestCase()
{
    QApplication::setStyle(new QCommonStyle); // brings no roles of its own
}

void TestUserPaletteInheritance::init()
{
    window = std::make_unique<QWidget>();
    child = new QWidget(window.get());
    grandchild = new QWidget(child);
}

void TestUserPaletteInheritance::cleanup()
{
    window.reset();
}

void TestUserPaletteInheritance::childrenAndTheirChildrenInherit()
{
    setUserPalette(window.get(), redFrame);
    QVERIFY(userPalette(child) == redFrame);
    QVERIFY(userPalette(grandchild) == redFrame);
}

void TestUserPaletteInheritance::aChildKeepsWhatItSetItself()
{
    setUserPalette(child, blueFrame);
    setUserPalette(window.get(), redFrame.resolve(greenTab));
    QCOMPARE(shownColour(*child, ColourRole::Frame), QColor(Qt::blue));
    QCOMPARE(shownColour(*child, ColourRole::TabBase), QColor(Qt::green));
    QCOMPARE(shownColour(*grandchild, ColourRole::Frame), QColor(Qt::blue));
    QCOMPARE(shownColour(*grandchild, ColourRole::TabBase), QColor(Qt::green));
}

void TestUserPaletteInheritance::aSecondChangeReachesWhatIsOnlyInherited()
{
    setUserPalette(window.get(), redFrame);
    setUserPalette(child, greenTab, window.get());
    QCOMPARE(shownColour(*child, ColourRole::Frame), QColor(Qt::red));

    setUserPalette(window.get(), blueFrame);

    QCOMPARE(shownColour(*child, ColourRole::Frame), QColor(Qt::blue));
    QCOMPARE(shownColour(*child, ColourRole::TabBase), QColor(Qt::green));
    QCOMPARE(shownColour(*grandchild, ColourRole::Frame), QColor(Qt::blue));
}

void TestUserPaletteInheritance::whatWasSetBehindOurBackIsTheChildsOwn()
{
    setUserPalette(window.get(), redFrame);
    child->setProperty(userPaletteProperty, QVariant::fromValue(greenTab));
    setUserPalette(window.get(), blueFrame);
    QVERIFY(userPalette(child) == greenTab.resolve(blueFrame));
}

void TestUserPaletteInheritance::aChildAddedLaterInheritsWhenPolished()
{
    setUserPalette(window.get(), redFrame);
    auto *late = new QWidget(window.get());
    late->ensurePolished();
    QCoreApplication::sendPostedEvents();
    QVERIFY(userPalette(late) == redFrame);
}

void TestUserPaletteInheritance::aPolishedChildMovedInInheritsAtOnce()
{
    setUserPalette(window.get(), redFrame);
    auto *moved = new QWidget;
    auto *within = new QWidget(moved);
    moved->ensurePolished();
    moved->setParent(window.get());
    QVERIFY(userPalette(moved) == redFrame);
    QVERIFY(userPalette(within) == redFrame);
}

void TestUserPaletteInheritance::aChildMovedOnFollowsItsNewParent()
{
    QWidget other;
    setUserPalette(window.get(), redFrame);
    setUserPalette(&other, blueFrame);
    child->ensurePolished();
    child->setParent(&other);
    QVERIFY(userPalette(child) == blueFrame);
    QVERIFY(userPalette(grandchild) == blueFrame);
    child->setParent(window.get());
    QVERIFY(userPalette(child) == redFrame);
}

void TestUserPaletteInheritance::aWidgetWithoutOneIsLeftAlone()
{
    auto *late = new QWidget(window.get());
    late->ensurePolished();
    QCoreApplication::sendPostedEvents();
    QVERIFY(!userPalette(late).has_value());
}

void TestUserPaletteInheritance::everyWidgetIsToldOnce()
{
    UserPaletteEvents childEvents(child);
    UserPaletteEvents grandchildEvents(grandchild);
    setUserPalette(window.get(), redFrame);
    QCOMPARE(childEvents.count, 1);
    QCOMPARE(grandchildEvents.count, 1);
}

QTEST_MAIN(TestUserPaletteInheritance)
#include "tst_user_palette_inheritance.moc"
