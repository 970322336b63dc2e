#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintScrollBar(const ElementContext &context);
bool paintScrollBarSlider(const ElementContext &context);
bool paintScrollBarPage(const ElementContext &context, QStyle::ControlElement element);
bool paintScrollBarButton(const ElementContext &context, QStyle::ControlElement element);
bool paintScrollAreaCorner(const ElementContext &context);
std::optional<QRect> scrollBarPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QSize> scrollBarSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
