#include "vireling/style/elements/dial.h"

namespace Vireling {

bool paintDial(const ElementContext &)
{
    return false;
}

std::optional<QRect> dialPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

} // namespace Vireling
