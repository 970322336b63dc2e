#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintStatusBar(const ElementContext &context);
bool paintStatusBarItem(const ElementContext &context);

} // namespace Vireling
