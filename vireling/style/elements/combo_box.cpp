#include "vireling/style/elements/combo_box.h"

namespace Vireling {

bool paintComboBox(const ElementContext &)
{
    return false;
}

bool paintComboBoxLabel(const ElementContext &)
{
    return false;
}

std::optional<QRect> comboBoxFocusRect(const ElementContext &)
{
    return std::nullopt;
}

std::optional<QRect> comboBoxPart(const ElementContext &, QStyle::SubControl)
{
    return std::nullopt;
}

std::optional<QSize> comboBoxSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
