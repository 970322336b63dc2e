#pragma once

#include <QApplication>
#include <QImage>
#include <QPainter>
#include <QStyle>
#include <QVector>

/*
 * What the tests of containers share: pictures of what the application's style
 * paints, and a few questions about pictures and places.
 */
namespace ContainerPictures {

inline const QStyle &style()
{
    return *QApplication::style();
}

inline QColor focusColour()
{
    return style().standardPalette().color(QPalette::Active, QPalette::Highlight);
}

/** A picture of what `draw` paints, on a ground that no theme uses. */
template <typename Draw>
QImage painted(const QSize &size, Draw draw)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(Qt::magenta);
    QPainter painter(&image);
    draw(painter);
    return image;
}

inline bool overlap(const QVector<QRect> &rects)
{
    for (int i = 0; i < rects.size(); ++i)
        for (int j = i + 1; j < rects.size(); ++j)
            if (rects[i].intersects(rects[j]))
                return true;
    return false;
}

} // namespace ContainerPictures
