#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintBranch(const ElementContext &context);
std::optional<QRect> disclosureItem(const ElementContext &context);

} // namespace Vireling
