#include "vireling/style/kept_picture.h"

#include <QCache>
#include <QImage>
#include <QPaintDevice>
#include <QPainter>

#include <cmath>

namespace Vireling {

namespace {

struct FullKey
{
    PictureShape shape;
    QRgb first;
    QRgb second;
    int line;
    int radius;
    int width;
    int height;
    int ratio;

    bool operator==(const FullKey &other) const
    {
        return shape == other.shape && first == other.first && second == other.second &&
               line == other.line && radius == other.radius && width == other.width &&
               height == other.height && ratio == other.ratio;
    }
};

uint qHash(const FullKey &key, uint seed = 0)
{
    const uint parts[] = {uint(key.shape),  key.first,       key.second,       uint(key.line),
                          uint(key.radius), uint(key.width), uint(key.height), uint(key.ratio)};
    return qHashRange(std::begin(parts), std::end(parts), seed);
}

/** Lengths count in thousandths of a pixel. */
int thousandths(qreal length)
{
    return int(std::lround(length * 1000));
}

/** The states of all controls of a busy screen. */
constexpr int keptPictures = 512;

/** Larger ones are drawn anew: few recur, and they take room. Logical pixels. */
constexpr int largestPicture = 32;

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

QImage makePicture(const QSize &size, int ratio, const std::function<void(QPainter &)> &draw)
{
    QImage picture(size * ratio, QImage::Format_ARGB32_Premultiplied);
    picture.setDevicePixelRatio(ratio);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    painter.setRenderHint(QPainter::Antialiasing);
    draw(painter);
    painter.end();
    return picture;
}

} // namespace

QImage keptPicture(const PictureKey &key, const QSize &size, int ratio,
                   const std::function<void(QPainter &)> &draw)
{
    static QCache<FullKey, QImage> pictures(keptPictures);
    const FullKey full{key.shape,
                       key.first.rgba(),
                       key.second.rgba(),
                       thousandths(key.line),
                       thousandths(key.radius),
                       size.width(),
                       size.height(),
                       ratio};
    if (const QImage *kept = pictures.object(full))
        return *kept;
    QImage made = makePicture(size, ratio, draw);
    pictures.insert(full, new QImage(made));
    return made;
}

int exactPictureRatio(const QPainter &painter, const QRectF &rect)
{
    const QPaintDevice *device = painter.device();
    const qreal ratio = device ? device->devicePixelRatioF() : 1;
    const bool exact =
        isWhole(ratio) && isWhole(rect) && movesByWholePixels(painter) && paintsPlainly(painter);
    return exact ? int(ratio) : 0;
}

void drawKept(QPainter &painter, const QRectF &rect, const PictureKey &key,
              const std::function<void(QPainter &)> &draw)
{
    const bool small = rect.width() <= largestPicture && rect.height() <= largestPicture;
    const int ratio = small ? exactPictureRatio(painter, rect) : 0;
    if (ratio > 0) {
        painter.drawImage(rect.topLeft(), keptPicture(key, rect.size().toSize(), ratio, draw));
        return;
    }
    painter.save();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.translate(rect.topLeft());
    draw(painter);
    painter.restore();
}

} // namespace Vireling
