#include "vireling/style/style.h"

#include "vireling/style/elements/check_box.h"
#include "vireling/style/elements/combo_box.h"
#include "vireling/style/elements/dial.h"
#include "vireling/style/elements/dock_widget.h"
#include "vireling/style/elements/frame.h"
#include "vireling/style/elements/group_box.h"
#include "vireling/style/elements/header.h"
#include "vireling/style/elements/item_view.h"
#include "vireling/style/elements/line_edit.h"
#include "vireling/style/elements/mdi.h"
#include "vireling/style/elements/menu.h"
#include "vireling/style/elements/menu_bar.h"
#include "vireling/style/elements/progress_bar.h"
#include "vireling/style/elements/push_button.h"
#include "vireling/style/elements/scroll_bar.h"
#include "vireling/style/elements/size_grip.h"
#include "vireling/style/elements/slider.h"
#include "vireling/style/elements/spin_box.h"
#include "vireling/style/elements/tab_bar.h"
#include "vireling/style/elements/tab_widget.h"
#include "vireling/style/elements/tool_box.h"
#include "vireling/style/elements/tool_button.h"
#include "vireling/style/elements/tree_view.h"

/*
 * The table of contents of the geometry: which function of which family places or
 * measures what. "Not handled" goes to QCommonStyle.
 */
