#pragma once

#include <QFont>
#include <QString>

class QWidget;

namespace Vireling {

/**
 * The HTML of a tooltip with a title above a text. Either is taken as HTML when Qt
 * thinks it may be, else escaped. Fonts are those of tooltips at the time of the
 * call.
 */
QString detailedToolTip(const QString &title, const QString &text);

/** Whether `widget` is a label that shows such a tooltip; null is none. */
bool isDetailedToolTip(const QWidget *widget);

/** A font as the CSS shorthand "weight size family", as in "400 9.00pt Titillium Web". */
QString cssFontShorthand(const QFont &font);

} // namespace Vireling
