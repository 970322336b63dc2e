#include "vireling/style/elements/menu.h"

namespace Vireling {

bool paintMenuItem(const ElementContext &)
{
    return false;
}

bool paintMenuScroller(const ElementContext &)
{
    return false;
}

bool paintMenuMargin(const ElementContext &, QStyle::ControlElement)
{
    return false;
}

bool paintMenuTearoff(const ElementContext &)
{
    return false;
}

bool paintMenuFrame(const ElementContext &)
{
    return false;
}

bool paintMenuPanel(const ElementContext &)
{
    return false;
}

bool paintMenuCheckMark(const ElementContext &)
{
    return false;
}

std::optional<QSize> menuItemSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

std::optional<QSize> menuSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
