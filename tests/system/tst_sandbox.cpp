/*
 * What a user of the sandbox sees: how the command ended, what it left, and what
 * can be set up for it beforehand.
 */
#include "probe.h"
#include "support/sandbox_run.h"

#include <QtTest>

#include <csignal>

using namespace TestSupport;

class TestSandbox : public QObject
{
    Q_OBJECT

private slots:
    void exitStatusIsHandedBack_data();
    void exitStatusIsHandedBack();
    void deathBySignalIsHandedBack_data();
    void deathBySignalIsHandedBack();
    void rebootEndsOnlyTheSandbox();
    void powerOffEndsOnlyTheSandbox();
    void exitWithTheStatusOfARebootIsNoReboot();
    void unmountIsReal();
    void filesAreFoundAfterAReboot();
    void fullMediumHasNoSpaceLeft();
    void mediumIsFilledBeforehandAndFoundAfterUnmounting();
    void readOnlyUserDataCannotBeWritten_data();
    void readOnlyUserDataCannotBeWritten();
    void busyUserDataCannotBeUnmounted();
    void streamsPassThrough();
    void argumentsPassThroughUntouched();
    void environmentNamesNothingOfTheHost();
    void boundFoldersAreShown();
    void whatLiesInTmpIsShownThereToo();
    void mountPointsDoNotStayInTmp();
    void reportTellsHowLongTheCommandTook();
    void wrongUseRunsNothing_data();
    void wrongUseRunsNothing();
    void commandThatCannotBeRun_data();
    void commandThatCannotBeRun();
};

void TestSandbox::exitStatusIsHandedBack_data()
{
    QTest::addColumn<int>("status");
    for (const int status : {0, 1, 125, 255})
        QTest::newRow(qPrintable(QString::number(status))) << status;
}

void TestSandbox::exitStatusIsHandedBack()
{
    QFETCH(int, status);
    SandboxRun run;
    const auto result = run.run({probeProgram(), "exit", QString::number(status)});
    QCOMPARE(result.end, End::Exit);
    QCOMPARE(result.status, status);
    QCOMPARE(result.sandboxStatus, status);
    QCOMPARE(result.stdErr, QByteArray());
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.scratchLeft, QStringList());
}

void TestSandbox::deathBySignalIsHandedBack_data()
{
    QTest::addColumn<int>("signal");
    QTest::newRow("SIGHUP, as a reboot gives") << SIGHUP;
    QTest::newRow("SIGINT, as a power-off gives") << SIGINT;
    QTest::newRow("SIGKILL") << SIGKILL;
    QTest::newRow("SIGSEGV") << SIGSEGV;
    QTest::newRow("SIGTERM") << SIGTERM;
}

void TestSandbox::deathBySignalIsHandedBack()
{
    QFETCH(int, signal);
    SandboxRun run;
    const auto result = run.run({probeProgram(), "signal", QString::number(signal)});
    QCOMPARE(result.end, End::Signal);
    QCOMPARE(result.status, signal);
    QCOMPARE(result.sandboxStatus, 128 + signal);
}

void TestSandbox::rebootEndsOnlyTheSandbox()
{
    SandboxRun run;
    const auto result = run.run(probe("reboot say survived"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.status, 0);
    QCOMPARE(result.sandboxStatus, 129);
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(result.stdErr, QByteArray("sandbox: the command restarted the machine (reboot)\n"));
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.scratchLeft, QStringList());
}

void TestSandbox::powerOffEndsOnlyTheSandbox()
{
    SandboxRun run;
    const auto result = run.run(probe("umount /user_data/ power-off say survived"));
    QCOMPARE(result.end, End::PowerOff);
    QCOMPARE(result.sandboxStatus, 130);
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(result.stdErr, QByteArray("sandbox: the command halted the machine (power off)\n"));
    QCOMPARE(result.userData, UserData::Unmounted);
}

void TestSandbox::exitWithTheStatusOfARebootIsNoReboot()
{
    SandboxRun run;
    const auto result = run.run(probe("exit 129"));
    QCOMPARE(result.end, End::Exit);
    QCOMPARE(result.status, 129);
    QCOMPARE(result.sandboxStatus, 129);
    QCOMPARE(result.stdErr, QByteArray());
}

void TestSandbox::unmountIsReal()
{
    SandboxRun run;
    const auto result =
        run.run(probe("write /user_data/before 1 umount /user_data/ write /user_data/after 1 "
                      "umount /user_data/"));
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.stdOut, QByteArray("umount /user_data/: EINVAL\n"));
    QCOMPARE(result.filesLeft, QStringList{"before"});
}

