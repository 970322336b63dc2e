/*
 * The sandbox is what stands between the tests and the machine they run on: each
 * of its promises is put to the test with the real system calls.
 */
#include "probe.h"
#include "support/sandbox_run.h"

#include <QtTest>

#include <csignal>
#include <sys/stat.h>
#include <sys/sysmacros.h>
#include <unistd.h>

using namespace TestSupport;

namespace {

constexpr uid_t ordinaryUser = 65534;

/** Lets an ordinary user do in the run's folders what we could do. */
void handOver(const QString &folder)
{
    for (const char *name : {"", "/user_data", "/tmp", "/scratch"}) {
        const QByteArray path = QFile::encodeName(folder) + name;
        QCOMPARE(chmod(path.constData(), 0755), 0);
        QCOMPARE(chown(path.constData(), ordinaryUser, ordinaryUser), 0);
    }
}

/** A root folder that is no mount point: the kernel refuses user namespaces there. */
bool inPlainChroot()
{
    return QProcess::execute("mountpoint", {"-q", "/"}) != 0;
}

const QByteArray refusedWithoutRoot =
    "sandbox: no user namespace to be had here, and only root can do without\n";

/** Puts the sandbox and the probe where every user may read them. */
void copyTools(const QString &folder)
{
    const QString tools = QFileInfo(sandboxProgram()).path();
    QVERIFY(QDir(folder).mkpath("tools/sandbox_lib"));
    QVERIFY(QFile::copy(sandboxProgram(), folder + "/tools/sandbox"));
    QVERIFY(QFile::copy(probeProgram(), folder + "/probe"));
    for (const char *part : {"/sandbox_lib/enter_root.sh", "/sandbox_lib/first_process.pl"})
        QVERIFY(QFile::copy(tools + part, folder + "/tools" + part));
}

/** Starts a command that holds a lock and waits; the sandbox's process id, 0 on failure. */
pid_t startHoldingALock(SandboxRun &run)
{
    const QString pidFile = run.folder() + "/pid";
    run.setLauncher({"sh", "-c", "echo $$ >" + pidFile + "; exec \"$0\" \"$@\""});
    run.start(probe("lock /user_data/lock say ready wait"));
    const bool holds = run.waitForOutput("ready\n") && isLocked(run.userDataFolder() + "/lock");
    return holds ? contentsOf(pidFile).trimmed().toInt() : 0;
}

} // namespace

class TestSandboxIsolation : public QObject
{
    Q_OBJECT

private slots:
    void onlyHarmlessDevicesAreThere();
    void watchdogIsNotThere();
    void devicesInShownFoldersCannotBeOpened();
    void restOfTheMachineCannotBeWritten_data();
    void restOfTheMachineCannotBeWritten();
    void mountsOfTheHostStayAsTheyAre();
    void processesLeftBehindAreEnded_data();
    void processesLeftBehindAreEnded();
    void signalEndsEverythingInside_data();
    void signalEndsEverythingInside();
    void killedSandboxLeavesNoProcess();
    void timeLimitEndsTheCommand();
    void failedIsolationRunsNothing_data();
    void failedIsolationRunsNothing();
    void ordinaryUserMayUseIt();
    void rootMayDoWithoutAUserNamespace();
};

void TestSandboxIsolation::onlyHarmlessDevicesAreThere()
{
    const QStringList harmless = {"fd",    "full",   "null", "random",  "shm", "stderr",
                                  "stdin", "stdout", "tty",  "urandom", "zero"};
    SandboxRun run;
    const auto result = run.run({"ls", "/dev"});
    const QStringList found = QString::fromLatin1(result.stdOut).split('\n', Qt::SkipEmptyParts);
    QVERIFY(found.contains("null"));
    for (const QString &name : found)
        QVERIFY2(harmless.contains(name), qPrintable(name));
}

