#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintLineEditPanel(const ElementContext &context);
bool paintLineEditFrame(const ElementContext &context);
std::optional<QRect> lineEditContents(const ElementContext &context);
std::optional<QSize> lineEditSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
