// The shipped program, in the sandbox, from its command line to its end action:
// what it leaves, to the last file, and how the machine ended.

#include "support/package_reader.h"
#include "support/reporter_process.h"
#include "support/sandbox_run.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTest>

using namespace TestSupport;

namespace {

const QString packageFolder = QStringLiteral("crash_dumps/");
const QString firstPackage = QStringLiteral("crash_dumps/Crash Report 0.cdp");
const QString dumpName = QStringLiteral("r4.core");
const QString logName = QStringLiteral("r4.log");
const QString crashName = QStringLiteral("crash_data");
const QByteArray dumpBytes = QByteArray("\x7f"
                                        "ELF",
                                        4)
                                 .repeated(40000);
/** Qt's platform "offscreen" says so of the backdrop. */
const QByteArray noticeOfPlatform("This plugin does not support propagateSizeHints()\n");
const QByteArray restartNotice("sandbox: the command restarted the machine (reboot)\n");
const QByteArray logBytes("12:00:00 started\n12:00:01 lost\n");

QByteArray autoSaveProblem(int number)
{
    return "There was a problem auto-saving the crash report to /user_data/crash_dumps/Crash "
           "Report " +
           QByteArray::number(number) + ".cdp\n";
}

bool write(const QString &path, const QByteArray &bytes)
{
    QDir().mkpath(QFileInfo(path).absolutePath());
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

/** A crash of the main application: dump and log in "/tmp", facts as the options say. */
class Crash
{
public:
    explicit Crash(const QStringList &sandboxOptions = {})
        : run(sandboxOptions)
    {
        run.setVariable(QStringLiteral("QT_QPA_PLATFORM"), QStringLiteral("offscreen"));
        run.setVariable(QStringLiteral("R4_RUN"), run.folder());
        made = write(run.tmpFolder() + '/' + dumpName, dumpBytes) &&
               write(run.tmpFolder() + '/' + logName, logBytes);
    }

    static QStringList command(const QStringList &options,
                               const QStringList &reporter = {crashReporterProgram()})
    {
        return crashCommand(
            QStringList{QStringLiteral("--crash-file"), QStringLiteral("/tmp/") + crashName} +
                options,
            reporter);
    }

    static QStringList withDumpAndLog(const QStringList &options)
    {
        return QStringList{QStringLiteral("--dump"), QStringLiteral("/tmp/") + dumpName,
                           QStringLiteral("--log"), QStringLiteral("/tmp/") + logName} +
               options;
    }

    SandboxResult play(const QStringList &options) { return run.run(command(options)); }

    /** Until the reporter has read its crash file and has nothing left to do. */
    bool waitUntilIdle(bool crashFileGoes = true)
    {
        return run.waitForOutput("connected\n") && run.waitUntil([this, crashFileGoes] {
            return QFile::exists(run.tmpFolder() + '/' + crashName) != crashFileGoes &&
                   isWaitingForEvents(crashReporterProgram(), "R4_RUN=" + run.folder().toUtf8());
        });
    }

    QString package(const QString &name = firstPackage) const
    {
        return run.userDataFolder() + '/' + name;
    }

    SandboxRun run;
    bool made = false;
};

/** What GNU tar, bsdtar, 7-Zip or our own reader have against a package; empty for nothing. */
QString problemOf(const QString &package)
{
    QString why;
    return sameWithEveryTool(package, &why) ? QString() : why;
}

/** The main application's files, which are nobody's to remove. */
QStringList sources()
{
    return {dumpName, logName};
}

} // namespace

class CrashReporterTest : public QObject
{
    Q_OBJECT

private slots:
    void anUnattendedCrashEndsInPackageAndReboot_data();
    void anUnattendedCrashEndsInPackageAndReboot();
    void anAttendedCrashWaits_data();
    void anAttendedCrashWaits();
    void theCountdownEndsInPackageAndReboot();
    void withoutABlockItReboots();
    void withoutArgumentNothingIsUnmounted();
    void aStarterThatIsGoneDoesNotEndIt();
    void theFirstFreeNumberIsTaken();
    void aMissingDumpStillReboots();
    void aMissingLogIsLeftOut();
    void anAbsentCrashFileStillReboots();
    void aFullMediumStillReboots();
    void aReadOnlyMediumStillReboots();
    void aBusyMediumStillRebootsWithThePackageWhole();
    void hostileCrashFiles_data();
    void hostileCrashFiles();
    void aCrashFileCutAnywhereIsSurvived();
    void hostileBlocks_data();
    void hostileBlocks();
};

void CrashReporterTest::anUnattendedCrashEndsInPackageAndReboot_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("flag set") << QStringList{"--unattended"};
    QTest::newRow("flag set, 0 seconds said") << QStringList{"--unattended", "--seconds", "0"};
}

