#include "vireling/palette/fonts.h"

#include <array>

namespace Vireling {

namespace {

constexpr qreal pointsPerPixel = 72.0 / 96.0;

constexpr std::array<int, 4> qtWeights{12, 25, 50, 63};
constexpr std::array<int, 5> pixelSizes{9, 11, 12, 13, 16};

struct Slot
{
    FontWeight weight;
    FontSize size;
};

// Slots 4 and 5 are alike: applications of the appliance address both.
constexpr std::array<Slot, fontSlotCount> slotTable{{
    {FontWeight::Light, FontSize::Small},
    {FontWeight::Regular, FontSize::Small},
    {FontWeight::Light, FontSize::Large},
    {FontWeight::SemiBold, FontSize::Large},
    {FontWeight::Regular, FontSize::Large},
    {FontWeight::Regular, FontSize::Large},
    {FontWeight::ExtraLight, FontSize::Smallest},
    {FontWeight::SemiBold, FontSize::Large},
}};

std::array<QFont, fontSlotCount> buildSlots()
{
    std::array<QFont, fontSlotCount> fonts;
    for (std::size_t slot = 0; slot < fonts.size(); ++slot)
        fonts[slot] = styleFont(slotTable[slot].weight, slotTable[slot].size);
    return fonts;
}

} // namespace

const QFont &styleFont(int slot)
{
    static const std::array<QFont, fontSlotCount> fonts = buildSlots();
    const bool isSlot = slot >= 0 && slot < fontSlotCount;
    return fonts[std::size_t(isSlot ? slot : applicationFontSlot)];
}

QFont styleFont(FontWeight weight, FontSize size)
{
    // No setStyleName(): it would win over the weight where a substitute family has
    // no style of that name.
    QFont font(QString::fromLatin1(styleFontFamily));
    font.setWeight(qtWeights[std::size_t(weight)]);
    font.setPointSizeF(pixelSizes[std::size_t(size)] * pointsPerPixel);
    return font;
}

} // namespace Vireling
