#pragma once

#include "vireling/palette/current_palette.h"

#include <QCommonStyle>

/** A style that is nothing but the palette icons are faded with. */
class PaletteStyle : public QCommonStyle, public Vireling::PaletteProvider
{
    Q_OBJECT
    Q_INTERFACES(Vireling::PaletteProvider)

public:
    explicit PaletteStyle(const Vireling::Palette &palette)
        : roles(palette)
    {}

    const Vireling::Palette &palette() const override { return roles; }

private:
    const Vireling::Palette roles;
};
