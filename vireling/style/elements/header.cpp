#include "vireling/style/elements/header.h"

namespace Vireling {

bool paintHeader(const ElementContext &)
{
    return false;
}

bool paintHeaderSection(const ElementContext &)
{
    return false;
}

bool paintHeaderLabel(const ElementContext &)
{
    return false;
}

bool paintHeaderEmptyArea(const ElementContext &)
{
    return false;
}

bool paintHeaderArrow(const ElementContext &)
{
    return false;
}

std::optional<QRect> headerPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> headerSectionSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
