#pragma once

#include <QColor>
#include <QRectF>

#include <functional>

class QImage;
class QPainter;

namespace Vireling {

/** The kinds of drawings that are kept. */
enum class PictureShape
{
    Panel,
    PanelCorners,
    ChevronUp,
    ChevronDown,
    ChevronLeft,
    ChevronRight,
    CheckMark,
    Cross,
    DialArc,
    DialRing,
};

/** What a small drawing depends on besides its size. */
struct PictureKey
{
    PictureShape shape;
    QColor first;
    QColor second;
    qreal line = 0;
    qreal radius = 0;
};

/**
 * Small drawings that recur all over a screen are kept as pictures: corners, arrows,
 * marks. Drawing one again takes a fraction of the time of an anti-aliased path and
 * gives the same pixels. The least recently used are forgotten. GUI thread.
 *
 * The picture is of `size` logical pixels, transparent where `draw` leaves it so;
 * `draw` gets an anti-aliasing painter with the origin in the picture's corner.
 */
QImage keptPicture(const PictureKey &key, const QSize &size, int ratio,
                   const std::function<void(QPainter &)> &draw);

/**
 * The device pixel ratio for pictures that `painter` can copy into `rect` pixel by
 * pixel; 0 where it cannot: rectangles off the pixel grid, fractional ratios, turned,
 * scaled or translucent painting.
 */
int exactPictureRatio(const QPainter &painter, const QRectF &rect);

/**
 * Draws a small drawing out of a kept picture, also where `rect` lies between pixels; by
 * `draw` itself where that is not exact.
 */
void drawKept(QPainter &painter, const QRectF &rect, const PictureKey &key,
              const std::function<void(QPainter &)> &draw);

} // namespace Vireling
