#include "vireling/style/elements/frame.h"

namespace Vireling {

bool paintFrame(const ElementContext &)
{
    return false;
}

bool paintWindowFrame(const ElementContext &)
{
    return false;
}

bool paintWidgetGround(const ElementContext &)
{
    return false;
}

bool paintShapedFrame(const ElementContext &)
{
    return false;
}

std::optional<QRect> frameContents(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

} // namespace Vireling