void TestSandbox::filesAreFoundAfterAReboot()
{
    SandboxRun run;
    QVERIFY(QDir(run.userDataFolder()).mkdir("crash_dumps"));
    const auto result = run.run(probe("write /user_data/crash_dumps/a 5000 write /tmp/b 1 "
                                      "umount /user_data/ reboot"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, QStringList{"crash_dumps/a"});
    QCOMPARE(QFileInfo(run.userDataFolder() + "/crash_dumps/a").size(), qint64(5000));
    QCOMPARE(result.tmpFilesLeft, QStringList{"b"});
}

void TestSandbox::fullMediumHasNoSpaceLeft()
{
    SandboxRun run({"--user-data-size", "64k"});
    const auto result = run.run(probe("write /user_data/small 4096 write /user_data/big 100000"));
    QCOMPARE(result.stdOut, QByteArray("write /user_data/big: ENOSPC\n"));
    QCOMPARE(result.filesLeft, (QStringList{"big", "small"}));
    QVERIFY(QFileInfo(run.userDataFolder() + "/big").size() <= qint64(61440));
}

void TestSandbox::mediumIsFilledBeforehandAndFoundAfterUnmounting()
{
    SandboxRun run({"--user-data-size", "64k"});
    QVERIFY(writeFile(run.userDataFolder() + "/deleted", "1"));
    QVERIFY(writeFile(run.userDataFolder() + "/kept", "kept"));
    const auto result = run.run(probe("unlink /user_data/deleted write /user_data/new 3 "
                                      "umount /user_data/ reboot"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, (QStringList{"kept", "new"}));
    QCOMPARE(contentsOf(run.userDataFolder() + "/kept"), QByteArray("kept"));
    QCOMPARE(contentsOf(run.userDataFolder() + "/new"), QByteArray("xxx"));
}

void TestSandbox::readOnlyUserDataCannotBeWritten_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("folder") << QStringList{"--user-data-read-only"};
    QTest::newRow("medium") << QStringList{"--user-data-size", "64k", "--user-data-read-only"};
}

void TestSandbox::readOnlyUserDataCannotBeWritten()
{
    QFETCH(QStringList, options);
    SandboxRun run(options);
    QVERIFY(writeFile(run.userDataFolder() + "/kept", "kept"));
    const auto result = run.run(probe("write /user_data/new 1 unlink /user_data/kept"));
    QCOMPARE(result.stdOut,
             QByteArray("write /user_data/new: EROFS\nunlink /user_data/kept: EROFS\n"));
    QCOMPARE(result.filesLeft, QStringList{"kept"});
}

void TestSandbox::busyUserDataCannotBeUnmounted()
{
    SandboxRun run({"--user-data-busy"});
    const auto result = run.run(probe("umount /user_data/ reboot"));
    QCOMPARE(result.stdOut, QByteArray("umount /user_data/: EBUSY\n"));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Mounted);
}

void TestSandbox::streamsPassThrough()
{
    SandboxRun run;
    run.setLauncher({"sh", "-c", "echo typed | \"$0\" \"$@\""});
    const auto result = run.run({"sh", "-c", "cat; echo complaint >&2"});
    QCOMPARE(result.stdOut, QByteArray("typed\n"));
    QCOMPARE(result.stdErr, QByteArray("complaint\n"));
}

void TestSandbox::argumentsPassThroughUntouched()
{
    SandboxRun run;
    const auto result =
        run.run({"printf", "<%s>", "two words", "", "*", "$HOME", "it's", "--report", "a\nb"});
    QCOMPARE(result.stdOut, QByteArray("<two words><><*><$HOME><it's><--report><a\nb>"));
}

void TestSandbox::environmentNamesNothingOfTheHost()
{
    SandboxRun run;
    run.setLauncher(
        {"env", "XDG_RUNTIME_DIR=/run/user/4711", "DBUS_SESSION_BUS_ADDRESS=x", "KEPT=kept"});
    run.setVariable("GIVEN", "a b=c");
    const auto result =
        run.run({"sh", "-c",
                 "echo ${TMPDIR-none} ${DBUS_SESSION_BUS_ADDRESS-none} $KEPT $GIVEN; "
                 "ls -ld $XDG_RUNTIME_DIR | cut -c 1-10; id -u"});
    QCOMPARE(result.stdOut, QByteArray("none none kept a b=c\ndrwx------\n0\n"));
}

void TestSandbox::boundFoldersAreShown()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("file"), "contents\n"));
    SandboxRun run({"--bind", folder.path(), "--ro-bind", folder.path() + ":/usbkey", "--ro-bind",
                    folder.filePath("file") + ":/a folder/a file"});
    const auto result = run.run({"sh", "-c",
                                 "echo new >" + folder.filePath("new") + "; " + probeProgram() +
                                     " write /usbkey/new 1 ; cat '/a folder/a file' /usbkey/new"});
    QCOMPARE(result.stdOut, QByteArray("write /usbkey/new: EROFS\ncontents\nnew\n"));
    QCOMPARE(filesBelow(folder.path()), (QStringList{"file", "new"}));
}

