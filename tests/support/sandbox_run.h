#pragma once

#include <QByteArray>
#include <QProcess>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

#include <functional>

/*
 * Runs a program in tools/sandbox and tells what became of it: how it ended, what
 * it said, and exactly which files it left. Needs no event loop. One thread.
 */
namespace TestSupport {

/** How the command ended; NotRun when the sandbox refused or could not be read. */
enum class End
{
    NotRun,
    Exit,
    Signal,
    Reboot,
    PowerOff,
    Terminated
};

/** What "/user_data" was when the command had ended. */
enum class UserData
{
    Unknown,
    Mounted,
    Unmounted
};

struct SandboxResult
{
    End end = End::NotRun;
    /** Exit status or number of the signal, by `end`; else 0. */
    int status = 0;
    /** Exit status of the sandbox itself, -1 when a signal ended it. */
    int sandboxStatus = -1;
    UserData userData = UserData::Unknown;
    QByteArray stdOut;
    QByteArray stdErr;
    /** Sorted paths relative to "/user_data" and "/tmp"; an empty folder ends in "/". */
    QStringList filesLeft;
    QStringList tmpFilesLeft;
    /** What the sandbox itself left where it keeps its scratch folders: nothing, always. */
    QStringList scratchLeft;
    /** Wall time of the command alone, without setting up and tearing down. */
    qint64 nanoseconds = 0;
    /** The time limit was hit, and everything inside was ended for it. */
    bool timedOut = false;
};

/** One run. The folders it shows to the command live as long as this object. */
class SandboxRun
{
public:
    /** Further options of the sandbox, beyond the folders and the report. */
    explicit SandboxRun(const QStringList &options = {});

    /** Ends what still runs. */
    ~SandboxRun();
    Q_DISABLE_COPY(SandboxRun)

    /** The host's folders behind "/user_data" and "/tmp": may be filled before start(). */
    QString userDataFolder() const;
    QString tmpFolder() const;

    /** The folder that holds those two and whatever else the sandbox writes. */
    QString folder() const;

    /** Words before the sandbox's own command line, such as those of setpriv. */
    void setLauncher(const QStringList &words);

    /**
     * Runs this copy of the sandbox. The command then sees the folder above the
     * copy's own in place of the project's and of the build's.
     */
    void setSandbox(const QString &program);

    /** Sets a variable for the command. */
    void setVariable(const QString &name, const QString &value);

    /** Starts the command and returns at once. At most once. */
    void start(const QStringList &command);

    /**
     * Waits until `condition`, asked often, is true. False when the time is over,
     * or the sandbox has ended and it is still not true.
     */
    bool waitUntil(const std::function<bool()> &condition, int milliseconds = 10000);

    /** Waits until the command has written `text` to standard output. */
    bool waitForOutput(const QByteArray &text, int milliseconds = 10000);

    /** Asks the sandbox to end everything inside; finish() tells the rest. */
    void terminate();

    /** Waits for the end; past the limit it brings it about. */
    SandboxResult finish(int milliseconds = 30000);

    /** start() and finish(). */
    SandboxResult run(const QStringList &command, int milliseconds = 30000);

private:
    QString scratchFolder() const;
    QString reportFile() const;
    void readOutput();
    void readReport(SandboxResult &result) const;

    /** Ends the sandbox when this process dies, however it dies. */
    class Process : public QProcess
    {
    protected:
        void setupChildProcess() override;
    };

    QTemporaryDir place;
    QStringList options;
    QStringList launcher;
    QString sandbox;
    Process process;
    QByteArray stdOut;
    QByteArray stdErr;
};

/** The programs of this build. */
QString sandboxProgram();
QString crashScenarioProgram();
QString crashReporterProgram();

/** The command line on which crash_scenario starts `reporter` with a crash of these options. */
QStringList crashCommand(const QStringList &scenarioOptions,
                         const QStringList &reporter = {crashReporterProgram()});

/**
 * What stays in "/tmp", but for the files Qt makes the native keys of shared memory
 * of: at a reboot it is chance which process still gets to remove them.
 */
QStringList leftInTmp(const SandboxResult &result);

/** What is in a folder, in the form of SandboxResult::filesLeft. */
QStringList filesBelow(const QString &folder);

} // namespace TestSupport
