#pragma once

class QScreen;
class QWindow;

namespace Vireling {

/*
 * Sizes follow the density of the screen a window is on. Qt does not tell widgets
 * when that density changes; this does. GUI thread.
 */

/** On a screen: true once its density is watched. */
constexpr char screenChangeHandlerProperty[] = "vrl_screen_change_handler";

/** Has the windows on `screen` refreshed when its density changes; once per screen. May be null. */
void watchScreen(QScreen *screen);

/**
 * Has the style polish the widget of `window` and all that is painted into the same
 * native window anew, has their sizes worked out again, then does so for the native
 * child windows. Top-level windows with a parent are windows of their own.
 */
void refreshMetrics(QWindow &window);

/** refreshMetrics() of every top-level widget whose native window is on `screen`. */
void refreshWindowsOn(const QScreen &screen);

/** To be called when `window` came to `screen`: watches the screen, refreshes the window. */
void forwardScreenChange(QWindow &window, QScreen *screen);

} // namespace Vireling
