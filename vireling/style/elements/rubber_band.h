#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintRubberBand(const ElementContext &context);

} // namespace Vireling