void TestSandboxIsolation::watchdogIsNotThere()
{
    SandboxRun run;
    const auto result = run.run(probe("open /dev/watchdog open /dev/watchdog0 open /dev/null"));
    QCOMPARE(result.stdOut,
             QByteArray("open /dev/watchdog: ENOENT\nopen /dev/watchdog0: ENOENT\n"));
}

void TestSandboxIsolation::devicesInShownFoldersCannotBeOpened()
{
    QTemporaryDir folder;
    const QByteArray node = QFile::encodeName(folder.filePath("node"));
    if (mknod(node.constData(), S_IFCHR | 0600, makedev(1, 3)) != 0)
        QSKIP("only root can make a device node, here one of /dev/null");
    SandboxRun run({"--bind", folder.path() + ":/usbkey"});
    const auto result = run.run(probe("open /usbkey/node"));
    QCOMPARE(result.stdOut, QByteArray("open /usbkey/node: EACCES\n"));
}

void TestSandboxIsolation::restOfTheMachineCannotBeWritten_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("programs") << "/usr/bin/sandbox-was-here";
    QTest::newRow("settings") << "/etc/sandbox-was-here";
    QTest::newRow("the project") << QFileInfo(sandboxProgram()).path() + "/sandbox-was-here";
    QTest::newRow("kernel settings") << "/proc/sys/kernel/core_pattern";
    QTest::newRow("the rest of /proc") << "/proc/self/comm";
}

void TestSandboxIsolation::restOfTheMachineCannotBeWritten()
{
    QFETCH(QString, path);
    SandboxRun run;
    const auto result = run.run({probeProgram(), "write", path, "0"});
    QCOMPARE(result.stdOut, QByteArray("write " + path.toLatin1() + ": EROFS\n"));
}

void TestSandboxIsolation::mountsOfTheHostStayAsTheyAre()
{
    const QByteArray before = contentsOf("/proc/self/mountinfo");
    SandboxRun run;
    run.start(probe("umount /dev/shm umount /user_data/ say unmounted wait"));
    QVERIFY(run.waitForOutput("unmounted\n"));
    QCOMPARE(contentsOf("/proc/self/mountinfo"), before);
    run.terminate();
    QCOMPARE(run.finish().stdOut, QByteArray("unmounted\n"));
    QCOMPARE(contentsOf("/proc/self/mountinfo"), before);
}

void TestSandboxIsolation::processesLeftBehindAreEnded_data()
{
    QTest::addColumn<QString>("end");
    QTest::newRow("exit") << "exit 0";
    QTest::newRow("signal") << "signal 9";
    QTest::newRow("reboot") << "reboot";
}

void TestSandboxIsolation::processesLeftBehindAreEnded()
{
    QFETCH(QString, end);
    SandboxRun run;
    const auto result = run.run(probe("lock /user_data/lock " + end));
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(result.filesLeft, QStringList{"lock"});
    QVERIFY(!isLocked(run.userDataFolder() + "/lock"));
}

void TestSandboxIsolation::signalEndsEverythingInside_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGTERM") << SIGTERM;
    QTest::newRow("SIGINT") << SIGINT;
    QTest::newRow("SIGHUP") << SIGHUP;
}

void TestSandboxIsolation::signalEndsEverythingInside()
{
    QFETCH(int, signal);
    SandboxRun run;
    const pid_t sandbox = startHoldingALock(run);
    QVERIFY(sandbox > 0);

    QCOMPARE(kill(sandbox, signal), 0);
    const auto result = run.finish();
    QVERIFY(!isLocked(run.userDataFolder() + "/lock"));
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.status, signal);
    QCOMPARE(result.sandboxStatus, -1);
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.scratchLeft, QStringList());
    QVERIFY(!result.timedOut);
}

void TestSandboxIsolation::killedSandboxLeavesNoProcess()
{
    SandboxRun run;
    const pid_t sandbox = startHoldingALock(run);
    QVERIFY(sandbox > 0);
    QCOMPARE(kill(sandbox, SIGKILL), 0);
    QTRY_VERIFY(!isLocked(run.userDataFolder() + "/lock"));
    run.finish();
}

