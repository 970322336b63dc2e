#include "vireling/style/style.h"

#include "support/style_dpi.h"

#include <QListView>
#include <QMetaEnum>
#include <QPlainTextEdit>
#include <QScrollBar>
#include <QStyleOption>
#include <QtTest>

#include <algorithm>

using namespace Vireling;
using TestSupport::fontMetricsAt;

namespace {

using PixelMetric = QStyle::PixelMetric;

struct MetricRow
{
    PixelMetric metric;
    int at96;
    int at192;
};

constexpr MetricRow metricTable[] = {
    {QStyle::PM_ButtonMargin, 3, 6},
    {QStyle::PM_DockWidgetHandleExtent, 3, 6},
    {QStyle::PM_MenuHMargin, 3, 6},
    {QStyle::PM_MenuVMargin, 3, 6},
    {QStyle::PM_HeaderMargin, 3, 6},
    {QStyle::PM_ToolBarItemMargin, 3, 6},
    {QStyle::PM_DockWidgetTitleBarButtonMargin, 3, 6},
    {QStyle::PM_MenuButtonIndicator, 12, 24},
    {QStyle::PM_IndicatorWidth, 12, 24},
    {QStyle::PM_IndicatorHeight, 12, 24},
    {QStyle::PM_ExclusiveIndicatorWidth, 12, 24},
    {QStyle::PM_ExclusiveIndicatorHeight, 12, 24},
    {QStyle::PM_HeaderMarkSize, 12, 24},
    {QStyle::PM_ButtonShiftHorizontal, 0, 0},
    {QStyle::PM_ButtonShiftVertical, 0, 0},
    {QStyle::PM_TabBarTabOverlap, 0, 0},
    {QStyle::PM_TabBarBaseHeight, 0, 0},
    {QStyle::PM_MenuBarPanelWidth, 0, 0},
    {QStyle::PM_TabBarTabShiftHorizontal, 0, 0},
    {QStyle::PM_TabBarTabShiftVertical, 0, 0},
    {QStyle::PM_FocusFrameVMargin, 0, 0},
    {QStyle::PM_FocusFrameHMargin, 0, 0},
    {QStyle::PM_DefaultFrameWidth, 1, 1},
    {QStyle::PM_SpinBoxFrameWidth, 1, 1},
    {QStyle::PM_ComboBoxFrameWidth, 1, 1},
    {QStyle::PM_DockWidgetSeparatorExtent, 1, 1},
    {QStyle::PM_DockWidgetFrameWidth, 1, 1},
    {QStyle::PM_TabBarBaseOverlap, 1, 1},
    {QStyle::PM_MenuPanelWidth, 1, 1},
    {QStyle::PM_MdiSubWindowFrameWidth, 1, 1},
    {QStyle::PM_ToolBarFrameWidth, 1, 1},
    {QStyle::PM_ScrollBarExtent, 20, 40},
    {QStyle::PM_ScrollBarSliderMin, 29, 58},
    {QStyle::PM_SliderThickness, 14, 28},
    {QStyle::PM_SliderControlThickness, 14, 28},
    {QStyle::PM_SliderLength, 114, 228},
    {QStyle::PM_SliderTickmarkOffset, 2, 4},
    {QStyle::PM_SliderSpaceAvailable, 0, 0},
    {QStyle::PM_TabBarTabHSpace, 16, 30},
    {QStyle::PM_TabBarTabVSpace, 8, 14},
    {QStyle::PM_SplitterWidth, 1, 2},
    {QStyle::PM_TitleBarHeight, 30, 60},
    {QStyle::PM_MenuTearoffHeight, 7, 13},
    {QStyle::PM_TabBarScrollButtonWidth, 16, 32},
    {QStyle::PM_ListViewIconSize, 16, 32},
    {QStyle::PM_SmallIconSize, 16, 32},
    {QStyle::PM_ButtonIconSize, 16, 32},
    {QStyle::PM_TabCloseIndicatorWidth, 16, 32},
    {QStyle::PM_TabCloseIndicatorHeight, 16, 32},
    {QStyle::PM_TitleBarButtonIconSize, 16, 32},
    {QStyle::PM_ToolBarItemSpacing, 4, 8},
    {QStyle::PM_ToolBarSeparatorExtent, 1, 1},
    {QStyle::PM_ToolBarExtensionExtent, 18, 34},
    {QStyle::PM_ToolBarIconSize, 32, 64},
    {QStyle::PM_LargeIconSize, 32, 64},
    {QStyle::PM_ToolTipLabelFrameWidth, 8, 16},
    {QStyle::PM_CheckBoxLabelSpacing, 8, 16},
    {QStyle::PM_RadioButtonLabelSpacing, 8, 16},
    {QStyle::PM_LayoutLeftMargin, 8, 16},
    {QStyle::PM_LayoutTopMargin, 8, 16},
    {QStyle::PM_LayoutRightMargin, 8, 16},
    {QStyle::PM_LayoutBottomMargin, 8, 16},
    {QStyle::PM_LayoutHorizontalSpacing, 8, 16},
    {QStyle::PM_LayoutVerticalSpacing, 8, 16},
    {QStyle::PM_ScrollView_ScrollBarSpacing, 4, 8},
    {QStyle::PM_TitleBarButtonSize, 24, 48},
};

bool isInTable(PixelMetric metric)
{
    return std::any_of(std::begin(metricTable), std::end(metricTable),
                       [metric](const MetricRow &row) { return row.metric == metric; });
}

const char *nameOf(PixelMetric metric)
{
    return QMetaEnum::fromType<PixelMetric>().valueToKey(metric);
}

template <typename Option = QStyleOption>
Option optionAt(int dotsPerInch)
{
    Option option;
    option.fontMetrics = fontMetricsAt(dotsPerInch);
    return option;
}

/** A widget on a screen of so many dots per inch. */
class WidgetAt : public QWidget
{
public:
    explicit WidgetAt(int usedDotsPerInch)
        : dotsPerInch(usedDotsPerInch)
    {}

protected:
    int metric(PaintDeviceMetric which) const override
    {
        return which == PdmDpiX || which == PdmDpiY ? dotsPerInch : QWidget::metric(which);
    }

private:
    const int dotsPerInch;
};

/** With frames around the contents alone and scroll bars outside of them. */
class StyleWithScrollBarsOutside : public Style
{
public:
    int styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                  QStyleHintReturn *returnData) const override
    {
        return hint == SH_ScrollView_FrameOnlyAroundContents
                   ? 1
                   : Style::styleHint(hint, option, widget, returnData);
    }
};

} // namespace

