#pragma once

#include <string>

/**
 * Lets the font library read the appliance's own small configuration in place of the
 * system's: "../share/r4_crash_reporter/fonts.conf" from the folder of the program that
 * `program`, a symbolic link, leads to.
 *
 * Nothing when FONTCONFIG_FILE already names another, or when there is no such file. Sets
 * an environment variable: call it before the application object and any thread.
 */
void useOwnFontConfiguration(const std::string &program = "/proc/self/exe");
