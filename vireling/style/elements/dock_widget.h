#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintDockWidgetTitle(const ElementContext &context);
bool paintDockWidgetFrame(const ElementContext &context);
bool paintDockWidgetResizeHandle(const ElementContext &context);
std::optional<QRect> dockWidgetTitleText(const ElementContext &context);

} // namespace Vireling
