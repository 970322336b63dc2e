#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintItem(const ElementContext &context);
bool paintItemPanel(const ElementContext &context);
bool paintRowPanel(const ElementContext &context);
bool paintItemCheckMark(const ElementContext &context);
bool paintDropIndicator(const ElementContext &context);
std::optional<QRect> itemPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> itemSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
