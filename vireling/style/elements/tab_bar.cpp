#include "vireling/style/elements/tab_bar.h"

namespace Vireling {

bool paintTab(const ElementContext &)
{
    return false;
}

bool paintTabShape(const ElementContext &)
{
    return false;
}

bool paintTabLabel(const ElementContext &)
{
    return false;
}

bool paintTabBarBase(const ElementContext &)
{
    return false;
}

bool paintTabBarTear(const ElementContext &, QStyle::PrimitiveElement)
{
    return false;
}

bool paintTabClose(const ElementContext &)
{
    return false;
}

std::optional<QRect> tabPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> tabSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
