#include "vireling/style/elements/tab_bar_geometry.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/tab_bar.h"

#include <algorithm>

namespace Vireling {

namespace {

constexpr qreal tabGap = 2;       ///< from one tab to the next
constexpr qreal buttonMargin = 4; ///< from a tab's end to the button there

TabSide opposite(TabSide side)
{
    switch (side) {
    case TabSide::North:
        return TabSide::South;
    case TabSide::South:
        return TabSide::North;
    case TabSide::West:
        return TabSide::East;
    case TabSide::East:
        return TabSide::West;
    }
    return side;
}

/** What QTabBar reserves for the space beside an icon or button, in pixels of the screen. */
constexpr int spacingByQt = 4;

/** A tab as if it lay on the north side and read left to right. */
struct LyingTab
{
    LyingTab(const ElementContext &context, const QStyleOptionTab &tab);

    QRect toWidget(const QRect &lying) const
    {
        return upright ? transform.mapRect(lying) : QStyle::visualRect(direction, body, lying);
    }

    QRect body;
    bool upright;
    Qt::LayoutDirection direction;
    QRect rect; ///< body, lying
    QTransform transform;
};

LyingTab::LyingTab(const ElementContext &context, const QStyleOptionTab &tab)
    : body(tabBody(context, tab))
    , upright(isUpright(tabSide(tab.shape)))
    , direction(tab.direction)
    , rect(upright ? QRect(0, 0, body.height(), body.width()) : body)
{
    if (!upright)
        return;
    if (tabSide(tab.shape) == TabSide::East)
        transform.translate(body.x() + body.width(), body.y()).rotate(90);
    else
        transform.translate(body.x(), body.y() + body.height()).rotate(-90);
}

/** The length of a button along its tab; 0 without a button. */
int lengthOf(const QSize &button, bool upright)
{
    if (button.isEmpty())
        return 0;
    return upright ? button.height() : button.width();
}

QRect tabButton(const ElementContext &context, const QStyleOptionTab &tab, bool leading)
{
    const QSize size = leading ? tab.leftButtonSize : tab.rightButtonSize;
    if (size.isEmpty())
        return {};
    const LyingTab lying(context, tab);
    const int length = lengthOf(size, lying.upright);
    const int breadth = lying.upright ? size.width() : size.height();
    const int margin = context.scaled(buttonMargin);
    const int x =
        leading ? lying.rect.x() + margin : lying.rect.x() + lying.rect.width() - margin - length;
    const int y = lying.rect.y() + (lying.rect.height() - breadth) / 2;
    return lying.toWidget({x, y, length, breadth});
}

/** Qt asks for the parts of a whole tab bar also with a plain option. */
bool isUprightBar(const ElementContext &context)
{
    if (const auto *bar = qobject_cast<const QTabBar *>(context.widget))
        return isUpright(tabSide(bar->shape()));
    if (const auto *tab = context.as<QStyleOptionTab>())
        return isUpright(tabSide(tab->shape));
    return context.rect().width() < context.rect().height();
}

/** A piece of a tab bar's length, counted from its start or, below 0, from its end. */
QRect barPiece(const ElementContext &context, int start, int length)
{
    const QRect bar = context.rect();
    const bool upright = isUprightBar(context);
    const int along = start < 0 ? (upright ? bar.height() : bar.width()) + start : start;
    if (upright)
        return {bar.x(), bar.y() + along, bar.width(), length};
    return context.visual({bar.x() + along, bar.y(), length, bar.height()});
}

} // namespace

TabSide tabSide(QTabBar::Shape shape)
{
    switch (shape) {
    case QTabBar::RoundedSouth:
    case QTabBar::TriangularSouth:
        return TabSide::South;
    case QTabBar::RoundedWest:
    case QTabBar::TriangularWest:
        return TabSide::West;
    case QTabBar::RoundedEast:
    case QTabBar::TriangularEast:
        return TabSide::East;
    case QTabBar::RoundedNorth:
    case QTabBar::TriangularNorth:
        break;
    }
    return TabSide::North;
}

bool isUpright(TabSide side)
{
    return side == TabSide::West || side == TabSide::East;
}

QRect reachingInwards(const QRect &rect, TabSide side, int pixels)
{
    switch (side) {
    case TabSide::North:
        return rect.adjusted(0, 0, 0, pixels);
    case TabSide::South:
        return rect.adjusted(0, -pixels, 0, 0);
    case TabSide::West:
        return rect.adjusted(0, 0, pixels, 0);
    case TabSide::East:
        return rect.adjusted(-pixels, 0, 0, 0);
    }
    return rect;
}

QRect outerStrip(const QRect &rect, TabSide side, int thickness)
{
    const int depth = isUpright(side) ? rect.width() : rect.height();
    return reachingInwards(rect, side, thickness - depth);
}

QRect reachingOutwards(const QRect &rect, TabSide side, int pixels)
{
    return reachingInwards(rect, opposite(side), pixels);
}

QRect innerStrip(const QRect &rect, TabSide side, int thickness)
{
    return outerStrip(rect, opposite(side), thickness);
}

QRect tabBody(const ElementContext &context, const QStyleOptionTab &tab)
{
    const int gap = context.scaled(tabGap);
    if (isUpright(tabSide(tab.shape)))
        return tab.rect.adjusted(0, 0, 0, -gap);
    return QStyle::visualRect(tab.direction, tab.rect, tab.rect.adjusted(0, 0, -gap, 0));
}

TabLabelLayout tabLabelLayout(const ElementContext &context, const QStyleOptionTab &tab)
{
    const LyingTab lying(context, tab);
    const int spacing = context.scaled(Design::iconTextSpacing);
    const int margin = context.scaled(buttonMargin);
    const auto roomFor = [&](const QSize &button, int padding) {
        const int length = lengthOf(button, lying.upright);
        return length > 0 ? margin + length + spacing : padding;
    };
    const int padding = context.metric(QStyle::PM_TabBarTabHSpace) / 2;
    QRect text = lying.rect.adjusted(roomFor(tab.leftButtonSize, padding), 0,
                                     -roomFor(tab.rightButtonSize, padding), 0);
    QRect icon;
    if (!tab.icon.isNull()) {
        const int small = context.metric(QStyle::PM_SmallIconSize);
        const QSize size = tab.iconSize.isEmpty() ? QSize(small, small) : tab.iconSize;
        icon = QRect(QPoint(text.x(), text.y() + (text.height() - size.height()) / 2), size);
        text.setLeft(text.left() + size.width() + spacing);
    }
    text.setWidth(std::max(0, text.width()));
    if (lying.upright)
        return {text, icon, lying.transform};
    return {lying.toWidget(text), icon.isNull() ? icon : lying.toWidget(icon), QTransform()};
}

std::optional<QRect> tabPart(const ElementContext &context, QStyle::SubElement element)
{
    const auto *tab = context.as<QStyleOptionTab>();
    const int button = context.metric(QStyle::PM_TabBarScrollButtonWidth);
    const int tear = context.scaled(tabTearLength);
    switch (element) {
    case QStyle::SE_TabBarTabText:
        return tab ? std::optional(tabLabelLayout(context, *tab).text) : std::nullopt;
    case QStyle::SE_TabBarTabLeftButton:
        return tab ? std::optional(tabButton(context, *tab, true)) : std::nullopt;
    case QStyle::SE_TabBarTabRightButton:
        return tab ? std::optional(tabButton(context, *tab, false)) : std::nullopt;
    // Both scroll buttons stand together at the end, so that a finger stays where it is.
    case QStyle::SE_TabBarScrollLeftButton:
        return barPiece(context, -2 * button, button);
    case QStyle::SE_TabBarScrollRightButton:
        return barPiece(context, -button, button);
    case QStyle::SE_TabBarTearIndicator:
        return barPiece(context, 0, tear);
    case QStyle::SE_TabBarTearIndicatorRight:
        return barPiece(context, -2 * button - tear, tear + 2 * button);
    default:
        return std::nullopt;
    }
}

std::optional<QSize> tabSize(const ElementContext &context, const QSize &contents)
{
    const auto *tab = context.as<QStyleOptionTab>();
    if (!tab)
        return std::nullopt;
    const bool upright = isUpright(tabSide(tab->shape));
    const int spacing = context.scaled(Design::iconTextSpacing) - spacingByQt;
    const int saved = context.metric(QStyle::PM_TabBarTabHSpace) / 2 - context.scaled(buttonMargin);
    int more = context.scaled(tabGap) + (tab->icon.isNull() ? 0 : spacing);
    for (const QSize &button : {tab->leftButtonSize, tab->rightButtonSize})
        if (!button.isEmpty())
            more += spacing - saved;
    return upright ? contents + QSize(0, more) : contents + QSize(more, 0);
}

} // namespace Vireling
