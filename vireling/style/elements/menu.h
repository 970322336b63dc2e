#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

bool paintMenuItem(const ElementContext &context);
bool paintMenuScroller(const ElementContext &context);
bool paintMenuMargin(const ElementContext &context);
bool paintMenuTearoff(const ElementContext &context);
bool paintMenuFrame(const ElementContext &context);
bool paintMenuPanel(const ElementContext &context);
bool paintMenuCheckMark(const ElementContext &context);
std::optional<QSize> menuItemSize(const ElementContext &context, const QSize &contents);

/** Where the parts of a menu row are, mirrored where the text runs right to left. */
struct MenuItemParts
{
    QRect check; ///< empty where the menu has no checkable row
    QRect icon;  ///< empty where the menu has no icon
    QRect text;
    QRect shortcut; ///< empty for a row without
    QRect arrow;    ///< empty for a row without a submenu
};
MenuItemParts menuItemParts(const ElementContext &context, const QStyleOptionMenuItem &item);

} // namespace Vireling
