#include "support/sandbox_run.h"

#include <QDeadlineTimer>
#include <QDir>
#include <QDirIterator>
#include <QFile>
#include <QHash>

#include <csignal>
#include <sys/prctl.h>

namespace TestSupport {

namespace {

/** How long the sandbox may take to end everything inside and tidy up. */
constexpr int tidyUpTime = 10000;

/** How long to look away before a condition is asked for again. */
constexpr int askAgainAfter = 10;

End endOf(const QByteArray &word)
{
    static const QHash<QByteArray, End> ends = {{"exit", End::Exit},
                                                {"signal", End::Signal},
                                                {"reboot", End::Reboot},
                                                {"poweroff", End::PowerOff},
                                                {"terminated", End::Terminated}};
    return ends.value(word, End::NotRun);
}

UserData userDataOf(const QByteArray &word)
{
    if (word == "mounted")
        return UserData::Mounted;
    return word == "unmounted" ? UserData::Unmounted : UserData::Unknown;
}

QHash<QByteArray, QByteArray> keyValueLines(const QString &path)
{
    QHash<QByteArray, QByteArray> values;
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return values;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines)
        values.insert(line.left(line.indexOf('=')), line.mid(line.indexOf('=') + 1));
    return values;
}

} // namespace

SandboxRun::SandboxRun(const QStringList &sandboxOptions)
    : options(sandboxOptions)
    , sandbox(sandboxProgram())
{
    QDir dir(place.path());
    if (!dir.mkdir("user_data") || !dir.mkdir("tmp") || !dir.mkdir("scratch"))
        qFatal("no folder for a sandbox to use");
}

SandboxRun::~SandboxRun()
{
    if (process.state() == QProcess::NotRunning)
        return;
    process.terminate();
    process.waitForFinished(tidyUpTime);
}

QString SandboxRun::userDataFolder() const
{
    return place.filePath("user_data");
}

QString SandboxRun::tmpFolder() const
{
    return place.filePath("tmp");
}

QString SandboxRun::scratchFolder() const
{
    return place.filePath("scratch");
}

QString SandboxRun::reportFile() const
{
    return place.filePath("report");
}

QString SandboxRun::folder() const
{
    return place.path();
}

void SandboxRun::setLauncher(const QStringList &words)
{
    launcher = words;
}

void SandboxRun::setSandbox(const QString &program)
{
    sandbox = program;
}

void SandboxRun::setVariable(const QString &name, const QString &value)
{
    options += {"--env", name + '=' + value};
}

void SandboxRun::start(const QStringList &command)
{
    QStringList words = launcher;
    words += {sandbox, "--user-data", userDataFolder(), "--tmp", tmpFolder()};
    words += {"--report", reportFile()};
    if (sandbox == sandboxProgram())
        words += {R4_SHOW_BUILD_FOLDER, R4_BUILD_FOLDER};
    words += options + QStringList{"--"} + command;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("TMPDIR", scratchFolder());
    process.setProcessEnvironment(environment);
    process.setStandardInputFile(QProcess::nullDevice());
    process.start(words.takeFirst(), words);
}

bool SandboxRun::waitUntil(const std::function<bool()> &condition, int milliseconds)
{
    const QDeadlineTimer deadline(milliseconds);
    while (!condition()) {
        if (deadline.hasExpired())
            return false;
        if (process.state() == QProcess::NotRunning)
            return condition();
        process.waitForFinished(askAgainAfter);
        readOutput();
    }
    return true;
}

bool SandboxRun::waitForOutput(const QByteArray &text, int milliseconds)
{
    return waitUntil([&] { return stdOut.contains(text); }, milliseconds);
}

void SandboxRun::terminate()
{
    process.terminate();
}

SandboxResult SandboxRun::finish(int milliseconds)
{
    SandboxResult result;
    const auto hasEnded = [this] { return process.state() == QProcess::NotRunning; };
    if (!waitUntil(hasEnded, milliseconds)) {
        result.timedOut = true;
        process.terminate();
        waitUntil(hasEnded, tidyUpTime);
    }
    readOutput();
    if (process.exitStatus() == QProcess::NormalExit && process.error() != QProcess::FailedToStart)
        result.sandboxStatus = process.exitCode();
    readReport(result);
    result.stdOut = stdOut;
    result.stdErr = stdErr;
    result.filesLeft = filesBelow(userDataFolder());
    result.tmpFilesLeft = filesBelow(tmpFolder());
    result.scratchLeft = filesBelow(scratchFolder());
    return result;
}

SandboxResult SandboxRun::run(const QStringList &command, int milliseconds)
{
    start(command);
    return finish(milliseconds);
}

void SandboxRun::readOutput()
{
    stdOut += process.readAllStandardOutput();
    stdErr += process.readAllStandardError();
}

void SandboxRun::readReport(SandboxResult &result) const
{
    const auto report = keyValueLines(reportFile());
    result.end = endOf(report.value("end"));
    result.status = report.value("status").toInt();
    result.userData = userDataOf(report.value("user_data"));
    result.nanoseconds = report.value("ended").toLongLong() - report.value("started").toLongLong();
}

void SandboxRun::Process::setupChildProcess()
{
    prctl(PR_SET_PDEATHSIG, SIGTERM);
}

QString sandboxProgram()
{
    return QStringLiteral(R4_TOOLS_FOLDER "/sandbox");
}

QString crashScenarioProgram()
{
    return QStringLiteral(R4_BUILD_FOLDER "/bin/crash_scenario");
}

QString crashReporterProgram()
{
    return QStringLiteral(R4_BUILD_FOLDER "/bin/crash_reporter");
}

QStringList crashCommand(const QStringList &scenarioOptions, const QStringList &reporter)
{
    return QStringList{crashScenarioProgram()} + scenarioOptions + QStringList{"--"} + reporter;
}

QStringList leftInTmp(const SandboxResult &result)
{
    QStringList left;
    for (const QString &name : result.tmpFilesLeft) {
        if (!name.startsWith(QLatin1String("qipc_")))
            left.append(name);
    }
    return left;
}

QStringList filesBelow(const QString &folder)
{
    QStringList files;
    QDirIterator entries(folder,
                         QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                         QDirIterator::Subdirectories);
    while (entries.hasNext()) {
        const QString path = QDir(folder).relativeFilePath(entries.next());
        const QFileInfo info = entries.fileInfo();
        if (!info.isDir() || info.isSymLink())
            files.append(path);
        else if (QDir(info.filePath())
                     .isEmpty(QDir::AllEntries | QDir::Hidden | QDir::System |
                              QDir::NoDotAndDotDot))
            files.append(path + '/');
    }
    files.sort();
    return files;
}

} // namespace TestSupport
