#include "vireling/style/style_input_focus_helper.h"

#include <QAbstractItemView>
#include <QAbstractScrollArea>
#include <QAbstractSpinBox>
#include <QComboBox>
#include <QFocusEvent>
#include <QFocusFrame>
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

bool cameByKeyboard(Qt::FocusReason reason)
{
    return reason == Qt::TabFocusReason || reason == Qt::BacktabFocusReason ||
           reason == Qt::ShortcutFocusReason;
}

bool marksCurrentItem(const QWidget *widget)
{
    const auto *view = qobject_cast<const QAbstractItemView *>(widget);
    return view && view->currentIndex().isValid();
}

bool needsFrameOver(const QWidget *widget)
{
    const auto *area = qobject_cast<const QAbstractScrollArea *>(widget);
    return area && area->frameShape() == QFrame::NoFrame && area->parentWidget() &&
           area->window()->windowType() != Qt::Popup && !marksCurrentItem(area);
}

} // namespace

StyleInputFocusHelper::StyleInputFocusHelper(QObject *parent)
    : QObject(parent)
{}

StyleInputFocusHelper::~StyleInputFocusHelper()
{
    delete frame.data();
}

void StyleInputFocusHelper::watch(QWidget *widget)
{
    if (ringOwner(widget))
        widget->installEventFilter(this);
}

void StyleInputFocusHelper::unwatch(QWidget *widget)
{
    widget->removeEventFilter(this);
    takeFrameFrom(widget);
}

bool StyleInputFocusHelper::eventFilter(QObject *watched, QEvent *event)
{
    const bool gained = event->type() == QEvent::FocusIn;
    if (!gained && event->type() != QEvent::FocusOut)
        return false;
    auto *widget = static_cast<QWidget *>(watched);
    if (QWidget *owner = ringOwner(widget))
        owner->update();
    if (gained)
        layFrameOver(widget, *static_cast<QFocusEvent *>(event));
    else
        takeFrameFrom(widget);
    return false;
}

void StyleInputFocusHelper::layFrameOver(QWidget *widget, const QFocusEvent &event)
{
    if (!cameByKeyboard(event.reason()) || !needsFrameOver(widget))
        return;
    if (!frame)
        frame = new QFocusFrame(widget->parentWidget());
    frame->setWidget(widget);
}

void StyleInputFocusHelper::takeFrameFrom(const QWidget *widget)
{
    if (frame && frame->widget() == widget)
        frame->setWidget(nullptr);
}

} // namespace Vireling
