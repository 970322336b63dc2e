// The operator saves the report to a USB key.

#include "save_fixture.h"

#include "support/package_reader.h"

#include <QDir>
#include <QFile>
#include <QPlainTextEdit>

using namespace TestSupport;

namespace {

const QString errorTitle = QStringLiteral("Error");
const QString successTitle = QStringLiteral("Success");
const QString questionTitle = QStringLiteral("Crash report is not saved");
const QString noKeyText = QStringLiteral(
    "Failed to detect a USB disk.  Please ensure your USB disk is correctly inserted.");
const QString noMountText =
    QStringLiteral("Failed to mount USB disk.  Please ensure your USB disk is correctly inserted.");

/** A message with nothing but Ok, before the crash screen. */
void compareMessage(const SeenBox &box, QMessageBox::Icon icon, const QString &title,
                    const QString &text)
{
    QCOMPARE(box.title, title);
    QCOMPARE(box.text, text);
    QCOMPARE(box.icon, icon);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
}

/** Whether restarting asks about a report that is not saved; answered with No. */
bool restartAsks(const RunningReporter &reporter, SavingOperator &saver)
{
    saver.boxes.clear();
    saver.answers(QMessageBox::No);
    reporter->restart();
    return !saver.boxes.isEmpty() && saver.boxes.first().title == questionTitle;
}

void fail(KernelFunction function, int error)
{
    KernelOutcome outcome;
    outcome.result = -1;
    outcome.error = error;
    KernelFakes::instance().script(function, outcome);
}

} // namespace

class ApplicationSaveTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void withoutAKeyNothingIsOpened();
    void aKeyThatCannotBeMountedIsSaid();
    void theDialogShowsTheKeyAlone();
    void thePackageIsNamedAsTyped_data();
    void thePackageIsNamedAsTyped();
    void theSavedReportIsWholeBeforeTheKeyIsUnmounted();
    void aSavedReportIsNotAskedAbout();
    void cancellingUnmounts_data();
    void cancellingUnmounts();
    void aDialogClosedOtherwiseKeepsTheKeyMounted_data();
    void aDialogClosedOtherwiseKeepsTheKeyMounted();
    void anExistingFileIsReplacedOnlyOnYes();
    void aFailedPackageUnmountsToo_data();
    void aFailedPackageUnmountsToo();
    void aKeyThatStaysBusyIsNotTheOperatorsConcern();
    void aKeyPulledBehindTheDialogIsAFailedPackage();
    void theSaveButtonSaves();
};

void ApplicationSaveTest::withoutAKeyNothingIsOpened()
{
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    log->clear();
    SavingOperator saver;
    QVERIFY(!reporter->saveCrashReport());
    QCOMPARE(log->texts(), QList<QByteArray>{"Saving crash report\n"});
    QCOMPARE(saver.boxes.size(), 1);
    compareMessage(saver.boxes.first(), QMessageBox::Critical, errorTitle, noKeyText);
    QCOMPARE(saver.boxes.first().parent, reporter.crashScreen());
    QCOMPARE(saver.dialogs, 0);
    QCOMPARE(mounts() + unmounts(), 0);
    QVERIFY(restartAsks(reporter, saver));
}

void ApplicationSaveTest::aKeyThatCannotBeMountedIsSaid()
{
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    log->clear();
    fail(KernelFunction::Mount, EIO);
    SavingOperator saver;
    QVERIFY(!reporter->saveCrashReport());
    QCOMPARE(log->texts(), QList<QByteArray>({"Saving crash report\n", "Try to mount USB key\n",
                                              "Failed to mount USB Key\n"}));
    QCOMPARE(saver.boxes.size(), 1);
    compareMessage(saver.boxes.first(), QMessageBox::Critical, errorTitle, noMountText);
    QCOMPARE(saver.boxes.first().parent, reporter.crashScreen());
    QCOMPARE(saver.dialogs, 0);
    QCOMPARE(mounts(), 1);
    QCOMPARE(unmounts(), 0);
    QVERIFY(restartAsks(reporter, saver));
}