void TestSandboxIsolation::timeLimitEndsTheCommand()
{
    SandboxRun run;
    run.start(probe("lock /user_data/lock say ready wait"));
    QVERIFY(run.waitForOutput("ready\n"));
    const auto result = run.finish(1);
    QVERIFY(result.timedOut);
    QCOMPARE(result.end, End::Terminated);
    QVERIFY(!isLocked(run.userDataFolder() + "/lock"));
}

void TestSandboxIsolation::failedIsolationRunsNothing_data()
{
    QTest::addColumn<QString>("tool");
    for (const char *tool : {"mount", "unshare", "mkfifo", "mkdir", "cp"})
        QTest::newRow(tool) << tool;
    QTest::newRow("the way out of the root folder") << (inPlainChroot() ? "chroot" : "pivot_root");
}

/** A step that fails is played by a tool of that name which only fails. */
void TestSandboxIsolation::failedIsolationRunsNothing()
{
    QFETCH(QString, tool);
    QTemporaryDir tools;
    QVERIFY(writeFile(tools.filePath(tool), "#!/bin/sh\nexit 1\n",
                      QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner));
    SandboxRun run;
    run.setLauncher(
        {"env", "PATH=" + tools.path() + ':' + qEnvironmentVariable("PATH") + ":/usr/sbin:/sbin"});
    const auto result = run.run(probe("write /user_data/ran 1"));
    QCOMPARE(result.sandboxStatus, 125);
    QCOMPARE(result.end, End::NotRun);
    QVERIFY2(result.stdErr.startsWith("sandbox: "), result.stdErr.constData());
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(result.scratchLeft, QStringList());
}

void TestSandboxIsolation::ordinaryUserMayUseIt()
{
    SandboxRun run;
    copyTools(run.folder());
    run.setSandbox(run.folder() + "/tools/sandbox");
    if (geteuid() == 0) {
        handOver(run.folder());
        run.setLauncher({"setpriv", "--reuid=65534", "--regid=65534", "--clear-groups"});
    }
    const QStringList command =
        probe("write /user_data/saved 1 umount /user_data/ open /dev/watchdog reboot");
    const auto result = run.run(QStringList{run.folder() + "/probe"} + command.mid(1));
    if (inPlainChroot()) {
        QCOMPARE(result.stdErr, refusedWithoutRoot);
        QCOMPARE(result.end, End::NotRun);
        return;
    }
    QCOMPARE(result.stdErr, QByteArray("sandbox: the command restarted the machine (reboot)\n"));
    QCOMPARE(result.stdOut, QByteArray("open /dev/watchdog: ENOENT\n"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, QStringList{"saved"});
    QCOMPARE(result.scratchLeft, QStringList());
}

/** As in a chroot, where the kernel refuses a user namespace even to root. */
void TestSandboxIsolation::rootMayDoWithoutAUserNamespace()
{
    SandboxRun run({"--without-user-namespace"});
    const QStringList command = {"sh", "-c",
                                 "mknod /user_data/disk b 7 0; exec " + probeProgram() +
                                     " umount /user_data/ open /dev/watchdog reboot"};
    const auto result = run.run(command);
    if (geteuid() != 0) {
        QCOMPARE(result.sandboxStatus, 125);
        QCOMPARE(result.stdErr, refusedWithoutRoot);
        return;
    }
    QCOMPARE(result.stdErr, QByteArray("mknod: /user_data/disk: Operation not permitted\n"
                                       "sandbox: the command restarted the machine (reboot)\n"));
    QCOMPARE(result.stdOut, QByteArray("open /dev/watchdog: ENOENT\n"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, QStringList());
}

QTEST_GUILESS_MAIN(TestSandboxIsolation)
#include "tst_sandbox_isolation.moc"
