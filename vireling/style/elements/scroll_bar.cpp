#include "vireling/style/elements/scroll_bar.h"

namespace Vireling {

bool paintScrollBar(const ElementContext &)
{
    return false;
}

bool paintScrollBarSlider(const ElementContext &)
{
    return false;
}

bool paintScrollBarPage(const ElementContext &, QStyle::ControlElement)
{
    return false;
}

bool paintScrollBarButton(const ElementContext &, QStyle::ControlElement)
{
    return false;
}

bool paintScrollAreaCorner(const ElementContext &)
{
    return false;
}

std::optional<QRect> scrollBarPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> scrollBarSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
