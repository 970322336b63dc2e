#include "vireling/style/elements/dock_widget.h"

namespace Vireling {

bool paintDockWidgetTitle(const ElementContext &)
{
    return false;
}

bool paintDockWidgetFrame(const ElementContext &)
{
    return false;
}

bool paintDockWidgetResizeHandle(const ElementContext &)
{
    return false;
}

std::optional<QRect> dockWidgetPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

} // namespace Vireling
