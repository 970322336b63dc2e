// What becomes of the report: saved, asked about, packed for mailing.

#include "application_fixture.h"

#include "support/package_reader.h"

#include <QDir>
#include <QFile>

using namespace TestSupport;

namespace {

const QString questionTitle = QStringLiteral("Crash report is not saved");

} // namespace

class ApplicationReportTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void autoSaveTakesTheFirstFreeNumber();
    void autoSaveLeavesNumbersAloneThatItCannotLookAt();
    void autoSaveFailsWhereNoNumberCanBeLookedAt();
    void aFailedAutoSaveCountsAsHandled();
    void restartAsksAndSavesOnYes();
    void restartAsksAndGoesOnOnNo();
    void shutdownAsksUnmountsAndStays();
    void sendingBuildsAndDiscardsAPackage();
    void sendingWithoutDumpShowsItsError();
};

void ApplicationReportTest::autoSaveTakesTheFirstFreeNumber()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(QDir().mkpath(packageFolder));
    for (const char *name : {"Crash Report 0.cdp", "Crash Report 2.cdp"})
        QVERIFY(QFile(packageFolder + QLatin1Char('/') + QLatin1String(name))
                    .open(QIODevice::WriteOnly));
    QVERIFY(reporter->autoSaveCrashReport());
    QVERIFY(reporter->autoSaveCrashReport());
    QCOMPARE(
        packages(),
        QStringList({QStringLiteral("Crash Report 0.cdp"), QStringLiteral("Crash Report 1.cdp"),
                     QStringLiteral("Crash Report 2.cdp"), QStringLiteral("Crash Report 3.cdp")}));
    QCOMPARE(QFileInfo(packageFolder + QStringLiteral("/Crash Report 0.cdp")).size(), qint64(0));
}

void ApplicationReportTest::autoSaveLeavesNumbersAloneThatItCannotLookAt()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(QDir().mkpath(packageFolder));
    // A link to itself is there, yet the kernel cannot say what it is.
    const QString unknown = packageFolder + QStringLiteral("/Crash Report 0.cdp");
    QVERIFY(QFile::link(unknown, unknown));
    QVERIFY(reporter->autoSaveCrashReport());
    QVERIFY2(QFileInfo(unknown).isSymLink(), "it may be an earlier package");
    QVERIFY(readPackage(packageFolder + QStringLiteral("/Crash Report 1.cdp")).isWellFormed());
}

void ApplicationReportTest::autoSaveFailsWhereNoNumberCanBeLookedAt()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(QFile::link(packageFolder, packageFolder));
    QTest::ignoreMessage(QtDebugMsg, "There was a problem auto-saving the crash report to "
                                     "/user_data/crash_dumps/Crash Report 9.cdp");
    QVERIFY(reporter->autoSaveCrashReport());
    QVERIFY(QFile::remove(packageFolder));
}

void ApplicationReportTest::aFailedAutoSaveCountsAsHandled()
{
    const RunningReporter reporter({writeCrashFile(QStringLiteral("/nowhere/r4.core"))});
    reporter.launch();
    QTest::ignoreMessage(QtDebugMsg, "Error: dump file not found");
    QTest::ignoreMessage(QtDebugMsg, "There was a problem auto-saving the crash report to "
                                     "/user_data/crash_dumps/Crash Report 0.cdp");
    QVERIFY(reporter->autoSaveCrashReport());
    QCOMPARE(packages(), QStringList());
    // No question is asked any more: it would wait for an answer here.
    QVERIFY(reporter->restart());
    QCOMPARE(reboots(), 1);
}

void ApplicationReportTest::restartAsksAndSavesOnYes()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    const BoxAnswer answer(QMessageBox::Yes);
    QVERIFY(reporter->restart());

    QCOMPARE(answer.boxes, 1);
    QCOMPARE(answer.title, questionTitle);
    QCOMPARE(answer.text, QStringLiteral("Do you want to save the crash report on the processor?"));
    QCOMPARE(answer.icon, QMessageBox::Question);
    QCOMPARE(answer.buttons, QMessageBox::Yes | QMessageBox::No);
    QVERIFY(!answer.hadDefault);
    QCOMPARE(packages(), QStringList{QStringLiteral("Crash Report 0.cdp")});
    QCOMPARE(unmounts(), 1);
    QCOMPARE(reboots(), 1);
}

void ApplicationReportTest::restartAsksAndGoesOnOnNo()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    {
        const BoxAnswer answer(QMessageBox::No);
        QVERIFY(reporter->restart());
        QCOMPARE(answer.boxes, 1);
    }
    QCOMPARE(packages(), QStringList());
    QCOMPARE(reboots(), 1);

    const BoxAnswer again(QMessageBox::No);
    reporter->askToSaveCrashReport();
    QCOMPARE(again.boxes, 1);
}

void ApplicationReportTest::shutdownAsksUnmountsAndStays()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    log->clear();
    const BoxAnswer answer(QMessageBox::No);
    QVERIFY(reporter->shutdown());
    QCOMPARE(answer.boxes, 1);
    QCOMPARE(log->texts(), QList<QByteArray>{"Shutting down R4\n"});
    QCOMPARE(unmounts(), 1);
    QCOMPARE(reboots(), 0);
}

void ApplicationReportTest::sendingBuildsAndDiscardsAPackage()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    log->clear();
    QVERIFY(!reporter->sendCrashReport());
    QCOMPARE(log->texts(),
             QList<QByteArray>({"Sending crash report\n", "Creating dump package\n"}));
    QVERIFY(!QFile::exists(QDir::tempPath() + QStringLiteral("/crash_log.cdp")));

    // A package that could be built clears the unsaved mark: nothing is asked.
    reporter->restart();
    QCOMPARE(reboots(), 1);
}

void ApplicationReportTest::sendingWithoutDumpShowsItsError()
{
    const RunningReporter reporter({writeCrashFile(QStringLiteral("/nowhere/r4.core"))});
    reporter.launch();
    const BoxAnswer answer(QMessageBox::Ok);
    QTest::ignoreMessage(QtDebugMsg, "Error: dump file not found");
    QVERIFY(!reporter->sendCrashReport());
    QCOMPARE(answer.boxes, 1);
    QCOMPARE(answer.title, QStringLiteral("Error"));
    QCOMPARE(answer.text, QStringLiteral("There was a problem creating a crash report package "
                                         "to attach to the email."));
    QCOMPARE(answer.icon, QMessageBox::Critical);
    QCOMPARE(answer.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

APPLICATION_TEST_MAIN(ApplicationReportTest)
#include "tst_application_report.moc"
