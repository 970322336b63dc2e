#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintSlider(const ElementContext &context);
std::optional<QRect> sliderPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QRect> sliderFocusRect(const ElementContext &context);
std::optional<QSize> sliderSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
