#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

/*
 * The items of lists, trees and tables. They take Qt roles of the option's palette,
 * which the polishing of item views fills from the toolkit's own roles.
 */

bool paintItem(const ElementContext &context);
bool paintItemPanel(const ElementContext &context);
bool paintRowPanel(const ElementContext &context);
bool paintItemCheckMark(const ElementContext &context);
bool paintDropIndicator(const ElementContext &context);
std::optional<QRect> itemPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> itemSize(const ElementContext &context, const QSize &contents);

/** Where the text of an item begins, in pixels from its edge: headers line up with it. */
int itemTextInset(const ElementContext &context);

/** The colour for text and glyphs on a row in the context's state. */
QColor rowForeground(const ElementContext &context);
/** The accent on rows and headers: the style's own, as views have their rows' in its place. */
QColor rowAccent(const ElementContext &context);

} // namespace Vireling
