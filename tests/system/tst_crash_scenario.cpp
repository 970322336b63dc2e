/*
 * crash_scenario plays the other side of two wire formats, so its bytes are
 * compared with bytes written down by hand and never with what Qt reads back.
 */
#include "crash_scenario_process.h"
#include "probe.h"
#include "support/sandbox_run.h"

#include <QtTest>

#include <csignal>

using namespace TestSupport;

namespace {

// "/d" as its byte count and two UTF-16 units.
const QByteArray path = "00000004 002f 0064 ";
// 29 February 2024 is Julian day 2460370; 13:14:15.016 is 47655016 ms into the day.
const QByteArray dateAndTime = "0000000000258ad2 02d72868 ";
const QByteArray local = dateAndTime + "00 ";
const QByteArray noLines = "00000000";
const QByteArray twoLines = "00000002 00000002 0061 00000004 0062 20ac";

const QStringList given = {"--dump", "/d", "--time", "2024-02-29T13:14:15.016"};

QByteArray fromHex(QByteArray digits)
{
    return QByteArray::fromHex(digits.replace(' ', ""));
}

/** The bytes of the block as another process finds them, or what it said instead. */
QByteArray blockOf(const QStringList &options)
{
    SandboxRun run;
    const auto result = run.run(crashCommand(options + QStringList{"--no-argument"},
                                             {probeProgram(), "read-block", "/user_data/block"}));
    return result.stdOut.isEmpty() ? contentsOf(run.userDataFolder() + "/block") : result.stdOut;
}

QByteArray zeroes(int count)
{
    return {count, '\0'};
}

} // namespace

class TestCrashScenario : public QObject
{
    Q_OBJECT

private slots:
    void crashDataIsTheStreamTheReporterReads_data();
    void crashDataIsTheStreamTheReporterReads();
    void crashTimeIsNowUnlessGiven();
    void rawFileIsTakenVerbatim();
    void blockIsLaidOutByOffset();
    void blockCanBeSpoilt_data();
    void blockCanBeSpoilt();
    void blockIsLeftAlone();
    void blockLeftBehindIsTakenOver();
    void blockOutlivesTheCommand();
};

void TestCrashScenario::crashDataIsTheStreamTheReporterReads_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("expected");
    const auto with = [](const QStringList &more) { return given + more; };

    QTest::newRow("local time") << given << path + local + noLines;
    QTest::newRow("local time by name") << with({"--time-spec", "local"}) << path + local + noLines;
    QTest::newRow("UTC") << with({"--time-spec", "utc"}) << path + dateAndTime + "01" + noLines;
    QTest::newRow("offset east") << with({"--time-spec", "offset", "--offset", "5400"})
                                 << path + dateAndTime + "02 00001518" + noLines;
    QTest::newRow("offset west") << with({"--time-spec", "offset", "--offset", "-3600"})
                                 << path + dateAndTime + "02 fffff1f0" + noLines;
    QTest::newRow("zone") << with({"--time-spec", "zone", "--zone", "Asia/Tokyo"})
                          << path + dateAndTime +
                                 "03 00000014 0041 0073 0069 0061 002f 0054 006f 006b 0079 006f" +
                                 noLines;
    QTest::newRow("no time") << QStringList{"--dump", "/d", "--time", "null"}
                             << path + "8000000000000000 ffffffff 00" + noLines;
    QTest::newRow("output") << with({"--output", "a", "--output", QString::fromUtf8("b€")})
                            << path + local + twoLines;
    QTest::newRow("empty output line")
        << with({"--output", ""}) << path + local + "00000001 00000000";
    QTest::newRow("no dump path") << QStringList(given.mid(2))
                                  << QByteArray("ffffffff") + local + noLines;
    QTest::newRow("empty dump path") << QStringList{"--dump", ""} + QStringList(given.mid(2))
                                     << QByteArray("00000000") + local + noLines;

    QTest::newRow("little-endian")
        << with({"--byte-order", "little", "--output", "a"})
        << QByteArray("04000000 2f00 6400 d28a250000000000 6828d702 00 01000000 02000000 6100");
    QTest::newRow("big-endian by name") << with({"--byte-order", "big"}) << path + local + noLines;
    QTest::newRow("a version with a 32-bit date, its time in UTC")
        << with({"--stream-version", "7", "--time-spec", "utc"})
        << path + "00258ad2 02d72868 02" + noLines;
    QTest::newRow("false path length") << with({"--path-length", "4294967294"})
                                       << QByteArray("fffffffe 002f 0064") + local + noLines;
    QTest::newRow("false list count") << with({"--list-count", "2147483647", "--output", "a"})
                                      << path + local + "7fffffff 00000002 0061";
    QTest::newRow("cut inside the list")
        << with({"--output", "a", "--output", QString::fromUtf8("b€"), "--truncate", "33"})
        << path + local + "00000002 00000002 0061 0000";
    QTest::newRow("cut to nothing") << with({"--truncate", "0"}) << QByteArray();
    QTest::newRow("cut beyond the end") << with({"--truncate", "1000"}) << path + local + noLines;
    QTest::newRow("raw") << QStringList{"--raw-hex", "00 ffFE 01"} << QByteArray("00fffe01");
    QTest::newRow("raw and cut") << QStringList{"--raw-hex", "00fffe", "--truncate", "2"}
                                 << QByteArray("00ff");
}

