#include "vireling/palette/user_palette.h"

#include "vireling/palette/current_palette.h"
#include "vireling/palette/user_palette_inheritance.h"

#include <QCoreApplication>
#include <QVariant>
#include <QWidget>

namespace Vireling {

namespace {

void store(const UserPalette &palette, QWidget *widget)
{
    widget->setProperty(userPaletteProperty, QVariant::fromValue(palette));
    widget->update();
    inheritUserPalette(widget);
    QEvent change(userPaletteChangeEvent());
    QCoreApplication::sendEvent(widget, &change);
}

} // namespace

QEvent::Type userPaletteChangeEvent()
{
    static const auto type = QEvent::Type(QEvent::registerEventType());
    return type;
}

std::optional<UserPalette> userPalette(const QWidget *widget)
{
    QVariant value = widget ? widget->property(userPaletteProperty) : QVariant();
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
    store(candidate, widget);
    return true;
}

void propagateUserPalette(const QWidget *parent, QWidget *child)
{
    const std::optional<UserPalette> inherited = userPalette(parent);
    if (!inherited || !child)
        return;
    if (const std::optional<UserPalette> own = userPalette(child))
        setUserPalette(child, *own, parent);
    else
        store(*inherited, child);
}

} // namespace Vireling
