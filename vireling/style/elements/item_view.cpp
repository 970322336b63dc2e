#include "vireling/style/elements/item_view.h"

namespace Vireling {

bool paintItem(const ElementContext &)
{
    return false;
}

bool paintItemPanel(const ElementContext &)
{
    return false;
}

bool paintRowPanel(const ElementContext &)
{
    return false;
}

bool paintItemCheckMark(const ElementContext &)
{
    return false;
}

bool paintDropIndicator(const ElementContext &)
{
    return false;
}

std::optional<QRect> itemPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> itemSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