namespace Vireling {

namespace {

std::optional<QRect> elementRect(QStyle::SubElement element, const ElementContext &context)
{
    switch (element) {
    case QStyle::SE_PushButtonContents:
        return pushButtonContents(context);
    case QStyle::SE_PushButtonFocusRect:
        return pushButtonFocusRect(context, element);
    case QStyle::SE_CheckBoxIndicator:
    case QStyle::SE_CheckBoxContents:
    case QStyle::SE_CheckBoxFocusRect:
    case QStyle::SE_RadioButtonIndicator:
    case QStyle::SE_RadioButtonContents:
    case QStyle::SE_RadioButtonFocusRect:
        return checkBoxPart(context, element);
    case QStyle::SE_ComboBoxFocusRect:
        return comboBoxFocusRect(context);
    case QStyle::SE_SliderFocusRect:
        return sliderFocusRect(context);
    case QStyle::SE_ProgressBarGroove:
    case QStyle::SE_ProgressBarContents:
    case QStyle::SE_ProgressBarLabel:
        return progressBarPart(context, element);
    case QStyle::SE_ToolBoxTabContents:
        return toolBoxTabContents(context);
    case QStyle::SE_HeaderLabel:
    case QStyle::SE_HeaderArrow:
        return headerPart(context, element);
    case QStyle::SE_TabWidgetTabBar:
    case QStyle::SE_TabWidgetTabPane:
    case QStyle::SE_TabWidgetTabContents:
    case QStyle::SE_TabWidgetLeftCorner:
    case QStyle::SE_TabWidgetRightCorner:
        return tabWidgetPart(context, element);
    case QStyle::SE_ItemViewItemCheckIndicator:
        return itemPart(context, element);
    case QStyle::SE_TabBarTearIndicator:
        return tabPart(context, element);
    case QStyle::SE_TreeViewDisclosureItem:
        return disclosureItem(context);
    case QStyle::SE_LineEditContents:
        return lineEditContents(context);
    case QStyle::SE_FrameContents:
        return frameContents(context);
    case QStyle::SE_DockWidgetTitleBarText:
        return dockWidgetTitleText(context);
    case QStyle::SE_ItemViewItemDecoration:
    case QStyle::SE_ItemViewItemText:
    case QStyle::SE_ItemViewItemFocusRect:
        return itemPart(context, element);
    case QStyle::SE_TabBarTabLeftButton:
    case QStyle::SE_TabBarTabRightButton:
    case QStyle::SE_TabBarTabText:
        return tabPart(context, element);
    case QStyle::SE_ShapedFrameContents:
        return frameContents(context);
    case QStyle::SE_TabBarScrollLeftButton:
    case QStyle::SE_TabBarScrollRightButton:
    case QStyle::SE_TabBarTearIndicatorRight:
        return tabPart(context, element);
    case QStyle::SE_PushButtonBevel:
        return pushButtonFocusRect(context, element);
    case QStyle::SE_CheckBoxClickRect:
    case QStyle::SE_RadioButtonClickRect:
    case QStyle::SE_ToolBarHandle:
    case QStyle::SE_DockWidgetCloseButton:
    case QStyle::SE_DockWidgetFloatButton:
    case QStyle::SE_DockWidgetIcon:
    case QStyle::SE_CheckBoxLayoutItem:
    case QStyle::SE_ComboBoxLayoutItem:
    case QStyle::SE_DateTimeEditLayoutItem:
    case QStyle::SE_LabelLayoutItem:
    case QStyle::SE_ProgressBarLayoutItem:
    case QStyle::SE_PushButtonLayoutItem:
    case QStyle::SE_RadioButtonLayoutItem:
    case QStyle::SE_SliderLayoutItem:
    case QStyle::SE_SpinBoxLayoutItem:
    case QStyle::SE_ToolButtonLayoutItem:
    case QStyle::SE_FrameLayoutItem:
    case QStyle::SE_GroupBoxLayoutItem:
    case QStyle::SE_TabWidgetLayoutItem:
    case QStyle::SubElement(QStyle::SE_DateTimeEditLayoutItem + 1): // deprecated by name
    case QStyle::SE_CustomBase:
        break;
    }
    return std::nullopt;
}

std::optional<QRect> partRect(QStyle::ComplexControl control, const ElementContext &context,
                              QStyle::SubControl part)
{
    switch (control) {
    case QStyle::CC_SpinBox:
        return spinBoxPart(context, part);
    case QStyle::CC_ComboBox:
        return comboBoxPart(context, part);
    case QStyle::CC_ScrollBar:
        return scrollBarPart(context, part);
    case QStyle::CC_Slider:
        return sliderPart(context, part);
    case QStyle::CC_ToolButton:
        return toolButtonPart(context, part);
    case QStyle::CC_TitleBar:
        return mdiTitleBarPart(context, part);
    case QStyle::CC_Dial:
        return dialPart(context, part);
    case QStyle::CC_GroupBox:
        return groupBoxPart(context, part);
    case QStyle::CC_MdiControls:
        return mdiControlsPart(context, part);
    case QStyle::CC_CustomBase:
        break;
    }
    return std::nullopt;
}

std::optional<QSize> contentsToSize(QStyle::ContentsType type, const ElementContext &context,
                                    const QSize &contents)
{
    switch (type) {
    case QStyle::CT_PushButton:
        return pushButtonSize(context, contents);
    case QStyle::CT_CheckBox:
        return checkBoxSize(context, contents);
    case QStyle::CT_RadioButton:
        return radioButtonSize(context, contents);
    case QStyle::CT_ToolButton:
        return toolButtonSize(context, contents);
    case QStyle::CT_ComboBox:
        return comboBoxSize(context, contents);
    case QStyle::CT_ProgressBar:
        return progressBarSize(context, contents);
    case QStyle::CT_MenuItem:
        return menuItemSize(context, contents);
    case QStyle::CT_MenuBarItem:
        return menuBarItemSize(context, contents);
    case QStyle::CT_TabBarTab:
        return tabSize(context, contents);
    case QStyle::CT_Slider:
        return sliderSize(context, contents);
    case QStyle::CT_ScrollBar:
        return scrollBarSize(context, contents);
    case QStyle::CT_LineEdit:
        return lineEditSize(context, contents);
    case QStyle::CT_SpinBox:
        return spinBoxSize(context, contents);
    case QStyle::CT_SizeGrip:
        return sizeGripSize(context, contents);
    case QStyle::CT_TabWidget:
        return tabWidgetSize(context, contents);
    case QStyle::CT_HeaderSection:
        return headerSectionSize(context, contents);
    case QStyle::CT_GroupBox:
        return groupBoxSize(context, contents);
    case QStyle::CT_MdiControls:
        return mdiControlsSize(context);
    case QStyle::CT_ItemViewItem:
        return itemSize(context, contents);
    case QStyle::CT_Menu:
    case QStyle::CT_MenuBar:
    case QStyle::CT_Splitter:
    case QStyle::CT_DialogButtons:
    case QStyle::CT_CustomBase:
        break;
    }
    return std::nullopt;
}

} // namespace

QRect Style::subElementRect(SubElement element, const QStyleOption *option,
                            const QWidget *widget) const
{
    const std::optional<QRect> rect = elementRect(element, {*this, *option, widget});
    return rect ? *rect : QCommonStyle::subElementRect(element, option, widget);
}

QRect Style::subControlRect(ComplexControl control, const QStyleOptionComplex *option,
                            SubControl subControl, const QWidget *widget) const
{
    const std::optional<QRect> rect = partRect(control, {*this, *option, widget}, subControl);
    return rect ? *rect : QCommonStyle::subControlRect(control, option, subControl, widget);
}

QSize Style::sizeFromContents(ContentsType type, const QStyleOption *option,
                              const QSize &contentsSize, const QWidget *widget) const
{
    const std::optional<QSize> size = contentsToSize(type, {*this, *option, widget}, contentsSize);
    return size ? *size : QCommonStyle::sizeFromContents(type, option, contentsSize, widget);
}

} // namespace Vireling
