#include "vireling/style/elements/menu_bar.h"

namespace Vireling {

bool paintMenuBarItem(const ElementContext &)
{
    return false;
}

bool paintMenuBarEmptyArea(const ElementContext &)
{
    return false;
}

bool paintMenuBarPanel(const ElementContext &)
{
    return false;
}

std::optional<QSize> menuBarItemSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

std::optional<QSize> menuBarSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
