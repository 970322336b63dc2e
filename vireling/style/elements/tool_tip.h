#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintToolTipPanel(const ElementContext &context);

} // namespace Vireling
