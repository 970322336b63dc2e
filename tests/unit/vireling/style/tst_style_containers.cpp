#include "container_pictures.h"
#include "style_pixels.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style.h"
#include "vireling/widgets/detailed_tool_tip.h"

#include "support/style_options.h"

#include <QLabel>
#include <QPlainTextEdit>
#include <QRubberBand>
#include <QtTest>

using namespace Vireling;
using namespace ContainerPictures;
using namespace TestSupport;

namespace {

QImage paintedControl(QStyle::ControlElement element, const QStyleOption &option,
                      const QWidget *widget = nullptr)
{
    return painted(option.rect.size(), [&](QPainter &painter) {
        style().drawControl(element, &option, &painter, widget);
    });
}

QImage paintedPrimitive(QStyle::PrimitiveElement element, const QStyleOption &option,
                        const QWidget *widget = nullptr)
{
    return painted(option.rect.size(), [&](QPainter &painter) {
        style().drawPrimitive(element, &option, &painter, widget);
    });
}

QVector<QRect> dockParts(const QStyleOptionDockWidget &option)
{
    QVector<QRect> parts;
    for (const auto part : {QStyle::SE_DockWidgetCloseButton, QStyle::SE_DockWidgetFloatButton,
                            QStyle::SE_DockWidgetTitleBarText})
        parts.append(style().subElementRect(part, &option));
    return parts;
}

} // namespace

class TestStyleContainers : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void partsOfADockTitleLieApart_data();
    void partsOfADockTitleLieApart();
    void longDockTitlesStopBeforeTheButtons();
    void toolBoxTabsLeaveRoomForTheirChevron_data();
    void toolBoxTabsLeaveRoomForTheirChevron();
    void theSelectedToolBoxTabCarriesABar();
    void splittersLightUpUnderThePointer_data();
    void splittersLightUpUnderThePointer();
    void separatorsOfDocksLightUpUnderThePointer();
    void aScrollAreaWithFocusHasAThickFrame();
    void contentsStayWhereTheyAreWhenFocusComes();
    void frameShadowsLookAlike_data();
    void frameShadowsLookAlike();
    void linesAreAsThickAsTheySay();
    void detailedToolTipsCarryAnAccent();
    void rubberBandsLetContentsThrough();
    void rubberBandsOfTheirOwnAreCutToTheirFrame();
};

void TestStyleContainers::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestStyleContainers::partsOfADockTitleLieApart_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::addColumn<bool>("vertical");
    QTest::newRow("left to right") << Qt::LeftToRight << false;
    QTest::newRow("right to left") << Qt::RightToLeft << false;
    QTest::newRow("vertical") << Qt::LeftToRight << true;
    QTest::newRow("vertical, right to left") << Qt::RightToLeft << true;
}

void TestStyleContainers::partsOfADockTitleLieApart()
{
    QFETCH(Qt::LayoutDirection, direction);
    QFETCH(bool, vertical);
    const auto option =
        std::static_pointer_cast<QStyleOptionDockWidget>(makeOption(OptionKind::DockWidget));
    option->rect = vertical ? QRect(0, 0, 24, 200) : QRect(0, 0, 200, 24);
    option->direction = direction;
    option->verticalTitleBar = vertical;
    const QVector<QRect> parts = dockParts(*option);
    QVERIFY(!overlap(parts));
    for (const QRect &part : parts) {
        QVERIFY(!part.isEmpty());
        QVERIFY(option->rect.contains(part));
    }
}

void TestStyleContainers::longDockTitlesStopBeforeTheButtons()
{
    const auto option =
        std::static_pointer_cast<QStyleOptionDockWidget>(makeOption(OptionKind::DockWidget));
    option->rect = QRect(0, 0, 160, 24);
    option->title.clear();
    const QImage empty = paintedControl(QStyle::CE_DockWidgetTitle, *option);
    option->title = QString(100, QLatin1Char('W'));
    const QImage filled = paintedControl(QStyle::CE_DockWidgetTitle, *option);
    QVERIFY(filled != empty);
    const QRect text = style().subElementRect(QStyle::SE_DockWidgetTitleBarText, option.get());
    const QRect beyond(text.right() + 1, 0, option->rect.right() - text.right(), 24);
    QCOMPARE(filled.copy(beyond), empty.copy(beyond));
}

void TestStyleContainers::toolBoxTabsLeaveRoomForTheirChevron_data()
{
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("left to right") << Qt::LeftToRight;
    QTest::newRow("right to left") << Qt::RightToLeft;
}

