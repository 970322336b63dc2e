#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintDial(const ElementContext &context);
std::optional<QRect> dialPart(const ElementContext &context, QStyle::SubControl part);

} // namespace Vireling
