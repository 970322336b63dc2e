#pragma once

namespace Vireling {

/**
 * The kinds of lines the style draws. The numbers are the order of the appliance's
 * drawing rules; Style::lineWidth() gives each its width.
 */
enum class LineWidth
{
    None = 0,          ///< no line
    Frame = 1,         ///< the frame of a QFrame or line edit: as the option says
    PanelFrame = 2,    ///< as Frame
    ButtonFrame = 3,   ///< none for flat, command-link and auto-raise buttons
    FieldFrame = 4,    ///< as Frame
    Glyph = 5,         ///< strokes of check marks and arrows, 1.5 scaled
    GroupFrame = 6,    ///< as Frame
    MenuFrame = 7,     ///< as Frame
    ScrollSpacing = 8, ///< no line
    Separator = 9,     ///< the default frame width
    TabFrame = 10,     ///< the default frame width
    Emphasis = 11,     ///< focus rings and accent bars, 2 scaled
};

} // namespace Vireling
