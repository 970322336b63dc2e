#include "vireling/widgets/icon_label.h"

#include "vireling/widgets/label_accessibility.h"

#include <QPainter>
#include <QStyle>
#include <QWindow>

namespace Vireling {

namespace {

/** The native window the widget is shown in; null before it is. Knows the pixel ratio. */
QWindow *nativeWindowOf(const QWidget &widget)
{
    if (QWindow *own = widget.windowHandle())
        return own;
    const QWidget *parent = widget.nativeParentWidget();
    return parent ? parent->windowHandle() : nullptr;
}

} // namespace

IconLabel::IconLabel(QWidget *parent)
    : IconLabel(QIcon(), parent)
{}

IconLabel::IconLabel(const QIcon &icon, QWidget *parent)
    : QFrame(parent)
    , shownIcon(icon)
{
    registerLabelAccessibility();
}

void IconLabel::setIcon(const QIcon &icon)
{
    shownIcon = icon;
    updateGeometry();
    update();
}

QSize IconLabel::iconSize() const
{
    if (ownIconSize.isValid())
        return ownIconSize;
    const int side = style()->pixelMetric(QStyle::PM_SmallIconSize, nullptr, this);
    return {side, side};
}

void IconLabel::setIconSize(const QSize &size)
{
    ownIconSize = size;
    updateGeometry();
    update();
}

QSize IconLabel::sizeHint() const
{
    const QMargins margins = contentsMargins();
    return iconSize() + QSize(margins.left() + margins.right(), margins.top() + margins.bottom());
}

QSize IconLabel::minimumSizeHint() const
{
    return sizeHint();
}

void IconLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    if (shownIcon.isNull())
        return;
    // A label cannot be switched: as "on" the style's icons come in their full colour,
    // while "off" is drawn faded.
    const QPixmap pixmap =
        shownIcon.pixmap(nativeWindowOf(*this), iconSize(),
                         isEnabled() ? QIcon::Normal : QIcon::Disabled, QIcon::On);
    QPainter painter(this);
    // Icons that come as small pixels only are enlarged on screens of higher ratios.
    painter.setRenderHint(QPainter::SmoothPixmapTransform);
    style()->drawItemPixmap(&painter, contentsRect(), Qt::AlignCenter, pixmap);
}

} // namespace Vireling
