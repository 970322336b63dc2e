#include "vireling/style/elements/focus.h"

namespace Vireling {

bool paintFocusRect(const ElementContext &)
{
    return false;
}

bool paintFocusFrame(const ElementContext &)
{
    return false;
}

} // namespace Vireling
