#include "vireling/style/elements/slider.h"
#include "vireling/style/style.h"

#include "range_widgets.h"
#include "style_pictures.h"
#include "support/style_dpi.h"

#include <QDial>
#include <QSlider>
#include <QStyleOption>
#include <QtTest>

#include <limits>

using namespace Vireling;
using TestSupport::fontMetricsAt;

namespace {

using OpenSlider = Open<QSlider>;
using OpenDial = Open<QDial>;

QStyleOptionSlider sliderOption()
{
    QStyleOptionSlider option;
    option.rect = QRect(0, 0, 114, 14);
    option.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Horizontal;
    option.palette = QApplication::palette();
    option.maximum = 100;
    option.sliderPosition = 50;
    option.subControls = QStyle::SC_SliderGroove | QStyle::SC_SliderHandle;
    return option;
}

} // namespace

class TestStyleRanges : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new Style); }

    void sliderHandleTravelsTheWholeGroove_data() { addDirections(); }
    void sliderHandleTravelsTheWholeGroove();
    void draggedSliderTakesTheValueUnderThePointer_data() { addDirections(); }
    void draggedSliderTakesTheValueUnderThePointer();
    void sliderGoesWhereItsGrooveIsPressed();
    void sliderLeavesRoomForTicks_data();
    void sliderLeavesRoomForTicks();
    void sliderTicksStandWhereTheHandleDoes();
    void ticksFollowTheIntervalOrThePage();
    void ticksKeepThreePixelsApart();
    void ticksOfTheWidestRangeAreFew();
    void sliderPartsAreHit();
    void sliderFillsFromItsMinimum();
    void sliderShowsItsFocus();
    void rangesGrowWithTheDensity();

    void dialPointsWhereItIsClicked_data();
    void dialPointsWhereItIsClicked();
    void dialShowsItsFocus();
    void dialSurvivesAnyRectangle();

    void foreignOptionsAreSurvived();
};

void TestStyleRanges::sliderHandleTravelsTheWholeGroove()
{
    OpenSlider slider;
    lie(slider);
    const Qt::Orientation orientation = slider.orientation();
    const QRect groove = slider.part(QStyle::CC_Slider, QStyle::SC_SliderGroove);
    QCOMPARE(length(orientation, groove), 214);

    slider.setValue(slider.minimum());
    const QRect first = slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle);
    slider.setValue(slider.maximum());
    const QRect last = slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle);
    QCOMPARE(first.size(), QSize(14, 14));
    QVERIFY(groove.contains(first) && groove.contains(last));

    const bool backwards = startsAtEnd(true);
    QCOMPARE(along(orientation, (backwards ? last : first).topLeft()), 0);
    QCOMPARE(along(orientation, (backwards ? first : last).topLeft()), 200);
    const QStyleOptionSlider option = slider.option();
    QCOMPARE(slider.style()->pixelMetric(QStyle::PM_SliderSpaceAvailable, &option, &slider), 200);
}

void TestStyleRanges::draggedSliderTakesTheValueUnderThePointer()
{
    OpenSlider slider;
    lie(slider);
    slider.setRange(0, 100);
    slider.setValue(50);
    slider.show();
    const QPoint grip = slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle).center();

    QTest::mousePress(&slider, Qt::LeftButton, {}, grip);
    QMouseEvent move(QEvent::MouseMove, moved(slider.orientation(), grip, 50), Qt::NoButton,
                     Qt::LeftButton, {});
    QApplication::sendEvent(&slider, &move);
    QTest::mouseRelease(&slider, Qt::LeftButton, {}, moved(slider.orientation(), grip, 50));

    QCOMPARE(slider.value(), startsAtEnd(true) ? 25 : 75);
    const QRect handle = slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle);
    QCOMPARE(handle.center(), moved(slider.orientation(), grip, 50));
}

