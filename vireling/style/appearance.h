#pragma once

#include "vireling/palette/enums.h"

namespace Vireling {

/**
 * Gives the application the toolkit's look: where themed icons are found, palette,
 * style, application font, and palette and font of tooltips. Call it once a
 * QApplication exists and before widgets do; calling it again changes the theme.
 */
void installAppearance(Theme theme);

} // namespace Vireling
