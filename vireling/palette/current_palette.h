#pragma once

#include "vireling/palette/palette.h"

#include <QtPlugin>

class QStyle;

namespace Vireling {

/**
 * What Vireling::Style implements so that the layers below it, icons and user
 * palettes, find its palette by a meta-object cast without knowing the style.
 */
class PaletteProvider
{
public:
    /** The live palette; lasts as long as the provider. */
    virtual const Palette &palette() const = 0;

protected:
    ~PaletteProvider() = default;
};

/** The palette of `style` when it is a Vireling::Style, else null. `style` may be null. */
const Palette *paletteOf(const QStyle *style);

/**
 * The palette of the application's style; when another style is installed, a
 * default QPalette without brushes of the toolkit's own. GUI thread; never fails.
 */
const Palette &currentPalette();

/** A role of currentPalette(), by default in its current group; an empty brush if never set. */
QBrush currentBrush(ColourRole role, QPalette::ColorGroup group = QPalette::Current);
QColor currentColour(ColourRole role, QPalette::ColorGroup group = QPalette::Current);

} // namespace Vireling

Q_DECLARE_INTERFACE(Vireling::PaletteProvider, "Vireling.PaletteProvider")