void TestStyleContainers::toolBoxTabsLeaveRoomForTheirChevron()
{
    QFETCH(Qt::LayoutDirection, direction);
    const auto option = makeOption(OptionKind::ToolBox);
    option->direction = direction;
    const QRect contents = style().subElementRect(QStyle::SE_ToolBoxTabContents, option.get());
    QVERIFY(option->rect.contains(contents));
    const int before = contents.left() - option->rect.left();
    const int after = option->rect.right() - contents.right();
    QCOMPARE(direction == Qt::LeftToRight ? before : after, 23);
    QCOMPARE(direction == Qt::LeftToRight ? after : before, 6);
}

void TestStyleContainers::theSelectedToolBoxTabCarriesABar()
{
    const auto option = makeOption(OptionKind::ToolBox);
    QCOMPARE(count(paintedControl(QStyle::CE_ToolBoxTab, *option), focusColour()), 0);
    option->state |= QStyle::State_Selected;
    const QImage selected = paintedControl(QStyle::CE_ToolBoxTab, *option);
    QVERIFY(count(selected, focusColour()) >= 3 * (option->rect.height() - 2));
    option->direction = Qt::RightToLeft;
    const QImage mirrored = paintedControl(QStyle::CE_ToolBoxTab, *option);
    QCOMPARE(mirrored.pixelColor(option->rect.right() - 2, 16), focusColour());
}

void TestStyleContainers::splittersLightUpUnderThePointer_data()
{
    QTest::addColumn<QSize>("size");
    QTest::addColumn<bool>("horizontal");
    QTest::newRow("a thin one") << QSize(1, 60) << true;
    QTest::newRow("a thin level one") << QSize(60, 1) << false;
    QTest::newRow("a wide one") << QSize(8, 60) << true;
    QTest::newRow("a wide level one") << QSize(60, 8) << false;
}

void TestStyleContainers::splittersLightUpUnderThePointer()
{
    QFETCH(QSize, size);
    QFETCH(bool, horizontal);
    const auto option = makeOption(OptionKind::Plain);
    option->rect = QRect(QPoint(), size);
    option->state.setFlag(QStyle::State_Horizontal, horizontal);
    const QImage resting = paintedControl(QStyle::CE_Splitter, *option);
    QCOMPARE(count(resting, focusColour()), 0);
    QVERIFY(count(resting, Qt::magenta) < size.width() * size.height());
    option->state |= QStyle::State_MouseOver;
    QVERIFY(count(paintedControl(QStyle::CE_Splitter, *option), focusColour()) >= 60);
}

void TestStyleContainers::separatorsOfDocksLightUpUnderThePointer()
{
    const auto option = makeOption(OptionKind::Plain);
    option->rect = QRect(0, 0, 1, 60);
    const auto element = QStyle::PE_IndicatorDockWidgetResizeHandle;
    QCOMPARE(count(paintedPrimitive(element, *option), focusColour()), 0);
    option->state |= QStyle::State_MouseOver;
    QCOMPARE(count(paintedPrimitive(element, *option), focusColour()), 60);
}

void TestStyleContainers::aScrollAreaWithFocusHasAThickFrame()
{
    QPlainTextEdit text;
    text.ensurePolished();
    const auto option = makeOption(OptionKind::Frame);
    option->rect = QRect(0, 0, 120, 60);
    const QImage resting = paintedControl(QStyle::CE_ShapedFrame, *option, &text);
    QCOMPARE(count(resting, focusColour()), 0);
    option->state |= QStyle::State_HasFocus;
    const QImage focused = paintedControl(QStyle::CE_ShapedFrame, *option, &text);
    for (const QPoint &point : {QPoint(60, 0), QPoint(60, 1), QPoint(0, 30), QPoint(1, 30),
                                QPoint(118, 30), QPoint(119, 30), QPoint(60, 58), QPoint(60, 59)})
        QCOMPARE(focused.pixelColor(point), focusColour());
    QVERIFY(focused.pixelColor(60, 2) != focusColour());
}

