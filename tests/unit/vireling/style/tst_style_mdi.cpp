#include "container_pictures.h"
#include "style_pixels.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include "support/style_options.h"

#include <QtTest>

using namespace Vireling;
using namespace ContainerPictures;
using namespace TestSupport;

namespace {

constexpr Qt::WindowFlags everyButton = Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                        Qt::WindowMinMaxButtonsHint | Qt::WindowShadeButtonHint |
                                        Qt::WindowContextHelpButtonHint;

std::shared_ptr<QStyleOptionTitleBar> titleBar(Qt::WindowStates windowState = Qt::WindowNoState)
{
    auto option = std::static_pointer_cast<QStyleOptionTitleBar>(makeOption(QStyle::CC_TitleBar));
    option->rect = QRect(0, 0, 320, style().pixelMetric(QStyle::PM_TitleBarHeight));
    option->titleBarFlags = everyButton;
    option->titleBarState = int(windowState) | int(QStyle::State_Active);
    return option;
}

QVector<QRect> titleBarParts(const QStyleOptionTitleBar &option)
{
    QVector<QRect> parts;
    for (quint32 part = QStyle::SC_TitleBarSysMenu; part <= QStyle::SC_TitleBarLabel; part <<= 1) {
        const QRect rect =
            style().subControlRect(QStyle::CC_TitleBar, &option, QStyle::SubControl(part));
        if (!rect.isEmpty())
            parts.append(rect);
    }
    return parts;
}

} // namespace

class TestStyleMdi : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void partsOfATitleBarLieApart_data();
    void partsOfATitleBarLieApart();
    void titleBarsAreMirrored();
    void buttonsThatDoNotApplyHaveNoPlace();
    void theTitleBarOfTheActiveWindowIsMarked();
    void buttonsOfAMaximisedWindowShareTheirRoom();
    void buttonsWithoutRoomAreLeftOut();
};

void TestStyleMdi::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestStyleMdi::partsOfATitleBarLieApart_data()
{
    QTest::addColumn<int>("windowState");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft})
        for (const Qt::WindowState state :
             {Qt::WindowNoState, Qt::WindowMinimized, Qt::WindowMaximized})
            QTest::addRow("state %d, direction %d", int(state), int(direction))
                << int(state) << direction;
}

void TestStyleMdi::partsOfATitleBarLieApart()
{
    QFETCH(int, windowState);
    QFETCH(Qt::LayoutDirection, direction);
    const auto option = titleBar(Qt::WindowStates(windowState));
    option->direction = direction;
    const QVector<QRect> parts = titleBarParts(*option);
    QCOMPARE(parts.size(), 7); // system menu, title, five buttons
    QVERIFY(!overlap(parts));
    for (const QRect &part : parts)
        QVERIFY(option->rect.contains(part));
}

void TestStyleMdi::titleBarsAreMirrored()
{
    const auto option = titleBar();
    const auto closeButton = [&] {
        return style().subControlRect(QStyle::CC_TitleBar, option.get(),
                                      QStyle::SC_TitleBarCloseButton);
    };
    const QRect atRight = closeButton();
    QCOMPARE(atRight, QRect(320 - 3 - 24, 3, 24, 24));
    option->direction = Qt::RightToLeft;
    QCOMPARE(closeButton(), QStyle::visualRect(Qt::RightToLeft, option->rect, atRight));
    QCOMPARE(closeButton().left(), 3);
}

void TestStyleMdi::buttonsThatDoNotApplyHaveNoPlace()
{
    const auto normal = titleBar();
    const auto place = [&](const QStyleOptionTitleBar &option, QStyle::SubControl button) {
        return style().subControlRect(QStyle::CC_TitleBar, &option, button);
    };
    QVERIFY(place(*normal, QStyle::SC_TitleBarNormalButton).isEmpty());
    QVERIFY(!place(*normal, QStyle::SC_TitleBarMaxButton).isEmpty());
    const auto maximised = titleBar(Qt::WindowMaximized);
    QVERIFY(place(*maximised, QStyle::SC_TitleBarMaxButton).isEmpty());
    QVERIFY(!place(*maximised, QStyle::SC_TitleBarNormalButton).isEmpty());
    normal->titleBarFlags = Qt::WindowTitleHint;
    QVERIFY(place(*normal, QStyle::SC_TitleBarCloseButton).isEmpty());
    QCOMPARE(titleBarParts(*normal).size(), 1);
}

void TestStyleMdi::theTitleBarOfTheActiveWindowIsMarked()
{
    const auto option = titleBar();
    const auto picture = [&] {
        return painted(option->rect.size(), [&](QPainter &painter) {
            style().drawComplexControl(QStyle::CC_TitleBar, option.get(), &painter);
        });
    };
    QVERIFY(count(picture(), focusColour()) >= 2 * 320);
    option->titleBarState = 0;
    QCOMPARE(count(picture(), focusColour()), 0);
}

void TestStyleMdi::buttonsOfAMaximisedWindowShareTheirRoom()
{
    const auto option = makeOption(QStyle::CC_MdiControls);
    option->rect.setSize(style().sizeFromContents(QStyle::CT_MdiControls, option.get(), QSize()));
    const auto place = [&](QStyle::SubControl button) {
        return style().subControlRect(QStyle::CC_MdiControls, option.get(), button);
    };
    const QRect minimise = place(QStyle::SC_MdiMinButton);
    const QRect restore = place(QStyle::SC_MdiNormalButton);
    const QRect close = place(QStyle::SC_MdiCloseButton);
    QVERIFY(minimise.right() < restore.left() && restore.right() < close.left());
    QCOMPARE(close.right(), option->rect.right());
    option->subControls = QStyle::SC_MdiCloseButton;
    QVERIFY(place(QStyle::SC_MdiMinButton).isEmpty());
    QCOMPARE(place(QStyle::SC_MdiCloseButton), option->rect);
}

void TestStyleMdi::buttonsWithoutRoomAreLeftOut()
{
    const auto option = titleBar();
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft})
        for (int width = 0; width < 200; ++width) {
            option->direction = direction;
            option->rect.setWidth(width);
            const QVector<QRect> parts = titleBarParts(*option);
            QVERIFY(!overlap(parts));
            if (width >= 60) // system menu and close button
                QVERIFY(parts.size() >= 2);
        }
}

QTEST_MAIN(TestStyleMdi)
#include "tst_style_mdi.moc"
