#include "vireling/palette/enums.h"
#include "vireling/style/style.h"

#include <QImage>
#include <QPainter>
#include <QStyleOption>
#include <QTabBar>
#include <QToolButton>
#include <QtTest>

using namespace Vireling;

namespace {

const Style &houseStyle()
{
    return static_cast<const Style &>(*QApplication::style());
}

QColor colour(ColourRole role)
{
    return houseStyle().palette().colour(QPalette::Active, role);
}

QColor colour(QPalette::ColorRole role)
{
    return QApplication::palette().color(QPalette::Active, role);
}

bool isUpright(QTabBar::Shape shape)
{
    return shape == QTabBar::RoundedWest || shape == QTabBar::RoundedEast ||
           shape == QTabBar::TriangularWest || shape == QTabBar::TriangularEast;
}

/** An icon, a text and a button at either end, in a tab off the origin. */
QStyleOptionTab tabOption(QTabBar::Shape shape)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::magenta);
    QStyleOptionTab tab;
    tab.shape = shape;
    tab.rect = isUpright(shape) ? QRect(10, 20, 26, 162) : QRect(10, 20, 162, 26);
    tab.state = QStyle::State_Enabled | QStyle::State_Active;
    tab.palette = QApplication::palette();
    tab.text = QStringLiteral("Network");
    tab.icon = pixmap;
    tab.iconSize = QSize(16, 16);
    tab.leftButtonSize = QSize(16, 16);
    tab.rightButtonSize = QSize(16, 16);
    return tab;
}

/** Without icon and text: its surface alone. */
QStyleOptionTab bareTab(QTabBar::Shape shape)
{
    QStyleOptionTab tab = tabOption(shape);
    tab.icon = QIcon();
    tab.text.clear();
    return tab;
}

QImage paintedTab(const QStyleOptionTab &tab)
{
    QImage image(200, 200, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::black);
    QPainter painter(&image);
    houseStyle().drawControl(QStyle::CE_TabBarTab, &tab, &painter);
    return image;
}

QRect part(QStyle::SubElement element, const QStyleOption &option, const QWidget *widget = nullptr)
{
    return houseStyle().subElementRect(element, &option, widget);
}

/** Where a colour is to be seen. */
QRect boundsOf(const QImage &image, const QColor &wanted)
{
    QRect bounds;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) == wanted)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

struct SideRow
{
    const char *name;
    QTabBar::Shape shape;
    QPoint outer; ///< the middle of the outer edge of the tab of tabOption()
    QPoint inner; ///< the middle of its edge towards the pane
};

constexpr SideRow sides[] = {
    {"north", QTabBar::RoundedNorth, {60, 20}, {60, 45}},
    {"south", QTabBar::RoundedSouth, {60, 45}, {60, 20}},
    {"west", QTabBar::RoundedWest, {10, 60}, {35, 60}},
    {"east", QTabBar::RoundedEast, {35, 60}, {10, 60}},
    {"triangular north", QTabBar::TriangularNorth, {60, 20}, {60, 45}},
    {"triangular south", QTabBar::TriangularSouth, {60, 45}, {60, 20}},
    {"triangular west", QTabBar::TriangularWest, {10, 60}, {35, 60}},
    {"triangular east", QTabBar::TriangularEast, {35, 60}, {10, 60}},
};

void addSides()
{
    QTest::addColumn<QTabBar::Shape>("shape");
    QTest::addColumn<QPoint>("outer");
    QTest::addColumn<QPoint>("inner");
    for (const SideRow &side : sides)
        QTest::newRow(side.name) << side.shape << side.outer << side.inner;
}

} // namespace

class TestStyleTabs : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new Style); }

    void labelLiesWithinTheTabBesideTheButtons_data() { addSides(); }
    void labelLiesWithinTheTabBesideTheButtons();
    void selectedTabCarriesABarOutsideAndOpensInside_data() { addSides(); }
    void selectedTabCarriesABarOutsideAndOpensInside();
    void otherTabsLeaveThePanesLine_data() { addSides(); }
    void otherTabsLeaveThePanesLine();
    void labelsOfUprightTabsAreTurned();
    void partsAreMirroredFromRightToLeft();
    void labelFitsTheSizeOfItsTab_data() { addSides(); }
    void labelFitsTheSizeOfItsTab();
    void closeButtonsComeToLieInTheirTabs_data() { addSides(); }
    void closeButtonsComeToLieInTheirTabs();

    void focusOfATabIsSeen();
    void pointedTabsChange();
    void disabledTabsHaveNoSurface();
    void closeButtonShowsThePointer();

    void scrollButtonsStandTogetherAtTheEnd();
    void scrollButtonsCoverNoTabInUse();
    void cutTabsEndBeforeTheScrollButtons();

    void foreignOptionsAreSurvived();
};

