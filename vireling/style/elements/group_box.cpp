#include "vireling/style/elements/group_box.h"

namespace Vireling {

bool paintGroupBoxFrame(const ElementContext &)
{
    return false;
}

bool paintGroupBox(const ElementContext &)
{
    return false;
}

std::optional<QRect> groupBoxPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> groupBoxSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
