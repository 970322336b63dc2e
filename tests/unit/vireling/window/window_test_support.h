#pragma once

#include <QEvent>
#include <QPointF>
#include <QtGlobal>

class QWidget;

/** Installs the dark appearance, with its resources; call it once, first. */
void installToolkit();

/** A mouse event straight to `widget`, as Qt would deliver it; whether it was accepted. */
bool sendMouse(QWidget &widget, QEvent::Type type, const QPointF &position,
               Qt::MouseButton button = Qt::LeftButton, Qt::MouseButtons held = Qt::LeftButton);

/** A movement of the pointer without a button. */
bool hover(QWidget &widget, const QPointF &position);
