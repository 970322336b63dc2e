#include "vireling/palette/palette.h"

#include <array>
#include <utility>

namespace Vireling {

struct ColourRoleBrushes : QSharedData
{
    std::array<QBrush, std::size_t(colourGroupCount) * colourRoleCount> brush;
};

namespace {

std::size_t indexOf(QPalette::ColorGroup group, ColourRole role)
{
    return std::size_t(group) * colourRoleCount + std::size_t(role);
}

bool isColourRole(ColourRole role)
{
    return role >= ColourRole::ActiveBase && role < ColourRole::NColourRoles;
}

const QBrush &emptyBrush()
{
    static const QBrush brush;
    return brush;
}

} // namespace

UserPalette::UserPalette() = default;
UserPalette::UserPalette(const UserPalette &other) = default;
UserPalette::UserPalette(UserPalette &&other) noexcept
    : brushes(std::move(other.brushes))
    , mask(std::exchange(other.mask, ColourRoleMask()))
{}
UserPalette &UserPalette::operator=(const UserPalette &other) = default;
UserPalette &UserPalette::operator=(UserPalette &&other) noexcept
{
    brushes.swap(other.brushes);
    std::swap(mask, other.mask);
    return *this;
}
UserPalette::~UserPalette() = default;

const QBrush &UserPalette::brush(QPalette::ColorGroup group, ColourRole role) const
{
    if (!brushes || group >= QPalette::NColorGroups || !isColourRole(role))
        return emptyBrush();
    return brushes->brush[indexOf(group, role)];
}

void UserPalette::setBrush(QPalette::ColorGroup group, ColourRole role, const QBrush &brush)
{
    if (group == QPalette::All)
        return setBrush(role, brush);
    if (group >= QPalette::NColorGroups || !isColourRole(role))
        return;
    if (!brushes)
        brushes = new ColourRoleBrushes;
    brushes->brush[indexOf(group, role)] = brush;
    mask.set(indexOf(group, role));
}

void UserPalette::setBrush(ColourRole role, const QBrush &brush)
{
    for (int group = 0; group < colourGroupCount; ++group)
        setBrush(QPalette::ColorGroup(group), role, brush);
}

UserPalette UserPalette::resolve(const UserPalette &other) const
{
    if (mask.none()) {
        UserPalette result = other;
        result.mask.reset();
        return result;
    }
    if (*this == other)
        return other;
    UserPalette result = *this;
    result.mask |= other.mask;
    for (std::size_t index = 0; index < mask.size(); ++index)
        if (!mask[index])
            result.brushes->brush[index] = other.brushes ? other.brushes->brush[index] : QBrush();
    return result;
}

bool UserPalette::operator==(const UserPalette &other) const
{
    return mask == other.mask && hasEqualBrushes(other);
}

bool UserPalette::hasEqualBrushes(const UserPalette &other) const
{
    if (brushes.constData() == other.brushes.constData())
        return true;
    for (std::size_t index = 0; index < mask.size(); ++index) {
        const QBrush &mine = brushes ? brushes->brush[index] : emptyBrush();
        const QBrush &theirs = other.brushes ? other.brushes->brush[index] : emptyBrush();
        if (mine != theirs)
            return false;
    }
    return true;
}

const QBrush &Palette::brush(ColorGroup group, ColourRole role) const
{
    return ownRoles.brush(group == Current ? currentColorGroup() : group, role);
}

void Palette::setBrush(ColorGroup group, PaletteRoleKey key, const QBrush &brush)
{
    const ColorGroup settled = group == Current ? currentColorGroup() : group;
    if (key.kind == PaletteRoleKey::QtRole)
        QPalette::setBrush(settled, ColorRole(key.role), brush);
    else
        ownRoles.setBrush(settled, ColourRole(key.role), brush);
}

void Palette::setBrush(ColorGroup group, PaletteRoleKey key, const QColor &colour)
{
    setBrush(group, key, QBrush(colour));
}

void Palette::setBrush(PaletteRoleKey key, const QBrush &brush)
{
    setBrush(All, key, brush);
}

void Palette::setBrush(PaletteRoleKey key, const QColor &colour)
{
    setBrush(All, key, QBrush(colour));
}

Palette Palette::resolve(const Palette &other) const
{
    Palette result(QPalette::resolve(other));
    result.ownRoles = ownRoles.resolve(other.ownRoles);
    return result;
}

bool Palette::operator==(const Palette &other) const
{
    return QPalette::operator==(other) && ownRoles == other.ownRoles;
}

} // namespace Vireling
