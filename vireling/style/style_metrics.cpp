#include "vireling/style/style.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QGuiApplication>
#include <QScreen>
#include <QStyleOption>
#include <QWidget>

#include <cmath>

namespace Vireling {

namespace {

constexpr qreal designDpi = 96;

/** The padding of a tab, in design pixels: the same left and right, top and bottom. */
constexpr qreal tabHorizontalPadding = 7;
constexpr qreal tabVerticalPadding = 3;

qreal dotsPerInch(const QStyleOption *option, const QWidget *widget)
{
    if (option)
        return option->fontMetrics.fontDpi();
    if (widget)
        return widget->logicalDpiX();
    const QScreen *screen = QGuiApplication::primaryScreen();
    return screen ? screen->logicalDotsPerInchX() : designDpi;
}

int roundedUp(qreal width)
{
    return int(std::ceil(width));
}

bool isFramed(const QFrame *frame)
{
    return frame && frame->frameShape() != QFrame::NoFrame;
}

bool isInFramedItemView(const QWidget *widget)
{
    for (; widget; widget = widget->parentWidget())
        if (isFramed(qobject_cast<const QAbstractItemView *>(widget)))
            return true;
    return false;
}

int sliderSpace(const QStyle &style, const QStyleOption *option, const QWidget *widget)
{
    const auto *slider = qstyleoption_cast<const QStyleOptionSlider *>(option);
    if (!slider)
        return 0;
    const int length =
        slider->orientation == Qt::Horizontal ? slider->rect.width() : slider->rect.height();
    return length - style.pixelMetric(QStyle::PM_SliderControlThickness, option, widget);
}

bool isFramelessButton(const QStyleOption *option)
{
    if (!option)
        return false;
    if (option->state & QStyle::State_AutoRaise)
        return true;
    const auto *button = qstyleoption_cast<const QStyleOptionButton *>(option);
    return button &&
           (button->features & (QStyleOptionButton::Flat | QStyleOptionButton::CommandLinkButton));
}

} // namespace

qreal Style::scaledExactly(qreal designPixels, const QStyleOption *option,
                           const QWidget *widget) const
{
    return designPixels * dotsPerInch(option, widget) / designDpi;
}

int Style::scaled(qreal designPixels, const QStyleOption *option, const QWidget *widget) const
{
    return int(std::round(scaledExactly(designPixels, option, widget)));
}

qreal Style::lineWidth(LineWidth kind, const QStyleOption *option, const QWidget *widget) const
{
    const auto defaultWidth = [&] { return pixelMetric(PM_DefaultFrameWidth, option, widget); };
    switch (kind) {
    case LineWidth::None:
    case LineWidth::ScrollSpacing:
        return 0;
    case LineWidth::Frame:
    case LineWidth::PanelFrame:
    case LineWidth::FieldFrame:
    case LineWidth::GroupFrame:
    case LineWidth::MenuFrame:
        if (const auto *frame = qstyleoption_cast<const QStyleOptionFrame *>(option))
            return frame->features & QStyleOptionFrame::Flat ? 0 : frame->lineWidth;
        return defaultWidth();
    case LineWidth::ButtonFrame:
        return isFramelessButton(option) ? 0 : defaultWidth();
    case LineWidth::Glyph:
        return scaledExactly(1.5, option, widget);
    case LineWidth::Emphasis:
        return scaledExactly(2.0, option, widget);
    case LineWidth::Separator:
    case LineWidth::TabFrame:
        break;
    }
    return defaultWidth();
}

int Style::pixelMetric(PixelMetric metric, const QStyleOption *option, const QWidget *widget) const
{
    const auto pixels = [&](int designPixels) { return scaled(designPixels, option, widget); };
    const auto line = [&](LineWidth kind) { return lineWidth(kind, option, widget); };
    const auto other = [&](PixelMetric which) { return pixelMetric(which, option, widget); };

    switch (metric) {
    case PM_ButtonMargin:
    case PM_DockWidgetHandleExtent:
    case PM_MenuHMargin:
    case PM_MenuVMargin:
    case PM_HeaderMargin:
    case PM_ToolBarItemMargin:
    case PM_DockWidgetTitleBarButtonMargin:
        return pixels(3);
    case PM_MenuButtonIndicator:
    case PM_IndicatorWidth:
    case PM_IndicatorHeight:
    case PM_ExclusiveIndicatorWidth:
    case PM_ExclusiveIndicatorHeight:
    case PM_HeaderMarkSize:
        return pixels(12);
    case PM_ButtonShiftHorizontal:
    case PM_ButtonShiftVertical:
    case PM_TabBarTabOverlap:
    case PM_TabBarBaseHeight:
    case PM_MenuBarPanelWidth:
    case PM_TabBarTabShiftHorizontal:
    case PM_TabBarTabShiftVertical:
    case PM_FocusFrameVMargin:
    case PM_FocusFrameHMargin:
        return 0;
    case PM_DefaultFrameWidth:
    case PM_SpinBoxFrameWidth:
    case PM_ComboBoxFrameWidth:
    case PM_DockWidgetSeparatorExtent:
    case PM_DockWidgetFrameWidth:
    case PM_TabBarBaseOverlap:
    case PM_MenuPanelWidth:
    case PM_MdiSubWindowFrameWidth:
    case PM_ToolBarFrameWidth:
        return 1;
    case PM_ScrollBarExtent:
        return pixels(isInFramedItemView(widget) &&
                              !styleHint(SH_ScrollView_FrameOnlyAroundContents, option, widget)
                          ? 16
                          : 20);
    case PM_ScrollBarSliderMin:
        return pixels(29);
    case PM_SliderThickness:
    case PM_SliderControlThickness:
        return pixels(14);
    case PM_SliderLength:
        return pixels(100) + other(PM_SliderControlThickness);
    case PM_SliderTickmarkOffset:
        return pixels(2);
    case PM_SliderSpaceAvailable:
        return sliderSpace(*this, option, widget);
    case PM_TabBarTabHSpace:
        return roundedUp(2 * (line(LineWidth::TabFrame) + pixels(int(tabHorizontalPadding))));
    case PM_TabBarTabVSpace:
        return roundedUp(2 * (line(LineWidth::TabFrame) + pixels(int(tabVerticalPadding))));
    case PM_SplitterWidth:
        return pixels(1);
    case PM_TitleBarHeight:
        return pixels(6) + other(PM_TitleBarButtonSize);
    case PM_MenuTearoffHeight:
        return roundedUp(line(LineWidth::MenuFrame)) + 2 * pixels(3);
    case PM_TabBarScrollButtonWidth:
    case PM_ListViewIconSize:
    case PM_SmallIconSize:
    case PM_ButtonIconSize:
    case PM_TabCloseIndicatorWidth:
    case PM_TabCloseIndicatorHeight:
    case PM_TitleBarButtonIconSize:
        return pixels(16);
    case PM_ToolBarItemSpacing:
        return pixels(4);
    case PM_ToolBarSeparatorExtent:
        return roundedUp(line(LineWidth::Frame));
    case PM_ToolBarExtensionExtent:
        return other(PM_ButtonIconSize) + 2 * roundedUp(line(LineWidth::ButtonFrame));
    case PM_ToolBarIconSize:
    case PM_LargeIconSize:
        return pixels(32);
    case PM_ToolTipLabelFrameWidth:
    case PM_CheckBoxLabelSpacing:
    case PM_RadioButtonLabelSpacing:
    case PM_LayoutLeftMargin:
    case PM_LayoutTopMargin:
    case PM_LayoutRightMargin:
    case PM_LayoutBottomMargin:
    case PM_LayoutHorizontalSpacing:
    case PM_LayoutVerticalSpacing:
        return pixels(8);
    case PM_ScrollView_ScrollBarSpacing:
        if (isFramed(qobject_cast<const QAbstractScrollArea *>(widget)))
            return -roundedUp(line(LineWidth::ScrollSpacing));
        return pixels(4);
    case PM_TitleBarButtonSize:
        return pixels(24);
    default:
        return QCommonStyle::pixelMetric(metric, option, widget);
    }
}

} // namespace Vireling
