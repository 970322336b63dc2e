#pragma once

class QWidget;

namespace Vireling {

class Palette;
class Style;

/*
 * What the style sets on widgets of certain classes. Polishing sets palettes and
 * attributes; taking the style away undoes both.
 */

/** Palette and attributes by class: header, table, other item view, title bar. */
void polishByClass(QWidget *widget, const Palette &stylePalette);
void unpolishByClass(QWidget *widget);

/** Gives a message box its minimum width through one spacer, however often it is polished. */
void polishMessageBox(QWidget *widget, const Style &style);

} // namespace Vireling
