#pragma once

#include <QColor>

namespace Vireling {

/**
 * `first` and `second` mixed, with `weight` the share of `first`: at most 0 gives
 * `second`, at least 1 gives `first`. Channels are mixed by the opacity of their
 * colour, so that a transparent colour lends none of its hue. Two transparent
 * colours give a transparent one.
 */
QColor mixColours(const QColor &first, const QColor &second, qreal weight);

} // namespace Vireling
