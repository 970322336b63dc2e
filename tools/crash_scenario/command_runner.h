#pragma once

#include <QString>
#include <QStringList>

namespace CrashScenario {

/** Exit status when the command could not be started. */
constexpr int commandNotStarted = 127;

/** The command's words with the crash data file's path in its place. */
QStringList withCrashFile(const QStringList &words, const QString &crashFile);

/**
 * Starts the command on our own standard streams, waits for its end and returns
 * its exit status, 128 + N when signal N ended it. SIGTERM is passed on to it; a
 * SIGINT from the terminal reaches it anyway. Both leave this process alone: who
 * holds the shared block must outlive who reads it.
 */
int runCommand(const QStringList &words);

} // namespace CrashScenario
