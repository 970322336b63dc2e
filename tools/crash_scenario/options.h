#pragma once

#include "scenario.h"

#include <variant>

namespace CrashScenario {

/** Why a command line was not understood, in one line without its end. */
struct UsageError
{
    QString message;
};

/** The command line asked for this text on standard output and nothing else. */
struct HelpText
{
    QString text;
};

/**
 * Reads a command line, program name first. Needs a QCoreApplication. Everything
 * that can be known to be wrong beforehand is refused here: unknown options, bad
 * numbers, texts too long for their field, options that exclude each other.
 */
std::variant<Scenario, UsageError, HelpText> parseArguments(const QStringList &arguments);

} // namespace CrashScenario
