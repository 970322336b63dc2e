#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintMenuItem(const ElementContext &context);
bool paintMenuScroller(const ElementContext &context);
bool paintMenuMargin(const ElementContext &context, QStyle::ControlElement element);
bool paintMenuTearoff(const ElementContext &context);
bool paintMenuFrame(const ElementContext &context);
bool paintMenuPanel(const ElementContext &context);
bool paintMenuCheckMark(const ElementContext &context);
std::optional<QSize> menuItemSize(const ElementContext &context, const QSize &contents);
std::optional<QSize> menuSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
