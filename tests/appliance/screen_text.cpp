/*
 * Draws texts as the crash reporter's screens do, for whoever looks for them on a picture
 * of the screen.
 *
 *     screen_text TEXT...
 *
 * Writes a line for each text, font and place between two pixels: the text's number, width
 * and height of what is inked, and how much each of these pixels is covered, two
 * hexadecimal digits each, row by row.
 */

#include "vireling/palette/fonts.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QImage>
#include <QPainter>

#include <cstdio>

using Vireling::FontSize;
using Vireling::FontWeight;

namespace {

constexpr int margin = 8;
/** A centred text may begin between two pixels; glyphs are drawn to a quarter of one. */
constexpr int placesInPixel = 4;

QImage draw(const QString &text, const QFont &font, qreal shift)
{
    const QFontMetrics metrics(font);
    QImage image(metrics.horizontalAdvance(text) + 2 * margin, metrics.height() + 2 * margin,
                 QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QPointF(margin + shift, margin + metrics.ascent()), text);
    return image;
}

bool isInked(QRgb pixel)
{
    return qGreen(pixel) > 0;
}

QRect inkOf(const QImage &image)
{
    QRect ink;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (isInked(image.pixel(x, y)))
                ink |= QRect(x, y, 1, 1);
    return ink;
}

void print(int number, const QImage &image)
{
    const QRect ink = inkOf(image);
    std::printf("%d %d %d ", number, ink.width(), ink.height());
    for (int y = ink.top(); y <= ink.bottom(); ++y)
        for (int x = ink.left(); x <= ink.right(); ++x)
            std::printf("%02x", unsigned(qGreen(image.pixel(x, y))));
    std::printf("\n");
}

} // namespace

int main(int argc, char **argv)
{
    const QApplication application(argc, argv);
    Vireling::installAppearance(Vireling::Theme::Dark);
    QList<QFont> fonts;
    for (const FontSize size :
         {FontSize::Small, FontSize::Medium, FontSize::Large, FontSize::Largest})
        fonts << Vireling::styleFont(FontWeight::Regular, size)
              << Vireling::styleFont(FontWeight::SemiBold, size);
    const QStringList texts = QCoreApplication::arguments().mid(1);
    for (int number = 0; number < texts.size(); ++number)
        for (const QFont &font : qAsConst(fonts))
            for (int place = 0; place < placesInPixel; ++place)
                print(number, draw(texts.at(number), font, qreal(place) / placesInPixel));
}
