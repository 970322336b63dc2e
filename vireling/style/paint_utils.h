#pragma once

#include "vireling/style/element_context.h"

#include <QColor>
#include <QRectF>

class QPainter;

namespace Vireling {

/*
 * Shapes. They know no widget. The painter keeps its state. Shapes that recur are
 * drawn from kept pictures.
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

/** Dots to grip with, centred in `rect`: so many across and down, as far apart as they are wide. */
void drawGripDots(QPainter &painter, const QRect &rect, const QSize &counts, int dotSize,
                  const QColor &colour);

/**
 * `text`, cut short with an ellipsis where it is wider than `width` pixels. Qt elides
 * by fractions of a pixel but lays out in whole ones: a text in just the room it asked
 * for must stay whole. `flags` as QFontMetrics takes them.
 */
QString fittingText(const QFontMetrics &metrics, const QString &text, int width, int flags = 0);

/*
 * What several families share.
 */

/** LineWidth::Emphasis in whole pixels: focus frames and bars of two and a half would blur. */
int emphasisWidth(const ElementContext &context);

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
/** For text of less weight on buttonSurface(): toned down, but at least 4.5:1 in both themes. */
QColor buttonSecondaryForeground(const ElementContext &context);

/**
 * For text of less weight on a window or a tab. Not PlaceholderText, which reads at
 * 3.5:1 in the light theme.
 */
QColor secondaryText(const ElementContext &context);

/** The surface of a field, or of a part of one, that is held down. */
QColor pressedFieldSurface(const ElementContext &context);
/** The surface of a part of a field or button that lies under the pointer. */
QColor hoveredPartSurface(const ElementContext &context);
/** accentBase() as the surface of a button in the context's state; HighlightedText reads on it. */
QColor accentSurface(const ElementContext &context);

/** The surface of a button that closes or destroys, hovered or pressed. */
QColor errorSurface(const ElementContext &context);

/** The bar at the lower edge of a checked button, inside its frame. */
void drawCheckedBar(const ElementContext &context);

/** Fills `part` as far as it lies within `outline`, a rectangle with rounded corners. */
void fillPart(QPainter &painter, const QRectF &outline, qreal radius, const QRectF &part,
              const QColor &fill);

/** How high a single-line field or button is around contents of `contentsHeight`. */
int fieldHeight(const ElementContext &context, int contentsHeight);

} // namespace Vireling
