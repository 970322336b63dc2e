#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintMenuBarItem(const ElementContext &context);
bool paintMenuBarEmptyArea(const ElementContext &context);
bool paintMenuBarPanel(const ElementContext &context);
std::optional<QSize> menuBarItemSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
