#include "vireling/widgets/static_svg_widget.h"

#include "vireling/widgets/label_accessibility.h"

#include <QPainter>

namespace Vireling {

StaticSvgWidget::StaticSvgWidget(QWidget *parent)
    : QWidget(parent)
{
    registerLabelAccessibility();
    renderer.setFramesPerSecond(0);
}

StaticSvgWidget::StaticSvgWidget(const QString &filePath, QWidget *parent)
    : StaticSvgWidget(parent)
{
    load(filePath);
}

bool StaticSvgWidget::load(const QString &filePath)
{
    const bool valid = renderer.load(filePath);
    documentChanged();
    return valid;
}

bool StaticSvgWidget::load(const QByteArray &contents)
{
    const bool valid = renderer.load(contents);
    documentChanged();
    return valid;
}

void StaticSvgWidget::setAspectRatioMode(Qt::AspectRatioMode mode)
{
    ratioMode = mode;
    contentChanged();
}

QRectF StaticSvgWidget::viewBox() const
{
    return ownViewBox ? *ownViewBox : statedViewBox;
}

void StaticSvgWidget::setViewBox(const QRectF &viewBox)
{
    ownViewBox = viewBox.isEmpty() ? std::nullopt : std::optional<QRectF>(viewBox);
    contentChanged();
}

QSize StaticSvgWidget::sizeHint() const
{
    const QSize picture = ownViewBox ? ownViewBox->size().toSize() : defaultSize();
    const QMargins margins = contentsMargins();
    return picture + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

void StaticSvgWidget::paintEvent(QPaintEvent *)
{
    const QRectF area = contentsRect();
    const QSizeF size = viewBox().size().scaled(area.size(), ratioMode);
    if (!renderer.isValid() || size.isEmpty())
        return;
    const qreal ratio = devicePixelRatioF();
    const QSize pixels = (size * ratio).toSize().expandedTo(QSize(1, 1));
    if (rendered.size() != pixels || !qFuzzyCompare(rendered.devicePixelRatio(), ratio))
        rendered = renderPixels(pixels, ratio);
    QRectF target(QPointF(), QSizeF(pixels) / ratio);
    target.moveCenter(area.center());
    QPainter painter(this);
    painter.setClipRect(contentsRect()); // an expanding picture is larger
    // On whole pixels of the screen: between two of them the picture would blur.
    painter.drawPixmap(QPointF(qRound(target.x() * ratio), qRound(target.y() * ratio)) / ratio,
                       rendered);
}

QPixmap StaticSvgWidget::renderPixels(const QSize &pixels, qreal ratio)
{
    QPixmap pixmap(pixels);
    pixmap.fill(Qt::transparent);
    pixmap.setDevicePixelRatio(ratio);
    QPainter painter(&pixmap);
    renderer.render(&painter, QRectF(QPointF(), QSizeF(pixels) / ratio));
    return pixmap;
}

void StaticSvgWidget::documentChanged()
{
    // Asked before a view box is set: the renderer forgets what the document stated.
    statedViewBox = renderer.viewBoxF();
    contentChanged();
}

void StaticSvgWidget::contentChanged()
{
    renderer.setViewBox(viewBox());
    rendered = QPixmap();
    updateGeometry();
    update();
}

} // namespace Vireling
