#include "vireling/window/window_placement.h"

#include <QScreen>
#include <QWidget>

#include <algorithm>

namespace Vireling {

namespace {

/** Where a span of that length lies in the middle of `around`, yet within `limits`. */
int centred(int length, int aroundStart, int aroundLength, int limitStart, int limitLength)
{
    const int start = aroundStart + (aroundLength - length) / 2;
    const int last = std::max(limitStart, limitStart + limitLength - length);
    return std::clamp(start, limitStart, last);
}

} // namespace

QPoint middlePlace(const QWidget &window)
{
    const QRect limits = window.screen()->availableGeometry();
    const QWidget *parent = window.parentWidget();
    const QRect around = parent ? parent->window()->geometry() : limits;
    return {centred(window.width(), around.x(), around.width(), limits.x(), limits.width()),
            centred(window.height(), around.y(), around.height(), limits.y(), limits.height())};
}

} // namespace Vireling
