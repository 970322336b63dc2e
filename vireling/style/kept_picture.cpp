#include "vireling/style/kept_picture.h"

#include <QCache>
#include <QImage>
#include <QPainter>

#include <array>
#include <cmath>

namespace Vireling {

namespace {

/** Lengths count in thousandths of a pixel. */
int thousandths(qreal length)
{
    return int(std::lround(length * 1000));
}

/** All that a picture depends on: the key, and where on its pixels the drawing lies. */
struct FullKey
{
    FullKey(const PictureKey &key, const QRectF &place, int pixelRatio)
        : shape(key.shape)
        , first(key.first.rgba())
        , second(key.second.rgba())
        , lengths{thousandths(key.line),  thousandths(key.radius),    thousandths(place.x()),
                  thousandths(place.y()), thousandths(place.width()), thousandths(place.height())}
        , ratio(pixelRatio)
    {}

    bool operator==(const FullKey &other) const
    {
        return shape == other.shape && first == other.first && second == other.second &&
               lengths == other.lengths && ratio == other.ratio;
    }

    PictureShape shape;
    QRgb first;
    QRgb second;
    std::array<int, 6> lengths;
    int ratio;
};

uint qHash(const FullKey &key, uint seed = 0)
{
    const uint parts[] = {uint(key.shape), key.first, key.second, uint(key.ratio)};
    return qHashRange(key.lengths.begin(), key.lengths.end(),
                      qHashRange(std::begin(parts), std::end(parts), seed));
}

/** The states of all controls of a busy screen, in 2 MiB. */
constexpr int keptPixels = 512 * 1024;

/** Larger ones are drawn anew: few recur, and they take room. Logical pixels. */
constexpr int largestPicture = 128;

bool isWhole(qreal value)
{
    return value == std::floor(value);
}

bool isWhole(const QRectF &rect)
{
    return isWhole(rect.x()) && isWhole(rect.y()) && isWhole(rect.width()) &&
           isWhole(rect.height());
}

bool movesByWholePixels(const QPainter &painter)
{
    const QTransform &transform = painter.transform();
    return transform.type() <= QTransform::TxTranslate && isWhole(transform.dx()) &&
           isWhole(transform.dy());
}

bool paintsPlainly(const QPainter &painter)
{
    return painter.compositionMode() == QPainter::CompositionMode_SourceOver &&
           painter.opacity() == 1;
}

QImage makePicture(const QRectF &place, int ratio, const std::function<void(QPainter &)> &draw)
{
    QImage picture(place.toAlignedRect().size() * ratio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(place.topLeft());
    draw(painter);
    painter.end();
    return picture;
}

/** Of whole pixels, with the drawing at `place`, less than one pixel from the corner. */
QImage pictureWith(const QRectF &place, const PictureKey &key, int ratio,
                   const std::function<void(QPainter &)> &draw)
{
    static QCache<FullKey, QImage> pictures(keptPixels);
    const FullKey full(key, place, ratio);
    if (const QImage *kept = pictures.object(full))
        return *kept;
    QImage made = makePicture(place, ratio, draw);
    pictures.insert(full, new QImage(made), made.width() * made.height());
    return made;
}

} // namespace

QImage keptPicture(const PictureKey &key, const QSize &size, int ratio,
                   const std::function<void(QPainter &)> &draw)
{
    return pictureWith({{0, 0}, size}, key, ratio, draw);
}

int exactPictureRatio(const QPainter &painter, const QRectF &rect)
{
    // Not its device's: that may be a widget which is drawn into a picture of another ratio.
    const qreal ratio = painter.isActive() ? painter.deviceTransform().m11() : 1;
    const bool exact =
        isWhole(ratio) && isWhole(rect) && movesByWholePixels(painter) && paintsPlainly(painter);
    return exact ? int(ratio) : 0;
}

void drawKept(QPainter &painter, const QRectF &rect, const PictureKey &key,
              const std::function<void(QPainter &)> &draw)
{
    const QRect pixels = rect.toAlignedRect();
    const bool small = pixels.width() <= largestPicture && pixels.height() <= largestPicture;
    const int ratio = small ? exactPictureRatio(painter, pixels) : 0;
    if (ratio > 0) {
        const QRectF place = rect.translated(-pixels.topLeft());
        painter.drawImage(pixels.topLeft(), pictureWith(place, key, ratio, draw));
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.topLeft());
    draw(painter);
    painter.restore();
}

} // namespace Vireling
