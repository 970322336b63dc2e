#include "contrast_pairs.h"

#include "vireling/style/paint_utils.h"
#include "vireling/style/style_polish.h"

using Vireling::ColourRole;
using Vireling::ElementContext;

namespace {

constexpr double text = 4.5;
constexpr double shape = 3.0;

constexpr QStyle::State usual = QStyle::State_Enabled | QStyle::State_Active;
constexpr QStyle::State hovered = usual | QStyle::State_MouseOver;
constexpr QStyle::State pressed = hovered | QStyle::State_Sunken;
constexpr QStyle::State checked = usual | QStyle::State_On;
constexpr QStyle::State inactive = QStyle::State_Enabled;

constexpr char fixedSelection[] = "text fields draw selections themselves, in these two roles";
constexpr char fixedLink[] = "Link is one blue for both themes, chosen for the dark one";
constexpr char fixedVisited[] = "LinkVisited is PlaceholderText's grey";
constexpr char fixedPlaceholder[] = "PlaceholderText is meant to step back";
constexpr char fixedGroove[] =
    "the role is the groove's; value and handle are told by Highlight and frame";
constexpr char fixedScrollBar[] = "the roles are the handle's; it widens under the pointer";

template <QPalette::ColorRole role>
QColor qt(const ElementContext &context)
{
    return context.colour(role);
}

template <ColourRole role>
QColor own(const ElementContext &context)
{
    return context.colour(role);
}

QColor selectedRow(const ElementContext &context)
{
    return Vireling::selectedRowBase(context.style.palette(), context.state.colourGroup());
}

QColor cell(const ElementContext &context)
{
    return Vireling::cellGrounds(context.style.palette(), context.state.colourGroup()).base;
}

QColor alternateCell(const ElementContext &context)
{
    return Vireling::cellGrounds(context.style.palette(), context.state.colourGroup()).alternate;
}

QColor selectedBar(const ElementContext &context)
{
    return Vireling::selectedRowAccent(context.style.palette(), context.state.colourGroup());
}

std::vector<ContrastPair> windowPairs()
{
    return {
        {"text on a window", usual, qt<QPalette::WindowText>, qt<QPalette::Window>, text, nullptr,
         nullptr},
        {"title of an inactive window", inactive, qt<QPalette::PlaceholderText>,
         qt<QPalette::Window>, text, nullptr, fixedPlaceholder},
        {"link on a window", usual, qt<QPalette::Link>, qt<QPalette::Window>, text, nullptr,
         fixedLink},
        {"visited link on a window", usual, qt<QPalette::LinkVisited>, qt<QPalette::Window>, text,
         nullptr, fixedVisited},
        {"text of a tooltip", usual, qt<QPalette::ToolTipText>, qt<QPalette::ToolTipBase>, text,
         nullptr, nullptr},
        {"text of a tab", usual, qt<QPalette::WindowText>, own<ColourRole::TabBase>, text, nullptr,
         nullptr},
        {"focus ring on a window", usual, Vireling::focusColour, qt<QPalette::Window>, shape,
         nullptr, nullptr},
        {"cross of a hovered close button", hovered, qt<QPalette::HighlightedText>,
         Vireling::errorSurface, shape, nullptr, nullptr},
        {"cross of a pressed close button", pressed, qt<QPalette::HighlightedText>,
         Vireling::errorSurface, shape, nullptr, nullptr},
    };
}

std::vector<ContrastPair> buttonPairs()
{
    return {
        {"text of a button", usual, Vireling::buttonForeground, Vireling::buttonSurface, text,
         nullptr, nullptr},
        {"text of a hovered button", hovered, Vireling::buttonForeground, Vireling::buttonSurface,
         text, nullptr, nullptr},
        {"text of a pressed button", pressed, Vireling::buttonForeground, Vireling::buttonSurface,
         text, nullptr, nullptr},
        {"text of a checked button", checked, Vireling::buttonForeground, Vireling::buttonSurface,
         text, nullptr, nullptr},
        {"text of the default button", usual, qt<QPalette::HighlightedText>, Vireling::accentBase,
         text, nullptr, nullptr},
        {"description of a card", usual, Vireling::buttonSecondaryForeground,
         Vireling::buttonSurface, text, nullptr, nullptr},
        {"description of a hovered card", hovered, Vireling::buttonSecondaryForeground,
         Vireling::buttonSurface, text, nullptr, nullptr},
        {"text of a hovered default button", hovered, qt<QPalette::HighlightedText>,
         Vireling::accentSurface, text, nullptr, nullptr},
        {"text of a pressed default button", pressed, qt<QPalette::HighlightedText>,
         Vireling::accentSurface, text, nullptr, nullptr},
        {"bar of a checked button", checked, qt<QPalette::Highlight>, Vireling::buttonSurface,
         shape, nullptr, nullptr},
        {"frame of an indicator", usual, own<ColourRole::PanelFrame>, qt<QPalette::Window>, shape,
         nullptr, nullptr},
        {"ground of a checked indicator", checked, qt<QPalette::Highlight>, qt<QPalette::Window>,
         shape, nullptr, nullptr},
        {"mark of a checked indicator", checked, own<ColourRole::IndicatorBase>,
         qt<QPalette::Highlight>, shape, nullptr, nullptr},
        {"chevron of a field", usual, own<ColourRole::ArrowIconBase>, qt<QPalette::Base>, shape,
         nullptr, nullptr},
        {"chevron of a button", usual, own<ColourRole::ArrowIconBase>, qt<QPalette::Button>, shape,
         nullptr, nullptr},
    };
}

std::vector<ContrastPair> fieldPairs()
{
    return {
        {"text in a field", usual, qt<QPalette::Text>, qt<QPalette::Base>, text, nullptr, nullptr},
        {"placeholder in a field", usual, qt<QPalette::PlaceholderText>, qt<QPalette::Base>, text,
         nullptr, fixedPlaceholder},
        {"selected text in a field", usual, qt<QPalette::HighlightedText>, qt<QPalette::Highlight>,
         text, fixedSelection, fixedSelection},
        {"focused frame of a field", usual, Vireling::focusColour, qt<QPalette::Base>, shape,
         nullptr, nullptr},
        {"text on a progress chunk", usual, qt<QPalette::HighlightedText>, Vireling::accentBase,
         text, nullptr, nullptr},
        {"progress chunk on its groove", usual, Vireling::accentBase, qt<QPalette::Base>, shape,
         nullptr, nullptr},
        {"filled part of a slider", usual, qt<QPalette::Highlight>, qt<QPalette::Window>, shape,
         nullptr, nullptr},
        {"frame of a slider's handle", usual, own<ColourRole::PanelFrame>, qt<QPalette::Window>,
         shape, nullptr, nullptr},
        {"groove of a slider", usual, own<ColourRole::SliderBase>, qt<QPalette::Window>, shape,
         nullptr, fixedGroove},
        {"frame of a scroll bar's handle", usual, own<ColourRole::ScrollBarControlFrame>,
         qt<QPalette::Window>, shape, nullptr, fixedScrollBar},
    };
}

std::vector<ContrastPair> itemPairs()
{
    return {
        {"text of an item", usual, own<ColourRole::ViewItemText>, own<ColourRole::ViewItemBase>,
         text, nullptr, nullptr},
        {"text of an alternate item", usual, own<ColourRole::ViewItemText>,
         own<ColourRole::ViewItemAltBase>, text, nullptr, nullptr},
        {"text of a hovered item", hovered, own<ColourRole::ViewItemText>,
         own<ColourRole::HoverBase>, text, nullptr, nullptr},
        {"text of a selected item", usual, own<ColourRole::ViewItemActiveText>, selectedRow, text,
         nullptr, nullptr},
        {"bar of a selected item", usual, selectedBar, selectedRow, shape, nullptr, nullptr},
        {"selected row on its neighbours", usual, selectedRow, own<ColourRole::ViewItemBase>, shape,
         nullptr, nullptr},
        {"text of a cell", usual, own<ColourRole::CellText>, cell, text, nullptr, nullptr},
        {"text of an alternate cell", usual, own<ColourRole::CellText>, alternateCell, text,
         nullptr, nullptr},
        {"text of a header", usual, own<ColourRole::HeaderText>, own<ColourRole::HeaderBase>, text,
         nullptr, nullptr},
        {"sort mark of a header", usual, own<ColourRole::ArrowIconBase>,
         own<ColourRole::HeaderBase>, shape, nullptr, nullptr},
        {"chevron of a branch", usual, own<ColourRole::MenuIconBase>, own<ColourRole::ViewItemBase>,
         shape, nullptr, nullptr},
        {"text of a menu's row", usual, qt<QPalette::WindowText>, qt<QPalette::Window>, text,
         nullptr, nullptr},
        {"text of a menu's selected row", hovered, qt<QPalette::WindowText>,
         own<ColourRole::HoverBase>, text, nullptr, nullptr},
        {"shortcut in a menu", usual, Vireling::secondaryText, qt<QPalette::Window>, text, nullptr,
         nullptr},
        {"chevron of a submenu", usual, own<ColourRole::MenuIconBase>, qt<QPalette::Window>, shape,
         nullptr, nullptr},
    };
}

} // namespace

std::vector<ContrastPair> contrastPairs()
{
    std::vector<ContrastPair> all;
    for (const auto &some : {windowPairs(), buttonPairs(), fieldPairs(), itemPairs()})
        all.insert(all.end(), some.begin(), some.end());
    return all;
}
