#include "vireling/style/elements/tab_widget.h"

namespace Vireling {

bool paintTabWidgetFrame(const ElementContext &)
{
    return false;
}

std::optional<QRect> tabWidgetPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> tabWidgetSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
