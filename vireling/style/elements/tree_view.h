#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintBranch(const ElementContext &context);
std::optional<QRect> disclosureItem(const ElementContext &context);

/** Whether branches are drawn before the item: its row then begins further out. */
bool hasBranches(const QWidget *view, const QStyleOptionViewItem &item);

} // namespace Vireling