class TestStyleMetrics : public QObject
{
    Q_OBJECT

private slots:
    void everyMetricHasItsValue_data();
    void everyMetricHasItsValue();
    void everyOtherMetricIsQCommonStyles();
    void scaledRoundsHalfAwayFromZero_data();
    void scaledRoundsHalfAwayFromZero();
    void densityComesFromTheOptionThenTheWidgetThenTheApplication();
    void linesHaveTheirWidths_data();
    void linesHaveTheirWidths();
    void framesAreAsWideAsTheirOptionSays_data();
    void framesAreAsWideAsTheirOptionSays();
    void olderFrameOptionsCountAsNone();
    void buttonsWithoutSurfaceHaveNoFrame();
    void anUnknownLineIsAsWideAsAFrame();
    void scrollBarsAreNarrowInFramedItemViews();
    void scrollBarsOutsideTheFrameAreWide();
    void aSliderHasItsLengthMinusItsHandleAsSpace();
    void scrollBarsTouchTheContentsOfFramedAreasOnly();
    void tearOffsAndToolBarsFollowTheirFrames();
};

void TestStyleMetrics::everyMetricHasItsValue_data()
{
    QTest::addColumn<int>("metric");
    QTest::addColumn<int>("dotsPerInch");
    QTest::addColumn<int>("value");
    for (const MetricRow &row : metricTable) {
        QTest::addRow("%s at 96", nameOf(row.metric)) << int(row.metric) << 96 << row.at96;
        QTest::addRow("%s at 192", nameOf(row.metric)) << int(row.metric) << 192 << row.at192;
    }
}

void TestStyleMetrics::everyMetricHasItsValue()
{
    QFETCH(int, metric);
    QFETCH(int, dotsPerInch);
    QFETCH(int, value);
    const QStyleOption option = optionAt(dotsPerInch);
    const Style style;
    QCOMPARE(style.pixelMetric(PixelMetric(metric), &option), value);
}

void TestStyleMetrics::everyOtherMetricIsQCommonStyles()
{
    const Style style;
    const QMetaEnum metrics = QMetaEnum::fromType<PixelMetric>();
    int others = 0;
    for (int i = 0; i < metrics.keyCount(); ++i) {
        const auto metric = PixelMetric(metrics.value(i));
        if (isInTable(metric))
            continue;
        ++others;
        for (const int dotsPerInch : {96, 192}) {
            const QStyleOption option = optionAt(dotsPerInch);
            QVERIFY2(style.pixelMetric(metric, &option) ==
                         style.QCommonStyle::pixelMetric(metric, &option),
                     metrics.key(i));
        }
    }
    QVERIFY(others > 20);
}

