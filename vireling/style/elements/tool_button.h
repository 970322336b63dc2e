#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintToolButtonPanel(const ElementContext &context);
bool paintToolButtonFrame(const ElementContext &context);
bool paintToolButtonDropDown(const ElementContext &context);
bool paintToolButtonLabel(const ElementContext &context);
bool paintToolButton(const ElementContext &context);
std::optional<QRect> toolButtonPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> toolButtonSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
