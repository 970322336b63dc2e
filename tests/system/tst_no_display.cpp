// A crash that takes the display along: the shipped program saves the report all the same.

#include "support/package_reader.h"
#include "support/reporter_process.h"
#include "support/sandbox_run.h"

#include <QFile>
#include <QTest>

#include <csignal>

using namespace TestSupport;

namespace {

const QString package = QStringLiteral("crash_dumps/Crash Report 0.cdp");

} // namespace

class NoDisplayTest : public QObject
{
    Q_OBJECT

private slots:
    void theReportIsSavedAndTheMachineRestarted_data();
    void theReportIsSavedAndTheMachineRestarted();
    void anAbortOfTheSecondStartEnds();
};

void NoDisplayTest::theReportIsSavedAndTheMachineRestarted_data()
{
    QTest::addColumn<QString>("platform");
    QTest::addColumn<QStringList>("facts");
    const QStringList attended{"--seconds", "60"};
    QTest::newRow("no X server") << "xcb" << attended;
    QTest::newRow("no frame buffer") << "linuxfb" << attended;
    QTest::newRow("no such platform") << "none" << attended;
    QTest::newRow("no countdown either") << "xcb" << QStringList{"--seconds", "-1"};
    QTest::newRow("unattended") << "linuxfb" << QStringList{"--unattended"};
}

void NoDisplayTest::theReportIsSavedAndTheMachineRestarted()
{
    QFETCH(QString, platform);
    QFETCH(QStringList, facts);
    SandboxRun run;
    run.setVariable("QT_QPA_PLATFORM", platform);
    QFile dump(run.tmpFolder() + "/r4.core");
    QVERIFY(dump.open(QIODevice::WriteOnly) && dump.write("dump") == 4 && dump.flush());

    const SandboxResult result = run.run(
        crashCommand(QStringList{"--dump", "/tmp/r4.core"} + facts, {crashReporterProgram()}));
    QVERIFY2(result.end == End::Reboot, result.stdErr.constData());
    QCOMPARE(result.userData, UserData::Unmounted);
    QVERIFY(result.stdOut.endsWith("connected\n"));
    QCOMPARE(result.filesLeft, QStringList{package});
    const Package made = readPackage(run.userDataFolder() + '/' + package);
    QVERIFY(made.isWellFormed());
    QCOMPARE(made.members.size(), 2);
    QCOMPARE(made.members.first().bytes, QByteArray("dump"));
}

void NoDisplayTest::anAbortOfTheSecondStartEnds()
{
    SandboxRun run;
    run.setVariable("QT_QPA_PLATFORM", "none");
    run.setVariable("R4_CRASH_REPORTER_NO_DISPLAY", "1");
    const SandboxResult result = run.run(crashCommand({"--unattended"}, {crashReporterProgram()}));
    QCOMPARE(result.end, End::Exit);
    QCOMPARE(result.status, 128 + SIGABRT);
    QCOMPARE(result.filesLeft, QStringList());
}

QTEST_GUILESS_MAIN(NoDisplayTest)
#include "tst_no_display.moc"
