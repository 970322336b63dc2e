// Start-up, launch, the watchdog, and the end actions.

#include "application_fixture.h"
#include "support/package_reader.h"

#include <QFile>

#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <sys/reboot.h>
#include <sys/stat.h>

using namespace TestSupport;
using Tessel::sharedClientInfo;

class ApplicationLifeTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void startUpFeedsTheWatchdogAndSaysConnected();
    void aMissingWatchdogIsLoggedByTheDriverAndTracedByTheApplication();
    void theWatchdogTickKicks();
    void withoutArgumentItShutsDownAndUnmountsNothing();
    void theDestructorAlwaysUnmounts();
    void anUnattendedCrashIsSavedUnmountedAndRebooted();
    void theCrashFileIsDeletedWhateverItIs_data();
    void theCrashFileIsDeletedWhateverItIs();
    void exitIsAShutdown();
    void aFailedUnmountIsPrintedAndTheRebootGoesOn();
    void anEndActionRunsOnceWhenTheEventLoopTurnsInsideIt();
};

void ApplicationLifeTest::startUpFeedsTheWatchdogAndSaysConnected()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    QByteArray output;
    std::unique_ptr<RunningReporter> reporter;
    // Of the platform that tests run on, about the backdrop; it would be part of the output.
    QTest::ignoreMessage(QtWarningMsg, "This plugin does not support propagateSizeHints()");
    output = captureStandardOutput([&] { reporter = std::make_unique<RunningReporter>(); });
    QCOMPARE(output, QByteArray("connected\n"));

    QVector<QPair<unsigned long, int>> requests;
    for (const KernelCall &call : KernelFakes::instance().calls(KernelFunction::Ioctl))
        requests.append({call.code, call.value.value_or(0)});
    const QVector<QPair<unsigned long, int>> expected = {{WDIOC_SETTIMEOUT, 240},
                                                         {WDIOC_SETPRETIMEOUT, 1},
                                                         {WDIOC_SETTIMEOUT, 240},
                                                         {WDIOC_SETPRETIMEOUT, 1},
                                                         {WDIOC_KEEPALIVE, 0}};
    QCOMPARE(requests, expected);
    QCOMPARE(unmounts() + reboots(), 0);
}

void ApplicationLifeTest::aMissingWatchdogIsLoggedByTheDriverAndTracedByTheApplication()
{
    const RunningReporter reporter;
    const auto entries = log->entries();
    QCOMPARE(entries.size(), std::size_t(2));
    QCOMPARE(entries.at(0).priority, 130u);
    QCOMPARE(entries.at(0).text,
             QByteArray("Watchdog failed to open, No such file or directory\n"));
    QCOMPARE(entries.at(1).priority, 104u);
    QCOMPARE(entries.at(1).text, QByteArray("Failed to init talvorin watchdog\n"));
}

void ApplicationLifeTest::theWatchdogTickKicks()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    const RunningReporter reporter;
    const int tick = reporter.timerWith(120000);
    QVERIFY(tick != 0);
    const auto before = KernelFakes::instance().calls(KernelFunction::Ioctl).size();
    reporter.fire(tick);
    const auto calls = KernelFakes::instance().calls(KernelFunction::Ioctl);
    QCOMPARE(calls.size(), before + 1);
    QCOMPARE(calls.back().code, static_cast<unsigned long>(WDIOC_KEEPALIVE));
}

void ApplicationLifeTest::withoutArgumentItShutsDownAndUnmountsNothing()
{
    const RunningReporter reporter;
    log->clear();
    reporter.launch();
    QCOMPARE(log->texts(), QList<QByteArray>({"Crash reporter launched\n", "Shutting down R4\n"}));
    QCOMPARE(unmounts(), 0);
    QCOMPARE(reboots(), 0);
}

void ApplicationLifeTest::theDestructorAlwaysUnmounts()
{
    RunningReporter reporter;
    reporter.launch();
    reporter.end();
    const auto calls = KernelFakes::instance().calls(KernelFunction::Unmount);
    QCOMPARE(calls.size(), std::size_t(1));
    QCOMPARE(calls.front().path, QByteArray("/user_data/"));
    QCOMPARE(reboots(), 0);
}

