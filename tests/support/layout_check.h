#pragma once

#include <QStringList>

class QWidget;

/**
 * What is wrong with the layout of a shown window, one line a finding: text that does
 * not fit where it is drawn, children outside their parent, things in one layout that
 * overlap. Left alone is what cuts text short on purpose: ElidedLabel and the titles of
 * dock widgets and sub-windows, which show it whole in a tooltip or when enlarged, and
 * what scrolls: the contents of scroll areas, tab bars with scroll buttons, text fields.
 */
QStringList layoutProblems(const QWidget &window);
