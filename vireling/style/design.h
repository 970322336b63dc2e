#pragma once

#include <QtGlobal>

/*
 * The measures of the house style that Qt has no pixel metric for, in design
 * pixels at 96 dots per inch. Use them through ElementContext::scaled().
 */
namespace Vireling::Design {

constexpr qreal controlRadius = 3;   ///< corners of buttons, fields and frames
constexpr qreal indicatorRadius = 2; ///< corners of check boxes and other small parts
constexpr qreal cardRadius = 6;      ///< corners of cards

/** Between the frame of a field or button and what it holds; one row is equally high. */
constexpr qreal fieldPadding = 6;
constexpr qreal fieldVerticalPadding = 3;
constexpr qreal buttonPadding = 12;
constexpr qreal buttonMinimumWidth = 72;

/** Between an icon and the text beside it. */
constexpr qreal iconTextSpacing = 6;

/** How far a drop-down chevron's box is wide. */
constexpr qreal arrowBoxWidth = 20;

constexpr qreal grooveThickness = 4;

} // namespace Vireling::Design
