#pragma once

class QModelIndex;
class QWidget;

namespace Vireling {

/**
 * Gives the list of a combo box rows like those of any other list of the style: Qt's own
 * delegate for them asks no style how high a row is. A delegate set by the program stays.
 * For other widgets nothing; once is enough, again does no harm.
 */
void polishComboPopup(QWidget *widget);

/** Whether the entry is one of the separators that QComboBox inserts. */
bool isComboSeparator(const QModelIndex &index);

} // namespace Vireling
