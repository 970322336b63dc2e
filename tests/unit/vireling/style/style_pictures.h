#pragma once

#include <QApplication>
#include <QColor>
#include <QImage>
#include <QPainter>
#include <QPalette>

inline QColor windowColour()
{
    return QApplication::palette().color(QPalette::Window);
}

/** What `paint` draws on the window's colour. */
template <typename Paint>
QImage painted(const QSize &size, Paint &&paint)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(windowColour());
    QPainter painter(&image);
    paint(painter);
    return image;
}

/** Whether `colour` is to be seen `within` the picture. */
inline bool shows(const QImage &image, const QColor &colour, const QRect &within)
{
    const QRect area = within & image.rect();
    for (int y = area.top(); y <= area.bottom(); ++y)
        for (int x = area.left(); x <= area.right(); ++x)
            if (image.pixelColor(x, y) == colour)
                return true;
    return false;
}
