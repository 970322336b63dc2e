#include "vireling/style/style.h"

#include "vireling/palette/enums.h"
#include "vireling/style/style_state.h"

#include <QStyleHintReturn>
#include <QStyleOption>

namespace Vireling {

namespace {

/** The colour of a table's grid, as the packed value that QTableView asks for. */
int tableGridColour(const Palette &palette, const QStyleOption *option)
{
    const auto group = option ? ControlState(*option).colourGroup() : QPalette::Active;
    return int(palette.colour(group, ColourRole::TableGrid).rgba());
}

} // namespace

int Style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                     QStyleHintReturn *returnData) const
{
    switch (hint) {
    // Surfaces follow the pointer, also where a button is held down.
    case SH_Menu_MouseTracking:
    case SH_MenuBar_MouseTracking:
    case SH_ComboBox_ListMouseTracking:
    case SH_TitleBar_NoBorder:
    case SH_Slider_StopMouseOverSlider:
        return 1;
    // A popup opens below its box like a drop-down list; it never covers the box.
    case SH_ComboBox_Popup:
        return 0;
    // Rows show as selected over their whole width, and stay so in inactive windows.
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    case SH_ItemView_ActivateItemOnSingleClick:
        return 0;
    case SH_Table_GridLineColor:
        return tableGridColour(palette(), option);
    // A press in a groove goes there: pages are hard to hit with a finger.
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton | Qt::MiddleButton;
    case SH_EtchDisabledText:
    case SH_DitherDisabledText:
    case SH_DrawMenuBarSeparator:
        return 0;
    case SH_ToolTipLabel_Opacity:
        return 255;
    case SH_ScrollView_FrameOnlyAroundContents:
        return 0;
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    case SH_MessageBox_TextInteractionFlags:
        return Qt::LinksAccessibleByMouse | Qt::LinksAccessibleByKeyboard;
    case SH_MessageBox_CenterButtons:
        return 0;
    case SH_TabBar_Alignment:
        return Qt::AlignLeft;
    case SH_TabBar_ElideMode:
        return Qt::ElideRight;
    case SH_ToolBox_SelectedPageTitleBold:
        return 0;
    case SH_Splitter_OpaqueResize:
        return 1;
    case SH_DockWidget_ButtonsHaveFrame:
        return 0;
    case SH_Menu_SubMenuPopupDelay:
        return 150;
    case SH_Menu_Scrollable:
        return 1;
    case SH_UnderlineShortcut:
        return 1;
    case SH_FocusFrame_AboveWidget:
        return 1;
    default:
        break;
    }
    return QCommonStyle::styleHint(hint, option, widget, returnData);
}

} // namespace Vireling
