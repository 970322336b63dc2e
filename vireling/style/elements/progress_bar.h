#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintProgressBar(const ElementContext &context);
bool paintProgressBarGroove(const ElementContext &context);
bool paintProgressBarContents(const ElementContext &context);
bool paintProgressBarLabel(const ElementContext &context);
bool paintProgressChunk(const ElementContext &context);
std::optional<QRect> progressBarPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> progressBarSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
