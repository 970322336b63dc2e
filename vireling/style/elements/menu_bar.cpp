#include "vireling/style/elements/menu_bar.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <cmath>

namespace Vireling {

namespace {

constexpr qreal itemPadding = 8;

/** The pointed-at item, and the one whose menu is open: the latter with a bar, as tabs have. */
void drawItemSurface(const ElementContext &context)
{
    const qreal radius = context.scaledExactly(Design::controlRadius);
    drawPanel(*context.painter, context.rect(), radius, context.colour(ColourRole::HoverBase),
              QColor(), 0);
    if (!context.state.pressed)
        return;
    const int width = emphasisWidth(context);
    QRect bar = context.rect();
    bar.setTop(bar.bottom() + 1 - width);
    context.painter->fillRect(bar, context.colour(QPalette::Highlight));
}

} // namespace

bool paintMenuBarItem(const ElementContext &context)
{
    const auto *item = context.as<QStyleOptionMenuItem>();
    if (!item)
        return false;
    QPainter &painter = *context.painter;
    painter.fillRect(item->rect, context.colour(QPalette::Window));
    const ControlState &state = context.state;
    if (state.enabled && (state.selected || state.pressed || state.hovered))
        drawItemSurface(context);

    // As the menu bar measures it: an icon stands in for the text.
    if (!item->icon.isNull()) {
        const int size = context.metric(QStyle::PM_SmallIconSize);
        const QRect rect =
            QStyle::alignedRect(item->direction, Qt::AlignCenter, QSize(size, size), item->rect);
        item->icon.paint(&painter, rect, Qt::AlignCenter,
                         state.enabled ? QIcon::Normal : QIcon::Disabled);
        return true;
    }
    const bool underlined =
        context.style.styleHint(QStyle::SH_UnderlineShortcut, item, context.widget);
    painter.setFont(item->font);
    painter.setPen(context.colour(QPalette::WindowText));
    painter.drawText(item->rect,
                     Qt::AlignCenter | Qt::TextSingleLine | Qt::TextDontClip |
                         (underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic),
                     item->text);
    return true;
}

bool paintMenuBarEmptyArea(const ElementContext &context)
{
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    return true;
}

/** The bar lies flat on its window: no frame. */
bool paintMenuBarPanel(const ElementContext &)
{
    return true;
}

std::optional<QSize> menuBarItemSize(const ElementContext &context, const QSize &contents)
{
    if (contents.isEmpty()) // a separator or a hidden item
        return contents;
    return QSize(contents.width() + 2 * context.scaled(itemPadding),
                 fieldHeight(context, contents.height()));
}

} // namespace Vireling
