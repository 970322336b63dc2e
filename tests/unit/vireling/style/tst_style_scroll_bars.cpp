#include "vireling/style/style.h"

#include "range_widgets.h"
#include "style_pictures.h"

#include <QListView>
#include <QScrollBar>
#include <QStyleOption>
#include <QtTest>

#include <limits>

using namespace Vireling;

namespace {

using OpenScrollBar = Open<QScrollBar>;

QStyleOptionSlider scrollBarOption()
{
    QStyleOptionSlider option;
    option.rect = QRect(0, 0, 200, 20);
    option.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Horizontal;
    option.palette = QApplication::palette();
    option.maximum = 100;
    option.pageStep = 100;
    option.subControls = QStyle::SC_All;
    return option;
}

} // namespace

class TestStyleScrollBars : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new Style); }

    void scrollBarPartsTileTheBar_data() { addDirections(); }
    void scrollBarPartsTileTheBar();
    void scrollBarHandleTravelsTheWholeBar_data() { addDirections(); }
    void scrollBarHandleTravelsTheWholeBar();
    void draggedScrollBarTakesTheValueUnderThePointer_data() { addDirections(); }
    void draggedScrollBarTakesTheValueUnderThePointer();
    void pressBesideTheHandleBringsItNearer_data() { addDirections(); }
    void pressBesideTheHandleBringsItNearer();
    void scrollBarHandleIsProportionalButNeverTooSmall();
    void scrollBarHasNoLineButtons();
    void scrollBarHandleIsInsetAndGrowsUnderThePointer();
    void scrollBarGrooveShowsWhatLiesBelow();
    void scrollBarsAreNarrowerInFramedViews();

    void foreignOptionsAreSurvived();
};

void TestStyleScrollBars::scrollBarPartsTileTheBar()
{
    OpenScrollBar bar;
    lie(bar);
    const Qt::Orientation orientation = bar.orientation();
    for (const int value : {0, 30, 99}) {
        bar.setValue(value);
        const QRect before = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSubPage);
        const QRect handle = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
        const QRect after = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarAddPage);
        QCOMPARE(length(orientation, before) + length(orientation, handle) +
                     length(orientation, after),
                 214);
        QVERIFY(!before.intersects(handle) && !handle.intersects(after) &&
                !before.intersects(after));
        QCOMPARE(before | handle | after, bar.rect());
        QCOMPARE(bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarGroove), bar.rect());
    }
}

void TestStyleScrollBars::scrollBarHandleTravelsTheWholeBar()
{
    OpenScrollBar bar;
    lie(bar);
    const Qt::Orientation orientation = bar.orientation();
    bar.setValue(bar.minimum());
    const QRect first = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
    bar.setValue(bar.maximum());
    const QRect last = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
    const bool backwards = startsAtEnd(false);
    QCOMPARE(along(orientation, (backwards ? last : first).topLeft()), 0);
    QCOMPARE(along(orientation, (backwards ? first : last).bottomRight()), 213);
}

void TestStyleScrollBars::draggedScrollBarTakesTheValueUnderThePointer()
{
    OpenScrollBar bar;
    lie(bar);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.setValue(50);
    bar.show();
    const QRect handle = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
    const int travel = 214 - length(bar.orientation(), handle);
    const int by = travel / 4;

    QTest::mousePress(&bar, Qt::LeftButton, {}, handle.center());
    QMouseEvent move(QEvent::MouseMove, moved(bar.orientation(), handle.center(), by), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&bar, &move);
    QTest::mouseRelease(&bar, Qt::LeftButton, {}, moved(bar.orientation(), handle.center(), by));

    const int expected = startsAtEnd(false) ? 25 : 75;
    QVERIFY2(qAbs(bar.value() - expected) <= 1, qPrintable(QString::number(bar.value())));
}

void TestStyleScrollBars::pressBesideTheHandleBringsItNearer()
{
    OpenScrollBar bar;
    lie(bar);
    bar.setRange(0, 100);
    bar.setPageStep(10);
    bar.setValue(50);
    bar.show();
    const QRect handle = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
    QTest::mouseClick(&bar, Qt::LeftButton, {}, QPoint(3, 3));
    QCOMPARE(bar.value(), startsAtEnd(false) ? 60 : 40);
    const QRect now = bar.part(QStyle::CC_ScrollBar, QStyle::SC_ScrollBarSlider);
    QVERIFY(along(bar.orientation(), now.topLeft()) < along(bar.orientation(), handle.topLeft()));
}