void TestStyleTabs::labelLiesWithinTheTabBesideTheButtons()
{
    QFETCH(QTabBar::Shape, shape);
    const QStyleOptionTab tab = tabOption(shape);
    const QRect left = part(QStyle::SE_TabBarTabLeftButton, tab);
    const QRect right = part(QStyle::SE_TabBarTabRightButton, tab);
    QVERIFY(tab.rect.contains(left) && tab.rect.contains(right));
    QVERIFY(!left.intersects(right));
    QCOMPARE(left.size(), tab.leftButtonSize);
    if (isUpright(shape)) {
        QCOMPARE(left.center().x(), tab.rect.center().x());
        const bool fromTheBottom =
            shape == QTabBar::RoundedWest || shape == QTabBar::TriangularWest;
        QCOMPARE(left.y() > right.y(), fromTheBottom);
    } else {
        QCOMPARE(left.center().y(), tab.rect.center().y());
        QVERIFY(left.right() < right.left());
    }

    const QRect icon = boundsOf(paintedTab(tab), Qt::magenta);
    QCOMPARE(icon.size(), QSize(16, 16)); // never turned, never clipped
    QVERIFY(tab.rect.contains(icon));
    QVERIFY(!icon.intersects(left) && !icon.intersects(right));

    const QRect text = part(QStyle::SE_TabBarTabText, tab);
    QCOMPARE(text.height(), 26);
    QCOMPARE(text.width(), 160 - 2 * (4 + 16 + 6) - 16 - 6);
}

void TestStyleTabs::selectedTabCarriesABarOutsideAndOpensInside()
{
    QFETCH(QTabBar::Shape, shape);
    QFETCH(QPoint, outer);
    QFETCH(QPoint, inner);
    QStyleOptionTab tab = bareTab(shape);
    tab.state |= QStyle::State_Selected;
    const QImage image = paintedTab(tab);
    QCOMPARE(image.pixelColor(outer), colour(QPalette::Highlight));
    const QPoint inwards = (inner - outer) / 25; // one pixel
    QCOMPARE(image.pixelColor(outer + inwards), colour(QPalette::Highlight));
    QCOMPARE(image.pixelColor(outer + 2 * inwards), colour(QPalette::Window));
    QCOMPARE(image.pixelColor(inner), colour(QPalette::Window));
}

void TestStyleTabs::otherTabsLeaveThePanesLine()
{
    QFETCH(QTabBar::Shape, shape);
    QFETCH(QPoint, outer);
    QFETCH(QPoint, inner);
    QStyleOptionTab tab = bareTab(shape);
    const QImage image = paintedTab(tab);
    const QPoint inwards = (inner - outer) / 25;
    QCOMPARE(image.pixelColor(outer), colour(ColourRole::Frame));
    QCOMPARE(image.pixelColor(outer + inwards), colour(ColourRole::TabBase));
    QCOMPARE(image.pixelColor(inner - inwards), colour(ColourRole::TabBase));
    QCOMPARE(image.pixelColor(inner), QColor(Qt::black));
}

void TestStyleTabs::labelsOfUprightTabsAreTurned()
{
    QStyleOptionTab tab = tabOption(QTabBar::RoundedWest);
    tab.icon = QIcon();
    tab.leftButtonSize = QSize();
    tab.rightButtonSize = QSize();
    tab.palette.setColor(QPalette::WindowText, Qt::green);
    tab.text = QStringLiteral("WWWWWWWW");
    for (const QTabBar::Shape shape : {QTabBar::RoundedWest, QTabBar::RoundedEast}) {
        tab.shape = shape;
        const QRect ink = boundsOf(paintedTab(tab), Qt::green);
        QVERIFY(tab.rect.contains(ink));
        QVERIFY(ink.height() > 2 * ink.width());
        QVERIFY(qAbs(ink.center().y() - tab.rect.center().y()) <= 3);
    }
    tab.shape = QTabBar::RoundedNorth;
    tab.rect = QRect(10, 20, 162, 26);
    const QRect ink = boundsOf(paintedTab(tab), Qt::green);
    QVERIFY(ink.width() > 2 * ink.height());
}

void TestStyleTabs::partsAreMirroredFromRightToLeft()
{
    QStyleOptionTab tab = tabOption(QTabBar::RoundedNorth);
    const auto mirrored = [&](const QRect &rect) {
        return QStyle::visualRect(Qt::RightToLeft, tab.rect, rect);
    };
    const QRect left = part(QStyle::SE_TabBarTabLeftButton, tab);
    const QRect text = part(QStyle::SE_TabBarTabText, tab);
    const QRect icon = boundsOf(paintedTab(tab), Qt::magenta);
    tab.direction = Qt::RightToLeft;
    QCOMPARE(part(QStyle::SE_TabBarTabLeftButton, tab), mirrored(left));
    QCOMPARE(part(QStyle::SE_TabBarTabText, tab), mirrored(text));
    QCOMPARE(boundsOf(paintedTab(tab), Qt::magenta), mirrored(icon));
}

