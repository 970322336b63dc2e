#pragma once

/*
 * A crash that takes the display along must not take the report along as well. Qt aborts
 * when it finds no display: the program is then started again without one, and since
 * nobody can be shown anything, it saves the report and restarts the appliance.
 */

/**
 * From here on an abort starts the program again, with the same arguments and on Qt's
 * "offscreen" platform. Call once, before the application object and any thread. Nothing
 * when this is the second start already: what aborts then, ends.
 */
void restartWithoutDisplayOnAbort(char **argv);

/** The display is there: an abort ends the program again. */
void displayIsUp();

/** Whether this is the second start. */
bool hasNoDisplay();
