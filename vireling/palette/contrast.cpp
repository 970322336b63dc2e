#include "vireling/palette/contrast.h"

#include "vireling/palette/colour_mixing.h"

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

qreal linearChannel(qreal channel)
{
    return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
}

qreal relativeLuminance(const QColor &colour)
{
    return 0.2126 * linearChannel(colour.redF()) + 0.7152 * linearChannel(colour.greenF()) +
           0.0722 * linearChannel(colour.blueF());
}

constexpr int darkeningSteps = 64;

} // namespace

qreal contrastRatio(const QColor &one, const QColor &other)
{
    const qreal first = relativeLuminance(one);
    const qreal second = relativeLuminance(other);
    return (std::max(first, second) + 0.05) / (std::min(first, second) + 0.05);
}

qreal darkeningForText(const QColor &ground, const QColor &text)
{
    int step = 0;
    while (step < darkeningSteps &&
           contrastRatio(darkened(ground, qreal(step) / darkeningSteps), text) < textContrast)
        ++step;
    return qreal(step) / darkeningSteps;
}

QColor darkened(const QColor &colour, qreal black)
{
    return mixColours(Qt::black, colour, black);
}

} // namespace Vireling