void ApplicationLifeTest::anUnattendedCrashIsSavedUnmountedAndRebooted()
{
    sharedClientInfo()->unattendedRestart = 7;
    QStringList atReboot;
    int unmountsAtReboot = 0;
    unsigned long command = 0;
    KernelFakes::instance().observe(KernelFunction::Reboot, [&](const KernelCall &call) {
        atReboot = packages();
        unmountsAtReboot = unmounts();
        command = call.code;
    });
    const RunningReporter reporter({crashFile(), QStringLiteral("ignored")});
    log->clear();
    reporter.launch();

    QCOMPARE(atReboot, QStringList{QStringLiteral("Crash Report 0.cdp")});
    QCOMPARE(unmountsAtReboot, 1);
    QCOMPARE(command, static_cast<unsigned long>(RB_AUTOBOOT));
    QCOMPARE(log->texts(),
             QList<QByteArray>({"Crash reporter launched\n", "Read crash report data\n",
                                "Crash reported\n", "Auto-saving crash report\n",
                                "Creating dump package\n", "Restarting R4\n"}));
    for (const auto &entry : log->entries())
        QCOMPARE(entry.priority, 104u);

    const Package package = readPackage(packageFolder + QStringLiteral("/Crash Report 0.cdp"));
    QVERIFY(package.isWellFormed());
    QCOMPARE(package.members.at(0).bytes, QByteArray("a core image"));
    QVERIFY(package.members.at(1).bytes.contains("<Date>21/11/2026</Date>"));
    QVERIFY(package.members.at(1).bytes.contains("<Entry>last words</Entry>"));
    QVERIFY(package.members.at(1).bytes.contains("<Comments></Comments>"));
}

void ApplicationLifeTest::theCrashFileIsDeletedWhateverItIs_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("wasRead");
    QTest::newRow("well-formed") << "good" << true;
    QTest::newRow("empty") << "empty" << true;
    QTest::newRow("a pipe nobody writes to") << "pipe" << false;
    QTest::newRow("a link to nowhere") << "link" << false;
    QTest::newRow("absent") << "absent" << false;
}

void ApplicationLifeTest::theCrashFileIsDeletedWhateverItIs()
{
    QFETCH(QString, kind);
    QString path = scratch->filePath(kind);
    if (kind == QLatin1String("good"))
        path = crashFile();
    else if (kind == QLatin1String("empty"))
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    else if (kind == QLatin1String("pipe"))
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    else if (kind == QLatin1String("link"))
        QVERIFY(QFile::link(QStringLiteral("/nowhere"), path));

    const RunningReporter reporter({path});
    reporter.launch();
    QVERIFY(!QFileInfo(path).isSymLink() && !QFileInfo::exists(path));
    QTEST(log->texts().contains("Read crash report data\n"), "wasRead");
    QVERIFY(log->texts().contains("Crash reported\n"));
}

void ApplicationLifeTest::exitIsAShutdown()
{
    const RunningReporter reporter;
    log->clear();
    QVERIFY(reporter->exitReporter());
    QCOMPARE(log->texts(), QList<QByteArray>({"Exiting R4\n", "Shutting down R4\n"}));
    QCOMPARE(reboots(), 0);
}

void ApplicationLifeTest::aFailedUnmountIsPrintedAndTheRebootGoesOn()
{
    sharedClientInfo()->unattendedRestart = 1;
    KernelFakes::instance().script(KernelFunction::Unmount, {-1, EBUSY, {}});
    const RunningReporter reporter({crashFile()});
    const QByteArray printed = captureStandardError([&] { reporter.launch(); });
    QCOMPARE(printed, QByteArray("Failed to unmount user_data\n"));
    QCOMPARE(reboots(), 1);
}

void ApplicationLifeTest::anEndActionRunsOnceWhenTheEventLoopTurnsInsideIt()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    reporter->autoSaveCrashReport();
    log->clear();
    bool clicked = false;
    QMetaObject::invokeMethod(
        reporter.get(),
        [&] {
            clicked = true;
            reporter->shutdown();
            reporter->restart();
        },
        Qt::QueuedConnection);
    reporter->restart();
    QVERIFY2(clicked, "the event loop turns between the decision and the unmount");
    QCOMPARE(log->texts(), QList<QByteArray>{"Restarting R4\n"});
    QCOMPARE(unmounts(), 1);
    QCOMPARE(reboots(), 1);
}

APPLICATION_TEST_MAIN(ApplicationLifeTest)
#include "tst_application_life.moc"