void TestSandbox::whatLiesInTmpIsShownThereToo()
{
    // As where the project itself was cloned into /tmp, and no folder stands for it.
    const QTemporaryDir folder(QStringLiteral("/tmp/tst_sandbox.XXXXXX"));
    QFile file(folder.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write("content") > 0 && file.flush());
    QProcess process;
    process.start(sandboxProgram(),
                  {"--ro-bind", folder.path(), "--", "/bin/cat", file.fileName()});
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.readAllStandardError(), QByteArray());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("content"));
    QCOMPARE(process.exitCode(), 0);
}

void TestSandbox::mountPointsDoNotStayInTmp()
{
    QTemporaryDir folder;
    QVERIFY(writeFile(folder.filePath("file"), "contents\n"));
    SandboxRun run({"--bind", folder.path() + ":/tmp/.X11-unix", "--bind",
                    folder.filePath("file") + ":/tmp/deep/er/file"});
    QVERIFY(writeFile(run.tmpFolder() + "/before", ""));
    const auto result = run.run({"cat", "/tmp/.X11-unix/file", "/tmp/deep/er/file"});
    QCOMPARE(result.stdOut, QByteArray("contents\ncontents\n"));
    QCOMPARE(result.tmpFilesLeft, QStringList{"before"});
}

void TestSandbox::reportTellsHowLongTheCommandTook()
{
    SandboxRun run;
    QElapsedTimer whole;
    whole.start();
    const auto result = run.run({"sleep", "0.05"});
    QVERIFY2(result.nanoseconds >= 50000000, qPrintable(QString::number(result.nanoseconds)));
    QVERIFY(result.nanoseconds < whole.nsecsElapsed());
}

void TestSandbox::wrongUseRunsNothing_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("unknown option")
        << QStringList{"--no-such"} << QByteArray("unknown option: --no-such (see --help)");
    QTest::newRow("no such folder") << QStringList{"--user-data", "/no/such"}
                                    << QByteArray("--user-data: no such folder: /no/such");
    QTest::newRow("no such folder of keys")
        << QStringList{"--keys", "/no/such"} << QByteArray("--keys: no such folder: /no/such");
    QTest::newRow("the machine's devices as keys")
        << QStringList{"--keys", "/dev"} << QByteArray("--keys: not to be shown or covered: /dev");
    QTest::newRow("no such bind") << QStringList{"--bind", "/no/such:/x"}
                                  << QByteArray("--bind: no such folder or file: /no/such");
    QTest::newRow("relative target")
        << QStringList{"--bind", "/usr:x"} << QByteArray("--bind: not an absolute path: x");
    QTest::newRow("all of the machine") << QStringList{"--ro-bind", "/:/host"}
                                        << QByteArray("--ro-bind: not to be shown or covered: /");
    QTest::newRow("devices of the machine")
        << QStringList{"--bind", "/usr/../dev:/usbkey"}
        << QByteArray("--bind: not to be shown or covered: /dev");
    QTest::newRow("something over /proc")
        << QStringList{"--bind", "/usr:/proc/sys"}
        << QByteArray("--bind: not to be shown or covered: /proc/sys");
    QTest::newRow("no size") << QStringList{"--user-data-size", "much"}
                             << QByteArray("--user-data-size: not a size: much");
    QTest::newRow("no variable") << QStringList{"--env", "NA ME=x"}
                                 << QByteArray("--env: not NAME=VALUE: NA ME=x");
    QTest::newRow("report") << QStringList{"--report", "/no/such/file"}
                            << QByteArray("--report: cannot be written: /no/such/file");
}

void TestSandbox::wrongUseRunsNothing()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, message);
    SandboxRun run(options);
    const auto result = run.run(probe("write /user_data/ran 1"));
    QCOMPARE(result.stdErr, QByteArray("sandbox: " + message + '\n'));
    QCOMPARE(result.sandboxStatus, 125);
    QCOMPARE(result.end, End::NotRun);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(result.scratchLeft, QStringList());
}

void TestSandbox::commandThatCannotBeRun_data()
{
    QTest::addColumn<QString>("command");
    QTest::addColumn<int>("status");
    QTest::addColumn<QByteArray>("message");
    QTest::newRow("not there") << "/no/such" << 127
                               << QByteArray("sandbox: /no/such: No such file or directory\n");
    QTest::newRow("no program") << "/etc/passwd" << 126
                                << QByteArray("sandbox: /etc/passwd: Permission denied\n");
}

void TestSandbox::commandThatCannotBeRun()
{
    QFETCH(QString, command);
    QFETCH(int, status);
    QFETCH(QByteArray, message);
    SandboxRun run;
    const auto result = run.run({command});
    QCOMPARE(result.sandboxStatus, status);
    QCOMPARE(result.stdErr, message);
}

QTEST_GUILESS_MAIN(TestSandbox)
#include "tst_sandbox.moc"
