#include "vireling/widgets/static_svg_widget.h"
namespace Vireling {
StaticSvgWidget::StaticSvgWidget(QWidget *parent)
    : QWidget(parent)
{}
StaticSvgWidget::StaticSvgWidget(const QString &, QWidget *parent)
    : QWidget(parent)
{}
bool StaticSvgWidget::load(const QString &)
{
    return false;
}
bool StaticSvgWidget::load(const QByteArray &)
{
    return false;
}
void StaticSvgWidget::setAspectRatioMode(Qt::AspectRatioMode mode)
{
    ratioMode = mode;
}
QRectF StaticSvgWidget::viewBox() const
{
    return {};
}
void StaticSvgWidget::setViewBox(const QRectF &) {}
QSize StaticSvgWidget::sizeHint() const
{
    return {};
}
void StaticSvgWidget::paintEvent(QPaintEvent *) {}
} // namespace Vireling
