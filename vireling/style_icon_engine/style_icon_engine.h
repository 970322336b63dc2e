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
    const QString number; // of 16 bits, in hexadecimal digits
    std::unique_ptr<QSvgRenderer> svg;
    int generation = 0; // of the files when svg was loaded
};

/**
 * Renders an SVG at the exact device size, fades it toward the palette's base
 * colour for disabled and for normal-off, and keeps the result in QPixmapCache.
 * The icon's own colours are kept: nothing is recoloured. A pixmap already cached
 * keeps the base colour it was faded with. A missing or invalid file gives null
 * pixmaps. GUI thread.
 */
class StyleIconEngine : public QIconEngine
{
public:
    /** `filePath` may use the "vireling:" prefix; it is read when first rendered. */
    explicit StyleIconEngine(const QString &filePath);
    /** Shares renderer and cached pixmaps with `other`. */
    StyleIconEngine(const StyleIconEngine &other);
    ~StyleIconEngine() override;

    /** Renders for the pixels of the painter's device and fills `rect` with the result. */
    void paint(QPainter *painter, const QRect &rect, QIcon::Mode mode, QIcon::State state) override;
    /** `size` in device pixels; the picture keeps its proportions within it. */
    QPixmap pixmap(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    /** What pixmap() makes of `size`. For a file that cannot be read, `size` itself. */
    QSize actualSize(const QSize &size, QIcon::Mode mode, QIcon::State state) override;
    QString key() const override;
    QIconEngine *clone() const override;

private:
    StyleIconEngine &operator=(const StyleIconEngine &) = delete;

    QSharedPointer<StyleIconEngineData> data;
};

/**
 * Has every icon load its file again, and empties QPixmapCache: for when the theme
 * changes, and with it the files that "vireling:" paths mean and the colour that
 * icons fade toward.
 */
void reloadStyleIcons();

} // namespace Vireling
