#include "vireling/palette/current_palette.h"

#include <QApplication>
#include <QStyle>

namespace Vireling {

const Palette *paletteOf(const QStyle *style)
{
    // The cast changes nothing; QObject offers it for non-const objects only.
    const auto *provider = qobject_cast<PaletteProvider *>(const_cast<QStyle *>(style));
    return provider ? &provider->palette() : nullptr;
}

const Palette &currentPalette()
{
    static const Palette withoutToolkit;
    const Palette *palette = paletteOf(QApplication::style());
    return palette ? *palette : withoutToolkit;
}

QBrush currentBrush(ColourRole role, QPalette::ColorGroup group)
{
    return currentPalette().brush(group, role);
}

QColor currentColour(ColourRole role, QPalette::ColorGroup group)
{
    return currentPalette().colour(group, role);
}

} // namespace Vireling
