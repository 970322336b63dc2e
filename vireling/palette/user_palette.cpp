#include "vireling/palette/user_palette.h"

#include "vireling/palette/current_palette.h"
#include "vireling/palette/user_palette_inheritance.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

namespace Vireling {

namespace {

/** What a widget set itself, empty if nothing, and what it shows of it after inheriting. */
struct Origin
{
    std::optional<UserPalette> own;
    UserPalette shown;
};

constexpr char originProperty[] = "vrl_user_palette_origin";

} // namespace

} // namespace Vireling

Q_DECLARE_METATYPE(Vireling::Origin)

namespace Vireling {

namespace {

/** Remembers the origin too: roles that are only inherited follow the parent's next change. */
void store(const Origin &origin, QWidget *widget)
{
    widget->setProperty(originProperty, QVariant::fromValue(origin));
    widget->setProperty(userPaletteProperty, QVariant::fromValue(origin.shown));
    widget->update();
    inheritUserPalette(widget);
    QEvent change(userPaletteChangeEvent());
    QCoreApplication::sendEvent(widget, &change);
}

/** The part of the widget's user palette that did not come from its parent. */
std::optional<UserPalette> ownPart(const QWidget *widget)
{
    std::optional<UserPalette> shown = userPalette(widget);
    const QVariant origin = widget->property(originProperty);
    // Otherwise somebody has set the property since, and all of it is the widget's own.
    if (shown && origin.isValid() && origin.value<Origin>().shown == *shown)
        return origin.value<Origin>().own;
    return shown;
}

} // namespace

QEvent::Type userPaletteChangeEvent()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

std::optional<UserPalette> userPalette(const QWidget *widget)
{
    // Asked for with every colour that is painted: property() would first search all
    // properties of the class by name.
    if (!widget || !widget->dynamicPropertyNames().contains(userPaletteProperty))
        return std::nullopt;
    QVariant value = widget->property(userPaletteProperty);
    if (!value.isValid())
        return std::nullopt;
    const int type = qMetaTypeId<UserPalette>();
    if (value.userType() != type && !value.convert(type))
        return UserPalette();
    return value.value<UserPalette>();
}

UserPalette effectiveUserPalette(const QWidget *widget, const QStyle *style)
{
    if (auto own = userPalette(widget))
        return *std::move(own);
    const Palette *palette = paletteOf(style);
    return palette ? palette->extended() : UserPalette();
}

bool setUserPalette(QWidget *widget, const UserPalette &palette, const QWidget *parent)
{
    if (!widget)
        return false;
    const UserPalette candidate =
        parent ? palette.resolve(effectiveUserPalette(parent, parent->style())) : palette;
    if (candidate == effectiveUserPalette(widget, widget->style()))
        return false;
    store({palette, candidate}, widget);
    return true;
}

void propagateUserPalette(const QWidget *parent, QWidget *child)
{
    const std::optional<UserPalette> inherited = userPalette(parent);
    if (!inherited || !child)
        return;
    const std::optional<UserPalette> own = ownPart(child);
    const UserPalette candidate = own ? own->resolve(*inherited) : *inherited;
    if (userPalette(child) != candidate)
        store({own, candidate}, child);
}

} // namespace Vireling
