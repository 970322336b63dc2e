#include "vireling/style/elements/arrow.h"

namespace Vireling {

bool paintArrow(const ElementContext &, QStyle::PrimitiveElement)
{
    return false;
}

} // namespace Vireling
