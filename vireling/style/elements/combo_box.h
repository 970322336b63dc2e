#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintComboBox(const ElementContext &context);
bool paintComboBoxLabel(const ElementContext &context);
std::optional<QRect> comboBoxFocusRect(const ElementContext &context);
std::optional<QRect> comboBoxPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> comboBoxSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
