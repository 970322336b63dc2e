#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintFrame(const ElementContext &context);
bool paintShapedFrame(const ElementContext &context);
std::optional<QRect> frameContents(const ElementContext &context);

} // namespace Vireling
