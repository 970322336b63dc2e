#pragma once

#include "vireling/palette/palette.h"

namespace Vireling {

/** The two colour tables of the appliance; see themePalette() for the one in use. */
Palette darkPalette();
Palette lightPalette();

} // namespace Vireling
