#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintFocusRect(const ElementContext &context);
bool paintFocusFrame(const ElementContext &context);

} // namespace Vireling
