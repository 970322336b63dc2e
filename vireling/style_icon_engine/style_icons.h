#pragma once

#include <QIcon>

namespace Vireling {

/** The icons of the style, in the order of its table; the window controls as in WindowControl. */
enum class StyleIcon
{
    ArrowDown,
    ArrowLeft,
    ArrowRight,
    ArrowUp,
    EditClear,
    ExpandDown,
    ExpandLeft,
    ExpandRight,
    ExpandUp,
    WindowClose,
    WindowMaximise,
    WindowMinimise,
    WindowRestore,
    NStyleIcons ///< how many there are; not an icon
};

/**
 * An icon of the style's table, from "vireling:/vireling_style/icons/"; built on
 * first request and kept for the life of the process; after a change of theme it shows
 * the new theme's file. A value that is no icon gives a null one. GUI thread, and not
 * before the application exists and the search paths are set.
 */
QIcon styleIcon(StyleIcon icon);

/** An icon over a StyleIconEngine for a path ending in ".svg", in any case; else QIcon(path). */
QIcon makeIcon(const QString &path);

} // namespace Vireling
