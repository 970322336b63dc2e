#include "vireling/palette/colour_mixing.h"

#include <cmath>

namespace Vireling {

namespace {

constexpr qreal smallestAlpha = 1e-12;

} // namespace

QColor mixColours(const QColor &first, const QColor &second, qreal weight)
{
    if (weight <= 0)
        return second;
    if (weight >= 1)
        return first;
    const qreal firstShare = weight * first.alphaF();
    const qreal secondShare = (1 - weight) * second.alphaF();
    const qreal alpha = firstShare + secondShare;
    if (std::abs(alpha) <= smallestAlpha)
        return Qt::transparent;
    const auto mixed = [&](qreal firstChannel, qreal secondChannel) {
        return (firstShare * firstChannel + secondShare * secondChannel) / alpha;
    };
    return QColor::fromRgbF(mixed(first.redF(), second.redF()),
                            mixed(first.greenF(), second.greenF()),
                            mixed(first.blueF(), second.blueF()), alpha);
}

} // namespace Vireling
