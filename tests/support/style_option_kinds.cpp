#include "support/style_options.h"

/*
 * Which class of option belongs to which element, after Qt's tables in the
 * documentation of QStyle. Without a default: the compiler names a forgotten one.
 */
namespace TestSupport {

OptionKind optionKind(QStyle::PrimitiveElement element)
{
    switch (element) {
    case QStyle::PE_Frame:
    case QStyle::PE_FrameDockWidget:
    case QStyle::PE_FrameGroupBox:
    case QStyle::PE_FrameLineEdit:
    case QStyle::PE_FrameMenu:
    case QStyle::PE_FrameWindow:
    case QStyle::PE_PanelLineEdit:
    case QStyle::PE_PanelMenuBar:
    case QStyle::PE_PanelToolBar:
    case QStyle::PE_PanelTipLabel:
    case QStyle::PE_PanelMenu:
        return OptionKind::Frame;
    case QStyle::PE_FrameFocusRect:
        return OptionKind::FocusRect;
    case QStyle::PE_FrameTabWidget:
        return OptionKind::TabWidgetFrame;
    case QStyle::PE_FrameTabBarBase:
        return OptionKind::TabBarBase;
    case QStyle::PE_FrameDefaultButton:
    case QStyle::PE_FrameButtonBevel:
    case QStyle::PE_PanelButtonCommand:
    case QStyle::PE_PanelButtonBevel:
    case QStyle::PE_IndicatorCheckBox:
    case QStyle::PE_IndicatorRadioButton:
        return OptionKind::Button;
    case QStyle::PE_FrameButtonTool:
    case QStyle::PE_PanelButtonTool:
    case QStyle::PE_IndicatorButtonDropDown:
        return OptionKind::ToolButton;
    case QStyle::PE_IndicatorItemViewItemCheck:
    case QStyle::PE_IndicatorBranch:
    case QStyle::PE_IndicatorColumnViewArrow:
    case QStyle::PE_PanelItemViewItem:
    case QStyle::PE_PanelItemViewRow:
        return OptionKind::ViewItem;
    case QStyle::PE_IndicatorHeaderArrow:
        return OptionKind::Header;
    case QStyle::PE_IndicatorMenuCheckMark:
        return OptionKind::MenuItem;
    case QStyle::PE_IndicatorProgressChunk:
        return OptionKind::ProgressBar;
    case QStyle::PE_IndicatorSpinDown:
    case QStyle::PE_IndicatorSpinMinus:
    case QStyle::PE_IndicatorSpinPlus:
    case QStyle::PE_IndicatorSpinUp:
        return OptionKind::SpinBox;
    case QStyle::PE_IndicatorTabTear:
    case QStyle::PE_IndicatorTabTearRight:
        return OptionKind::Tab;
    case QStyle::PE_FrameStatusBarItem:
    case QStyle::PE_IndicatorArrowDown:
    case QStyle::PE_IndicatorArrowLeft:
    case QStyle::PE_IndicatorArrowRight:
    case QStyle::PE_IndicatorArrowUp:
    case QStyle::PE_IndicatorDockWidgetResizeHandle:
    case QStyle::PE_IndicatorToolBarHandle:
    case QStyle::PE_IndicatorToolBarSeparator:
    case QStyle::PE_PanelScrollAreaCorner:
    case QStyle::PE_Widget:
    case QStyle::PE_IndicatorItemViewItemDrop:
    case QStyle::PE_PanelStatusBar:
    case QStyle::PE_IndicatorTabClose:
    case QStyle::PE_CustomBase:
        break;
    }
    return OptionKind::Plain;
}

OptionKind optionKind(QStyle::ControlElement element)
{
    switch (element) {
    case QStyle::CE_PushButton:
    case QStyle::CE_PushButtonBevel:
    case QStyle::CE_PushButtonLabel:
    case QStyle::CE_CheckBox:
    case QStyle::CE_CheckBoxLabel:
    case QStyle::CE_RadioButton:
    case QStyle::CE_RadioButtonLabel:
        return OptionKind::Button;
    case QStyle::CE_TabBarTab:
    case QStyle::CE_TabBarTabShape:
    case QStyle::CE_TabBarTabLabel:
        return OptionKind::Tab;
    case QStyle::CE_ProgressBar:
    case QStyle::CE_ProgressBarGroove:
    case QStyle::CE_ProgressBarContents:
    case QStyle::CE_ProgressBarLabel:
        return OptionKind::ProgressBar;
    case QStyle::CE_MenuItem:
    case QStyle::CE_MenuScroller:
    case QStyle::CE_MenuVMargin:
    case QStyle::CE_MenuHMargin:
    case QStyle::CE_MenuTearoff:
    case QStyle::CE_MenuEmptyArea:
    case QStyle::CE_MenuBarItem:
    case QStyle::CE_MenuBarEmptyArea:
        return OptionKind::MenuItem;
    case QStyle::CE_ToolButtonLabel:
        return OptionKind::ToolButton;
    case QStyle::CE_Header:
    case QStyle::CE_HeaderSection:
    case QStyle::CE_HeaderLabel:
    case QStyle::CE_HeaderEmptyArea:
        return OptionKind::Header;
    case QStyle::CE_ToolBoxTab:
    case QStyle::CE_ToolBoxTabShape:
    case QStyle::CE_ToolBoxTabLabel:
        return OptionKind::ToolBox;
    case QStyle::CE_SizeGrip:
        return OptionKind::SizeGrip;
    case QStyle::CE_RubberBand:
        return OptionKind::RubberBand;
    case QStyle::CE_DockWidgetTitle:
        return OptionKind::DockWidget;
    case QStyle::CE_ScrollBarAddLine:
    case QStyle::CE_ScrollBarSubLine:
    case QStyle::CE_ScrollBarAddPage:
    case QStyle::CE_ScrollBarSubPage:
    case QStyle::CE_ScrollBarSlider:
    case QStyle::CE_ScrollBarFirst:
    case QStyle::CE_ScrollBarLast:
        return OptionKind::Slider;
    case QStyle::CE_ComboBoxLabel:
        return OptionKind::ComboBox;
    case QStyle::CE_ToolBar:
        return OptionKind::ToolBar;
    case QStyle::CE_ItemViewItem:
        return OptionKind::ViewItem;
    case QStyle::CE_ShapedFrame:
        return OptionKind::Frame;
    case QStyle::CE_Splitter:
    case QStyle::CE_FocusFrame:
    case QStyle::CE_ColumnViewGrip:
    case QStyle::CE_CustomBase:
        break;
    }
    return OptionKind::Plain;
}

OptionKind optionKind(QStyle::ComplexControl control)
{
    switch (control) {
    case QStyle::CC_SpinBox:
        return OptionKind::SpinBox;
    case QStyle::CC_ComboBox:
        return OptionKind::ComboBox;
    case QStyle::CC_ScrollBar:
    case QStyle::CC_Slider:
    case QStyle::CC_Dial:
        return OptionKind::Slider;
    case QStyle::CC_ToolButton:
        return OptionKind::ToolButton;
    case QStyle::CC_TitleBar:
        return OptionKind::TitleBar;
    case QStyle::CC_GroupBox:
        return OptionKind::GroupBox;
    case QStyle::CC_MdiControls:
    case QStyle::CC_CustomBase:
        break;
    }
    return OptionKind::Complex;
}

OptionKind optionKind(QStyle::SubElement element)
{
    switch (element) {
    case QStyle::SE_PushButtonContents:
    case QStyle::SE_PushButtonFocusRect:
    case QStyle::SE_PushButtonBevel:
    case QStyle::SE_PushButtonLayoutItem:
    case QStyle::SE_CheckBoxIndicator:
    case QStyle::SE_CheckBoxContents:
    case QStyle::SE_CheckBoxFocusRect:
    case QStyle::SE_CheckBoxClickRect:
    case QStyle::SE_CheckBoxLayoutItem:
    case QStyle::SE_RadioButtonIndicator:
    case QStyle::SE_RadioButtonContents:
    case QStyle::SE_RadioButtonFocusRect:
    case QStyle::SE_RadioButtonClickRect:
    case QStyle::SE_RadioButtonLayoutItem:
        return OptionKind::Button;
    case QStyle::SE_ComboBoxFocusRect:
    case QStyle::SE_ComboBoxLayoutItem:
        return OptionKind::ComboBox;
    case QStyle::SE_SliderFocusRect:
    case QStyle::SE_SliderLayoutItem:
        return OptionKind::Slider;
    case QStyle::SE_ProgressBarGroove:
    case QStyle::SE_ProgressBarContents:
    case QStyle::SE_ProgressBarLabel:
    case QStyle::SE_ProgressBarLayoutItem:
        return OptionKind::ProgressBar;
    case QStyle::SE_ToolBoxTabContents:
        return OptionKind::ToolBox;
    case QStyle::SE_HeaderLabel:
    case QStyle::SE_HeaderArrow:
        return OptionKind::Header;
    case QStyle::SE_TabWidgetTabBar:
    case QStyle::SE_TabWidgetTabPane:
    case QStyle::SE_TabWidgetTabContents:
    case QStyle::SE_TabWidgetLeftCorner:
    case QStyle::SE_TabWidgetRightCorner:
    case QStyle::SE_TabWidgetLayoutItem:
        return OptionKind::TabWidgetFrame;
    case QStyle::SE_ItemViewItemCheckIndicator:
    case QStyle::SE_ItemViewItemDecoration:
    case QStyle::SE_ItemViewItemText:
    case QStyle::SE_ItemViewItemFocusRect:
    case QStyle::SE_TreeViewDisclosureItem:
        return OptionKind::ViewItem;
    case QStyle::SE_TabBarTearIndicator:
    case QStyle::SE_TabBarTearIndicatorRight:
    case QStyle::SE_TabBarTabLeftButton:
    case QStyle::SE_TabBarTabRightButton:
    case QStyle::SE_TabBarTabText:
    case QStyle::SE_TabBarScrollLeftButton:
    case QStyle::SE_TabBarScrollRightButton:
        return OptionKind::Tab;
    case QStyle::SE_LineEditContents:
    case QStyle::SE_FrameContents:
    case QStyle::SE_ShapedFrameContents:
    case QStyle::SE_FrameLayoutItem:
        return OptionKind::Frame;
    case QStyle::SE_DockWidgetCloseButton:
    case QStyle::SE_DockWidgetFloatButton:
    case QStyle::SE_DockWidgetTitleBarText:
    case QStyle::SE_DockWidgetIcon:
        return OptionKind::DockWidget;
    case QStyle::SE_ToolBarHandle:
        return OptionKind::ToolBar;
    case QStyle::SE_SpinBoxLayoutItem:
    case QStyle::SE_DateTimeEditLayoutItem:
        return OptionKind::SpinBox;
    case QStyle::SE_ToolButtonLayoutItem:
        return OptionKind::ToolButton;
    case QStyle::SE_GroupBoxLayoutItem:
        return OptionKind::GroupBox;
    case QStyle::SE_LabelLayoutItem:
    case QStyle::SubElement(QStyle::SE_DateTimeEditLayoutItem + 1): // deprecated by name
    case QStyle::SE_CustomBase:
        break;
    }
    return OptionKind::Plain;
}

OptionKind optionKind(QStyle::ContentsType type)
{
    switch (type) {
    case QStyle::CT_PushButton:
    case QStyle::CT_CheckBox:
    case QStyle::CT_RadioButton:
        return OptionKind::Button;
    case QStyle::CT_ToolButton:
        return OptionKind::ToolButton;
    case QStyle::CT_ComboBox:
        return OptionKind::ComboBox;
    case QStyle::CT_ProgressBar:
        return OptionKind::ProgressBar;
    case QStyle::CT_MenuItem:
    case QStyle::CT_MenuBarItem:
    case QStyle::CT_MenuBar:
    case QStyle::CT_Menu:
        return OptionKind::MenuItem;
    case QStyle::CT_TabBarTab:
        return OptionKind::Tab;
    case QStyle::CT_Slider:
    case QStyle::CT_ScrollBar:
        return OptionKind::Slider;
    case QStyle::CT_LineEdit:
        return OptionKind::Frame;
    case QStyle::CT_SpinBox:
        return OptionKind::SpinBox;
    case QStyle::CT_SizeGrip:
        return OptionKind::SizeGrip;
    case QStyle::CT_TabWidget:
        return OptionKind::TabWidgetFrame;
    case QStyle::CT_HeaderSection:
        return OptionKind::Header;
    case QStyle::CT_GroupBox:
        return OptionKind::GroupBox;
    case QStyle::CT_ItemViewItem:
        return OptionKind::ViewItem;
    case QStyle::CT_MdiControls:
        return OptionKind::Complex;
    case QStyle::CT_Splitter:
    case QStyle::CT_DialogButtons:
    case QStyle::CT_CustomBase:
        break;
    }
    return OptionKind::Plain;
}

} // namespace TestSupport
