#include "vireling/window/non_owning_proxy_widget.h"

#include <QEvent>

namespace Vireling {

NonOwningProxyWidget::NonOwningProxyWidget(QWidget *content, QWidget *parent)
    : QWidget(parent)
    , ownContent(content)
{
    // What the pointer does here is meant for the content.
    setAttribute(Qt::WA_TransparentForMouseEvents);
    if (!content)
        return;
    setSizePolicy(content->sizePolicy());
    content->installEventFilter(this);
}

QSize NonOwningProxyWidget::sizeHint() const
{
    return ownContent ? ownContent->sizeHint() : QSize(0, 0);
}

QSize NonOwningProxyWidget::minimumSizeHint() const
{
    return ownContent ? ownContent->minimumSizeHint().expandedTo(ownContent->minimumSize())
                      : QSize(0, 0);
}

bool NonOwningProxyWidget::eventFilter(QObject *watched, QEvent *event)
{
    // The content's layout posts this where its wishes change.
    if (watched == ownContent && event->type() == QEvent::LayoutRequest)
        updateGeometry();
    return QWidget::eventFilter(watched, event);
}

bool NonOwningProxyWidget::event(QEvent *event)
{
    const bool handled = QWidget::event(event);
    switch (event->type()) {
    case QEvent::Move:
    case QEvent::Resize:
    case QEvent::Show:
        placeContent();
        break;
    case QEvent::ShowToParent:
    case QEvent::HideToParent:
        if (ownContent)
            ownContent->setVisible(!isHidden());
        break;
    default:
        break;
    }
    return handled;
}

void NonOwningProxyWidget::placeContent()
{
    if (ownContent)
        ownContent->setGeometry(geometry());
}

} // namespace Vireling
