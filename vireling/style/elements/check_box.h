#pragma once

#include "vireling/style/element_context.h"

#include <optional>

namespace Vireling {

/*
 * Check boxes and radio buttons. Their composition is QCommonStyle's; the indicators
 * are drawn here for everything that is ticked: group boxes, menus, item views.
 */

/** A box with a tick when on and a dash when partly on, in rect(), by the state flags. */
bool paintCheckBoxIndicator(const ElementContext &context);
/** A circle with a dot when on, in rect(), by the state flags. */
bool paintRadioButtonIndicator(const ElementContext &context);

/** The places of indicator, label and focus ring, of either kind of button. */
std::optional<QRect> checkBoxPart(const ElementContext &context, QStyle::SubElement element);
std::optional<QSize> checkBoxSize(const ElementContext &context, const QSize &contents);
std::optional<QSize> radioButtonSize(const ElementContext &context, const QSize &contents);

} // namespace Vireling