void TestCrashScenario::crashDataIsTheStreamTheReporterReads()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, expected);
    QTemporaryDir folder;
    const Outcome outcome = play(folder.path(), options + QStringList{"--no-block", "--crash-file",
                                                                      folder.filePath("data")});
    QCOMPARE(outcome.stdErr, QByteArray());
    QCOMPARE(outcome.status, 0);
    QCOMPARE(contentsOf(folder.filePath("data")).toHex(), fromHex(expected).toHex());
}

void TestCrashScenario::crashTimeIsNowUnlessGiven()
{
    QTemporaryDir folder;
    const QDateTime before = QDateTime::currentDateTime();
    QCOMPARE(play(folder.path(), {"--no-block", "--crash-file", folder.filePath("data")}).status,
             0);
    const QByteArray data = contentsOf(folder.filePath("data"));
    const auto day = qFromBigEndian<qint64>(data.constData() + 4);
    const auto time = qFromBigEndian<qint32>(data.constData() + 12);
    QCOMPARE(data.at(16), char(0));
    const QDateTime written(QDate::fromJulianDay(day), QTime::fromMSecsSinceStartOfDay(time));
    QVERIFY(written >= before && written <= QDateTime::currentDateTime());
}

void TestCrashScenario::rawFileIsTakenVerbatim()
{
    QTemporaryDir folder;
    const QByteArray bytes("\0\xff\r\n\x1a", 5);
    QFile file(folder.filePath("raw"));
    QVERIFY(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size());
    file.close();
    QCOMPARE(play(folder.path(), {"--no-block", "--crash-file", folder.filePath("data"),
                                  "--raw-file", folder.filePath("raw")})
                 .status,
             0);
    QCOMPARE(contentsOf(folder.filePath("data")), bytes);
}

void TestCrashScenario::blockIsLaidOutByOffset()
{
    const QByteArray block =
        blockOf({"--serial", QString::fromLatin1("R4-0815\xe4"), "--device-type", "5", "--version",
                 "2.5.1 RC3", "--log", "/var/log/app.log", "--seconds", "-2", "--unattended"});
    QCOMPARE(block.size(), 336);
    QCOMPARE(block.mid(0, 64), QByteArray("R4-0815\xe4") + zeroes(56));
    QCOMPARE(block.mid(64, 1), QByteArray("\x05"));
    QCOMPARE(block.mid(65, 4), QByteArray("\x02\x05\x01\x43"));
    QCOMPARE(block.mid(69, 256), QByteArray("/var/log/app.log") + zeroes(240));
    QCOMPARE(block.mid(325, 3), zeroes(3));
    QCOMPARE(block.mid(328, 4), QByteArray("\xfe\xff\xff\xff"));
    QCOMPARE(block.mid(332, 1), QByteArray("\x01"));
    QCOMPARE(block.mid(333, 3), zeroes(3));
}

