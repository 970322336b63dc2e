#pragma once

#include <QFont>

namespace Vireling {

/*
 * The style fonts: one family, "Titillium Web", in fixed weights and sizes. Where
 * the family is not installed the font system chooses another. GUI thread.
 */

constexpr char styleFontFamily[] = "Titillium Web";

enum class FontWeight
{
    ExtraLight = 0,
    Light = 1,
    Regular = 2,
    SemiBold = 3
};

/** The heights 9, 11, 12, 13 and 16 pixels at 96 dots per inch, set in points. */
enum class FontSize
{
    Smallest = 0,
    Small = 1,
    Medium = 2,
    Large = 3,
    Largest = 4
};

constexpr int fontSlotCount = 8;
constexpr int applicationFontSlot = 0;
constexpr int toolTipFontSlot = 7;

/**
 * The font of a slot, 0 to 7; any other number gives slot 0, the application's
 * default. Built once and kept for the life of the process.
 */
const QFont &styleFont(int slot);

/** A font of the family in the given weight and size. */
QFont styleFont(FontWeight weight, FontSize size);

} // namespace Vireling
