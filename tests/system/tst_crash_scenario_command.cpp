// How crash_scenario starts the reporter, and what it refuses to do.
#include "crash_scenario_process.h"
#include "probe.h"
#include "support/sandbox_run.h"

#include <QtTest>

#include <csignal>

using namespace TestSupport;

class TestCrashScenarioCommand : public QObject
{
    Q_OBJECT

private slots:
    void commandGetsTheCrashFile_data();
    void commandGetsTheCrashFile();
    void exitStatusIsHandedBack_data();
    void exitStatusIsHandedBack();
    void standardStreamsAreTheCommands();
    void crashFileLeftIsReported();
    void deletedCrashFileIsNotReported();
    void withoutACommandTheFileIsWritten();
    void terminationIsPassedOn();
    void crashIsReal();
    void wrongOptionsAreRefused_data();
    void wrongOptionsAreRefused();
    void whatCannotBePlayedIsTold();
    void helpNamesEveryOption();
};

void TestCrashScenarioCommand::commandGetsTheCrashFile_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("command");
    QTest::addColumn<QByteArray>("expected");
    const QStringList print = {"printf", "<%s>"};
    QTest::newRow("last") << QStringList{} << print + QStringList{"a", "b c"}
                          << QByteArray("<a><b c><FILE>");
    QTest::newRow("in its place") << QStringList{} << print + QStringList{"{}", "b{}"}
                                  << QByteArray("<FILE><b{}>");
    QTest::newRow("not at all") << QStringList{"--no-argument"} << print + QStringList{"{}"}
                                << QByteArray("<{}>");
    QTest::newRow("options of the command")
        << QStringList{} << print + QStringList{"--", "--dump"} << QByteArray("<--><--dump><FILE>");
}

void TestCrashScenarioCommand::commandGetsTheCrashFile()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, command);
    QFETCH(QByteArray, expected);
    QTemporaryDir folder;
    const QString file = folder.filePath("the data");
    const Outcome outcome =
        play(folder.path(), options + QStringList{"--no-block", "--crash-file", file}, command);
    QCOMPARE(outcome.stdOut, expected.replace("FILE", file.toLocal8Bit()));
}

void TestCrashScenarioCommand::exitStatusIsHandedBack_data()
{
    QTest::addColumn<QString>("script");
    QTest::addColumn<int>("status");
    QTest::newRow("success") << "exit 0" << 0;
    QTest::newRow("failure") << "exit 42" << 42;
    QTest::newRow("signal") << "kill -9 $$" << 137;
    QTest::newRow("crash") << "kill -ABRT $$" << 134;
}

void TestCrashScenarioCommand::exitStatusIsHandedBack()
{
    QFETCH(QString, script);
    QFETCH(int, status);
    QTemporaryDir folder;
    QCOMPARE(play(folder.path(), {"--no-block"}, {"sh", "-c", script}).status, status);
}

void TestCrashScenarioCommand::standardStreamsAreTheCommands()
{
    QTemporaryDir folder;
    const Outcome outcome =
        play(folder.path(), {"--no-block"}, {"sh", "-c", "echo out; echo err >&2; rm \"$0\""});
    QCOMPARE(outcome.stdOut, QByteArray("out\n"));
    QCOMPARE(outcome.stdErr, QByteArray("err\n"));
}

void TestCrashScenarioCommand::crashFileLeftIsReported()
{
    QTemporaryDir folder;
    Outcome outcome = play(folder.path(), {"--no-block"}, {"true"});
    QCOMPARE(outcome.stdErr, QByteArray("crash_scenario: crash data file still exists\n"));
    QCOMPARE(outcome.status, 0);
    QCOMPARE(filesBelow(folder.path()), QStringList());

    outcome =
        play(folder.path(), {"--no-block", "--crash-file", folder.filePath("data")}, {"true"});
    QCOMPARE(outcome.stdErr, QByteArray("crash_scenario: crash data file still exists\n"));
    QCOMPARE(filesBelow(folder.path()), QStringList{"data"});
}

void TestCrashScenarioCommand::deletedCrashFileIsNotReported()
{
    QTemporaryDir folder;
    const Outcome outcome = play(folder.path(), {"--no-block"}, {"rm"});
    QCOMPARE(outcome.stdErr, QByteArray());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(filesBelow(folder.path()), QStringList());
}

