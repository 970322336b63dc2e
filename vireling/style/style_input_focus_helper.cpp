#include "vireling/style/style_input_focus_helper.h"

#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QEvent>
#include <QLineEdit>

namespace Vireling {

namespace {

/** The widget that draws the focus ring for `widget`; null when `widget` does so itself. */
QWidget *ringOwner(QWidget *widget)
{
    if (qobject_cast<QAbstractScrollArea *>(widget))
        return widget;
    if (!qobject_cast<QLineEdit *>(widget))
        return nullptr;
    QWidget *parent = widget->parentWidget();
    const bool composed =
        qobject_cast<QAbstractSpinBox *>(parent) || qobject_cast<QComboBox *>(parent);
    return composed ? parent : nullptr;
}

} // namespace

StyleInputFocusHelper::StyleInputFocusHelper(QObject *parent)
    : QObject(parent)
{}

void StyleInputFocusHelper::watch(QWidget *widget)
{
    if (ringOwner(widget))
        widget->installEventFilter(this);
}

void StyleInputFocusHelper::unwatch(QWidget *widget)
{
    widget->removeEventFilter(this);
}

bool StyleInputFocusHelper::eventFilter(QObject *watched, QEvent *event)
{
    if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut)
        if (QWidget *owner = ringOwner(static_cast<QWidget *>(watched)))
            owner->update();
    return false;
}

} // namespace Vireling
