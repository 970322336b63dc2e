#include "vireling/widgets/elided_label.h"
namespace Vireling {
ElidedLabel::ElidedLabel(QWidget *parent)
    : QFrame(parent)
{}
ElidedLabel::ElidedLabel(const QString &text, QWidget *parent)
    : QFrame(parent)
    , fullText(text)
{}
void ElidedLabel::setText(const QString &text)
{
    fullText = text;
}
QSize ElidedLabel::sizeHint() const
{
    return {};
}
QSize ElidedLabel::minimumSizeHint() const
{
    return {};
}
bool ElidedLabel::event(QEvent *event)
{
    return QFrame::event(event);
}
void ElidedLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
}
} // namespace Vireling
