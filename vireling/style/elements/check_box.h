#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintCheckBoxIndicator(const ElementContext &context);
bool paintRadioButtonIndicator(const ElementContext &context);
bool paintCheckBox(const ElementContext &context);
bool paintRadioButton(const ElementContext &context);
bool paintCheckBoxLabel(const ElementContext &context, QStyle::ControlElement element);
std::optional<QRect> checkBoxFocusRect(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> checkBoxSize(const ElementContext &context, const QSize &contents);
std::optional<QSize> radioButtonSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
