#pragma once

#include "vireling/style/element_context.h"

namespace Vireling {

/*
 * The parts of a tool button, left to right. Only a button with a menu of its own
 * beside its action has a menu part.
 */

bool hasMenuPart(const QStyleOptionToolButton &button);
/** A chevron that says the whole button opens a menu. */
bool hasMenuMark(const QStyleOptionToolButton &button);

/** The part that opens the menu; empty without one. */
QRect toolButtonMenuPart(const ElementContext &context, const QStyleOptionToolButton &button);
/** The rest. */
QRect toolButtonActionPart(const ElementContext &context, const QStyleOptionToolButton &button);
/** Where the chevron of hasMenuMark() stands. */
QRect toolButtonMenuMark(const ElementContext &context, const QRect &actionPart);
/** What remains of the action part for icon and text. */
QRect toolButtonLabelArea(const ElementContext &context, const QStyleOptionToolButton &button);

} // namespace Vireling
