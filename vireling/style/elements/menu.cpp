#include "vireling/style/elements/menu.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/check_box.h"
#include "vireling/style/paint_utils.h"
#include "vireling/style/tree_menu_item.h"

#include <QPainter>
#include <qdrawutil.h>

#include <algorithm>
#include <cmath>

namespace Vireling {

namespace {

constexpr qreal rowPadding = 8;
constexpr qreal separatorPadding = 3;
/** Keeps a name and its shortcut apart where the row is as narrow as it gets. */
constexpr qreal shortcutSpacing = 24;
constexpr qreal accentBarWidth = 3;
constexpr qreal accentBarInset = 3;
constexpr qreal tearoffDash = 4;

const QLatin1Char shortcutMark('\t');

/** What a menu item's text holds besides the name. */
struct ItemText
{
    explicit ItemText(const QString &text)
        : name(text.section(shortcutMark, 0, 0))
        , shortcut(text.section(shortcutMark, 1))
    {}

    QString name;
    QString shortcut;
};

/** The font of the name; the row that a double click would choose stands out. */
QFont nameFont(const QStyleOptionMenuItem &item)
{
    QFont font = item.font;
    if (item.menuItemType == QStyleOptionMenuItem::DefaultItem)
        font.setBold(true);
    return font;
}

QRect withoutPadding(const ElementContext &context)
{
    const int padding = context.scaled(rowPadding);
    return context.rect().adjusted(padding, 0, -padding, 0);
}

int mnemonicFlags(const ElementContext &context)
{
    const bool underlined =
        context.style.styleHint(QStyle::SH_UnderlineShortcut, &context.option, context.widget);
    return Qt::TextSingleLine | (underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic);
}

bool hasCheckColumn(const QStyleOptionMenuItem &item)
{
    return item.menuHasCheckableItems || item.checkType != QStyleOptionMenuItem::NotCheckable;
}

bool hasIconColumn(const QStyleOptionMenuItem &item)
{
    return item.maxIconWidth > 0 || !item.icon.isNull();
}

/** How far a row of a tree is moved in. */
int indentation(const ElementContext &context)
{
    const auto *node = context.as<TreeMenuItemOption>();
    return node ? node->level * context.metric(QStyle::PM_TreeViewIndentation) : 0;
}

/** Padding, indentation, check and icon: all that comes before the name. */
int leadingWidth(const ElementContext &context, const QStyleOptionMenuItem &item)
{
    const int gap = context.scaled(Design::iconTextSpacing);
    int width = context.scaled(rowPadding) + indentation(context);
    if (hasCheckColumn(item))
        width += context.metric(QStyle::PM_IndicatorWidth) + gap;
    if (hasIconColumn(item))
        width += context.metric(QStyle::PM_SmallIconSize) + gap;
    return width;
}

/** The side of the square that an arrow's chevron stands in. */
int arrowSize(const ElementContext &context)
{
    return context.metric(QStyle::PM_MenuButtonIndicator);
}

bool isSection(const QStyleOptionMenuItem &item)
{
    return item.menuItemType == QStyleOptionMenuItem::Separator && !item.text.isEmpty();
}

QRect centredIn(const QRect &column, const QSize &size)
{
    return QStyle::alignedRect(Qt::LeftToRight, Qt::AlignCenter, size, column);
}

void drawRowSurface(const ElementContext &context)
{
    const QRectF rect(context.rect());
    const qreal radius = context.scaledExactly(Design::indicatorRadius);
    // A row that cannot be chosen only shows where the keys have come to.
    if (!context.state.enabled) {
        drawPanel(*context.painter, rect, radius, QColor(), frameColour(context),
                  context.lineWidth(LineWidth::Separator));
        return;
    }
    drawPanel(*context.painter, rect, radius, context.colour(ColourRole::HoverBase), QColor(), 0);
    const int inset = context.scaled(accentBarInset);
    const QRect bar(context.rect().left(), context.rect().top() + inset,
                    context.scaled(accentBarWidth), context.rect().height() - 2 * inset);
    drawPanel(*context.painter, context.visual(bar), bar.width() / 2.0,
              context.colour(QPalette::Highlight), QColor(), 0);
}

void drawCheck(const ElementContext &context, const QStyleOptionMenuItem &item, const QRect &rect)
{
    if (item.checkType == QStyleOptionMenuItem::NotCheckable)
        return;
    QStyleOptionButton indicator;
    indicator.QStyleOption::operator=(item);
    indicator.type = QStyleOptionButton::Type;
    indicator.version = QStyleOptionButton::Version;
    indicator.rect = rect;
    indicator.state &= QStyle::State_Enabled | QStyle::State_Active;
    indicator.state |= item.checked ? QStyle::State_On : QStyle::State_Off;
    const ElementContext part = context.with(indicator);
    if (item.checkType == QStyleOptionMenuItem::Exclusive)
        paintRadioButtonIndicator(part);
    else
        paintCheckBoxIndicator(part);
}

void drawIcon(const ElementContext &context, const QStyleOptionMenuItem &item, const QRect &rect)
{
    if (item.icon.isNull())
        return;
    const QIcon::Mode mode = !context.state.enabled   ? QIcon::Disabled
                             : context.state.selected ? QIcon::Active
                                                      : QIcon::Normal;
    item.icon.paint(context.painter, rect, Qt::AlignCenter, mode,
                    item.checked ? QIcon::On : QIcon::Off);
}

void drawLabel(const ElementContext &context, const QRect &rect, int alignment, const QFont &font,
               const QString &text, const QColor &colour)
{
    const int flags = mnemonicFlags(context);
    QPainter &painter = *context.painter;
    painter.setFont(font);
    painter.setPen(colour);
    const QString shown = fittingText(QFontMetrics(font), text, rect.width(), Qt::TextShowMnemonic);
    const auto visual =
        int(QStyle::visualAlignment(context.option.direction, Qt::Alignment(alignment)));
    painter.drawText(rect, visual | Qt::AlignVCenter | flags, shown);
}

void drawPlainSeparator(const ElementContext &context, const QRect &rect)
{
    drawSeparator(*context.painter, rect, Qt::Horizontal, context.colour(ColourRole::Frame),
                  context.metric(QStyle::PM_DefaultFrameWidth));
}

/** A heading: its text, and the line from there to the end of the row. */
void drawSection(const ElementContext &context, const QStyleOptionMenuItem &item)
{
    const QRect inner = withoutPadding(context);
    const QString title = ItemText(item.text).name;
    const int titleWidth = QFontMetrics(item.font).size(mnemonicFlags(context), title).width();
    QRect text = inner;
    text.setWidth(std::min(inner.width(), titleWidth));
    drawLabel(context, context.visual(text), Qt::AlignLeft, item.font, title,
              secondaryText(context));
    QRect line = inner;
    line.setLeft(text.right() + 1 + context.scaled(Design::iconTextSpacing));
    if (line.width() > 0)
        drawPlainSeparator(context, context.visual(line));
}

void drawRow(const ElementContext &context, const QStyleOptionMenuItem &item)
{
    if (context.state.selected)
        drawRowSurface(context);
    const MenuItemParts parts = menuItemParts(context, item);
    const ItemText text(item.text);
    const bool highlighted = context.state.selected && context.state.enabled;
    const QColor foreground = context.colour(QPalette::WindowText);
    drawCheck(context, item, parts.check);
    drawIcon(context, item, parts.icon);
    drawLabel(context, parts.text, Qt::AlignLeft, nameFont(item), text.name, foreground);
    // The placeholder's grey does not read on the highlighted row.
    drawLabel(context, parts.shortcut, Qt::AlignRight, item.font, text.shortcut,
              highlighted ? foreground : secondaryText(context));
    drawChevron(*context.painter, parts.arrow,
                context.state.rightToLeft ? Qt::LeftArrow : Qt::RightArrow,
                highlighted ? foreground : context.colour(ColourRole::MenuIconBase),
                context.lineWidth(LineWidth::Glyph));
}

} // namespace

MenuItemParts menuItemParts(const ElementContext &context, const QStyleOptionMenuItem &item)
{
    const int gap = context.scaled(Design::iconTextSpacing);
    QRect free = withoutPadding(context);
    // However deep a folder is, its name keeps half of the row.
    free.setLeft(free.left() + std::min(indentation(context), free.width() / 2));
    const auto takeLeft = [&](int width) {
        const QRect column(free.left(), free.top(), width, free.height());
        free.setLeft(free.left() + width + gap);
        return column;
    };
    const auto takeRight = [&](int width, int spacing) {
        const QRect column(free.right() + 1 - width, free.top(), width, free.height());
        free.setRight(column.left() - 1 - spacing);
        return column;
    };

    MenuItemParts parts;
    const QSize indicator(context.metric(QStyle::PM_IndicatorWidth),
                          context.metric(QStyle::PM_IndicatorHeight));
    if (hasCheckColumn(item))
        parts.check = context.visual(centredIn(takeLeft(indicator.width()), indicator));
    const int icon = context.metric(QStyle::PM_SmallIconSize);
    if (hasIconColumn(item))
        parts.icon = context.visual(centredIn(takeLeft(icon), {icon, icon}));
    const int arrow = arrowSize(context);
    if (item.menuItemType == QStyleOptionMenuItem::SubMenu)
        parts.arrow = context.visual(centredIn(takeRight(arrow, gap), {arrow, arrow}));
    const QString shortcut = ItemText(item.text).shortcut;
    if (!shortcut.isEmpty()) {
        const int needed = int(std::ceil(QFontMetricsF(item.font).horizontalAdvance(shortcut)));
        parts.shortcut = context.visual(takeRight(std::max(needed, item.tabWidth), gap));
    }
    free.setWidth(std::max(0, free.width()));
    parts.text = context.visual(free);
    return parts;
}

bool paintMenuItem(const ElementContext &context)
{
    const auto *item = context.as<QStyleOptionMenuItem>();
    if (!item)
        return false;
    if (isSection(*item))
        drawSection(context, *item);
    else if (item->menuItemType == QStyleOptionMenuItem::Separator)
        drawPlainSeparator(context, withoutPadding(context));
    else
        drawRow(context, *item);
    return true;
}

bool paintMenuScroller(const ElementContext &context)
{
    const bool down = context.option.state & QStyle::State_DownArrow;
    const int size = std::min(arrowSize(context), context.rect().height());
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    drawChevron(*context.painter, centredIn(context.rect(), {2 * size, size + size / 2}),
                down ? Qt::DownArrow : Qt::UpArrow, context.colour(QPalette::WindowText),
                context.lineWidth(LineWidth::Glyph));
    return true;
}

bool paintMenuMargin(const ElementContext &context)
{
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    return true;
}

bool paintMenuTearoff(const ElementContext &context)
{
    const bool hovered = context.state.selected || context.state.hovered;
    const int width = context.metric(QStyle::PM_DefaultFrameWidth);
    const int dash = context.scaled(tearoffDash);
    const QColor colour = context.colour(hovered ? ColourRole::PanelFrame : ColourRole::Frame);
    const QRect rect = context.rect();
    context.painter->fillRect(rect, hovered ? context.colour(ColourRole::HoverBase)
                                            : context.colour(QPalette::Window));
    const int right = rect.right() - context.scaled(rowPadding);
    for (int x = rect.left() + context.scaled(rowPadding); x <= right; x += 2 * dash)
        drawSeparator(*context.painter, {x, rect.top(), dash, rect.height()}, Qt::Horizontal,
                      colour, width);
    return true;
}

bool paintMenuFrame(const ElementContext &context)
{
    qDrawPlainRect(context.painter, context.rect(), context.colour(ColourRole::Frame),
                   int(std::ceil(context.lineWidth(LineWidth::MenuFrame))));
    return true;
}

bool paintMenuPanel(const ElementContext &context)
{
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    return true;
}

bool paintMenuCheckMark(const ElementContext &context)
{
    drawCheckMark(*context.painter, context.rect(), context.colour(QPalette::WindowText),
                  context.lineWidth(LineWidth::Glyph));
    return true;
}

std::optional<QSize> menuItemSize(const ElementContext &context, const QSize &contents)
{
    const auto *item = context.as<QStyleOptionMenuItem>();
    if (!item)
        return std::nullopt;
    const int padding = context.scaled(rowPadding);
    const int textHeight = std::max(contents.height(), item->fontMetrics.height());
    if (isSection(*item))
        return QSize(contents.width() + 2 * padding,
                     textHeight + 2 * context.scaled(separatorPadding));
    if (item->menuItemType == QStyleOptionMenuItem::Separator)
        return QSize(contents.width(), context.metric(QStyle::PM_DefaultFrameWidth) +
                                           2 * context.scaled(separatorPadding));

    int width = leadingWidth(context, *item) + contents.width() + padding;
    if (item->menuItemType == QStyleOptionMenuItem::SubMenu)
        width += context.scaled(Design::iconTextSpacing) + arrowSize(context);
    const ItemText text(item->text);
    if (!text.shortcut.isEmpty())
        width += context.scaled(shortcutSpacing); // the menu adds its shortcuts' width itself
    if (item->menuItemType == QStyleOptionMenuItem::DefaultItem)
        width += QFontMetrics(nameFont(*item)).horizontalAdvance(text.name) -
                 QFontMetrics(item->font).horizontalAdvance(text.name);
    return QSize(width, fieldHeight(context, contents.height()));
}

} // namespace Vireling
