#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

/** A button of a window's title bar: its icon alone until pointed at; closing warns in red. */
bool paintWindowControlButton(const ElementContext &context);

} // namespace Vireling