void TestStyleRanges::sliderGoesWhereItsGrooveIsPressed()
{
    OpenSlider slider(Qt::Horizontal);
    slider.resize(214, 14);
    slider.setRange(0, 200);
    slider.show();
    QTest::mouseClick(&slider, Qt::LeftButton, {}, QPoint(120, 7));
    const QRect handle = slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle);
    QVERIFY(qAbs(handle.center().x() - 120) <= 1);
}

void TestStyleRanges::sliderLeavesRoomForTicks_data()
{
    QTest::addColumn<QSlider::TickPosition>("ticks");
    QTest::addColumn<int>("thickness");
    QTest::addColumn<int>("handleAt");
    QTest::newRow("none") << QSlider::NoTicks << 14 << 0;
    QTest::newRow("above") << QSlider::TicksAbove << 20 << 6;
    QTest::newRow("below") << QSlider::TicksBelow << 20 << 0;
    QTest::newRow("both") << QSlider::TicksBothSides << 26 << 6;
}

void TestStyleRanges::sliderLeavesRoomForTicks()
{
    QFETCH(QSlider::TickPosition, ticks);
    QFETCH(int, thickness);
    QFETCH(int, handleAt);
    OpenSlider slider(Qt::Horizontal);
    slider.setTickPosition(ticks);
    QCOMPARE(slider.sizeHint(), QSize(114, thickness));
    QCOMPARE(slider.minimumSizeHint(), QSize(114, thickness));
    slider.resize(slider.sizeHint());
    QCOMPARE(slider.part(QStyle::CC_Slider, QStyle::SC_SliderHandle).y(), handleAt);
    slider.setOrientation(Qt::Vertical);
    QCOMPARE(slider.sizeHint(), QSize(thickness, 114));
}

void TestStyleRanges::sliderTicksStandWhereTheHandleDoes()
{
    QStyleOptionSlider option = sliderOption();
    option.rect = QRect(0, 0, 214, 26);
    option.tickPosition = QSlider::TicksBothSides;
    option.tickInterval = 20;
    option.subControls = QStyle::SC_SliderTickmarks;
    const QImage image = paintedControl(QStyle::CC_Slider, option);
    const QColor tick = QApplication::palette().color(QPalette::PlaceholderText);
    QVector<int> columns;
    for (int x = 0; x < image.width(); ++x) {
        QCOMPARE(image.pixelColor(x, 0), image.pixelColor(x, 25)); // both sides alike
        if (image.pixelColor(x, 0) == tick)
            columns.append(x);
    }
    QCOMPARE(columns, (QVector<int>{6, 46, 86, 126, 166, 206}));
    for (int i = 0; i < columns.size(); ++i) {
        option.sliderPosition = 20 * i;
        const QRect handle = QApplication::style()->subControlRect(QStyle::CC_Slider, &option,
                                                                   QStyle::SC_SliderHandle);
        QCOMPARE(handle.center().x(), columns[i]);
    }
    QCOMPARE(image.pixelColor(6, 4), windowColour()); // a gap of two below four pixels of tick
    QCOMPARE(image.pixelColor(6, 3), tick);
}

void TestStyleRanges::ticksFollowTheIntervalOrThePage()
{
    QStyleOptionSlider range;
    range.maximum = 40;
    range.tickInterval = 15;
    range.pageStep = 10;
    QCOMPARE(tickValues(range, 200), (QVector<int>{0, 15, 30}));
    range.tickInterval = 0;
    QCOMPARE(tickValues(range, 200), (QVector<int>{0, 10, 20, 30, 40}));
    range.maximum = 39;
    QCOMPARE(tickValues(range, 200), (QVector<int>{0, 10, 20, 30, 39}));
    range.maximum = 0;
    QVERIFY(tickValues(range, 200).isEmpty());
    range.maximum = 40;
    QVERIFY(tickValues(range, 0).isEmpty());
}

