#pragma once

#include "vireling/style/element_context.h"

#include <QTabBar>
#include <QTransform>

namespace Vireling {

/** How far a tab that is cut off takes to fade away, in design pixels. */
constexpr qreal tabTearLength = 12;

/** The side of the pane that a tab bar stands on. Triangular tabs are drawn like rounded ones. */
enum class TabSide
{
    North,
    South,
    West,
    East,
};

TabSide tabSide(QTabBar::Shape shape);
bool isUpright(TabSide side);

/** `rect` with its edge towards the pane moved by `pixels` towards the pane. */
QRect reachingInwards(const QRect &rect, TabSide side, int pixels);
/** `rect` with its edge away from the pane moved by `pixels` away from it. */
QRect reachingOutwards(const QRect &rect, TabSide side, int pixels);
/** The strip of `rect` along its edge away from the pane. */
QRect outerStrip(const QRect &rect, TabSide side, int thickness);
/** The strip of `rect` along its edge towards the pane. */
QRect innerStrip(const QRect &rect, TabSide side, int thickness);

/** What is painted of a tab: its rectangle less the gap to the next tab. */
QRect tabBody(const ElementContext &context, const QStyleOptionTab &tab);

/**
 * Where a tab's label goes. Labels of upright tabs are turned: their rectangles are
 * those of a lying tab at the origin, as Qt expects of SE_TabBarTabText, and
 * `toWidget` brings them to their place.
 */
struct TabLabelLayout
{
    QRect text; ///< all the room for the text, which is centred in it
    QRect icon; ///< beside the text's room at its leading end; null without an icon
    QTransform toWidget;
};

TabLabelLayout tabLabelLayout(const ElementContext &context, const QStyleOptionTab &tab);

} // namespace Vireling
