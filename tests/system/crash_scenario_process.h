#pragma once

#include "support/sandbox_run.h"

#include <QProcess>

namespace TestSupport {

struct Outcome
{
    int status = -1;
    QByteArray stdOut;
    QByteArray stdErr;
};

/** Runs crash_scenario with a temporary folder of its own; only without a block. */
inline Outcome play(const QString &folder, const QStringList &options,
                    const QStringList &command = {})
{
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", folder);
    process.setProcessEnvironment(environment);
    QStringList words = options;
    if (!command.isEmpty())
        words += QStringList{"--"} + command;
    process.start(crashScenarioProgram(), words);
    process.waitForFinished();
    const bool exited = process.exitStatus() == QProcess::NormalExit;
    return {exited ? process.exitCode() : -process.exitCode(), process.readAllStandardOutput(),
            process.readAllStandardError()};
}

} // namespace TestSupport
