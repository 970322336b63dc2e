#include "vireling/style/elements/check_box.h"

namespace Vireling {

bool paintCheckBoxIndicator(const ElementContext &)
{
    return false;
}

bool paintRadioButtonIndicator(const ElementContext &)
{
    return false;
}

bool paintCheckBox(const ElementContext &)
{
    return false;
}

bool paintRadioButton(const ElementContext &)
{
    return false;
}

bool paintCheckBoxLabel(const ElementContext &, QStyle::ControlElement)
{
    return false;
}

std::optional<QRect> checkBoxFocusRect(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> checkBoxSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

std::optional<QSize> radioButtonSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