void TestStyleTabs::labelFitsTheSizeOfItsTab()
{
    QFETCH(QTabBar::Shape, shape);
    struct OpenBar : QTabBar
    {
        using QTabBar::initStyleOption;
    };
    OpenBar bar;
    bar.setShape(shape);
    bar.setIconSize(QSize(16, 16));
    bar.addTab(tabOption(shape).icon, QStringLiteral("Network"));
    bar.addTab(QStringLiteral("Log files"));
    bar.setExpanding(false);
    bar.setTabsClosable(true);
    bar.resize(bar.sizeHint());
    for (int i = 0; i < bar.count(); ++i) {
        QStyleOptionTab tab;
        bar.initStyleOption(&tab, i);
        QCOMPARE(tab.text, bar.tabText(i)); // not elided
        const int needed = bar.fontMetrics().size(Qt::TextShowMnemonic, tab.text).width();
        const int room = part(QStyle::SE_TabBarTabText, tab, &bar).width();
        QVERIFY2(room >= needed && room <= needed + 4, qPrintable(QString::number(room - needed)));
    }
}

void TestStyleTabs::closeButtonsComeToLieInTheirTabs()
{
    QFETCH(QTabBar::Shape, shape);
    QTabBar bar;
    bar.setShape(shape);
    bar.addTab(QStringLiteral("One"));
    bar.addTab(QStringLiteral("Two"));
    bar.setTabsClosable(true);
    bar.resize(bar.sizeHint());
    bar.show();
    for (int i = 0; i < bar.count(); ++i) {
        const QWidget *button = bar.tabButton(i, QTabBar::RightSide);
        QVERIFY(button);
        QVERIFY(bar.tabRect(i).contains(button->geometry()));
        const QPoint off = button->geometry().center() - bar.tabRect(i).center();
        QVERIFY(qAbs(isUpright(shape) ? off.x() : off.y()) <= 1);
    }
}

void TestStyleTabs::focusOfATabIsSeen()
{
    QStyleOptionTab tab = tabOption(QTabBar::RoundedNorth);
    tab.state |= QStyle::State_Selected;
    const QPoint onTheRing(11, 33); // at the leading end, half way down
    QVERIFY(paintedTab(tab).pixelColor(onTheRing) != colour(QPalette::Highlight));
    tab.state |= QStyle::State_HasFocus;
    const QImage focused = paintedTab(tab);
    QCOMPARE(focused.pixelColor(onTheRing), colour(QPalette::Highlight));
    QCOMPARE(focused.pixelColor(60, 20), colour(QPalette::Highlight)); // the bar stays
}

void TestStyleTabs::pointedTabsChange()
{
    QStyleOptionTab tab = tabOption(QTabBar::RoundedNorth);
    const QPoint ground(14, 24);
    const QColor calm = paintedTab(tab).pixelColor(ground);
    tab.state |= QStyle::State_MouseOver;
    const QColor hovered = paintedTab(tab).pixelColor(ground);
    tab.state |= QStyle::State_Sunken;
    const QColor pressed = paintedTab(tab).pixelColor(ground);
    QVERIFY(calm != hovered);
    QVERIFY(hovered != pressed);
}

void TestStyleTabs::disabledTabsHaveNoSurface()
{
    QStyleOptionTab tab = tabOption(QTabBar::RoundedNorth);
    tab.state &= ~QStyle::State_Enabled;
    QCOMPARE(paintedTab(tab).pixelColor(14, 24), QColor(Qt::black));
}

void TestStyleTabs::closeButtonShowsThePointer()
{
    const auto image = [](QStyle::State state) {
        QStyleOption option;
        option.rect = QRect(0, 0, 16, 16);
        option.palette = QApplication::palette();
        option.state = QStyle::State_Enabled | QStyle::State_Active | state;
        QImage picture(16, 16, QImage::Format_ARGB32_Premultiplied);
        picture.fill(colour(ColourRole::TabBase));
        QPainter painter(&picture);
        houseStyle().drawPrimitive(QStyle::PE_IndicatorTabClose, &option, &painter);
        return picture;
    };
    const QColor ground = colour(ColourRole::TabBase);
    const QImage calm = image({});
    QCOMPARE(calm.pixelColor(8, 2), ground);
    QVERIFY(calm.pixelColor(7, 7) != ground);
    const QImage pointed = image(QStyle::State_Raised);
    QVERIFY(pointed.pixelColor(8, 2) != ground);
    QVERIFY(image(QStyle::State_Sunken).pixelColor(8, 2) != pointed.pixelColor(8, 2));
}

