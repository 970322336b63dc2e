#include "vireling/style/elements/rubber_band.h"

#include "vireling/style/paint_utils.h"

#include <QPainter>
#include <QRubberBand>

namespace Vireling {

namespace {

/** What lies under the band stays legible. */
constexpr qreal fillOpacity = 0.25;

} // namespace

bool paintRubberBand(const ElementContext &context)
{
    const auto *band = context.as<QStyleOptionRubberBand>();
    if (!band)
        return false;
    const QColor line = focusColour(context);
    if (band->shape == QRubberBand::Line) {
        context.painter->fillRect(context.rect(), line);
        return true;
    }
    QColor fill = line;
    fill.setAlphaF(fillOpacity);
    drawPanel(*context.painter, context.rect(), 0, fill, line,
              context.metric(QStyle::PM_DefaultFrameWidth));
    return true;
}

} // namespace Vireling