void TestCrashScenarioCommand::withoutACommandTheFileIsWritten()
{
    QTemporaryDir folder;
    const Outcome outcome = play(folder.path(), {"--no-block", "--raw-hex", "4142"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.stdErr, QByteArray());
    const QStringList files = filesBelow(folder.path());
    QCOMPARE(files.size(), 1);
    QVERIFY(files.constFirst().startsWith("crash_data_"));
    QCOMPARE(contentsOf(folder.filePath(files.constFirst())), QByteArray("AB"));
}

/** The block's holder waits for the command's own end even then. */
void TestCrashScenarioCommand::terminationIsPassedOn()
{
    QTemporaryDir folder;
    QProcess process;
    process.start(crashScenarioProgram(),
                  {"--no-block", "--crash-file", folder.filePath("data"), "--", "sh", "-c",
                   "trap 'rm \"$0\"; exit 7' TERM; echo ready; while :; do sleep 0.01; done"});
    QVERIFY(process.waitForReadyRead());
    QCOMPARE(process.readAllStandardOutput(), QByteArray("ready\n"));
    process.terminate();
    QVERIFY(process.waitForFinished());
    QCOMPARE(process.exitStatus(), QProcess::NormalExit);
    QCOMPARE(process.exitCode(), 7);
    QCOMPARE(process.readAllStandardError(), QByteArray());
}

void TestCrashScenarioCommand::crashIsReal()
{
    QTemporaryDir folder;
    QCOMPARE(play(folder.path(), {"--crash"}).status, -SIGABRT);
    QCOMPARE(filesBelow(folder.path()), QStringList());
}

void TestCrashScenarioCommand::wrongOptionsAreRefused_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("message");
    const auto row = [](const char *name, const QStringList &options, const char *message) {
        QTest::newRow(name) << options << QByteArray(message);
    };
    row("unknown option", {"--no-such"}, "Unknown option 'no-such'.");
    row("value missing", {"--serial"}, "Missing value after '--serial'.");
    row("command without dashes", {"reporter"},
        "not an option: reporter (a command follows after \"--\")");
    row("no number", {"--seconds", "soon"},
        "--seconds: not a number from -2147483648 to 2147483647: soon");
    row("number and more", {"--device-type", "5x"},
        "--device-type: not a number from 0 to 255: 5x");
    row("number too big", {"--device-type", "256"},
        "--device-type: not a number from 0 to 255: 256");
    row("number too small", {"--truncate", "-1"},
        "--truncate: not a number from 0 to 2147483647: -1");
    row("stream version", {"--stream-version", "20"},
        "--stream-version: not a number from 1 to 19: 20");
    row("byte order", {"--byte-order", "middle"}, "--byte-order: neither little nor big: middle");
    row("serial number too long", {"--serial", QString(64, 's')}, "--serial: longer than 63 bytes");
    row("unterminated serial number too long",
        {"--serial", QString(65, 's'), "--serial-unterminated"}, "--serial: longer than 64 bytes");
    row("log path too long", {"--log", QString(256, 'l')}, "--log: longer than 255 bytes");
    row("not Latin-1", {"--log", QString::fromUtf8("/€")}, "--log: not Latin-1: /€");
    row("version", {"--version", "new"}, "--version: not a version: new");
    row("time", {"--time", "yesterday"},
        "--time: not a time such as 2024-02-29T13:14:15: yesterday");
    row("time with a zone of its own", {"--time", "2024-02-29T13:14:15Z"},
        "--time: not a time such as 2024-02-29T13:14:15: 2024-02-29T13:14:15Z");
    row("time spec", {"--time-spec", "lunar"},
        "--time-spec: not one of local, utc, offset, zone: lunar");
    row("offset without its spec", {"--offset", "60"}, "--offset: only with --time-spec offset");
    row("zone without its spec", {"--zone", "Asia/Tokyo", "--time-spec", "utc"},
        "--zone: only with --time-spec zone");
    row("unknown zone", {"--time-spec", "zone", "--zone", "Mars/Base"},
        "--zone: no such time zone: Mars/Base");
    row("odd digits", {"--raw-hex", "abc"}, "--raw-hex: not pairs of hexadecimal digits");
    row("no digits", {"--block-hex", "xy"}, "--block-hex: not pairs of hexadecimal digits");
    row("block bytes beyond its size", {"--block-hex", "0102", "--block-size", "1"},
        "--block-hex: more than 1 bytes");
    row("raw file", {"--raw-file", "/no/such"}, "--raw-file: /no/such: No such file or directory");
    row("raw twice", {"--raw-hex", "00", "--raw-file", "/dev/null"},
        "--raw-hex and --raw-file exclude each other");
    row("field of a raw block", {"--block-fill", "0", "--unattended"},
        "--block-fill and --unattended exclude each other");
    row("block and none", {"--no-block", "--seconds", "5"},
        "--no-block and --seconds exclude each other");
}

void TestCrashScenarioCommand::wrongOptionsAreRefused()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, message);
    QTemporaryDir folder;
    const Outcome outcome = play(folder.path(), options, {"echo", "started"});
    QCOMPARE(outcome.stdErr, QByteArray("crash_scenario: " + message + '\n'));
    QCOMPARE(outcome.status, 2);
    QCOMPARE(outcome.stdOut, QByteArray());
    QCOMPARE(filesBelow(folder.path()), QStringList());
}

void TestCrashScenarioCommand::whatCannotBePlayedIsTold()
{
    QTemporaryDir folder;
    Outcome outcome =
        play(folder.path(), {"--no-block", "--crash-file", "/no/such/file"}, {"true"});
    QCOMPARE(outcome.status, 125);
    QCOMPARE(outcome.stdErr,
             QByteArray("crash_scenario: /no/such/file: No such file or directory\n"));

    outcome = play(folder.path(), {"--no-block"}, {"/no/such/program"});
    QCOMPARE(outcome.status, 127);
    QVERIFY2(
        outcome.stdErr.startsWith("crash_scenario: /no/such/program: No such file or directory\n"),
        outcome.stdErr.constData());
}

void TestCrashScenarioCommand::helpNamesEveryOption()
{
    QTemporaryDir folder;
    const Outcome outcome = play(folder.path(), {"--help"});
    QCOMPARE(outcome.status, 0);
    QCOMPARE(outcome.stdErr, QByteArray());
    for (const char *option : {"--crash-file",  "--dump",           "--time",
                               "--time-spec",   "--offset",         "--zone",
                               "--output",      "--stream-version", "--byte-order",
                               "--path-length", "--list-count",     "--raw-hex",
                               "--raw-file",    "--truncate",       "--serial",
                               "--device-type", "--version",        "--log",
                               "--seconds",     "--unattended",     "--serial-unterminated",
                               "--block-hex",   "--block-fill",     "--block-size",
                               "--no-block",    "--no-argument",    "--crash"})
        QVERIFY2(outcome.stdOut.contains(QByteArray(option) + ' '), option);
}

QTEST_GUILESS_MAIN(TestCrashScenarioCommand)
#include "tst_crash_scenario_command.moc"
