#pragma once

#include <QColor>
#include <QImage>

namespace TestSupport {

/** How many pixels of `image`, or of a part of it, have exactly this colour. */
inline int count(const QImage &image, const QColor &colour, QRect within = QRect())
{
    within = within.isNull() ? image.rect() : within & image.rect();
    int found = 0;
    for (int y = within.top(); y <= within.bottom(); ++y)
        for (int x = within.left(); x <= within.right(); ++x)
            found += image.pixelColor(x, y) == colour;
    return found;
}

inline bool isFilled(const QImage &image, const QColor &colour, const QRect &within)
{
    return count(image, colour, within) == within.width() * within.height();
}

} // namespace TestSupport
