#pragma once

#include "scenario.h"

class QSharedMemory;

namespace CrashScenario {

/** The bytes of the block, exactly block.size of them. */
QByteArray blockBytes(const Block &block);

/**
 * Makes the shared block, or takes over the one a killed process left behind,
 * and fills it. `memory` holds the key and stays attached: the block lives as
 * long as the caller keeps it. Null on success, else what went wrong.
 */
QString writeBlock(QSharedMemory &memory, const Block &block);

} // namespace CrashScenario
