#include "vireling/style/elements/mdi.h"

namespace Vireling {

bool paintMdiTitleBar(const ElementContext &)
{
    return false;
}

std::optional<QRect> mdiTitleBarPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

bool paintMdiControls(const ElementContext &)
{
    return false;
}

std::optional<QRect> mdiControlsPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> mdiControlsSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