void TestStyleRanges::ticksKeepThreePixelsApart()
{
    QStyleOptionSlider range;
    range.maximum = 100;
    range.tickInterval = 1;
    for (int span = 4; span < 400; ++span) {
        const QVector<int> values = tickValues(range, span);
        for (int i = 1; i < values.size(); ++i) {
            const int first = QStyle::sliderPositionFromValue(0, 100, values[i - 1], span);
            const int second = QStyle::sliderPositionFromValue(0, 100, values[i], span);
            // the two positions are rounded
            QVERIFY2(second - first >= 2, qPrintable(QString::number(span)));
            QVERIFY2(qint64(values[i] - values[i - 1]) * span >= 3 * 100 ||
                         values[i] == range.maximum,
                     qPrintable(QString::number(span)));
        }
    }
}

void TestStyleRanges::ticksOfTheWidestRangeAreFew()
{
    QStyleOptionSlider range;
    range.minimum = std::numeric_limits<int>::min();
    range.maximum = std::numeric_limits<int>::max();
    range.tickInterval = 1;
    const QVector<int> values = tickValues(range, 300);
    QVERIFY(values.size() >= 90 && values.size() <= 101);
    QCOMPARE(values.first(), range.minimum);
}

void TestStyleRanges::sliderPartsAreHit()
{
    QStyleOptionSlider option = sliderOption();
    const QStyle &style = *QApplication::style();
    const auto hit = [&](const QPoint &point) {
        return style.hitTestComplexControl(QStyle::CC_Slider, &option, point);
    };
    QCOMPARE(hit({57, 7}), QStyle::SC_SliderHandle);
    QCOMPARE(hit({10, 7}), QStyle::SC_SliderGroove);
    QCOMPARE(hit({10, 40}), QStyle::SC_None);
    QCOMPARE(style.subElementRect(QStyle::SE_SliderFocusRect, &option), QRect(50, 0, 14, 14));
}

void TestStyleRanges::sliderFillsFromItsMinimum()
{
    QStyleOptionSlider option = sliderOption();
    const QColor filled = option.palette.color(QPalette::Highlight);
    QImage image = paintedControl(QStyle::CC_Slider, option);
    QCOMPARE(image.pixelColor(20, 7), filled);
    QVERIFY(image.pixelColor(94, 7) != filled);
    option.upsideDown = true;
    image = paintedControl(QStyle::CC_Slider, option);
    QVERIFY(image.pixelColor(20, 7) != filled);
    QCOMPARE(image.pixelColor(94, 7), filled);
}

void TestStyleRanges::sliderShowsItsFocus()
{
    QStyleOptionSlider option = sliderOption();
    const QColor ring = option.palette.color(QPalette::Highlight);
    const QRect top(56, 0, 2, 2);
    QVERIFY(!shows(paintedControl(QStyle::CC_Slider, option), ring, top));
    option.state |= QStyle::State_HasFocus;
    const QImage focused = paintedControl(QStyle::CC_Slider, option);
    QVERIFY(shows(focused, ring, top));
    const int gap = focused.pixelColor(57, 2).lightness(); // between ring and handle
    QVERIFY(gap < focused.pixelColor(57, 0).lightness());
    QVERIFY(gap < focused.pixelColor(57, 7).lightness());
    option.state &= ~QStyle::State_Enabled;
    QVERIFY(!shows(paintedControl(QStyle::CC_Slider, option), ring, top));
}

void TestStyleRanges::rangesGrowWithTheDensity()
{
    QStyleOptionSlider option = sliderOption();
    option.fontMetrics = fontMetricsAt(192);
    option.rect = QRect(0, 0, 228, 40);
    option.tickPosition = QSlider::TicksBelow;
    const QStyle &style = *QApplication::style();
    QCOMPARE(style.subControlRect(QStyle::CC_Slider, &option, QStyle::SC_SliderHandle),
             QRect(100, 0, 28, 28));
    QCOMPARE(style.sizeFromContents(QStyle::CT_Slider, &option, QSize(84, 19)), QSize(228, 40));
    QCOMPARE(style.sizeFromContents(QStyle::CT_ScrollBar, &option, QSize()), QSize(116, 40));
}

