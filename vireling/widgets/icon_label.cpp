#include "vireling/widgets/icon_label.h"
namespace Vireling {
IconLabel::IconLabel(QWidget *parent)
    : QFrame(parent)
{}
IconLabel::IconLabel(const QIcon &icon, QWidget *parent)
    : QFrame(parent)
    , shownIcon(icon)
{}
void IconLabel::setIcon(const QIcon &icon)
{
    shownIcon = icon;
}
QSize IconLabel::iconSize() const
{
    return ownIconSize;
}
void IconLabel::setIconSize(const QSize &size)
{
    ownIconSize = size;
}
QSize IconLabel::sizeHint() const
{
    return {};
}
QSize IconLabel::minimumSizeHint() const
{
    return {};
}
void IconLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
}
} // namespace Vireling