void TestStyleContainers::contentsStayWhereTheyAreWhenFocusComes()
{
    QPlainTextEdit text;
    const auto option = makeOption(OptionKind::Frame);
    option->rect = QRect(0, 0, 120, 60);
    const QRect resting =
        style().subElementRect(QStyle::SE_ShapedFrameContents, option.get(), &text);
    QCOMPARE(resting, QRect(2, 2, 116, 56));
    option->state |= QStyle::State_HasFocus;
    QCOMPARE(style().subElementRect(QStyle::SE_ShapedFrameContents, option.get(), &text), resting);
    QCOMPARE(style().subElementRect(QStyle::SE_ShapedFrameContents, option.get()),
             QRect(1, 1, 118, 58));
}

void TestStyleContainers::frameShadowsLookAlike_data()
{
    QTest::addColumn<int>("shape");
    QTest::newRow("box") << int(QFrame::Box);
    QTest::newRow("panel") << int(QFrame::Panel);
    QTest::newRow("window panel") << int(QFrame::WinPanel);
    QTest::newRow("styled panel") << int(QFrame::StyledPanel);
}

void TestStyleContainers::frameShadowsLookAlike()
{
    QFETCH(int, shape);
    QImage plain;
    for (const QFrame::Shadow shadow : {QFrame::Plain, QFrame::Raised, QFrame::Sunken}) {
        QLabel label;
        label.setFrameStyle(shape | shadow);
        label.resize(80, 30);
        QCOMPARE(label.frameWidth(), 1);
        const QImage picture = label.grab().toImage();
        if (shadow == QFrame::Plain)
            plain = picture;
        QCOMPARE(picture, plain);
        QVERIFY(picture.pixelColor(40, 0) != picture.pixelColor(40, 15));
    }
}

void TestStyleContainers::linesAreAsThickAsTheySay()
{
    const auto option = std::static_pointer_cast<QStyleOptionFrame>(makeOption(OptionKind::Frame));
    option->rect = QRect(0, 0, 60, 9);
    option->frameShape = QFrame::HLine;
    for (const int width : {1, 2, 3}) {
        option->lineWidth = width;
        const QImage picture = paintedControl(QStyle::CE_ShapedFrame, *option);
        QCOMPARE(count(picture, Qt::magenta), 60 * (9 - width));
    }
}

void TestStyleContainers::detailedToolTipsCarryAnAccent()
{
    const QLabel plain(QStringLiteral("Saves the report"));
    const QLabel detailed(detailedToolTip(QStringLiteral("Save"), QStringLiteral("To the key")));
    const auto option = makeOption(OptionKind::Frame);
    const auto picture = [&](const QLabel &label) {
        return paintedPrimitive(QStyle::PE_PanelTipLabel, *option, &label);
    };
    QCOMPARE(picture(plain).pixelColor(80, 16),
             style().standardPalette().color(QPalette::ToolTipBase));
    QCOMPARE(count(picture(plain), focusColour()), 0);
    QCOMPARE(picture(detailed).pixelColor(1, 16), focusColour());
    option->direction = Qt::RightToLeft;
    QCOMPARE(picture(detailed).pixelColor(158, 16), focusColour());
}

void TestStyleContainers::rubberBandsLetContentsThrough()
{
    const auto option = makeOption(OptionKind::RubberBand);
    const auto onGround = [&](const QColor &ground) {
        return painted(option->rect.size(), [&](QPainter &painter) {
            painter.fillRect(option->rect, ground);
            style().drawControl(QStyle::CE_RubberBand, option.get(), &painter);
        });
    };
    const QImage onBlack = onGround(Qt::black);
    const QImage onWhite = onGround(Qt::white);
    QVERIFY(onBlack.pixelColor(80, 16) != QColor(Qt::black));
    QVERIFY(onWhite.pixelColor(80, 16).lightness() > onBlack.pixelColor(80, 16).lightness() + 100);
    QCOMPARE(onWhite.pixelColor(80, 0), focusColour());
}

void TestStyleContainers::rubberBandsOfTheirOwnAreCutToTheirFrame()
{
    const auto option = makeOption(OptionKind::RubberBand);
    QWidget window;
    const QRubberBand inside(QRubberBand::Rectangle, &window);
    const QRubberBand outside(QRubberBand::Rectangle);
    QStyleHintReturnMask mask;
    QVERIFY(!style().styleHint(QStyle::SH_RubberBand_Mask, option.get(), &inside, &mask));
    QVERIFY(style().styleHint(QStyle::SH_RubberBand_Mask, option.get(), &outside, &mask));
    QVERIFY(mask.region.contains(QPoint(0, 16)));
    QVERIFY(!mask.region.contains(QPoint(80, 16)));
}

QTEST_MAIN(TestStyleContainers)
#include "tst_style_containers.moc"
