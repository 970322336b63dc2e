#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintTabWidgetFrame(const ElementContext &context);
std::optional<QRect> tabWidgetPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> tabWidgetSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
