#include "vireling/palette/theme_palettes.h"

#include "vireling/palette/colour_mixing.h"

#include <vector>

namespace Vireling {

namespace {

struct RoleColour
{
    PaletteRoleKey key;
    QColor colour;
};

/** What QPalette's nine-brush constructor takes, in its order. */
struct BaseColours
{
    QColor windowText, button, light, dark, mid, text, brightText, base, window;
};

struct ThemeColours
{
    BaseColours base;
    std::vector<RoleColour> allGroups;
    std::vector<RoleColour> disabled;
    /** Roles that fade toward the window colour, with their full colour. */
    std::vector<RoleColour> fadedWhenDisabled;
};

constexpr qreal disabledWeight = 0.3;
constexpr qreal inactiveWeight = 0.8;

QColor rgb(QRgb value)
{
    return QColor(value);
}

const std::vector<RoleColour> &coloursOfBothThemes()
{
    static const std::vector<RoleColour> colours{
        {QPalette::Shadow, rgb(0x000000)},
        {QPalette::Link, rgb(0x5ca3da)},
        {QPalette::HighlightedText, rgb(0xffffff)},
        {QPalette::Highlight, rgb(0x227cc2)},
        {ColourRole::ScrollBarBase, Qt::transparent},
        {ColourRole::ArrowIconBase, rgb(0x0072fd)},
        {ColourRole::MenuIconBase, rgb(0x77808a)},
        {ColourRole::AlternateHighlight, rgb(0x5ca3da)},
        {ColourRole::Success, rgb(0x10b981)},
        {ColourRole::Warning, rgb(0xf59e0b)},
        {ColourRole::Error, rgb(0xef4444)},
    };
    return colours;
}

ThemeColours darkColours()
{
    return {
        {rgb(0xffffff), rgb(0x212831), rgb(0xc8cdd3), rgb(0x191a1a), rgb(0x181c21), rgb(0xffffff),
         rgb(0xffffff), rgb(0x181c21), rgb(0x181c21)},
        {
            {QPalette::AlternateBase, rgb(0x212831)},
            {QPalette::ToolTipBase, rgb(0x181c21)},
            {QPalette::ToolTipText, rgb(0xffffff)},
            {QPalette::PlaceholderText, rgb(0xc8cdd3)},
            {QPalette::ButtonText, rgb(0xffffff)},
            {QPalette::Midlight, rgb(0x42484e)},
            {QPalette::LinkVisited, rgb(0xc8cdd3)},
            {ColourRole::ActiveBase, rgb(0xffffff)},
            {ColourRole::ActiveText, rgb(0x181c21)},
            {ColourRole::HoverBase, rgb(0x42484e)},
            {ColourRole::Frame, rgb(0x42484e)},
            {ColourRole::PanelFrame, rgb(0xc8cdd3)},
            {ColourRole::CellBase, rgb(0x77808a)},
            {ColourRole::CellAltBase, rgb(0xa0abbb)},
            {ColourRole::CellText, rgb(0xffffff)},
            {ColourRole::TableGrid, rgb(0x181c21)},
            {ColourRole::ViewItemBase, rgb(0x212831)},
            {ColourRole::ViewItemAltBase, rgb(0x323a46)},
            {ColourRole::ViewItemText, rgb(0xffffff)},
            {ColourRole::ViewItemActiveBase, rgb(0xffffff)},
            {ColourRole::ViewItemActiveText, rgb(0x181c21)},
            {ColourRole::HeaderBase, rgb(0x212831)},
            {ColourRole::HeaderText, rgb(0xffffff)},
            {ColourRole::SliderBase, rgb(0xc8cdd3)},
            {ColourRole::ScrollBarControlBase, rgb(0x212831)},
            {ColourRole::ScrollBarControlFrame, rgb(0x77808a)},
            {ColourRole::TabBase, rgb(0x212831)},
            {ColourRole::IndicatorBase, rgb(0xffffff)},
        },
        {
            // ScrollBarControlBase stays as it is here, unlike in the light theme:
            // the handle is already as dark as the screens want it.
            {QPalette::Text, rgb(0x77808a)},
            {QPalette::WindowText, rgb(0x77808a)},
            {QPalette::PlaceholderText, rgb(0x77808a)},
            {QPalette::ButtonText, rgb(0x77808a)},
            {QPalette::Light, rgb(0x42484e)},
            {ColourRole::AlternateHighlight, rgb(0xc8cdd3)},
            {ColourRole::ActiveText, rgb(0x77808a)},
            {ColourRole::PanelFrame, rgb(0x42484e)},
            {ColourRole::CellText, rgb(0x292c33)},
            {ColourRole::ViewItemText, rgb(0x77808a)},
            {ColourRole::ViewItemActiveText, rgb(0x77808a)},
            {ColourRole::HeaderText, rgb(0x77808a)},
            {ColourRole::SliderBase, rgb(0x42484e)},
            {ColourRole::ScrollBarControlFrame, rgb(0x42484e)},
        },
        {
            {QPalette::Highlight, rgb(0x227cc2)},
            {ColourRole::IndicatorBase, rgb(0xffffff)},
            {ColourRole::ArrowIconBase, rgb(0x0072fd)},
            {ColourRole::MenuIconBase, rgb(0x77808a)},
        },
    };
}

ThemeColours lightColours()
{
    return {
        {rgb(0x3c4147), rgb(0xe5e7e9), rgb(0xfbfbfb), rgb(0x3c4147), rgb(0xeeeff0), rgb(0x3c4147),
         rgb(0xffffff), rgb(0xeeeff0), rgb(0xeeeff0)},
        {
            {QPalette::AlternateBase, rgb(0xfbfbfb)},
            {QPalette::ToolTipBase, rgb(0xf6f7f8)},
            {QPalette::ToolTipText, rgb(0x3c4147)},
            {QPalette::PlaceholderText, rgb(0x77808a)},
            {QPalette::ButtonText, rgb(0x3c4147)},
            {QPalette::Midlight, rgb(0xf6f7f8)},
            {QPalette::LinkVisited, rgb(0x77808a)},
            {ColourRole::ActiveBase, rgb(0x141618)},
            {ColourRole::ActiveText, rgb(0xffffff)},
            {ColourRole::HoverBase, rgb(0xa9afb6)},
            {ColourRole::Frame, rgb(0xa9afb6)},
            {ColourRole::PanelFrame, rgb(0x3c4147)},
            {ColourRole::CellBase, rgb(0xeeeff0)},
            {ColourRole::CellAltBase, rgb(0xe7eaee)},
            {ColourRole::CellText, rgb(0x3c4147)},
            {ColourRole::TableGrid, rgb(0x3c4147)},
            {ColourRole::ViewItemBase, rgb(0xe5e7e9)},
            {ColourRole::ViewItemAltBase, rgb(0xd0d5dd)},
            {ColourRole::ViewItemText, rgb(0x3c4147)},
            {ColourRole::ViewItemActiveBase, rgb(0x9199a2)},
            {ColourRole::ViewItemActiveText, rgb(0xfbfbfb)},
            {ColourRole::HeaderBase, rgb(0xe5e7e9)},
            {ColourRole::HeaderText, rgb(0x3c4147)},
            {ColourRole::SliderBase, rgb(0xa9afb6)},
            {ColourRole::ScrollBarControlBase, rgb(0xa9afb6)},
            {ColourRole::ScrollBarControlFrame, rgb(0x9199a2)},
            {ColourRole::TabBase, rgb(0xfbfbfb)},
            {ColourRole::IndicatorBase, rgb(0xf6f7f8)},
        },
        {
            {QPalette::Text, rgb(0xa9afb6)},
            {QPalette::WindowText, rgb(0xa9afb6)},
            {QPalette::PlaceholderText, rgb(0xa9afb6)},
            {QPalette::ButtonText, rgb(0xa9afb6)},
            {QPalette::Light, rgb(0xa9afb6)},
            {ColourRole::AlternateHighlight, rgb(0xfbfbfb)},
            {ColourRole::ActiveText, rgb(0xa9afb6)},
            {ColourRole::PanelFrame, rgb(0xa9afb6)},
            {ColourRole::CellText, rgb(0x9199a2)},
            {ColourRole::ViewItemText, rgb(0x9199a2)},
            {ColourRole::ViewItemActiveText, rgb(0xf6f7f8)},
            {ColourRole::HeaderText, rgb(0x9199a2)},
            {ColourRole::SliderBase, rgb(0xc8cdd3)},
            {ColourRole::ScrollBarControlBase, rgb(0xc8cdd3)},
            {ColourRole::ScrollBarControlFrame, rgb(0xc8cdd3)},
        },
        {
            {QPalette::Highlight, rgb(0x227cc2)},
            {ColourRole::IndicatorBase, rgb(0xf6f7f8)},
            {ColourRole::ArrowIconBase, rgb(0x0072fd)},
            {ColourRole::MenuIconBase, rgb(0x77808a)},
        },
    };
}

Palette withBaseColours(const BaseColours &colours)
{
    return Palette(QPalette(colours.windowText, colours.button, colours.light, colours.dark,
                            colours.mid, colours.text, colours.brightText, colours.base,
                            colours.window));
}

Palette build(const ThemeColours &colours)
{
    Palette palette = withBaseColours(colours.base);
    for (const RoleColour &entry : coloursOfBothThemes())
        palette.setBrush(entry.key, entry.colour);
    for (const RoleColour &entry : colours.allGroups)
        palette.setBrush(entry.key, entry.colour);
    for (const RoleColour &entry : colours.disabled)
        palette.setBrush(QPalette::Disabled, entry.key, entry.colour);
    const QColor window = colours.base.window;
    for (const RoleColour &entry : colours.fadedWhenDisabled)
        palette.setBrush(QPalette::Disabled, entry.key,
                         mixColours(entry.colour, window, disabledWeight));
    for (const ColourRole role : {ColourRole::ArrowIconBase, ColourRole::MenuIconBase})
        palette.setBrush(
            QPalette::Inactive, role,
            mixColours(palette.colour(QPalette::Active, role), window, inactiveWeight));
    return palette;
}

} // namespace

Palette darkPalette()
{
    return build(darkColours());
}

Palette lightPalette()
{
    return build(lightColours());
}

} // namespace Vireling
