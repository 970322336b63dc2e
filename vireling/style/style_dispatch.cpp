#include "vireling/style/style.h"

#include "vireling/style/elements/arrow.h"
#include "vireling/style/elements/check_box.h"
#include "vireling/style/elements/column_view.h"
#include "vireling/style/elements/combo_box.h"
#include "vireling/style/elements/dial.h"
#include "vireling/style/elements/dock_widget.h"
#include "vireling/style/elements/focus.h"
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
#include "vireling/style/elements/rubber_band.h"
#include "vireling/style/elements/scroll_bar.h"
#include "vireling/style/elements/size_grip.h"
#include "vireling/style/elements/slider.h"
#include "vireling/style/elements/spin_box.h"
#include "vireling/style/elements/splitter.h"
#include "vireling/style/elements/status_bar.h"
#include "vireling/style/elements/tab_bar.h"
#include "vireling/style/elements/tab_widget.h"
#include "vireling/style/elements/tool_bar.h"
#include "vireling/style/elements/tool_box.h"
#include "vireling/style/elements/tool_button.h"
#include "vireling/style/elements/tool_tip.h"
#include "vireling/style/elements/tree_view.h"

#include <QPainter>

/*
 * The table of contents of the drawing: which function of which family draws
 * what. "Not handled" goes to QCommonStyle, which composes most elements from others
 * listed here. style_geometry_dispatch.cpp is the same for places and sizes.
 */
