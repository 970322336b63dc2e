#include "vireling/style/elements/push_button.h"

namespace Vireling {

bool paintPushButtonPanel(const ElementContext &)
{
    return false;
}

bool paintButtonBevelPanel(const ElementContext &, QStyle::PrimitiveElement)
{
    return false;
}

bool paintDefaultButtonFrame(const ElementContext &)
{
    return false;
}

bool paintPushButtonBevel(const ElementContext &)
{
    return false;
}

bool paintPushButtonLabel(const ElementContext &)
{
    return false;
}

std::optional<QRect> pushButtonContents(const ElementContext &)
{
    return std::nullopt;
}

std::optional<QRect> pushButtonFocusRect(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> pushButtonSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
