#pragma once

#include "vireling/palette/palette.h"

#include <QEvent>

#include <optional>

class QStyle;
class QWidget;

namespace Vireling {

/*
 * User palettes: brushes of the toolkit's own roles that one widget carries, as the
 * dynamic property "vrl_user_palette", and that its children inherit. GUI thread.
 */

/** The property that holds a widget's UserPalette. */
constexpr char userPaletteProperty[] = "vrl_user_palette";

/** The type of the event a widget gets, synchronously, when its user palette changed. */
QEvent::Type userPaletteChangeEvent();

/**
 * The widget's own user palette; empty optional without the property. A property of
 * a foreign type that cannot be converted counts as a palette with nothing set.
 */
std::optional<UserPalette> userPalette(const QWidget *widget);

/**
 * The widget's own user palette, else the toolkit roles of `style`, else an empty
 * one. Both may be null.
 */
UserPalette effectiveUserPalette(const QWidget *widget, const QStyle *style);

/**
 * Stores `palette` on `widget`, resolved against the effective user palette of
 * `parent` when that is not null, repaints the widget and sends it
 * userPaletteChangeEvent(). False, and nothing done, when the effective palette of
 * the widget already is that one.
 */
bool setUserPalette(QWidget *widget, const UserPalette &palette, const QWidget *parent = nullptr);

/**
 * Hands the user palette of `parent` down to `child`, which keeps what it set
 * itself; what it only inherited follows the parent. Nothing happens when the parent
 * carries none. For when a child is polished or moved to another parent.
 */
void propagateUserPalette(const QWidget *parent, QWidget *child);

} // namespace Vireling
