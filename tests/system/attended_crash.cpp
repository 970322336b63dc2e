#include "attended_crash.h"

#include "support/package_reader.h"
#include "support/reporter_process.h"

#include <QFile>
#include <QHash>

namespace TestSupport {

namespace {

const QString dumpName = QStringLiteral("r4.core");
const QString logName = QStringLiteral("r4.log");
const QString traceName = QStringLiteral("calls");

/** The countdown ends where the buttons begin, this far from the screen's right edge. */
constexpr int widthOfButtons = 255;
constexpr int heightOfButtons = 36;
constexpr int frame = 6;

/** How a call is written during which another thread had something to tell. */
constexpr char unfinishedMark[] = " <unfinished ...>";
constexpr char resumedMark[] = "<... ";

bool write(const QString &path, const QByteArray &bytes)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

} // namespace

AttendedCrash::AttendedCrash()
    : run(session.sandboxOptions() + keys.sandboxOptions())
{
    if (!session.isUp() || !write(run.tmpFolder() + '/' + dumpName, QByteArray(100000, 'd')) ||
        !write(run.tmpFolder() + '/' + logName, "12:00:00 started\n"))
        qFatal("no screen for an operator, or no place for a crash");
    run.setVariable(QStringLiteral("R4_RUN"), run.folder());
}

void AttendedCrash::start(const QStringList &options, const QStringList &reporterPrefix,
                          const QStringList &standIn)
{
    QStringList facts = {"--crash-file",     "/tmp/crash_data", "--dump",
                         "/tmp/" + dumpName, "--time",          "2026-11-21T14:30:05"};
    if (!options.contains("--no-block"))
        facts += QStringList{"--log", "/tmp/" + logName, "--serial",   "SN-0042", "--device-type",
                             "3",     "--version",       "2.5.1.BETA3"};
    const QStringList tracer = {
        "strace",           "-f", "--seccomp-bpf", "-e", "trace=mount,umount2,reboot", "-o",
        "/tmp/" + traceName};
    run.start(crashCommand(facts + options, reporterPrefix + tracer + standIn +
                                                QStringList{crashReporterProgram()}));
}

bool AttendedCrash::waitForWindow(const QString &title)
{
    return run.waitUntil([&] { return session.activeWindow() == title; }) && waitUntilIdle();
}

bool AttendedCrash::waitForScreen()
{
    if (!waitForWindow(screenTitle))
        return false;
    screen = session.geometry(screenTitle);
    // All of it is painted once its last button is.
    const QRect lastButton(screen.right() - 80, screen.bottom() - heightOfButtons, 70, 20);
    return run.waitUntil([&] { return inkIn(session.picture(lastButton)) > 50; });
}

bool AttendedCrash::waitUntilAboveScreen(const QString &title)
{
    return run.waitUntil([&] { return screen.intersects(session.geometry(title)); });
}

bool AttendedCrash::waitUntilIdle()
{
    const QByteArray variable = "R4_RUN=" + run.folder().toUtf8();
    return run.waitUntil([&] { return isWaitingForEvents(crashReporterProgram(), variable); });
}

void AttendedCrash::pressSave() const
{
    session.press({"Tab", "space"});
}

void AttendedCrash::pressRestart() const
{
    session.press({"Tab", "Tab", "space"});
}

void AttendedCrash::pressShutdown() const
{
    session.press({"Tab", "Tab", "Tab", "space"});
}

QImage AttendedCrash::countdown() const
{
    return session.picture(QRect(screen.left() + frame, screen.bottom() - heightOfButtons,
                                 screen.width() - frame - widthOfButtons, heightOfButtons - frame));
}

bool AttendedCrash::countdownIsShown() const
{
    return inkIn(countdown()) > 100;
}

bool AttendedCrash::waitForTick()
{
    const QImage before = countdown();
    return run.waitUntil([&] { return countdown() != before; });
}

SandboxResult AttendedCrash::finish()
{
    return run.finish();
}

SandboxResult AttendedCrash::switchOff()
{
    run.terminate();
    return run.finish();
}

QList<QByteArray> AttendedCrash::systemCalls() const
{
    QFile file(run.tmpFolder() + '/' + traceName);
    if (!file.open(QIODevice::ReadOnly))
        return {"no trace"};
    QList<QByteArray> calls;
    QHash<QByteArray, QByteArray> unfinished;
    const QList<QByteArray> lines = file.readAll().split('\n');
    for (const QByteArray &line : lines) {
        // "7     umount2(...) = 0", or signals and ends in between: "7     +++ exited +++".
        const QByteArray thread = line.left(line.indexOf(' '));
        QByteArray call = line.mid(thread.size()).simplified();
        if (call.startsWith("reboot("))
            call.truncate(call.indexOf("CMD_RESTART") + int(strlen("CMD_RESTART")));
        if (call.startsWith(resumedMark))
            call = unfinished.take(thread) + call.mid(call.indexOf('>') + 1);
        if (call.endsWith(unfinishedMark))
            unfinished.insert(thread, call.left(call.size() - int(strlen(unfinishedMark))));
        else if (call.contains('(') && !call.startsWith('+') && !call.startsWith('-'))
            calls.append(call);
    }
    return calls + unfinished.values();
}

QByteArray AttendedCrash::report() const
{
    return reportIn(run.userDataFolder() + '/' + firstPackage);
}

QByteArray reportIn(const QString &packagePath)
{
    const Package package = readPackage(packagePath);
    if (!package.isWellFormed())
        return {};
    for (const PackageMember &member : package.members)
        if (member.name == QLatin1String("report.xml"))
            return member.bytes;
    return {};
}

QByteArray reportWithComments(const QByteArray &xml)
{
    return "<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
           "<n1:CrashReport xmlns:n1=\"tovask.example\">\n"
           "    <Date>21/11/2026</Date>\n"
           "    <Time>14:30:05</Time>\n"
           "    <ApplicationInfo>\n"
           "        <Device>R4-220</Device>\n"
           "        <Serial>SN-0042</Serial>\n"
           "        <Version>2.5.1.BETA3</Version>\n"
           "        <Platform>Linux</Platform>\n"
           "    </ApplicationInfo>\n"
           "    <OutputLog/>\n"
           "    <Comments>" +
           xml +
           "</Comments>\n"
           "</n1:CrashReport>\n";
}

QStringList filesOfTheCrash()
{
    return {traceName, dumpName, logName};
}

} // namespace TestSupport
