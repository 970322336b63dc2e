#pragma once

#include <string>

/**
 * Lets the font library read the appliance's own small configuration in place of the
 * system's: "../share/r4_crash_reporter/fonts.conf" from the folder of the program that
 * `program`, a symbolic link, leads to.
 *
 * Nothing when FONTCONFIG_FILE names another, when there is no such file or when it is
 * damaged: then the system's counts. Call it before the application object, which reads
 * its fonts.
 */
void useOwnFontConfiguration(const std::string &program = "/proc/self/exe");
