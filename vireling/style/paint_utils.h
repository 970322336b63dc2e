#pragma once

#include "vireling/style/element_context.h"

#include <QColor>
#include <QRectF>

class QPainter;

namespace Vireling {

/*
 * Shapes. They know no widget. The painter keeps its state; anti-aliasing is
 * switched on and off here where a shape needs it.
 */

/**
 * A surface with rounded corners and a frame that lies inside `rect`. A fully
 * transparent (or invalid) colour leaves its part out; `frameWidth` may be 0.
 */
void drawPanel(QPainter &painter, const QRectF &rect, qreal radius, const QColor &fill,
               const QColor &frame, qreal frameWidth);

/** An open arrow head that fills about half of `rect`, centred, in lines of `strokeWidth`. */
void drawChevron(QPainter &painter, const QRectF &rect, Qt::ArrowType direction,
                 const QColor &colour, qreal strokeWidth);

/** A tick, centred in `rect`. */
void drawCheckMark(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth);

/** A cross, centred in `rect`. */
void drawCross(QPainter &painter, const QRectF &rect, const QColor &colour, qreal strokeWidth);

/** An axis-parallel line of whole pixels along the middle of `rect`. */
void drawSeparator(QPainter &painter, const QRect &rect, Qt::Orientation orientation,
                   const QColor &colour, int width);

/*
 * What several families share.
 */

/** The ring of the focused control, inside `rect`, with a gap in the window's colour within. */
void drawFocusRing(const ElementContext &context, const QRectF &rect, qreal radius);

/** The colour of focus rings and accent bars: at least 3:1 on every ground of both themes. */
QColor focusColour(const ElementContext &context);

/** The accent under text: the highlight darkened until white reads on it at 4.5:1. */
QColor accentBase(const ElementContext &context);

/** The frame of a field or button in the context's state: stronger when hovered, faded when
 * disabled. */
QColor frameColour(const ElementContext &context);

/** The surface of a push button or of what looks like one, in the context's state. */
QColor buttonSurface(const ElementContext &context);
/** The colour for text and glyphs on buttonSurface(). */
QColor buttonForeground(const ElementContext &context);

/** How high a single-line field or button is around contents of `contentsHeight`. */
int fieldHeight(const ElementContext &context, int contentsHeight);

} // namespace Vireling
