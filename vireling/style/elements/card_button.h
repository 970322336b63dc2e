#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

/** A CardButton as a card: surface, icon, title and description in every state of a button. */
bool paintCard(const ElementContext &context);

} // namespace Vireling
