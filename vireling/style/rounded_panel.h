#pragma once

#include <QColor>
#include <QRectF>

class QPainter;

namespace Vireling {

/** A surface with rounded corners; a transparent colour leaves its part out. */
struct RoundedPanel
{
    QColor fill;
    QColor frame;
    qreal frameWidth = 0;
    qreal radius = 0;
};

/** Draws the panel with its frame within `rect`, anti-aliased. */
void drawRoundedPanel(QPainter &painter, const QRectF &rect, const RoundedPanel &panel);

} // namespace Vireling
