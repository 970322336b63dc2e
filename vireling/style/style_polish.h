#pragma once

#include <QColor>
#include <QPalette>

class QWidget;

namespace Vireling {

class Palette;
class Style;

/*
 * What the style sets on widgets of certain classes. Polishing sets palettes and
 * attributes; taking the style away undoes both.
 */

/**
 * The ground of selected rows: ViewItemActiveBase, in the light theme darkened until
 * ViewItemActiveText reads on it, which it does not on the role's own grey.
 */
QColor selectedRowBase(const Palette &palette, QPalette::ColorGroup group);

struct CellGrounds
{
    QColor base;
    QColor alternate;
};

/**
 * The grounds of a table's rows: CellBase and CellAltBase, in the dark theme darkened
 * until CellText reads on both.
 */
CellGrounds cellGrounds(const Palette &palette, QPalette::ColorGroup group);

/** The bar at the leading edge of selected rows: the accent, or their text's colour where it would
 * not show. */
QColor selectedRowAccent(const Palette &palette, QPalette::ColorGroup group);

/** Palette and attributes by class: header, table, other item view, title bar. */
void polishByClass(QWidget *widget, const Palette &stylePalette);
void unpolishByClass(QWidget *widget);

/** Gives a message box its minimum width through one spacer, however often it is polished. */
void polishMessageBox(QWidget *widget, const Style &style);
/** Takes the spacer out again. Both do nothing for other widgets. */
void unpolishMessageBox(QWidget *widget);

} // namespace Vireling
