#include "vireling/style/elements/slider.h"

namespace Vireling {

bool paintSlider(const ElementContext &)
{
    return false;
}

std::optional<QRect> sliderPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QRect> sliderFocusRect(const ElementContext &)
{
    return std::nullopt;
}

std::optional<QSize> sliderSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