void ApplicationSaveTest::theDialogShowsTheKeyAlone()
{
    const PluggedKey key;
    for (const char *name : {"old.cdp", "holiday.jpg"})
        QVERIFY(QFile(keyFolder + '/' + name).open(QIODevice::WriteOnly));
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.atDialog([&](FileDialog &dialog) {
        const FileDialogParts parts(dialog);
        QCOMPARE(dialog.windowTitle(), saveTitle);
        QCOMPARE(dialog.parentWidget(), reporter.crashScreen());
        QCOMPARE(parts.ok->text(), QStringLiteral("Backup"));
        QVERIFY(!parts.internalStorage->isEnabled());
        QVERIFY(parts.usbKey->isEnabled());
        QCOMPARE(parts.name->text(), QString());
        QTRY_VERIFY(parts.row(QStringLiteral("old.cdp")).isValid());
        QCOMPARE(parts.list->model()->rowCount(parts.list->rootIndex()), 1);
        QVERIFY(USBSupport::instance()->isUsbKeyMounted());
        QTest::mouseClick(parts.cancel, Qt::LeftButton);
    });
    QVERIFY(!reporter->saveCrashReport());
    QVERIFY(!saver.wasStuck);
    QCOMPARE(saver.dialogs, 1);
    QCOMPARE(saver.boxes.size(), 0);
}

void ApplicationSaveTest::thePackageIsNamedAsTyped_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("file");
    const auto row = [](const char *typed, const char *file) {
        QTest::newRow(typed) << QString::fromUtf8(typed) << QString::fromUtf8(file);
    };
    row("report", "report.cdp");
    row("report.cdp", "report.cdp");
    row("report.CDP", "report.CDP.cdp");
    row("report.cdp.txt", "report.cdp.txt.cdp");
    row("report.", "report..cdp");
    row("Act 2, cue 17", "Act 2, cue 17.cdp");
}

void ApplicationSaveTest::thePackageIsNamedAsTyped()
{
    QFETCH(QString, typed);
    QFETCH(QString, file);
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.entersName(typed);
    QVERIFY(reporter->saveCrashReport());
    QVERIFY(!saver.wasStuck);
    QCOMPARE(filesOnKey(), QStringList{file});
    QVERIFY(readPackage(keyFolder + '/' + file).isWellFormed());
}

void ApplicationSaveTest::theSavedReportIsWholeBeforeTheKeyIsUnmounted()
{
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    reporter.crashScreen()->findChild<QPlainTextEdit *>()->setPlainText(
        QStringLiteral("It went dark"));
    log->clear();
    Package atUnmount;
    KernelFakes::instance().observe(KernelFunction::Unmount, [&](const KernelCall &call) {
        QCOMPARE(call.path, QByteArray("/usbkey"));
        atUnmount = readPackage(keyFolder + QStringLiteral("/report.cdp"));
    });
    SavingOperator saver;
    saver.entersName(QStringLiteral("report"));
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(log->texts(), QList<QByteArray>({"Saving crash report\n", "Try to mount USB key\n",
                                              "Mounted USB key\n", "Creating dump package\n",
                                              "Try to unmount USB key\n", "Unmounted USB key\n"}));
    QVERIFY2(atUnmount.isWellFormed(), qPrintable(atUnmount.problem));
    QCOMPARE(atUnmount.members.size(), 2);
    QCOMPARE(atUnmount.members.at(0).name, QStringLiteral("r4.core"));
    QCOMPARE(atUnmount.members.at(0).bytes, QByteArray("a core image"));
    QVERIFY(atUnmount.members.at(1).bytes.contains("<Comments>It went dark</Comments>"));
    QCOMPARE(mounts(), 1);
    QCOMPARE(unmounts(), 1);
    QVERIFY(!USBSupport::instance()->isUsbKeyMounted());
    KernelFakes::instance().observe(KernelFunction::Unmount, {});
}

