#include "vireling/style/elements/tool_tip.h"

namespace Vireling {

bool paintToolTipPanel(const ElementContext &)
{
    return false;
}

} // namespace Vireling
