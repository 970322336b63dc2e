#pragma once

class QWidget;

namespace Vireling {

/**
 * From now on the children of `widget` inherit its user palette: when it changes,
 * when a child is polished and when one is moved in from elsewhere. Only widgets
 * that carry a user palette pay for being watched.
 */
void inheritUserPalette(QWidget *widget);

} // namespace Vireling
