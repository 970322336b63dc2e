#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintWindowFrame(const ElementContext &context);
bool paintMdiTitleBar(const ElementContext &context);
std::optional<QRect> mdiTitleBarPart(const ElementContext &context, QStyle::SubControl part);
bool paintMdiControls(const ElementContext &context);
std::optional<QRect> mdiControlsPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> mdiControlsSize(const ElementContext &context);

} // namespace Vireling
