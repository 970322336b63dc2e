#pragma once

#include <QStyleOption>

namespace Vireling {

/**
 * A menu row that stands in a tree, as the folders in the popup of a combo box. The style
 * moves its icon and its name in by one PM_TreeViewIndentation a level; the highlight
 * keeps the whole row. Any other style draws it as the plain menu item that it also is.
 */
class TreeMenuItemOption : public QStyleOptionMenuItem
{
public:
    /** What qstyleoption_cast() tells it from a plain menu item by. */
    enum StyleOptionVersion
    {
        Version = QStyleOptionMenuItem::Version + 1
    };

    TreeMenuItemOption()
        : QStyleOptionMenuItem(Version)
    {}

    int level = 0; ///< from 0, the root
};

} // namespace Vireling
