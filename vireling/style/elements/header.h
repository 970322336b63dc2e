#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

/*
 * The headers of tables and trees, and the button in a table's corner. They are
 * composed by QCommonStyle: section, label, arrow.
 */

bool paintHeaderSection(const ElementContext &context);
bool paintHeaderLabel(const ElementContext &context);
bool paintHeaderEmptyArea(const ElementContext &context);
bool paintHeaderArrow(const ElementContext &context);
std::optional<QRect> headerPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> headerSectionSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
