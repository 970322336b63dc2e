#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintPushButtonPanel(const ElementContext &context);
bool paintButtonBevelPanel(const ElementContext &context, QStyle::PrimitiveElement element);
bool paintDefaultButtonFrame(const ElementContext &context);
bool paintPushButtonBevel(const ElementContext &context);
bool paintPushButtonLabel(const ElementContext &context);
std::optional<QRect> pushButtonContents(const ElementContext &context);
std::optional<QRect> pushButtonFocusRect(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> pushButtonSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
