#include "vireling/widgets/card_button.h"
namespace Vireling {
CardButton::CardButton(QWidget *parent)
    : QToolButton(parent)
{}
CardButton::CardButton(const QString &title, const QString &description, QWidget *parent)
    : QToolButton(parent)
    , shownDescription(description)
{
    setText(title);
}
void CardButton::setDescription(const QString &d)
{
    shownDescription = d;
}
QSize CardButton::sizeHint() const
{
    return QToolButton::sizeHint();
}
} // namespace Vireling