void TestCrashScenario::blockCanBeSpoilt_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QByteArray>("expected");
    const QString longest(63, 's');
    QTest::newRow("nothing given") << QStringList{} << zeroes(336);
    QTest::newRow("longest serial number")
        << QStringList{"--serial", longest} << longest.toLatin1() + zeroes(273);
    QTest::newRow("unterminated serial number")
        << QStringList{"--serial", "R4", "--serial-unterminated"}
        << "R4" + QByteArray(62, '#') + zeroes(272);
    QTest::newRow("unterminated serial number of 64 characters")
        << QStringList{"--serial", QString(64, 's'), "--serial-unterminated"}
        << QByteArray(64, 's') + zeroes(272);
    QTest::newRow("filled") << QStringList{"--block-fill", "0xff"} << QByteArray(336, '\xff');
    QTest::newRow("bytes") << QStringList{"--block-hex", "01 02"}
                           << QByteArray("\x01\x02") + zeroes(334);
    QTest::newRow("bytes before a filling")
        << QStringList{"--block-hex", "0102", "--block-fill", "170"}
        << QByteArray("\x01\x02") + QByteArray(334, '\xaa');
    QTest::newRow("too small") << QStringList{"--block-size", "8", "--serial", "R4-0815-4711"}
                               << QByteArray("R4-0815-");
    QTest::newRow("too big") << QStringList{"--block-size", "340", "--block-fill", "1"}
                             << QByteArray(340, '\x01');
}

void TestCrashScenario::blockCanBeSpoilt()
{
    QFETCH(QStringList, options);
    QFETCH(QByteArray, expected);
    QCOMPARE(blockOf(options).toHex(), expected.toHex());
}

void TestCrashScenario::blockIsLeftAlone()
{
    const QByteArray said = blockOf({"--no-block"});
    QVERIFY2(said.startsWith("read-block: "), said.constData());
}

/** As after a crash that killed the last process attached: the block is still there. */
void TestCrashScenario::blockLeftBehindIsTakenOver()
{
    SandboxRun run;
    const QString play = crashScenarioProgram() + " --crash-file /tmp/data --no-argument ";
    const QString dieAttached = " -- sh -c 'kill -9 $PPID'; ";
    const auto result =
        run.run({"sh", "-c",
                 play + "--block-fill 0xff" + dieAttached + play + "--serial new -- " +
                     probeProgram() + " read-block /tmp/block; " + play + dieAttached + play +
                     "--block-size 100000; echo $?"});
    QCOMPARE(contentsOf(run.tmpFolder() + "/block"), QByteArray("new") + zeroes(333));
    QVERIFY2(result.stdOut == "125\n" &&
                 result.stdErr.contains("crash_scenario: a block of 336 bytes is there already\n"),
             result.stdErr.constData());
}

/** A clean exit of the last process attached destroys the block. */
void TestCrashScenario::blockOutlivesTheCommand()
{
    SandboxRun run;
    const QString read = probeProgram() + " read-block /user_data/";
    const auto result = run.run(crashCommand({"--block-fill", "7", "--no-argument"},
                                             {"sh", "-c", read + "first; " + read + "second"}));
    QCOMPARE(result.stdOut, QByteArray());
    QCOMPARE(contentsOf(run.userDataFolder() + "/first"), QByteArray(336, '\7'));
    QCOMPARE(contentsOf(run.userDataFolder() + "/second"), QByteArray(336, '\7'));
}

QTEST_GUILESS_MAIN(TestCrashScenario)
#include "tst_crash_scenario.moc"