void CrashReporterTest::anUnattendedCrashEndsInPackageAndReboot()
{
    QFETCH(QStringList, options);
    Crash crash;
    QVERIFY(crash.made);
    const SandboxResult result = crash.play(
        Crash::withDumpAndLog(options) +
        QStringList{"--serial", "SN-0042", "--device-type", "3", "--version", "2.5.1.BETA3",
                    "--time", "2026-11-21T14:30:05", "--output", "a <b>", "--output", "c"});
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.stdOut, QByteArray("connected\n"));
    QCOMPARE(result.stdErr, noticeOfPlatform + restartNotice);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), sources());

    const Package package = readPackage(crash.package());
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.size(), 3);
    QCOMPARE(package.members.at(0).name, dumpName);
    QCOMPARE(package.members.at(0).bytes, dumpBytes);
    QCOMPARE(package.members.at(1).name, QStringLiteral("report.xml"));
    QCOMPARE(package.members.at(1).bytes,
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<n1:CrashReport xmlns:n1=\"tovask.example\">\n"
                        "    <Date>21/11/2026</Date>\n"
                        "    <Time>14:30:05</Time>\n"
                        "    <ApplicationInfo>\n"
                        "        <Device>R4-220</Device>\n"
                        "        <Serial>SN-0042</Serial>\n"
                        "        <Version>2.5.1.BETA3</Version>\n"
                        "        <Platform>Linux</Platform>\n"
                        "    </ApplicationInfo>\n"
                        "    <OutputLog>\n"
                        "        <Entry>a &lt;b&gt;</Entry>\n"
                        "        <Entry>c</Entry>\n"
                        "    </OutputLog>\n"
                        "    <Comments></Comments>\n"
                        "</n1:CrashReport>\n"));
    QCOMPARE(package.members.at(2).name, logName);
    QCOMPARE(package.members.at(2).bytes, logBytes);
    QCOMPARE(problemOf(crash.package()), QString());
}

void CrashReporterTest::anAttendedCrashWaits_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("0 seconds, flag clear") << QStringList{"--seconds", "0"};
    QTest::newRow("-5 seconds") << QStringList{"--seconds", "-5"};
    QTest::newRow("-5 seconds, flag set") << QStringList{"--seconds", "-5", "--unattended"};
    QTest::newRow("block too small for its fields") << QStringList{"--block-size", "64"};
    QTest::newRow("block of nobody's making") << QStringList{"--no-block"};
}

void CrashReporterTest::anAttendedCrashWaits()
{
    QFETCH(QStringList, options);
    Crash crash;
    if (!options.contains(QStringLiteral("--no-block")))
        options = Crash::withDumpAndLog(options);
    crash.run.start(Crash::command(options));
    QVERIFY(crash.waitUntilIdle());
    crash.run.terminate();
    const SandboxResult result = crash.run.finish();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.stdOut, QByteArray("connected\n"));
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(leftInTmp(result), sources());
}

void CrashReporterTest::theCountdownEndsInPackageAndReboot()
{
    Crash crash;
    crash.run.start(Crash::command(Crash::withDumpAndLog({"--seconds", "3"})));
    QVERIFY(crash.waitUntilIdle());
    QVERIFY2(filesBelow(crash.run.userDataFolder()).isEmpty(), "nothing is saved before its time");
    const SandboxResult result = crash.run.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), sources());
    QCOMPARE(problemOf(crash.package()), QString());
}

