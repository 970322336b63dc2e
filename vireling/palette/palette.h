#pragma once

#include "vireling/palette/enums.h"

#include <QBrush>
#include <QMetaType>
#include <QPalette>
#include <QSharedDataPointer>

#include <bitset>

namespace Vireling {

/** How many brushes one colour group of the toolkit's own roles holds. */
constexpr int colourRoleCount = int(ColourRole::NColourRoles);

/** Active, Disabled and Inactive, in the order of QPalette::ColorGroup. */
constexpr int colourGroupCount = QPalette::NColorGroups;

/** Which brushes of the toolkit's own roles were set: bit group * colourRoleCount + role. */
using ColourRoleMask = std::bitset<std::size_t(colourGroupCount) * colourRoleCount>;

/** A role of either family, so that one setter serves both. */
struct PaletteRoleKey
{
    enum Kind : qint32
    {
        QtRole = 0,
        ToolkitRole = 1
    };

    PaletteRoleKey(QPalette::ColorRole qtRole)
        : role(qtRole)
        , kind(QtRole)
    {}
    PaletteRoleKey(ColourRole toolkitRole)
        : role(qint32(toolkitRole))
        , kind(ToolkitRole)
    {}

    qint32 role;
    qint32 kind;
};
static_assert(sizeof(PaletteRoleKey) == 8, "two 32-bit numbers");

/** The memory behind the toolkit's own brushes; see UserPalette. */
struct ColourRoleBrushes;

/**
 * Brushes for the toolkit's own roles alone: what a widget may carry to override
 * the style's. Implicitly shared: a copy allocates nothing, a write detaches.
 * A role never set gives an empty brush.
 */
class UserPalette
{
public:
    UserPalette();
    UserPalette(const UserPalette &other);
    UserPalette(UserPalette &&other) noexcept;
    UserPalette &operator=(const UserPalette &other);
    UserPalette &operator=(UserPalette &&other) noexcept;
    ~UserPalette();

    /** `group` is Active, Disabled or Inactive. The reference lasts until the next write. */
    const QBrush &brush(QPalette::ColorGroup group, ColourRole role) const;

    /** Marks the role as set. QPalette::All stands for the three groups. */
    void setBrush(QPalette::ColorGroup group, ColourRole role, const QBrush &brush);
    void setBrush(ColourRole role, const QBrush &brush);

    const ColourRoleMask &setMask() const { return mask; }

    /**
     * This palette with what it leaves unset taken from `other`; the rule of
     * QPalette::resolve(). One with nothing set shows the other's brushes and still
     * counts as having nothing set.
     */
    UserPalette resolve(const UserPalette &other) const;

    /** Same mask and equal brushes. */
    bool operator==(const UserPalette &other) const;
    bool operator!=(const UserPalette &other) const { return !(*this == other); }

private:
    bool hasEqualBrushes(const UserPalette &other) const;

    QSharedDataPointer<ColourRoleBrushes> brushes;
    ColourRoleMask mask;
};

/**
 * A QPalette and the toolkit's own roles beside it. A value; cheap to copy. May be
 * read from any thread, like a QPalette.
 */
class Palette : public QPalette
{
public:
    Palette() = default;
    /** The given Qt roles and no brush of the toolkit's own. */
    explicit Palette(const QPalette &qtRoles)
        : QPalette(qtRoles)
    {}

    using QPalette::brush;
    using QPalette::color;

    /** QPalette::Current stands for currentColorGroup(). */
    const QBrush &brush(ColorGroup group, ColourRole role) const;
    QColor colour(ColorGroup group, ColourRole role) const { return brush(group, role).color(); }

    /** Sets a role of either family; QPalette::All stands for the three groups. */
    void setBrush(ColorGroup group, PaletteRoleKey key, const QBrush &brush);
    void setBrush(ColorGroup group, PaletteRoleKey key, const QColor &colour);
    /** The same for all three groups. */
    void setBrush(PaletteRoleKey key, const QBrush &brush);
    void setBrush(PaletteRoleKey key, const QColor &colour);

    /** The toolkit's own roles alone. */
    const UserPalette &extended() const { return ownRoles; }

    /** Both families resolved, each by the rule of QPalette::resolve(). */
    Palette resolve(const Palette &other) const;

    bool operator==(const Palette &other) const;
    bool operator!=(const Palette &other) const { return !(*this == other); }

private:
    UserPalette ownRoles;
};

} // namespace Vireling

Q_DECLARE_METATYPE(Vireling::UserPalette)
