#pragma once

namespace Vireling {

/**
 * From now on every message box comes up in the toolkit's frame, with its title: the
 * appliance has no window manager to give it one. It lies in the middle of its parent's
 * window, or of the screen, unless someone moved it. Its frame can close it where Escape
 * can. Callers, results, focus and contents are those of any QMessageBox.
 *
 * Boxes that were shown before, or are part of a window, stay as they are. To be called
 * once in the life of an application object, which owns what this makes. GUI thread.
 */
void frameMessageBoxes();

} // namespace Vireling
