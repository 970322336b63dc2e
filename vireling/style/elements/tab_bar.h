#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintTab(const ElementContext &context);
bool paintTabShape(const ElementContext &context);
bool paintTabLabel(const ElementContext &context);
bool paintTabBarBase(const ElementContext &context);
bool paintTabBarTear(const ElementContext &context, QStyle::PrimitiveElement element);
bool paintTabClose(const ElementContext &context);
std::optional<QRect> tabPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> tabSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
