#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintSpinBox(const ElementContext &context);
std::optional<QRect> spinBoxPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> spinBoxSize(const ElementContext &context, const QSize &contents);
bool paintSpinIndicator(const ElementContext &context, QStyle::PrimitiveElement element);

} // namespace Vireling
