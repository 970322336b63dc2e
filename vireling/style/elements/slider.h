#pragma once

#include "vireling/style/element_context.h"

#include <QVector>

#include <optional>

namespace Vireling {

bool paintSlider(const ElementContext &context);
std::optional<QRect> sliderPart(const ElementContext &context, QStyle::SubControl part);
std::optional<QRect> sliderFocusRect(const ElementContext &context);
std::optional<QSize> sliderSize(const ElementContext &context, const QSize &contents);

/**
 * The values of a range at which ticks stand: every tick interval, else every page.
 * A range drawn over `span` pixels leaves ticks out until they stand at least three
 * pixels apart. Empty where there is no range or no span.
 */
QVector<int> tickValues(const QStyleOptionSlider &range, int span);

/** The colour of the ticks of sliders and dials. */
QColor tickColour(const ElementContext &context);

} // namespace Vireling
