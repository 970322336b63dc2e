#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintColumnArrow(const ElementContext &context);
bool paintColumnGrip(const ElementContext &context);

} // namespace Vireling