namespace Vireling {

namespace {

bool paintPrimitive(QStyle::PrimitiveElement element, const ElementContext &context)
{
    switch (element) {
    case QStyle::PE_Frame:
        return paintFrame(context);
    case QStyle::PE_FrameDefaultButton:
        return paintDefaultButtonFrame(context);
    case QStyle::PE_FrameDockWidget:
        return paintDockWidgetFrame(context);
    case QStyle::PE_FrameFocusRect:
        return paintFocusRect(context);
    case QStyle::PE_FrameGroupBox:
        return paintGroupBoxFrame(context);
    case QStyle::PE_FrameLineEdit:
        return paintLineEditFrame(context);
    case QStyle::PE_FrameMenu:
        return paintMenuFrame(context);
    case QStyle::PE_FrameStatusBarItem:
        return paintStatusBarItem(context);
    case QStyle::PE_FrameTabWidget:
        return paintTabWidgetFrame(context);
    case QStyle::PE_FrameWindow:
        return paintWindowFrame(context);
    case QStyle::PE_FrameButtonBevel:
        return paintButtonBevelPanel(context, element);
    case QStyle::PE_FrameButtonTool:
        return paintToolButtonFrame(context);
    case QStyle::PE_FrameTabBarBase:
        return paintTabBarBase(context);
    case QStyle::PE_PanelButtonCommand:
        return paintPushButtonPanel(context);
    case QStyle::PE_PanelButtonBevel:
        return paintButtonBevelPanel(context, element);
    case QStyle::PE_PanelButtonTool:
        return paintToolButtonPanel(context);
    case QStyle::PE_PanelMenuBar:
        return paintMenuBarPanel(context);
    case QStyle::PE_PanelToolBar:
        return paintToolBarPanel(context);
    case QStyle::PE_PanelLineEdit:
        return paintLineEditPanel(context);
    case QStyle::PE_IndicatorArrowDown:
    case QStyle::PE_IndicatorArrowLeft:
    case QStyle::PE_IndicatorArrowRight:
    case QStyle::PE_IndicatorArrowUp:
        return paintArrow(context, element);
    case QStyle::PE_IndicatorBranch:
        return paintBranch(context);
    case QStyle::PE_IndicatorButtonDropDown:
        return paintToolButtonDropDown(context);
    case QStyle::PE_IndicatorItemViewItemCheck:
        return paintItemCheckMark(context);
    case QStyle::PE_IndicatorCheckBox:
        return paintCheckBoxIndicator(context);
    case QStyle::PE_IndicatorDockWidgetResizeHandle:
        return paintDockWidgetResizeHandle(context);
    case QStyle::PE_IndicatorHeaderArrow:
        return paintHeaderArrow(context);
    case QStyle::PE_IndicatorMenuCheckMark:
        return paintMenuCheckMark(context);
    case QStyle::PE_IndicatorProgressChunk:
        return paintProgressChunk(context);
    case QStyle::PE_IndicatorRadioButton:
        return paintRadioButtonIndicator(context);
    case QStyle::PE_IndicatorSpinDown:
    case QStyle::PE_IndicatorSpinMinus:
    case QStyle::PE_IndicatorSpinPlus:
    case QStyle::PE_IndicatorSpinUp:
        return paintSpinIndicator(context, element);
    case QStyle::PE_IndicatorToolBarHandle:
        return paintToolBarHandle(context);
    case QStyle::PE_IndicatorToolBarSeparator:
        return paintToolBarSeparator(context);
    case QStyle::PE_PanelTipLabel:
        return paintToolTipPanel(context);
    case QStyle::PE_IndicatorTabTear:
        return paintTabBarTear(context, element);
    case QStyle::PE_PanelScrollAreaCorner:
        return paintScrollAreaCorner(context);
    case QStyle::PE_IndicatorColumnViewArrow:
        return paintColumnArrow(context);
    case QStyle::PE_IndicatorItemViewItemDrop:
        return paintDropIndicator(context);
    case QStyle::PE_PanelItemViewItem:
        return paintItemPanel(context);
    case QStyle::PE_PanelItemViewRow:
        return paintRowPanel(context);
    case QStyle::PE_PanelStatusBar:
        return paintStatusBar(context);
    case QStyle::PE_IndicatorTabClose:
        return paintTabClose(context);
    case QStyle::PE_PanelMenu:
        return paintMenuPanel(context);
    case QStyle::PE_IndicatorTabTearRight:
        return paintTabBarTear(context, element);
    case QStyle::PE_Widget: // plain widgets have no ground but the window's
    case QStyle::PE_CustomBase:
        break;
    }
    return false;
}

bool paintControl(QStyle::ControlElement element, const ElementContext &context)
{
    switch (element) {
    case QStyle::CE_PushButtonBevel:
        return paintPushButtonBevel(context);
    case QStyle::CE_PushButtonLabel:
        return paintPushButtonLabel(context);
    case QStyle::CE_TabBarTab:
        return paintTab(context);
    case QStyle::CE_TabBarTabShape:
        return paintTabShape(context);
    case QStyle::CE_TabBarTabLabel:
        return paintTabLabel(context);
    case QStyle::CE_ProgressBar:
        return paintProgressBar(context);
    case QStyle::CE_ProgressBarGroove:
        return paintProgressBarGroove(context);
    case QStyle::CE_ProgressBarContents:
        return paintProgressBarContents(context);
    case QStyle::CE_ProgressBarLabel:
        return paintProgressBarLabel(context);
    case QStyle::CE_MenuItem:
        return paintMenuItem(context);
    case QStyle::CE_MenuScroller:
        return paintMenuScroller(context);
    case QStyle::CE_MenuVMargin:
    case QStyle::CE_MenuHMargin:
        return paintMenuMargin(context);
    case QStyle::CE_MenuTearoff:
        return paintMenuTearoff(context);
    case QStyle::CE_MenuEmptyArea:
        return paintMenuMargin(context);
    case QStyle::CE_MenuBarItem:
        return paintMenuBarItem(context);
    case QStyle::CE_MenuBarEmptyArea:
        return paintMenuBarEmptyArea(context);
    case QStyle::CE_ToolButtonLabel:
        return paintToolButtonLabel(context);
    case QStyle::CE_HeaderSection:
        return paintHeaderSection(context);
    case QStyle::CE_HeaderLabel:
        return paintHeaderLabel(context);
    case QStyle::CE_SizeGrip:
        return paintSizeGrip(context);
    case QStyle::CE_Splitter:
        return paintSplitter(context);
    case QStyle::CE_RubberBand:
        return paintRubberBand(context);
    case QStyle::CE_DockWidgetTitle:
        return paintDockWidgetTitle(context);
    case QStyle::CE_ScrollBarAddLine:
    case QStyle::CE_ScrollBarSubLine:
        return paintScrollBarButton(context, element);
    case QStyle::CE_ScrollBarAddPage:
    case QStyle::CE_ScrollBarSubPage:
        return paintScrollBarPage(context, element);
    case QStyle::CE_ScrollBarSlider:
        return paintScrollBarSlider(context);
    case QStyle::CE_ScrollBarFirst:
    case QStyle::CE_ScrollBarLast:
        return paintScrollBarButton(context, element);
    case QStyle::CE_FocusFrame:
        return paintFocusFrame(context);
    case QStyle::CE_ComboBoxLabel:
        return paintComboBoxLabel(context);
    case QStyle::CE_ToolBar:
        return paintToolBar(context);
    case QStyle::CE_ToolBoxTabShape:
        return paintToolBoxTabShape(context);
    case QStyle::CE_ToolBoxTabLabel:
        return paintToolBoxTabLabel(context);
    case QStyle::CE_HeaderEmptyArea:
        return paintHeaderEmptyArea(context);
    case QStyle::CE_ColumnViewGrip:
        return paintColumnGrip(context);
    case QStyle::CE_ItemViewItem:
        return paintItem(context);
    case QStyle::CE_ShapedFrame:
        return paintShapedFrame(context);
    case QStyle::CE_Header:
    case QStyle::CE_ToolBoxTab:
    case QStyle::CE_PushButton:
    case QStyle::CE_CheckBox:
    case QStyle::CE_CheckBoxLabel:
    case QStyle::CE_RadioButton:
    case QStyle::CE_RadioButtonLabel:
    case QStyle::CE_CustomBase:
        break;
    }
    return false;
}

bool paintComplexControl(QStyle::ComplexControl control, const ElementContext &context)
{
    switch (control) {
    case QStyle::CC_SpinBox:
        return paintSpinBox(context);
    case QStyle::CC_ComboBox:
        return paintComboBox(context);
    case QStyle::CC_ScrollBar:
        return paintScrollBar(context);
    case QStyle::CC_Slider:
        return paintSlider(context);
    case QStyle::CC_ToolButton:
        return paintToolButton(context);
    case QStyle::CC_TitleBar:
        return paintMdiTitleBar(context);
    case QStyle::CC_Dial:
        return paintDial(context);
    case QStyle::CC_GroupBox:
        return paintGroupBox(context);
    case QStyle::CC_MdiControls:
        return paintMdiControls(context);
    case QStyle::CC_CustomBase:
        break;
    }
    return false;
}

/** Elements may leave the painter as they like; QStyle promises callers to restore it. */
class SavedPainter
{
public:
    explicit SavedPainter(QPainter &usedPainter)
        : painter(usedPainter)
    {
        painter.save();
    }
    ~SavedPainter() { painter.restore(); }
    Q_DISABLE_COPY(SavedPainter)

private:
    QPainter &painter;
};

} // namespace

void Style::drawPrimitive(PrimitiveElement element, const QStyleOption *option, QPainter *painter,
                          const QWidget *widget) const
{
    const SavedPainter saved(*painter);
    if (!paintPrimitive(element, {*this, *option, widget, painter}))
        QCommonStyle::drawPrimitive(element, option, painter, widget);
}

void Style::drawControl(ControlElement element, const QStyleOption *option, QPainter *painter,
                        const QWidget *widget) const
{
    const SavedPainter saved(*painter);
    if (!paintControl(element, {*this, *option, widget, painter}))
        QCommonStyle::drawControl(element, option, painter, widget);
}

void Style::drawComplexControl(ComplexControl control, const QStyleOptionComplex *option,
                               QPainter *painter, const QWidget *widget) const
{
    const SavedPainter saved(*painter);
    if (!paintComplexControl(control, {*this, *option, widget, painter}))
        QCommonStyle::drawComplexControl(control, option, painter, widget);
}

} // namespace Vireling