void TestStyleScrollBars::scrollBarHandleIsProportionalButNeverTooSmall()
{
    QStyleOptionSlider option = scrollBarOption();
    const auto handle = [&] {
        return QApplication::style()
            ->subControlRect(QStyle::CC_ScrollBar, &option, QStyle::SC_ScrollBarSlider)
            .width();
    };
    QCOMPARE(handle(), 100); // a page of 100 over a range of 100: half is seen
    option.pageStep = 50;
    QCOMPARE(handle(), 66);
    option.pageStep = 1;
    QCOMPARE(handle(), 29);
    option.maximum = std::numeric_limits<int>::max();
    option.minimum = std::numeric_limits<int>::min();
    QCOMPARE(handle(), 29);
    option.maximum = option.minimum; // nothing to scroll
    QCOMPARE(handle(), 200);
    option.maximum = 0;
    option.rect.setWidth(20); // shorter than a handle
    QCOMPARE(handle(), 20);
}

void TestStyleScrollBars::scrollBarHasNoLineButtons()
{
    const QStyleOptionSlider option = scrollBarOption();
    for (const QStyle::SubControl part : {QStyle::SC_ScrollBarAddLine, QStyle::SC_ScrollBarSubLine})
        QVERIFY(
            QApplication::style()->subControlRect(QStyle::CC_ScrollBar, &option, part).isEmpty());
    const auto hit = [&](const QPoint &point) {
        return QApplication::style()->hitTestComplexControl(QStyle::CC_ScrollBar, &option, point);
    };
    QCOMPARE(hit({0, 10}), QStyle::SC_ScrollBarSlider);
    QCOMPARE(hit({199, 10}), QStyle::SC_ScrollBarAddPage);
}

void TestStyleScrollBars::scrollBarHandleIsInsetAndGrowsUnderThePointer()
{
    QStyleOptionSlider option = scrollBarOption();
    const auto thickness = [&] {
        const QImage image = paintedControl(QStyle::CC_ScrollBar, option);
        int rows = 0;
        for (int y = 0; y < image.height(); ++y)
            rows += image.pixelColor(50, y) != windowColour();
        return rows;
    };
    QCOMPARE(thickness(), 12);
    const QImage calm = paintedControl(QStyle::CC_ScrollBar, option);
    option.state |= QStyle::State_MouseOver;
    option.activeSubControls = QStyle::SC_ScrollBarSlider;
    QCOMPARE(thickness(), 14);
    const QImage hovered = paintedControl(QStyle::CC_ScrollBar, option);
    QVERIFY(hovered.pixelColor(50, 10) != calm.pixelColor(50, 10));
    option.state |= QStyle::State_Sunken;
    const QImage pressed = paintedControl(QStyle::CC_ScrollBar, option);
    QVERIFY(pressed.pixelColor(50, 10) != hovered.pixelColor(50, 10));
}

void TestStyleScrollBars::scrollBarGrooveShowsWhatLiesBelow()
{
    QWidget window;
    QPalette palette = window.palette();
    palette.setColor(QPalette::Window, Qt::darkGreen);
    window.setPalette(palette);
    window.resize(100, 100);
    QScrollBar bar(Qt::Vertical, &window);
    bar.setGeometry(0, 0, 20, 100);
    window.show();
    QVERIFY(!bar.testAttribute(Qt::WA_OpaquePaintEvent));
    QCOMPARE(window.grab().toImage().pixelColor(1, 90), QColor(Qt::darkGreen));
}

void TestStyleScrollBars::scrollBarsAreNarrowerInFramedViews()
{
    QScrollBar bar(Qt::Vertical);
    QCOMPARE(bar.sizeHint(), QSize(20, 58));
    bar.setOrientation(Qt::Horizontal);
    QCOMPARE(bar.sizeHint(), QSize(58, 20));
    QListView list;
    QCOMPARE(list.verticalScrollBar()->sizeHint().width(), 16);
    list.setFrameShape(QFrame::NoFrame);
    QCOMPARE(list.verticalScrollBar()->sizeHint().width(), 20);
}

void TestStyleScrollBars::foreignOptionsAreSurvived()
{
    const QStyle &style = *QApplication::style();
    const QStyleOption plain;
    const QStyleOptionComplex complex;
    const QStyleOptionSlider empty;
    painted(QSize(20, 20), [&](QPainter &painter) {
        style.drawComplexControl(QStyle::CC_ScrollBar, &complex, &painter);
        style.drawComplexControl(QStyle::CC_ScrollBar, &empty, &painter);
        for (const auto element :
             {QStyle::CE_ScrollBarSlider, QStyle::CE_ScrollBarAddPage, QStyle::CE_ScrollBarAddLine})
            style.drawControl(element, &plain, &painter);
    });
    for (uint subControl = 1; subControl <= 0x80; subControl <<= 1)
        style.subControlRect(QStyle::CC_ScrollBar, &complex, QStyle::SubControl(subControl));
    QCOMPARE(style.sizeFromContents(QStyle::CT_ScrollBar, &plain, QSize(7, 8)), QSize(7, 8));
}

QTEST_MAIN(TestStyleScrollBars)
#include "tst_style_scroll_bars.moc"
