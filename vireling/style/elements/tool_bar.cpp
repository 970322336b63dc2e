#include "vireling/style/elements/tool_bar.h"

namespace Vireling {

bool paintToolBar(const ElementContext &)
{
    return false;
}

bool paintToolBarPanel(const ElementContext &)
{
    return false;
}

bool paintToolBarHandle(const ElementContext &)
{
    return false;
}

bool paintToolBarSeparator(const ElementContext &)
{
    return false;
}

std::optional<QRect> toolBarHandle(const ElementContext &)
{
    return std::nullopt;
}

} // namespace Vireling
