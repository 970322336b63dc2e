#pragma once

#include <QIconEngine>
#include <QSharedPointer>
#include <QSize>
#include <QString>

#include <memory>

class QSvgRenderer;

namespace Vireling {

/** What copies of an icon engine share: the file, its renderer and a number for the cache. */
class StyleIconEngineData
{
public:
    explicit StyleIconEngineData(const QString &filePath);
    ~StyleIconEngineData();
    Q_DISABLE_COPY(StyleIconEngineData)

    /** Made and loaded on first use; not valid when the file is missing or no SVG. */
    QSvgRenderer &renderer();

    /** The number as 4 hexadecimal digits; each data object has its own until 65536 were made. */
    QString engineNumber() const;

private:
    const QString path;
    const quint16 number;
    std::unique_ptr<QSvgRenderer> svg;
};

/**
 * Renders an SVG at the exact device size, fades it toward the palette's base
 * colour for disabled and for normal-off, and keeps the result in QPixmapCache.
 * The icon's own colours are kept: nothing is recoloured. A missing or invalid file
 * gives null pixmaps. GUI thread.
 */
class StyleIconEngine : public QIconEngine
{
public:
    /** `filePath` may use the "vireling:" prefix; it is read when first rendered. */
    explicit StyleIconEngine(const QString &filePath);
    /** Shares renderer and cached pixmaps with `other`. */
    StyleIconEngine(const StyleIconEngine &other);
    ~StyleIconEngine() override;

    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    /** `size` in device pixels; the picture keeps its proportions within it. */
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QString key() const override;
    QIconEngine *clone() const override;

private:
    StyleIconEngine &operator=(const StyleIconEngine &) = delete;

    QSharedPointer<StyleIconEngineData> data;
};

} // namespace Vireling
