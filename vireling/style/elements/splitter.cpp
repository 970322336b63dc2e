#include "vireling/style/elements/splitter.h"

namespace Vireling {

bool paintSplitter(const ElementContext &)
{
    return false;
}

bool paintSizeGrip(const ElementContext &)
{
    return false;
}

bool paintRubberBand(const ElementContext &)
{
    return false;
}

std::optional<QSize> sizeGripSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
