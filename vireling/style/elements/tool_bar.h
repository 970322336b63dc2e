#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

bool paintToolBar(const ElementContext &context);
bool paintToolBarPanel(const ElementContext &context);
bool paintToolBarHandle(const ElementContext &context);
bool paintToolBarSeparator(const ElementContext &context);

} // namespace Vireling