void ApplicationSaveTest::aSavedReportIsNotAskedAbout()
{
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.entersName(QStringLiteral("report"));
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(saver.boxes.size(), 1);
    compareMessage(saver.boxes.first(), QMessageBox::Information, successTitle, successText);
    QVERIFY(!restartAsks(reporter, saver));
    QCOMPARE(reboots(), 1);
    QCOMPARE(packages(), QStringList());
}

void ApplicationSaveTest::cancellingUnmounts_data()
{
    QTest::addColumn<bool>("byEscape");
    QTest::newRow("Cancel") << false;
    QTest::newRow("Escape") << true;
}

void ApplicationSaveTest::cancellingUnmounts()
{
    QFETCH(bool, byEscape);
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    log->clear();
    SavingOperator saver;
    saver.atDialog([&](FileDialog &dialog) {
        const FileDialogParts parts(dialog);
        QTest::keyClicks(parts.name, QStringLiteral("report"));
        if (byEscape)
            QTest::keyClick(&dialog, Qt::Key_Escape);
        else
            QTest::mouseClick(parts.cancel, Qt::LeftButton);
    });
    QVERIFY(!reporter->saveCrashReport());
    QVERIFY(!saver.wasStuck);
    QCOMPARE(saver.boxes.size(), 0);
    QCOMPARE(filesOnKey(), QStringList());
    QCOMPARE(log->texts(), QList<QByteArray>({"Saving crash report\n", "Try to mount USB key\n",
                                              "Mounted USB key\n", "Try to unmount USB key\n",
                                              "Unmounted USB key\n"}));
    QCOMPARE(unmounts(), 1);
    QVERIFY(!USBSupport::instance()->isUsbKeyMounted());
    QVERIFY(restartAsks(reporter, saver));
}

void ApplicationSaveTest::aDialogClosedOtherwiseKeepsTheKeyMounted_data()
{
    QTest::addColumn<bool>("byFrame");
    QTest::newRow("closed by its frame") << true;
    QTest::newRow("rejected") << false;
}

/** Service relies on it: only the panel's own Cancel gives the mount back. */
void ApplicationSaveTest::aDialogClosedOtherwiseKeepsTheKeyMounted()
{
    QFETCH(bool, byFrame);
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.atDialog([&](FileDialog &dialog) {
        if (byFrame)
            QVERIFY(dialog.triggerControl(Vireling::WindowControl::Close));
        else
            dialog.reject();
    });
    QVERIFY(!reporter->saveCrashReport());
    QVERIFY(!saver.wasStuck);
    QCOMPARE(saver.boxes.size(), 0);
    QCOMPARE(unmounts(), 0);
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());

    saver.entersName(QStringLiteral("second"));
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(filesOnKey(), QStringList{QStringLiteral("second.cdp")});
    QVERIFY2(mounts() == 1 && unmounts() == 0, "the second save mounts by counting only");
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());
    QCOMPARE(log->texts().count("Try to mount USB key\n"), 1);
}

void ApplicationSaveTest::anExistingFileIsReplacedOnlyOnYes()
{
    const PluggedKey key;
    QFile old(keyFolder + QStringLiteral("/report.cdp"));
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3);
    old.close();
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    qint64 sizeAfterNo = -1;
    saver.entersName(QStringLiteral("report")).answers(QMessageBox::No);
    saver
        .atDialog([&](FileDialog &dialog) {
            sizeAfterNo = QFileInfo(old.fileName()).size();
            QTest::mouseClick(FileDialogParts(dialog).ok, Qt::LeftButton);
        })
        .answers(QMessageBox::Yes);
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(sizeAfterNo, qint64(3));
    QCOMPARE(saver.dialogs, 1);
    QCOMPARE(saver.boxes.size(), 3);
    for (int question = 0; question < 2; ++question)
        QCOMPARE(saver.boxes.at(question).title, QStringLiteral("File exists"));
    compareMessage(saver.boxes.at(2), QMessageBox::Information, successTitle, successText);
    QVERIFY(readPackage(old.fileName()).isWellFormed());
    QCOMPARE(unmounts(), 1);
}

