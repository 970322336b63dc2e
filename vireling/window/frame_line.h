#pragma once

#include <QColor>

class QWidget;

namespace Vireling {

/** The colour of the lines around a window and below its title bar. */
QColor frameLineColour(const QWidget &widget);

} // namespace Vireling