void TestStyleTabs::scrollButtonsStandTogetherAtTheEnd()
{
    QStyleOption bar; // what QTabBar asks with
    bar.rect = QRect(0, 0, 200, 24);
    QCOMPARE(part(QStyle::SE_TabBarScrollLeftButton, bar), QRect(168, 0, 16, 24));
    QCOMPARE(part(QStyle::SE_TabBarScrollRightButton, bar), QRect(184, 0, 16, 24));
    QCOMPARE(part(QStyle::SE_TabBarTearIndicatorRight, bar), QRect(156, 0, 44, 24));
    QCOMPARE(part(QStyle::SE_TabBarTearIndicator, bar), QRect(0, 0, 12, 24));
    bar.direction = Qt::RightToLeft;
    QCOMPARE(part(QStyle::SE_TabBarScrollLeftButton, bar), QRect(16, 0, 16, 24));
    QCOMPARE(part(QStyle::SE_TabBarScrollRightButton, bar), QRect(0, 0, 16, 24));
    QCOMPARE(part(QStyle::SE_TabBarTearIndicator, bar), QRect(188, 0, 12, 24));
    bar.rect = QRect(0, 0, 24, 200);
    QCOMPARE(part(QStyle::SE_TabBarScrollLeftButton, bar), QRect(0, 168, 24, 16));
    QCOMPARE(part(QStyle::SE_TabBarScrollRightButton, bar), QRect(0, 184, 24, 16));
}

void TestStyleTabs::scrollButtonsCoverNoTabInUse()
{
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        QTabBar bar;
        bar.setLayoutDirection(direction);
        for (int i = 0; i < 12; ++i)
            bar.addTab(QStringLiteral("Page %1").arg(i));
        bar.resize(240, bar.sizeHint().height());
        bar.show();
        for (const int current : {0, 5, 11}) {
            bar.setCurrentIndex(current);
            const QRect tab = bar.tabRect(current);
            QVERIFY(bar.rect().contains(tab));
            for (const QToolButton *button : bar.findChildren<QToolButton *>()) {
                QVERIFY(button->isVisible());
                QVERIFY(!tab.intersects(button->geometry()));
            }
        }
    }
}

void TestStyleTabs::cutTabsEndBeforeTheScrollButtons()
{
    QStyleOptionTab tear = tabOption(QTabBar::RoundedNorth);
    tear.rect = QRect(100, 0, 44, 24);
    QImage image(200, 24, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::green);
    QPainter painter(&image);
    houseStyle().drawPrimitive(QStyle::PE_IndicatorTabTearRight, &tear, &painter);
    QCOMPARE(image.pixelColor(99, 10), QColor(Qt::green));
    QVERIFY(image.pixelColor(102, 10).green() > image.pixelColor(109, 10).green());
    QCOMPARE(image.pixelColor(112, 10), colour(QPalette::Window)); // below the buttons
    QCOMPARE(image.pixelColor(143, 10), colour(QPalette::Window));
    QCOMPARE(image.pixelColor(144, 10), QColor(Qt::green));
    QCOMPARE(image.pixelColor(120, 23), QColor(Qt::green)); // the pane's line
}

void TestStyleTabs::foreignOptionsAreSurvived()
{
    QStyleOption plain;
    QStyleOptionTab tab;
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    for (const QStyleOption *option : {&plain, static_cast<QStyleOption *>(&tab)}) {
        for (const auto element :
             {QStyle::CE_TabBarTab, QStyle::CE_TabBarTabShape, QStyle::CE_TabBarTabLabel})
            houseStyle().drawControl(element, option, &painter);
        for (const auto element :
             {QStyle::PE_FrameTabBarBase, QStyle::PE_FrameTabWidget, QStyle::PE_IndicatorTabTear,
              QStyle::PE_IndicatorTabTearRight, QStyle::PE_IndicatorTabClose})
            houseStyle().drawPrimitive(element, option, &painter);
        for (const auto element :
             {QStyle::SE_TabBarTabText, QStyle::SE_TabBarTabLeftButton,
              QStyle::SE_TabBarTabRightButton, QStyle::SE_TabBarScrollLeftButton,
              QStyle::SE_TabBarTearIndicatorRight, QStyle::SE_TabWidgetTabContents})
            houseStyle().subElementRect(element, option);
    }
    QCOMPARE(houseStyle().sizeFromContents(QStyle::CT_TabBarTab, &plain, QSize(7, 8)), QSize(7, 8));
    QCOMPARE(part(QStyle::SE_TabBarTabLeftButton, tab), QRect()); // no button, no place
}

QTEST_MAIN(TestStyleTabs)
#include "tst_style_tabs.moc"
