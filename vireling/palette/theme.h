#pragma once

#include "vireling/palette/enums.h"
#include "vireling/palette/palette.h"

#include <QStringList>

namespace Vireling {

/** The theme's name for people, translated; empty for a value that is no theme. */
QString themeName(Theme theme);

/**
 * `System` becomes `Dark`, the others stay. The operating system is never asked:
 * the appliance's own setting is Dark.
 */
Theme resolveTheme(Theme theme);

/** Where the "vireling:" search prefix looks, first the theme's folder, then the common one. */
QStringList themeSearchPaths(Theme theme);

/** The colours of the theme. Built once a process; GUI thread. */
const Palette &themePalette(Theme theme);

} // namespace Vireling