void TestStyleMetrics::scaledRoundsHalfAwayFromZero_data()
{
    QTest::addColumn<qreal>("designPixels");
    QTest::addColumn<int>("dotsPerInch");
    QTest::addColumn<int>("pixels");
    QTest::newRow("nothing") << 0.0 << 96 << 0;
    QTest::newRow("whole at 96") << 7.0 << 96 << 7;
    QTest::newRow("half") << 0.5 << 96 << 1;
    QTest::newRow("two and a half") << 2.5 << 96 << 3;
    QTest::newRow("minus a half") << -0.5 << 96 << -1;
    QTest::newRow("minus two and a half") << -2.5 << 96 << -3;
    QTest::newRow("below a half") << 2.49 << 96 << 2;
    QTest::newRow("minus below a half") << -2.49 << 96 << -2;
    QTest::newRow("one at 144") << 1.0 << 144 << 2;
    QTest::newRow("three at 144") << 3.0 << 144 << 5;
    QTest::newRow("minus three at 144") << -3.0 << 144 << -5;
    QTest::newRow("three at 120") << 3.0 << 120 << 4;
    QTest::newRow("whole at 192") << 7.0 << 192 << 14;
}

void TestStyleMetrics::scaledRoundsHalfAwayFromZero()
{
    QFETCH(qreal, designPixels);
    QFETCH(int, dotsPerInch);
    QFETCH(int, pixels);
    const QStyleOption option = optionAt(dotsPerInch);
    const Style style;
    QCOMPARE(style.scaled(designPixels, &option, nullptr), pixels);
    QCOMPARE(style.scaledExactly(designPixels, &option, nullptr), designPixels * dotsPerInch / 96);
}

void TestStyleMetrics::densityComesFromTheOptionThenTheWidgetThenTheApplication()
{
    const Style style;
    const QStyleOption option = optionAt(192);
    const WidgetAt widget(144);
    QCOMPARE(style.scaled(100, &option, &widget), 200);
    QCOMPARE(style.scaled(100, nullptr, &widget), 150);
    QCOMPARE(style.scaled(100, nullptr, nullptr), 100);
    QCOMPARE(style.pixelMetric(QStyle::PM_TitleBarButtonSize, &option, &widget), 48);
    QCOMPARE(style.pixelMetric(QStyle::PM_TitleBarButtonSize, nullptr, &widget), 36);
    QCOMPARE(style.pixelMetric(QStyle::PM_TitleBarButtonSize), 24);
}

void TestStyleMetrics::linesHaveTheirWidths_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<qreal>("at96");
    QTest::addColumn<qreal>("at192");
    const qreal widths[] = {0, 1, 1, 1, 1, 1.5, 1, 1, 0, 1, 1, 2};
    int kind = 0;
    for (const qreal width : widths) {
        const bool isScaled = kind == int(LineWidth::Glyph) || kind == int(LineWidth::Emphasis);
        QTest::addRow("kind %d", kind) << kind << width << (isScaled ? 2 * width : width);
        ++kind;
    }
}

void TestStyleMetrics::linesHaveTheirWidths()
{
    QFETCH(int, kind);
    QFETCH(qreal, at96);
    QFETCH(qreal, at192);
    const Style style;
    const QStyleOption low = optionAt(96);
    const QStyleOption high = optionAt(192);
    QCOMPARE(style.lineWidth(LineWidth(kind), nullptr, nullptr), at96);
    QCOMPARE(style.lineWidth(LineWidth(kind), &low, nullptr), at96);
    QCOMPARE(style.lineWidth(LineWidth(kind), &high, nullptr), at192);
}

void TestStyleMetrics::framesAreAsWideAsTheirOptionSays_data()
{
    QTest::addColumn<int>("kind");
    QTest::addColumn<bool>("followsOption");
    for (int kind = 0; kind <= int(LineWidth::Emphasis); ++kind)
        QTest::addRow("kind %d", kind)
            << kind << (kind == 1 || kind == 2 || kind == 4 || kind == 6 || kind == 7);
}

void TestStyleMetrics::framesAreAsWideAsTheirOptionSays()
{
    QFETCH(int, kind);
    QFETCH(bool, followsOption);
    const Style style;
    const qreal without = style.lineWidth(LineWidth(kind), nullptr, nullptr);
    auto frame = optionAt<QStyleOptionFrame>(96);
    frame.lineWidth = 5;
    QCOMPARE(style.lineWidth(LineWidth(kind), &frame, nullptr), followsOption ? 5.0 : without);
    frame.features = QStyleOptionFrame::Flat;
    QCOMPARE(style.lineWidth(LineWidth(kind), &frame, nullptr), followsOption ? 0.0 : without);
}

void TestStyleMetrics::olderFrameOptionsCountAsNone()
{
    auto frame = optionAt<QStyleOptionFrame>(96);
    frame.lineWidth = 5;
    frame.version = 2;
    QCOMPARE(Style().lineWidth(LineWidth::Frame, &frame, nullptr), 1.0);
}

