#include "block_writer.h"
#include "command_runner.h"
#include "crash_data_writer.h"
#include "options.h"

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <QSharedMemory>
#include <QTemporaryFile>

#include <cstdio>
#include <cstdlib>

using namespace CrashScenario;

namespace {

constexpr int wrongUsage = 2;
constexpr int cannotPlay = 125;

int fail(int status, const QString &message)
{
    std::fprintf(stderr, "crash_scenario: %s\n", qUtf8Printable(message));
    return status;
}

/** Has a name that is easy to find in a core image, and stays a call of its own. */
[[gnu::noinline]] void crashOnPurpose()
{
    std::abort();
}

/** Null on success, else what went wrong. */
QString write(QFile &file, const QByteArray &bytes)
{
    if (file.write(bytes) == bytes.size() && file.flush())
        return {};
    return file.fileName() + QLatin1String(": ") + file.errorString();
}

/** The path the crash data was written to; `error` is filled when it was not. */
QString writeCrashFile(const Scenario &scenario, QString &error)
{
    const QByteArray bytes = crashDataBytes(scenario.crashData);
    if (scenario.crashFile.isEmpty()) {
        QTemporaryFile file(QDir::temp().filePath(QStringLiteral("crash_data_XXXXXX")));
        file.setAutoRemove(false);
        error = file.open() ? write(file, bytes) : file.errorString();
        return file.fileName();
    }
    QFile file(scenario.crashFile);
    error = file.open(QIODevice::WriteOnly) ? write(file, bytes)
                                            : file.fileName() + ": " + file.errorString();
    return file.fileName();
}

/** Says that the command did not delete the file; one of our own making is tidied up. */
void reportLeftCrashFile(const Scenario &scenario, const QString &crashFile)
{
    if (!QFile::exists(crashFile))
        return;
    std::fputs("crash_scenario: crash data file still exists\n", stderr);
    if (scenario.crashFile.isEmpty())
        QFile::remove(crashFile);
}

int play(const Scenario &scenario)
{
    QString error;
    const QString crashFile = writeCrashFile(scenario, error);
    if (!error.isNull())
        return fail(cannotPlay, error);
    QSharedMemory memory(QString::fromLatin1(Tessel::sharedClientInfoKey));
    if (scenario.block)
        error = writeBlock(memory, *scenario.block);
    if (!error.isNull())
        return fail(cannotPlay, error);
    if (scenario.command.words.isEmpty())
        return 0;

    const QStringList words = scenario.command.appendCrashFile
                                  ? withCrashFile(scenario.command.words, crashFile)
                                  : scenario.command.words;
    const int status = runCommand(words);
    reportLeftCrashFile(scenario, crashFile);
    return status;
}

} // namespace

int main(int argc, char **argv)
{
    const QCoreApplication app(argc, argv);
    const auto parsed = parseArguments(QCoreApplication::arguments());
    if (const auto *error = std::get_if<UsageError>(&parsed))
        return fail(wrongUsage, error->message);
    if (const auto *help = std::get_if<HelpText>(&parsed)) {
        std::fputs(qUtf8Printable(help->text), stdout);
        return 0;
    }
    const auto *scenario = std::get_if<Scenario>(&parsed);
    if (scenario->crash)
        crashOnPurpose();
    return play(*scenario);
}
