#include "vireling/style/style.h"

#include "vireling/palette/enums.h"
#include "vireling/style/style_state.h"

#include <QPen>
#include <QRubberBand>
#include <QStyleOption>
#include <QTextFormat>
#include <QWidget>
#include <QWizard>

namespace Vireling {

namespace {

/** The colour of a table's grid, as the packed value that QTableView asks for. */
int tableGridColour(const Palette &palette, const QStyleOption *option)
{
    const auto group = option ? ControlState(*option).colourGroup() : QPalette::Active;
    return int(palette.colour(group, ColourRole::TableGrid).rgba());
}

/**
 * A rubber band that is a window of its own has no see-through ground everywhere:
 * it is cut down to its frame. One within a widget shows its tinted fill.
 */
int rubberBandMask(const QStyleOption *option, const QWidget *widget, QStyleHintReturn *returnData)
{
    const auto *band = qstyleoption_cast<const QStyleOptionRubberBand *>(option);
    auto *mask = qstyleoption_cast<QStyleHintReturnMask *>(returnData);
    if (!band || !mask || !widget || !widget->isWindow() || band->shape != QRubberBand::Rectangle)
        return 0;
    constexpr int frame = 2;
    mask->region = QRegion(band->rect) - band->rect.adjusted(frame, frame, -frame, -frame);
    return 1;
}

/** A line around the link with the focus in a text, in the colour of every other focus. */
int focusedLinkFormat(const Palette &palette, QStyleHintReturn *returnData)
{
    auto *format = qstyleoption_cast<QStyleHintReturnVariant *>(returnData);
    if (!format)
        return 0;
    QTextCharFormat outlined;
    outlined.setProperty(QTextFormat::OutlinePen,
                         QPen(palette.color(QPalette::Active, QPalette::Highlight), 1));
    format->variant = outlined;
    return 1;
}

} // namespace

int Style::styleHint(StyleHint hint, const QStyleOption *option, const QWidget *widget,
                     QStyleHintReturn *returnData) const
{
    // Hints with the same answer stand apart where their reasons do.
    // NOLINTBEGIN(bugprone-branch-clone)
    switch (hint) {
    // Surfaces follow the pointer in every kind of menu and list.
    case SH_Menu_MouseTracking:
    case SH_MenuBar_MouseTracking:
    case SH_ComboBox_ListMouseTracking:
        return 1;
    // A press in a groove goes there: pages are hard to hit with a finger.
    case SH_Slider_AbsoluteSetButtons:
        return Qt::LeftButton | Qt::MiddleButton;
    case SH_ScrollBar_MiddleClickAbsolutePosition:
        return 1;
    // A held page press stops where the pointer is instead of running past it.
    case SH_Slider_StopMouseOverSlider: // scroll bars ask for it as well
        return 1;
    // Rows show as selected over their whole width, up to the branches of a tree.
    case SH_ItemView_ShowDecorationSelected:
        return 1;
    // Left and right open and close branches: the appliance has keys but no mouse wheel.
    case SH_ItemView_ArrowKeysNavigateIntoChildren:
        return 1;
    case SH_Table_GridLineColor:
        return tableGridColour(palette(), option);
    // Title bars are surfaces with a line of the window's frame around them, not boxes in it.
    case SH_TitleBar_NoBorder:
    case SH_TitleBar_AutoRaise:
        return 1;
    // Long enough to cross neighbouring entries on the way into a submenu, no longer.
    case SH_Menu_SubMenuPopupDelay:
        return 150;
    // A menu that outgrows the small screen scrolls instead of filling it with columns.
    case SH_Menu_Scrollable:
        return 1;
    // Menus with titled sections show the titles.
    case SH_Menu_SupportsSections:
        return 1;
    // Alt moves the focus to the menu bar: the way there without a pointer.
    case SH_MenuBar_AltKeyNavigation:
        return 1;
    // Operators copy error texts into their reports.
    case SH_MessageBox_TextInteractionFlags:
        return Qt::TextSelectableByMouse | Qt::LinksAccessibleByMouse;
    // The buttons of a message stand where those of every other dialog do.
    case SH_MessageBox_CenterButtons:
        return 0;
    // Their texts say it; the platform's little pictures belong to no theme of ours.
    case SH_DialogButtonBox_ButtonsHaveIcons:
        return 0;
    // The selected page is marked by its bar and chevron; bold would make its title jump.
    case SH_ToolBox_SelectedPageTitleBold:
        return 0;
    // The title of a page stands in a header of its own, apart from the page.
    case SH_WizardStyle:
        return QWizard::ModernStyle;
    // Around the widget, where the widget cannot paint over the ring.
    case SH_FocusFrame_AboveWidget:
        return 1;
    case SH_TextControl_FocusIndicatorTextCharFormat:
        return focusedLinkFormat(palette(), returnData);
    case SH_RubberBand_Mask:
        return rubberBandMask(option, widget, returnData);
    default:
        break;
    }
    // NOLINTEND(bugprone-branch-clone)
    return QCommonStyle::styleHint(hint, option, widget, returnData);
}

} // namespace Vireling
