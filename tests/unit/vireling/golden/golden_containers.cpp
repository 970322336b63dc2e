#include "golden_control.h"

#include <QFrame>

namespace {

void frame(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionFrame>();
    option.frameShape = QFrame::StyledPanel;
    option.lineWidth = 1;
    option.state |= QStyle::State_Sunken;
    cell.style.drawControl(QStyle::CE_ShapedFrame, &option, &cell.painter);
}

void horizontalLine(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionFrame>();
    option.frameShape = QFrame::HLine;
    option.lineWidth = 1;
    option.state |= QStyle::State_Sunken;
    cell.style.drawControl(QStyle::CE_ShapedFrame, &option, &cell.painter);
}

void toolBar(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionToolBar>();
    option.state |= QStyle::State_Horizontal;
    option.toolBarArea = Qt::TopToolBarArea;
    option.features = QStyleOptionToolBar::Movable;
    option.lineWidth = 1;
    cell.style.drawControl(QStyle::CE_ToolBar, &option, &cell.painter);
    option.rect = QRect(cell.rect.topLeft(), QSize(10, cell.rect.height()));
    cell.style.drawPrimitive(QStyle::PE_IndicatorToolBarHandle, &option, &cell.painter);
    option.rect.translate(40, 0);
    cell.style.drawPrimitive(QStyle::PE_IndicatorToolBarSeparator, &option, &cell.painter);
}

void toolTip(const GoldenCell &cell)
{
    const auto option = cell.option<QStyleOptionFrame>();
    cell.style.drawPrimitive(QStyle::PE_PanelTipLabel, &option, &cell.painter);
}

void toolBoxTab(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionToolBox>();
    option.text = QStringLiteral("Network");
    // "Checked" of the series is the open page's tab.
    option.state.setFlag(QStyle::State_Selected, option.state & QStyle::State_On);
    option.state.setFlag(QStyle::State_On, false);
    cell.style.drawControl(QStyle::CE_ToolBoxTab, &option, &cell.painter);
}

void dockTitle(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionDockWidget>();
    option.title = QStringLiteral("Log");
    option.closable = true;
    option.floatable = true;
    option.movable = true;
    cell.style.drawControl(QStyle::CE_DockWidgetTitle, &option, &cell.painter);
}

void splitter(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOption>();
    option.state |= QStyle::State_Horizontal;
    cell.style.drawControl(QStyle::CE_Splitter, &option, &cell.painter);
}

void sizeGrip(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionSizeGrip>();
    option.corner = Qt::BottomRightCorner;
    cell.style.drawControl(QStyle::CE_SizeGrip, &option, &cell.painter);
}

void rubberBand(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionRubberBand>();
    option.shape = QRubberBand::Rectangle;
    cell.style.drawControl(QStyle::CE_RubberBand, &option, &cell.painter);
}

void subWindowTitle(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionTitleBar>();
    option.text = QStringLiteral("Trace");
    option.titleBarFlags = Qt::SubWindow | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                           Qt::WindowMinMaxButtonsHint | Qt::WindowCloseButtonHint;
    option.titleBarState = int(cell.state & QStyle::State_Active);
    option.subControls = QStyle::SC_All;
    if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        option.activeSubControls = QStyle::SC_TitleBarCloseButton;
    cell.style.drawComplexControl(QStyle::CC_TitleBar, &option, &cell.painter);
}

void tabWidgetPane(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionTabWidgetFrame>();
    option.lineWidth = 1;
    option.shape = QTabBar::RoundedNorth;
    cell.style.drawPrimitive(QStyle::PE_FrameTabWidget, &option, &cell.painter);
}

} // namespace

std::vector<GoldenControl> goldenContainers()
{
    return {
        {"frame", {80, 40}, frame},
        {"line_horizontal", {80, 9}, horizontalLine},
        {"tool_bar", {80, 32}, toolBar},
        {"tool_tip", {80, 28}, toolTip},
        {"tool_box_tab", {120, 26}, toolBoxTab},
        {"dock_title", {140, 26}, dockTitle},
        {"splitter", {7, 60}, splitter},
        {"size_grip", {16, 16}, sizeGrip},
        {"rubber_band", {60, 40}, rubberBand},
        {"sub_window_title", {200, 30}, subWindowTitle},
        {"tab_widget_pane", {80, 40}, tabWidgetPane},
    };
}