void CrashReporterTest::withoutABlockItReboots()
{
    Crash crash;
    // The block's native key is a file in the temporary folder, which is none.
    const SandboxResult result =
        crash.run.run(Crash::command({"--dump", "/tmp/" + dumpName, "--no-block"},
                                     {"/usr/bin/env", "TMPDIR=/dev/null", crashReporterProgram()}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.stdOut, QByteArray("connected\n"));
    QVERIFY(result.stdErr.contains("Failed to create SharedClientInfo shared memory: "));
    QVERIFY(result.stdErr.contains("Error: cannot access shared memory segment\n"));
    QVERIFY(result.stdErr.contains(autoSaveProblem(0)));
    QCOMPARE(result.filesLeft, QStringList{packageFolder});
    QCOMPARE(leftInTmp(result), sources());
}

void CrashReporterTest::withoutArgumentNothingIsUnmounted()
{
    Crash crash;
    crash.run.start(Crash::command(Crash::withDumpAndLog({"--unattended", "--no-argument"})));
    QVERIFY(crash.waitUntilIdle(false));
    crash.run.terminate();
    const SandboxResult result = crash.run.finish();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.stdOut, QByteArray("connected\n"));
    QCOMPARE(result.filesLeft, QStringList());
}

void CrashReporterTest::aStarterThatIsGoneDoesNotEndIt()
{
    // Standard output is a pipe whose reader has gone before the program starts.
    const QString script = QStringLiteral("mkfifo /tmp/pipe; : </tmp/pipe & exec >/tmp/pipe; "
                                          "rm /tmp/pipe; wait; exec \"$0\" \"$1\"");
    Crash crash;
    const SandboxResult result =
        crash.run.run(Crash::command(Crash::withDumpAndLog({"--unattended"}),
                                     {"/bin/sh", "-c", script, crashReporterProgram()}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), sources());
    QCOMPARE(problemOf(crash.package()), QString());
}

void CrashReporterTest::theFirstFreeNumberIsTaken()
{
    Crash crash;
    for (const char *name : {"Crash Report 0.cdp", "Crash Report 2.cdp"})
        QVERIFY(write(crash.package(packageFolder + name), name));
    const SandboxResult result = crash.play(Crash::withDumpAndLog({"--unattended"}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft,
             QStringList({firstPackage, QStringLiteral("crash_dumps/Crash Report 1.cdp"),
                          QStringLiteral("crash_dumps/Crash Report 2.cdp")}));
    QCOMPARE(problemOf(crash.package("crash_dumps/Crash Report 1.cdp")), QString());
    QFile earlier(crash.package());
    QVERIFY(earlier.open(QIODevice::ReadOnly));
    QCOMPARE(earlier.readAll(), QByteArray("Crash Report 0.cdp"));
}

void CrashReporterTest::aMissingDumpStillReboots()
{
    Crash crash;
    const SandboxResult result = crash.play({"--dump", "/tmp/absent", "--unattended"});
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QVERIFY(result.stdErr.contains("Error: dump file not found\n" + autoSaveProblem(0)));
    QCOMPARE(result.filesLeft, QStringList{packageFolder});
    QCOMPARE(leftInTmp(result), sources());
}

void CrashReporterTest::aMissingLogIsLeftOut()
{
    Crash crash;
    const SandboxResult result =
        crash.play({"--dump", "/tmp/" + dumpName, "--log", "/tmp/absent", "--unattended"});
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    const Package package = readPackage(crash.package());
    QCOMPARE(problemOf(crash.package()), QString());
    QCOMPARE(package.members.size(), 2);
}

void CrashReporterTest::anAbsentCrashFileStillReboots()
{
    Crash crash;
    const SandboxResult result = crash.play(
        {"--unattended", "--no-argument", "--", crashReporterProgram(), "/tmp/nobody wrote this"});
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList{packageFolder});
    QVERIFY(result.stdErr.contains("Error: dump file not found\n"));
}

void CrashReporterTest::aFullMediumStillReboots()
{
    Crash crash({"--user-data-size", "64k"});
    QByteArray noise(400000, '\0');
    auto *words = reinterpret_cast<quint32 *>(noise.data());
    QRandomGenerator(7).generate(words, words + noise.size() / 4);
    QVERIFY(write(crash.run.tmpFolder() + '/' + dumpName, noise));

    const SandboxResult result = crash.play(Crash::withDumpAndLog({"--unattended"}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QVERIFY(result.stdErr.contains(autoSaveProblem(0)));
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), sources());
    QVERIFY(!readPackage(crash.package()).isWellFormed());
}

void CrashReporterTest::aReadOnlyMediumStillReboots()
{
    Crash crash({"--user-data-read-only"});
    const SandboxResult result = crash.play(Crash::withDumpAndLog({"--unattended"}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QVERIFY(result.stdErr.contains(autoSaveProblem(0)));
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(leftInTmp(result), sources());
}

void CrashReporterTest::aBusyMediumStillRebootsWithThePackageWhole()
{
    Crash crash({"--user-data-busy"});
    const SandboxResult result = crash.play(Crash::withDumpAndLog({"--unattended"}));
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Mounted);
    QVERIFY(result.stdErr.contains("Failed to unmount user_data\n"));
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), sources());
    QCOMPARE(problemOf(crash.package()), QString());
}

