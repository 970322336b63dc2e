#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintSizeGrip(const ElementContext &context);
std::optional<QSize> sizeGripSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
