#include "vireling/style/elements/tool_box.h"

namespace Vireling {

bool paintToolBoxTab(const ElementContext &)
{
    return false;
}

bool paintToolBoxTabShape(const ElementContext &)
{
    return false;
}

bool paintToolBoxTabLabel(const ElementContext &)
{
    return false;
}

std::optional<QRect> toolBoxTabContents(const ElementContext &)
{
    return std::nullopt;
}

} // namespace Vireling
