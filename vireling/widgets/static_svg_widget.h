#pragma once

#include <QPixmap>
#include <QRectF>
#include <QSvgRenderer>
#include <QWidget>

#include <optional>

namespace Vireling {

/** Shows an SVG, without animation, scaled into the widget. Rendered once per size and content. */
class StaticSvgWidget : public QWidget
{
    Q_OBJECT

public:
    explicit StaticSvgWidget(QWidget *parent = nullptr);
    explicit StaticSvgWidget(const QString &filePath, QWidget *parent = nullptr);

    /** False when there is no valid SVG; the widget then shows nothing. */
    bool load(const QString &filePath);
    bool load(const QByteArray &contents);

    /** The size the SVG states for itself; empty without a valid one. */
    QSize defaultSize() const { return renderer.defaultSize(); }

    /** How the picture fits the widget; Qt::KeepAspectRatio unless set. */
    Qt::AspectRatioMode aspectRatioMode() const { return ratioMode; }
    void setAspectRatioMode(Qt::AspectRatioMode mode);

    /** The part of the SVG to show; by default, and after an empty one, what the SVG states. */
    QRectF viewBox() const;
    void setViewBox(const QRectF &viewBox);

    /** The view box that was set, else defaultSize(). */
    QSize sizeHint() const override;

protected:
    void paintEvent(QPaintEvent *event) override;

private:
    QPixmap renderPixels(const QSize &pixels, qreal ratio);
    void documentChanged();
    void contentChanged();

    QSvgRenderer renderer;
    Qt::AspectRatioMode ratioMode = Qt::KeepAspectRatio;
    QRectF statedViewBox;
    std::optional<QRectF> ownViewBox;
    QPixmap rendered; // null until painted
};

} // namespace Vireling