void TestStyleRanges::dialPointsWhereItIsClicked_data()
{
    QTest::addColumn<bool>("wrapping");
    QTest::addColumn<bool>("inverted");
    for (const bool wrapping : {false, true})
        for (const bool inverted : {false, true})
            QTest::addRow("%s, %s", wrapping ? "wrapping" : "with ends",
                          inverted ? "inverted" : "clockwise")
                << wrapping << inverted;
}

void TestStyleRanges::dialPointsWhereItIsClicked()
{
    QFETCH(bool, wrapping);
    QFETCH(bool, inverted);
    OpenDial dial;
    dial.setRange(0, 100);
    dial.setWrapping(wrapping);
    dial.setInvertedAppearance(inverted);
    dial.resize(100, 100);
    dial.show();
    const QColor pointer = dial.palette().color(QPalette::ButtonText);
    // left, top and right: six tenths of the knob's radius from the centre
    for (const QPoint &direction : {QPoint(-1, 0), QPoint(0, -1), QPoint(1, 0)}) {
        QTest::mouseClick(&dial, Qt::LeftButton, {}, QPoint(50, 50) + 45 * direction);
        const QImage image = paintedControl(QStyle::CC_Dial, dial.option());
        const int reach = dial.part(QStyle::CC_Dial, QStyle::SC_DialHandle).width() * 6 / 20;
        const QPoint expected = QPoint(50, 50) + reach * direction;
        QVERIFY(shows(image, pointer, QRect(expected - QPoint(2, 2), QSize(5, 5))));
        const QPoint opposite = QPoint(50, 50) - reach * direction;
        QVERIFY(!shows(image, pointer, QRect(opposite - QPoint(2, 2), QSize(5, 5))));
    }
}

void TestStyleRanges::dialShowsItsFocus()
{
    OpenDial dial;
    dial.setWrapping(true); // without a filled arc, which has the colour of the ring
    dial.resize(100, 100);
    QStyleOptionSlider option = dial.option();
    option.state |= QStyle::State_Enabled;
    const QColor ring = option.palette.color(QPalette::Highlight);
    QVERIFY(!shows(paintedControl(QStyle::CC_Dial, option), ring, option.rect));
    option.state |= QStyle::State_HasFocus;
    QVERIFY(shows(paintedControl(QStyle::CC_Dial, option), ring, option.rect));
}

void TestStyleRanges::dialSurvivesAnyRectangle()
{
    QStyleOptionSlider option = sliderOption();
    option.subControls = QStyle::SC_All;
    for (const QRect &rect :
         {QRect(), QRect(0, 0, 1, 1), QRect(0, 0, 9, 300), QRect(0, 0, 15, 15)}) {
        option.rect = rect;
        painted(QSize(40, 40), [&](QPainter &painter) {
            QApplication::style()->drawComplexControl(QStyle::CC_Dial, &option, &painter);
        });
        const QRect groove =
            QApplication::style()->subControlRect(QStyle::CC_Dial, &option, QStyle::SC_DialGroove);
        QVERIFY(groove.isEmpty() || rect.contains(groove));
    }
}

void TestStyleRanges::foreignOptionsAreSurvived()
{
    const QStyle &style = *QApplication::style();
    QStyleOption plain;
    QStyleOptionComplex complex;
    QImage image(20, 20, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&image);
    for (const auto control : {QStyle::CC_Slider, QStyle::CC_Dial}) {
        style.drawComplexControl(control, &complex, &painter);
        for (uint part = 1; part <= 0x80; part <<= 1)
            style.subControlRect(control, &complex, QStyle::SubControl(part));
        QStyleOptionSlider empty;
        style.drawComplexControl(control, &empty, &painter);
    }
    QCOMPARE(style.sizeFromContents(QStyle::CT_Slider, &plain, QSize(7, 8)), QSize(7, 8));
}

QTEST_MAIN(TestStyleRanges)
#include "tst_style_ranges.moc"
