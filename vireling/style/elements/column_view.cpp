#include "vireling/style/elements/column_view.h"

namespace Vireling {

bool paintColumnArrow(const ElementContext &)
{
    return false;
}

bool paintColumnGrip(const ElementContext &)
{
    return false;
}

} // namespace Vireling
