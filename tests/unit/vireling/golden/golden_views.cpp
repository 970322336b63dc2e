#include "golden_control.h"

#include "vireling/style_icon_engine/style_icons.h"

#include <QListView>

namespace {

QStyleOptionMenuItem menuItem(const GoldenCell &cell, const char *text)
{
    auto option = cell.option<QStyleOptionMenuItem>();
    option.text = QString::fromLatin1(text);
    option.menuItemType = QStyleOptionMenuItem::Normal;
    option.menuRect = cell.rect;
    option.maxIconWidth = 20;
    option.tabWidth = 40;
    option.font = cell.painter.font();
    option.menuHasCheckableItems = true;
    // A row under the pointer or with the focus is the selected one.
    if (option.state & (QStyle::State_MouseOver | QStyle::State_HasFocus | QStyle::State_Sunken))
        option.state |= QStyle::State_Selected;
    return option;
}

void drawMenuItem(const GoldenCell &cell, const QStyleOptionMenuItem &option)
{
    cell.style.drawControl(QStyle::CE_MenuItem, &option, &cell.painter);
}

void plainMenuItem(const GoldenCell &cell)
{
    auto option = menuItem(cell, "&Open\tCtrl+O");
    option.icon = Vireling::styleIcon(Vireling::StyleIcon::ArrowUp);
    drawMenuItem(cell, option);
}

void checkableMenuItem(const GoldenCell &cell)
{
    auto option = menuItem(cell, "&Show log\tF2");
    option.checkType = QStyleOptionMenuItem::NonExclusive;
    option.checked = option.state & QStyle::State_On;
    drawMenuItem(cell, option);
}

void exclusiveMenuItem(const GoldenCell &cell)
{
    auto option = menuItem(cell, "&Dark");
    option.checkType = QStyleOptionMenuItem::Exclusive;
    option.checked = option.state & QStyle::State_On;
    drawMenuItem(cell, option);
}

void subMenuItem(const GoldenCell &cell)
{
    auto option = menuItem(cell, "&Recent");
    option.menuItemType = QStyleOptionMenuItem::SubMenu;
    drawMenuItem(cell, option);
}

void menuSeparator(const GoldenCell &cell)
{
    auto option = menuItem(cell, "");
    option.menuItemType = QStyleOptionMenuItem::Separator;
    drawMenuItem(cell, option);
}

void menuBarItem(const GoldenCell &cell)
{
    auto option = menuItem(cell, "&File");
    option.menuHasCheckableItems = false;
    option.maxIconWidth = 0;
    cell.style.drawControl(QStyle::CE_MenuBarItem, &option, &cell.painter);
}

/** The palette an item of a list has, in the group of the cell. */
QPalette listPalette(const GoldenCell &cell)
{
    QListView list;
    list.ensurePolished();
    QPalette palette = list.palette();
    palette.setCurrentColorGroup(cell.palette.currentColorGroup());
    return palette;
}

QStyleOptionViewItem item(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionViewItem>();
    option.palette = listPalette(cell);
    option.text = QStringLiteral("Crash Report 0");
    option.font = cell.painter.font();
    option.features = QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration;
    option.icon = Vireling::styleIcon(Vireling::StyleIcon::ExpandRight);
    option.decorationSize = QSize(16, 16);
    option.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.decorationAlignment = Qt::AlignCenter;
    option.viewItemPosition = QStyleOptionViewItem::OnlyOne;
    option.showDecorationSelected = true;
    // "Checked" of the series is "selected" for an item.
    option.state.setFlag(QStyle::State_Selected, option.state & QStyle::State_On);
    option.state.setFlag(QStyle::State_On, false);
    return option;
}

void listItem(const GoldenCell &cell)
{
    const auto option = item(cell);
    cell.style.drawControl(QStyle::CE_ItemViewItem, &option, &cell.painter);
}

void checkableItem(const GoldenCell &cell)
{
    auto option = item(cell);
    option.features |= QStyleOptionViewItem::HasCheckIndicator;
    option.checkState = Qt::PartiallyChecked;
    cell.style.drawControl(QStyle::CE_ItemViewItem, &option, &cell.painter);
}

void branch(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionViewItem>();
    option.state |= QStyle::State_Children | QStyle::State_Item;
    option.state.setFlag(QStyle::State_Open, option.state & QStyle::State_On);
    option.state.setFlag(QStyle::State_On, false);
    cell.style.drawPrimitive(QStyle::PE_IndicatorBranch, &option, &cell.painter);
}

QStyleOptionHeader header(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionHeader>();
    option.text = QStringLiteral("Name");
    option.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option.orientation = Qt::Horizontal;
    option.position = QStyleOptionHeader::Middle;
    option.state |= QStyle::State_Horizontal;
    return option;
}

void headerSection(const GoldenCell &cell)
{
    const auto option = header(cell);
    cell.style.drawControl(QStyle::CE_Header, &option, &cell.painter);
}

void sortedHeaderSection(const GoldenCell &cell)
{
    auto option = header(cell);
    option.sortIndicator = QStyleOptionHeader::SortDown;
    cell.style.drawControl(QStyle::CE_Header, &option, &cell.painter);
}

} // namespace

std::vector<GoldenControl> goldenViews()
{
    return {
        {"menu_item", {160, 24}, plainMenuItem},
        {"menu_item_checkable", {160, 24}, checkableMenuItem},
        {"menu_item_exclusive", {160, 24}, exclusiveMenuItem},
        {"menu_item_sub_menu", {160, 24}, subMenuItem},
        {"menu_separator", {160, 9}, menuSeparator},
        {"menu_bar_item", {50, 24}, menuBarItem},
        {"item", {150, 24}, listItem},
        {"item_checkable", {150, 24}, checkableItem},
        {"branch", {20, 24}, branch},
        {"header", {100, 24}, headerSection},
        {"header_sorted", {100, 24}, sortedHeaderSection},
    };
}
