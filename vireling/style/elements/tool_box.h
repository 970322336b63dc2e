#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintToolBoxTabShape(const ElementContext &context);
bool paintToolBoxTabLabel(const ElementContext &context);
std::optional<QRect> toolBoxTabContents(const ElementContext &context);

} // namespace Vireling
