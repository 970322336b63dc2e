#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintArrow(const ElementContext &context, QStyle::PrimitiveElement element);

} // namespace Vireling
