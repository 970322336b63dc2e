#pragma once

#include <QColor>

namespace Vireling {

/**
 * The contrast ratio of WCAG 2.1 between two opaque colours: 1 for equal ones, 21 for
 * black on white.
 */
qreal contrastRatio(const QColor &one, const QColor &other);

/** What text needs to read on its ground, by WCAG 2.1 level AA. */
constexpr qreal textContrast = 4.5;

/** What shapes need that tell something: indicators, marks, focus. */
constexpr qreal shapeContrast = 3;

/**
 * How much black, from 0 to 1, `ground` has to be mixed with for the light `text` to
 * read on it; 0 where it reads already.
 */
qreal darkeningForText(const QColor &ground, const QColor &text);

/** `colour` mixed with that much black, from 0 to 1. */
QColor darkened(const QColor &colour, qreal black);

} // namespace Vireling
