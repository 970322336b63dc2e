#pragma once

#include <QMap>
#include <QString>

class QWidget;

/** Every text a window shows or speaks, by where it comes from: a path and a property. */
QMap<QString, QString> shownTexts(const QWidget &window);
