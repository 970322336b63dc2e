#include "vireling/style_icon_engine/style_icon_engine.h"

#include "vireling/palette/current_palette.h"

#include <QFileInfo>
#include <QGuiApplication>
#include <QImage>
#include <QPainter>
#include <QPixmapCache>
#include <QStringBuilder>
#include <QSvgRenderer>

namespace Vireling {

namespace {

// How a mode and state show; the numbers are part of the cache's keys.
enum class Tint : quint8
{
    NormalOff = 0,
    Disabled = 1,
    None = 2
};

Tint tintOf(QIcon::Mode mode, QIcon::State state)
{
    if (mode == QIcon::Disabled)
        return Tint::Disabled;
    return mode == QIcon::Normal && state == QIcon::Off ? Tint::NormalOff : Tint::None;
}

// How much of the icon's own colour stays.
qreal iconWeight(Tint tint)
{
    switch (tint) {
    case Tint::NormalOff:
        return 0.8;
    case Tint::Disabled:
        return 0.3;
    case Tint::None:
        break;
    }
    return 1.0;
}

quint16 nextEngineNumber()
{
    static quint16 lastNumber = 0;
    return ++lastNumber;
}

/** Counts the changes of theme; see reloadStyleIcons(). */
int fileGeneration = 0;

QString hexadecimal(uint value, int digits)
{
    return QStringLiteral("%1").arg(value, digits, 16, QLatin1Char('0'));
}

/** Two hexadecimal digits. Written out: keys are made for every icon that is painted. */
QLatin1String tintDigits(Tint tint)
{
    switch (tint) {
    case Tint::NormalOff:
        return QLatin1String("00");
    case Tint::Disabled:
        return QLatin1String("01");
    case Tint::None:
        break;
    }
    return QLatin1String("02");
}

QString cacheKey(const QString &engineNumber, Tint tint, const QSize &size)
{
    return QLatin1String("vr_style_icon") % engineNumber % tintDigits(tint) %
           QString::number(size.width()) % QString::number(size.height());
}

// Fades what is drawn and leaves alone what is transparent.
void fadeTowardBase(QPainter &painter, const QRect &area, qreal weight)
{
    QColor veil = currentPalette().color(QPalette::Base);
    veil.setAlphaF(1.0 - weight);
    painter.setCompositionMode(QPainter::CompositionMode_SourceAtop);
    painter.fillRect(area, veil);
}

QPixmap render(QSvgRenderer &renderer, const QSize &size, Tint tint)
{
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(0);
    QPainter painter(&image);
    renderer.render(&painter);
    if (tint != Tint::None)
        fadeTowardBase(painter, image.rect(), iconWeight(tint));
    painter.end();
    return QPixmap::fromImage(std::move(image));
}

} // namespace

void reloadStyleIcons()
{
    ++fileGeneration;
    QPixmapCache::clear();
}

StyleIconEngineData::StyleIconEngineData(const QString &filePath)
    : path(filePath)
    , number(hexadecimal(nextEngineNumber(), 4))
{}

StyleIconEngineData::~StyleIconEngineData() = default;

QSvgRenderer &StyleIconEngineData::renderer()
{
    if (svg && generation == fileGeneration)
        return *svg;
    generation = fileGeneration;
    svg = std::make_unique<QSvgRenderer>();
    svg->setFramesPerSecond(0);
    // Qt warns of a file that is not there; an icon without a file is merely empty.
    if (QFileInfo::exists(path))
        svg->load(path);
    // Takes effect on a loaded document only.
    svg->setAspectRatioMode(Qt::KeepAspectRatio);
    return *svg;
}

QString StyleIconEngineData::engineNumber() const
{
    return number;
}

StyleIconEngine::StyleIconEngine(const QString &filePath)
    : data(QSharedPointer<StyleIconEngineData>::create(filePath))
{}

StyleIconEngine::StyleIconEngine(const StyleIconEngine &other) = default;

StyleIconEngine::~StyleIconEngine() = default;

void StyleIconEngine::paint(QPainter *painter, const QRect &rect, QIcon::Mode mode,
                            QIcon::State state)
{
    const QPaintDevice *device = painter->device();
    const qreal ratio = device ? device->devicePixelRatioF() : qApp->devicePixelRatio();
    const QSize deviceSize(qRound(rect.width() * ratio), qRound(rect.height() * ratio));
    const QPixmap picture = pixmap(deviceSize, mode, state);
    painter->drawPixmap(rect, picture, picture.rect());
}

QPixmap StyleIconEngine::pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state)
{
    const QSize actual = actualSize(size, mode, state);
    if (!data->renderer().isValid() || actual.isEmpty())
        return {};

    const Tint tint = tintOf(mode, state);
    const QString key = cacheKey(data->engineNumber(), tint, actual);
    QPixmap picture;
    if (QPixmapCache::find(key, &picture))
        return picture;

    // Never marked with a device pixel ratio: screens of every density share it, and
    // QIcon marks its own copy.
    picture = render(data->renderer(), actual, tint);
    QPixmapCache::insert(key, picture);
    return picture;
}

QSize StyleIconEngine::actualSize(const QSize &size, QIcon::Mode, QIcon::State)
{
    return data->renderer().viewBox().size().scaled(size, Qt::KeepAspectRatio);
}

QString StyleIconEngine::key() const
{
    return QStringLiteral("VirelingStyleIconEngine");
}

QIconEngine *StyleIconEngine::clone() const
{
    return new StyleIconEngine(*this);
}

} // namespace Vireling
