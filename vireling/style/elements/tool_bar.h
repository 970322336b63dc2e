#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintToolBar(const ElementContext &context);
bool paintToolBarPanel(const ElementContext &context);
bool paintToolBarHandle(const ElementContext &context);
bool paintToolBarSeparator(const ElementContext &context);
std::optional<QRect> toolBarHandle(const ElementContext &context);

} // namespace Vireling
