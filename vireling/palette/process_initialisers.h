#pragma once

namespace Vireling {

/*
 * The first things main() does, in this order, before the application object
 * exists.
 */

/** Scaling and pixmaps for high densities, ratios rounded to whole numbers. */
void initialiseHighDpi();

/** Makes the toolkit's icons and logos known to Qt's resource system; further calls do nothing. */
void initialiseResources();

/** Does nothing: kept so that programs of the appliance share one start-up sequence. */
void initialiseToolkit();

} // namespace Vireling
