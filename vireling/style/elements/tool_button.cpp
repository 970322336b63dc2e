#include "vireling/style/elements/tool_button.h"

namespace Vireling {

bool paintToolButtonPanel(const ElementContext &)
{
    return false;
}

bool paintToolButtonFrame(const ElementContext &)
{
    return false;
}

bool paintToolButtonDropDown(const ElementContext &)
{
    return false;
}

bool paintToolButtonLabel(const ElementContext &)
{
    return false;
}

bool paintToolButton(const ElementContext &)
{
    return false;
}

std::optional<QRect> toolButtonPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> toolButtonSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
