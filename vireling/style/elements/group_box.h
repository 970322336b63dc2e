#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintGroupBoxFrame(const ElementContext &context);
bool paintGroupBox(const ElementContext &context);
std::optional<QRect> groupBoxPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> groupBoxSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