void TestStyleMetrics::buttonsWithoutSurfaceHaveNoFrame()
{
    const Style style;
    auto button = optionAt<QStyleOptionButton>(96);
    QCOMPARE(style.lineWidth(LineWidth::ButtonFrame, &button, nullptr), 1.0);
    button.features = QStyleOptionButton::Flat;
    QCOMPARE(style.lineWidth(LineWidth::ButtonFrame, &button, nullptr), 0.0);
    button.features = QStyleOptionButton::CommandLinkButton;
    QCOMPARE(style.lineWidth(LineWidth::ButtonFrame, &button, nullptr), 0.0);
    button.features = QStyleOptionButton::DefaultButton;
    QCOMPARE(style.lineWidth(LineWidth::ButtonFrame, &button, nullptr), 1.0);
    QStyleOption any = optionAt(96);
    any.state |= QStyle::State_AutoRaise;
    QCOMPARE(style.lineWidth(LineWidth::ButtonFrame, &any, nullptr), 0.0);
}

void TestStyleMetrics::anUnknownLineIsAsWideAsAFrame()
{
    QCOMPARE(Style().lineWidth(LineWidth(12), nullptr, nullptr), 1.0);
    QCOMPARE(Style().lineWidth(LineWidth(-1), nullptr, nullptr), 1.0);
}

void TestStyleMetrics::scrollBarsAreNarrowInFramedItemViews()
{
    const Style style;
    const auto extent = [&](const QWidget *widget) {
        return style.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, widget);
    };
    QListView outer;
    QListView view;
    QScrollBar freeStanding;
    QPlainTextEdit text;
    QCOMPARE(extent(view.verticalScrollBar()), 16);
    QCOMPARE(extent(&freeStanding), 20);
    QCOMPARE(extent(text.verticalScrollBar()), 20);
    QCOMPARE(extent(nullptr), 20);
    const QStyleOption option = optionAt(192);
    QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarExtent, &option, view.verticalScrollBar()), 32);

    view.setFrameShape(QFrame::NoFrame);
    QCOMPARE(extent(view.verticalScrollBar()), 20);
    view.setParent(&outer);
    QCOMPARE(extent(view.verticalScrollBar()), 16);
}

void TestStyleMetrics::scrollBarsOutsideTheFrameAreWide()
{
    const StyleWithScrollBarsOutside style;
    const QListView view;
    QCOMPARE(style.pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, view.verticalScrollBar()), 20);
}

void TestStyleMetrics::aSliderHasItsLengthMinusItsHandleAsSpace()
{
    const Style style;
    auto slider = optionAt<QStyleOptionSlider>(96);
    slider.rect = QRect(3, 4, 100, 60);
    slider.orientation = Qt::Horizontal;
    QCOMPARE(style.pixelMetric(QStyle::PM_SliderSpaceAvailable, &slider), 86);
    slider.orientation = Qt::Vertical;
    QCOMPARE(style.pixelMetric(QStyle::PM_SliderSpaceAvailable, &slider), 46);
    slider.fontMetrics = fontMetricsAt(192);
    QCOMPARE(style.pixelMetric(QStyle::PM_SliderSpaceAvailable, &slider), 32);
    QCOMPARE(style.pixelMetric(QStyle::PM_SliderSpaceAvailable), 0);
}

void TestStyleMetrics::scrollBarsTouchTheContentsOfFramedAreasOnly()
{
    const Style style;
    const auto spacing = [&](const QWidget *widget) {
        return style.pixelMetric(QStyle::PM_ScrollView_ScrollBarSpacing, nullptr, widget);
    };
    QPlainTextEdit text;
    QCOMPARE(spacing(&text), 0);
    text.setFrameShape(QFrame::NoFrame);
    QCOMPARE(spacing(&text), 4);
    const QFrame frame(nullptr);
    QCOMPARE(spacing(&frame), 4);
    QCOMPARE(spacing(nullptr), 4);
}

void TestStyleMetrics::tearOffsAndToolBarsFollowTheirFrames()
{
    const Style style;
    auto frame = optionAt<QStyleOptionFrame>(96);
    frame.lineWidth = 3;
    QCOMPARE(style.pixelMetric(QStyle::PM_MenuTearoffHeight, &frame), 9);
    QCOMPARE(style.pixelMetric(QStyle::PM_ToolBarSeparatorExtent, &frame), 3);
    auto button = optionAt<QStyleOptionButton>(96);
    button.features = QStyleOptionButton::Flat;
    QCOMPARE(style.pixelMetric(QStyle::PM_ToolBarExtensionExtent, &button), 16);
}

QTEST_MAIN(TestStyleMetrics)
#include "tst_style_metrics.moc"
