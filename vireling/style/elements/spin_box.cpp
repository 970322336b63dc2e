#include "vireling/style/elements/spin_box.h"

namespace Vireling {

bool paintSpinBox(const ElementContext &)
{
    return false;
}

std::optional<QRect> spinBoxPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> spinBoxSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

bool paintSpinIndicator(const ElementContext &, QStyle::PrimitiveElement)
{
    return false;
}

} // namespace Vireling