void ApplicationSaveTest::aFailedPackageUnmountsToo_data()
{
    QTest::addColumn<bool>("dumpIsMissing");
    QTest::newRow("no dump") << true;
    QTest::newRow("a folder of that name") << false;
}

void ApplicationSaveTest::aFailedPackageUnmountsToo()
{
    QFETCH(bool, dumpIsMissing);
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.entersName(QStringLiteral("report"));
    if (dumpIsMissing) {
        QVERIFY(QFile::remove(scratch->filePath(QStringLiteral("r4.core"))));
        QTest::ignoreMessage(QtDebugMsg, "Error: dump file not found");
    } else {
        QVERIFY(QDir(keyFolder).mkpath(QStringLiteral("report.cdp/in the way")));
        saver.answers(QMessageBox::Yes);
    }
    QVERIFY(!reporter->saveCrashReport());
    compareMessage(saver.boxes.last(), QMessageBox::Critical, errorTitle, errorText);
    QCOMPARE(mounts(), 1);
    QCOMPARE(unmounts(), 1);
    QVERIFY(!USBSupport::instance()->isUsbKeyMounted());
    QCOMPARE(filesOnKey(),
             dumpIsMissing ? QStringList() : QStringList{QStringLiteral("report.cdp")});
    QVERIFY(restartAsks(reporter, saver));
}

void ApplicationSaveTest::aKeyThatStaysBusyIsNotTheOperatorsConcern()
{
    const PluggedKey key;
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    fail(KernelFunction::Unmount, EBUSY);
    SavingOperator saver;
    saver.entersName(QStringLiteral("report"));
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(saver.boxes.size(), 1);
    compareMessage(saver.boxes.first(), QMessageBox::Information, successTitle, successText);
    QCOMPARE(log->texts().last(), QByteArray("Failed to unmount USB Key\n"));
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());
}

/** The folder is still mounted, but nothing can be written there any more. */
void ApplicationSaveTest::aKeyPulledBehindTheDialogIsAFailedPackage()
{
    const PluggedKey key;
    QVERIFY(QDir(keyFolder).mkdir(QStringLiteral("reports")));
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    saver.atDialog([&](FileDialog &dialog) {
        dialog.fileWidget()->setDirectory(keyFolder + QStringLiteral("/reports"));
        removeNode(QStringLiteral("sdb1"));
        removeNode(QStringLiteral("sdb"));
        QVERIFY(QDir(keyFolder).rmdir(QStringLiteral("reports")));
        QLineEdit *line = FileDialogParts(dialog).name;
        QTest::keyClicks(line, QStringLiteral("report"));
        QTest::keyClick(line, Qt::Key_Return);
    });
    QVERIFY(!reporter->saveCrashReport());
    QVERIFY(!saver.wasStuck);
    QCOMPARE(saver.boxes.size(), 1);
    compareMessage(saver.boxes.first(), QMessageBox::Critical, errorTitle, errorText);
    QCOMPARE(unmounts(), 1);
    QCOMPARE(filesOnKey(), QStringList());
}

void ApplicationSaveTest::theSaveButtonSaves()
{
    const RunningReporter reporter({crashFile()});
    launchInFront(reporter);
    SavingOperator saver;
    emit reporter.crashScreen()->saveRequested();
    QCOMPARE(saver.boxes.size(), 1);
    QCOMPARE(saver.boxes.first().text, noKeyText);
}

APPLICATION_TEST_MAIN(ApplicationSaveTest)
#include "tst_application_save.moc"
