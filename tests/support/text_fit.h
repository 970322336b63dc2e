#pragma once

#include <QString>

class QWidget;

/** What a widget says, for messages; empty for one without text. */
QString textOf(const QWidget &widget);

/**
 * How the text of a shown widget does not fit where the style draws it; empty when it
 * does or when the widget draws no text of its own.
 */
QString textMisfit(const QWidget &widget);
