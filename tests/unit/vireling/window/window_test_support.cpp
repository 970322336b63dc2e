#include "window_test_support.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QCoreApplication>
#include <QMouseEvent>
#include <QWidget>

void installToolkit()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

bool sendMouse(QWidget &widget, QEvent::Type type, const QPointF &position, Qt::MouseButton button,
               Qt::MouseButtons held)
{
    const QPointF inWindow = widget.mapTo(widget.window(), QPoint(0, 0)) + position;
    const QPointF global = widget.mapToGlobal(QPoint(0, 0)) + position;
    QMouseEvent event(type, position, inWindow, global, button, held, Qt::NoModifier);
    event.ignore();
    QCoreApplication::sendEvent(&widget, &event);
    return event.isAccepted();
}

bool hover(QWidget &widget, const QPointF &position)
{
    return sendMouse(widget, QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton);
}
