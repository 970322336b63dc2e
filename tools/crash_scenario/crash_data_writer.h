#pragma once

#include "scenario.h"

namespace CrashScenario {

/** The bytes of the crash data file. */
QByteArray crashDataBytes(const CrashData &data);

} // namespace CrashScenario