void CrashReporterTest::hostileCrashFiles_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<bool>("pathIsRead");
    const QStringList dump = {"--dump", "/tmp/" + dumpName};
    QTest::newRow("empty") << QStringList{"--raw-hex", ""} << false;
    QTest::newRow("one byte") << QStringList{"--raw-hex", "00"} << false;
    QTest::newRow("all ones") << QStringList{"--raw-hex", QByteArray(200, 'f')} << false;
    QTest::newRow("old stream version") << dump + QStringList{"--stream-version", "6"} << true;
    QTest::newRow("little-endian") << dump + QStringList{"--byte-order", "little"} << false;
    QTest::newRow("path of 4 GiB") << dump + QStringList{"--path-length", "4294967294"} << false;
    QTest::newRow("path of odd length") << dump + QStringList{"--path-length", "27"} << false;
    QTest::newRow("2^31-1 lines") << dump + QStringList{"--list-count", "2147483647"} << true;
    QTest::newRow("2^32-1 lines") << dump + QStringList{"--list-count", "4294967295"} << true;
    QTest::newRow("null time") << dump + QStringList{"--time", "null"} << true;
}

void CrashReporterTest::hostileCrashFiles()
{
    QFETCH(QStringList, options);
    QFETCH(bool, pathIsRead);
    Crash crash;
    const SandboxResult result = crash.play(options + QStringList{"--unattended"});
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, QStringList{pathIsRead ? firstPackage : packageFolder});
    QCOMPARE(leftInTmp(result), sources());
    if (pathIsRead)
        QCOMPARE(problemOf(crash.package()), QString());
}

void CrashReporterTest::aCrashFileCutAnywhereIsSurvived()
{
    const QString dump = "/tmp/" + dumpName;
    const int path = 4 + 2 * dump.size();
    const int time = path + 13;
    const int count = time + 4;
    for (const int size : {0, 3, 4, path - 1, path, time - 1, time, count - 1, count, count + 5}) {
        Crash crash;
        const SandboxResult result = crash.play(
            {"--dump", dump, "--output", "x", "--truncate", QString::number(size), "--unattended"});
        QCOMPARE(result.end, End::Reboot);
        QCOMPARE(result.filesLeft, QStringList{size < path ? packageFolder : firstPackage});
        QCOMPARE(leftInTmp(result), sources());
    }
}

void CrashReporterTest::hostileBlocks_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("serial");
    QTest::addColumn<QByteArray>("version");
    // Auto-action seconds 0, unattended, whatever the rest is.
    const QByteArray unattended = QByteArray("00000000") + "ff" + "ffffff";
    QTest::newRow("serial number without zero byte")
        << QStringList{"--serial-unterminated", "--serial", QString(64, 'S'), "--unattended"}
        << QByteArray(64, 'S') << QByteArray("0.0.0");
    QTest::newRow("every text without zero byte")
        << QStringList{"--block-hex", QByteArray(328 * 2, '4') + unattended} << QByteArray(64, 'D')
        << QByteArray("68.68.68.RC4");
    QTest::newRow("texts of control characters")
        << QStringList{"--block-hex", QByteArray(328 * 2, '1') + unattended}
        << QByteArray("\xef\xbf\xbd").repeated(64) << QByteArray("17.17.17");
}

void CrashReporterTest::hostileBlocks()
{
    QFETCH(QStringList, options);
    Crash crash;
    const SandboxResult result = crash.play(QStringList{"--dump", "/tmp/" + dumpName} + options);
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    const Package package = readPackage(crash.package());
    QCOMPARE(problemOf(crash.package()), QString());
    QCOMPARE(package.members.size(), 2);
    QFETCH(QByteArray, serial);
    QFETCH(QByteArray, version);
    QVERIFY(package.members.at(1).bytes.contains("<Serial>" + serial + "</Serial>"));
    QVERIFY(package.members.at(1).bytes.contains("<Version>" + version + "</Version>"));
}

QTEST_GUILESS_MAIN(CrashReporterTest)
#include "tst_crash_reporter.moc"
