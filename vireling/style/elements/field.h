#pragma once

#include "vireling/style/element_context.h"

/*
 * What line edits, spin boxes, date edits and combo boxes share, so that they line up
 * in a row: the framed field, its box of arrows at the trailing end, and the sizes.
 */
namespace Vireling {

/** The horizontal margin QLineEdit keeps to both sides of its text, inside its contents. */
constexpr int lineEditMargin = 2;

/** What Qt's field widgets count above and below their text into the size they ask for. */
constexpr int countedVerticalMargin = 1;

/** The field over rect(). Read-only: an underline alone. The focused one has a strong frame. */
void drawField(const ElementContext &context);
/**
 * Whether `widget` is a spin box, or a date edit, that shows a value and takes none:
 * their style options do not say so. It may be null.
 */
bool isReadOnlySpinBox(const QWidget *widget);
/** The frame of drawField() alone. */
void drawFieldFrame(const ElementContext &context);
/** What drawField() becomes without a frame, as an editor within an item view. */
void drawFramelessField(const ElementContext &context);

enum class FieldFrame
{
    Framed,
    Frameless
};
enum class ArrowBox
{
    Shown,
    None
};

/*
 * Left-to-right rectangles within rect(); see ElementContext::visual().
 */

/** The box of arrows, inside the frame. */
QRect fieldArrowBox(const ElementContext &context, FieldFrame frame);
/** The place of the embedded QLineEdit, its own margin included. */
QRect fieldEditArea(const ElementContext &context, FieldFrame frame, ArrowBox arrows);

/** The size of a field around `contents` as its widget counts them. */
QSize fieldSize(const ElementContext &context, const QSize &contents, FieldFrame frame,
                ArrowBox arrows);

/** Hover or press of the box of arrows, or of a part of it, inside the field's frame. */
void fillFieldPart(const ElementContext &context, const QRect &part, const QColor &fill);
/** The line between the text and the box of arrows. */
void drawArrowBoxSeparator(const ElementContext &context, const QRect &box);
/** A chevron of the size of fields in the middle of `box`. */
void drawFieldChevron(const ElementContext &context, const QRect &box, Qt::ArrowType direction,
                      const QColor &colour);

/** A square of `size` pixels in the middle of `box`, exactly; smaller in a small box. */
QRectF centredSquare(const QRect &box, int size);

} // namespace Vireling
