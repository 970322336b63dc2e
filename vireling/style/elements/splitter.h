#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintSplitter(const ElementContext &context);

} // namespace Vireling
