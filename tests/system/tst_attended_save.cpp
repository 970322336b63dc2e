// An operator saves the report to a USB key: what is on the key afterwards, and what the
// program asked the kernel to mount and to unmount for it.

#include "attended_crash.h"
#include "support/package_reader.h"

#include <QTest>

using namespace TestSupport;

namespace {

const QByteArray mounted = R"(mount("/dev/sdb1", "/usbkey", "vfat", MS_NOATIME, "") = 0)";
const QByteArray unmounted = R"(umount("/usbkey") = 0)";

const QByteArray keyMountCall = R"(mount("/keys/sdb1", "/usbkey", NULL, MS_BIND, NULL) = 0)";
const QByteArray keyUnmountCall = R"(umount2("/usbkey", 0) = 0)";

/** A crash with a key in the machine, and the dialog on the screen. */
class CrashWithKey : public AttendedCrash
{
public:
    CrashWithKey()
    {
        keys.plugBeforehand({"sdb", "sdb1"});
        key = keys.format("sdb1");
    }

    bool startSaving()
    {
        start({"--seconds", "60"});
        if (!waitForScreen())
            return false;
        pressSave();
        return waitForWindow(saveTitle);
    }

    /** Types it where the keyboard is, which the dialog opens with in the name line. */
    void enterName(const QString &name) const
    {
        session.type(name);
        session.press({"Return"});
    }

    /** Waits for that question or message, and presses a key there. */
    bool answer(const QString &title, const QString &button)
    {
        if (!waitForWindow(title))
            return false;
        session.press({button});
        return run.waitUntil([&] { return session.geometry(title).isEmpty(); });
    }

    /** After a dialog or a message, where Save has the focus again. */
    bool pressSaveAgain()
    {
        if (!waitForWindow(screenTitle))
            return false;
        session.press({"space"});
        return true;
    }

    bool pressRestartAfterSave()
    {
        if (!waitForWindow(screenTitle))
            return false;
        session.press({"Tab", "space"});
        return true;
    }

    QString key;
};

} // namespace

class AttendedSaveTest : public QObject
{
    Q_OBJECT

private slots:
    void savesUnderTheTypedName_data();
    void savesUnderTheTypedName();
    void overwritesOnlyWhenTold();
    void fileThatWasClickedIsReplaced();
    void cancelLeavesTheKeyUnmounted_data();
    void cancelLeavesTheKeyUnmounted();
    void dialogClosedByItsFrameKeepsTheKeyMounted();
    void unmountsAfterAFailedPackage_data();
    void unmountsAfterAFailedPackage();
    void keyThatIsBusyIsUnmountedByTheNextSave();
};

void AttendedSaveTest::savesUnderTheTypedName_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QString>("file");
    QTest::newRow("without extension") << "report"
                                       << "report.cdp";
    QTest::newRow("with extension") << "report.cdp"
                                    << "report.cdp";
    QTest::newRow("with another extension") << "x.CDP"
                                            << "x.CDP.cdp";
    QTest::newRow("words") << "Act 2, cue 17"
                           << "Act 2, cue 17.cdp";
}

void AttendedSaveTest::savesUnderTheTypedName()
{
    QFETCH(QString, typed);
    QFETCH(QString, file);
    CrashWithKey crash;
    QVERIFY(crash.startSaving());
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mounted});
    crash.enterName(typed);
    QVERIFY(crash.answer(successTitle, "Return"));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, unmounted}));
    QCOMPARE(filesBelow(crash.key), QStringList{file});
    QString why;
    QVERIFY2(sameWithEveryTool(crash.key + '/' + file, &why), qPrintable(why));
    QCOMPARE(reportIn(crash.key + '/' + file), reportWithComments({}));

    QVERIFY(crash.pressRestartAfterSave());
    const SandboxResult result = crash.finish();
    QVERIFY2(result.end == End::Reboot, "a saved report is not asked about");
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(filesBelow(crash.key), QStringList{file});
    QCOMPARE(crash.systemCalls(),
             (QList<QByteArray>{keyMountCall, keyUnmountCall, unmountCall, rebootCall}));
}

void AttendedSaveTest::overwritesOnlyWhenTold()
{
    CrashWithKey crash;
    QFile old(crash.key + "/report.cdp");
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3 && old.flush());
    QVERIFY(crash.startSaving());
    crash.enterName("report");
    QVERIFY(crash.answer(overwriteTitle, "alt+n"));
    QVERIFY(crash.waitForWindow(saveTitle));
    QCOMPARE(old.size(), qint64(3));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mounted});

    crash.session.press({"Return"});
    QVERIFY(crash.answer(overwriteTitle, "alt+y"));
    QVERIFY(crash.answer(successTitle, "Return"));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, unmounted}));
    QCOMPARE(filesBelow(crash.key), QStringList{"report.cdp"});
    QCOMPARE(reportIn(crash.key + "/report.cdp"), reportWithComments({}));
}

/** By pointer alone, but for the question. */
void AttendedSaveTest::fileThatWasClickedIsReplaced()
{
    CrashWithKey crash;
    QFile old(crash.key + "/report.cdp");
    QVERIFY(old.open(QIODevice::WriteOnly) && old.write("old") == 3 && old.flush());
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.session.movePointer(crash.screen.bottomRight() - QPoint(215, 22));
    crash.session.click();
    QVERIFY(crash.waitForWindow(saveTitle));
    const QRect dialog = crash.session.geometry(saveTitle);
    const QPoint firstFile = dialog.topLeft() + QPoint(100, 84);
    const auto fileIsShown = [&] {
        return inkIn(crash.session.picture(QRect(firstFile - QPoint(10, 5), QSize(60, 10)))) > 20;
    };
    QVERIFY(crash.run.waitUntil(fileIsShown));
    crash.session.movePointer(firstFile);
    crash.session.click();
    crash.session.movePointer(dialog.bottomRight() - QPoint(45, 53));
    crash.session.click();
    QVERIFY(crash.answer(overwriteTitle, "alt+y"));
    QVERIFY(crash.answer(successTitle, "Return"));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, unmounted}));
    QCOMPARE(filesBelow(crash.key), QStringList{"report.cdp"});
    QCOMPARE(reportIn(crash.key + "/report.cdp"), reportWithComments({}));
}

void AttendedSaveTest::cancelLeavesTheKeyUnmounted_data()
{
    QTest::addColumn<bool>("byPointer");
    QTest::newRow("Escape") << false;
    QTest::newRow("Cancel") << true;
}

void AttendedSaveTest::cancelLeavesTheKeyUnmounted()
{
    QFETCH(bool, byPointer);
    CrashWithKey crash;
    QVERIFY(crash.startSaving());
    crash.session.type("report");
    const QRect dialog = crash.session.geometry(saveTitle);
    crash.session.movePointer(dialog.bottomRight() - QPoint(50, 25));
    if (byPointer)
        crash.session.click();
    else
        crash.session.press({"Escape"});

    QVERIFY(crash.pressRestartAfterSave());
    QVERIFY2(crash.waitForWindow(questionTitle), "nothing was saved");
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, unmounted}));
    crash.session.press({"alt+n"});
    const SandboxResult result = crash.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(filesBelow(crash.key), QStringList());
    QCOMPARE(crash.systemCalls(),
             (QList<QByteArray>{keyMountCall, keyUnmountCall, unmountCall, rebootCall}));
}

/**
 * Only the panel's Cancel gives the mount back: after the frame's close button the next
 * save finds the key mounted, and what it gives back is its own.
 */
void AttendedSaveTest::dialogClosedByItsFrameKeepsTheKeyMounted()
{
    CrashWithKey crash;
    QVERIFY(crash.startSaving());
    const QRect dialog = crash.session.geometry(saveTitle);
    crash.session.movePointer(dialog.topRight() + QPoint(-20, 18));
    crash.session.click();
    QVERIFY(crash.pressSaveAgain());
    QVERIFY(crash.waitForWindow(saveTitle));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mounted});
    crash.enterName("second");
    QVERIFY(crash.answer(successTitle, "Return"));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mounted});
    QCOMPARE(filesBelow(crash.key), QStringList{"second.cdp"});

    QVERIFY(crash.pressSaveAgain());
    QVERIFY(crash.waitForWindow(saveTitle));
    crash.session.press({"Escape"});
    QVERIFY(crash.pressRestartAfterSave());
    QCOMPARE(crash.finish().end, End::Reboot);
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mounted});
    QCOMPARE(crash.systemCalls(), (QList<QByteArray>{keyMountCall, unmountCall, rebootCall}));
}

void AttendedSaveTest::unmountsAfterAFailedPackage_data()
{
    QTest::addColumn<bool>("dumpIsMissing");
    QTest::newRow("no dump") << true;
    QTest::newRow("a folder of that name") << false;
}

void AttendedSaveTest::unmountsAfterAFailedPackage()
{
    QFETCH(bool, dumpIsMissing);
    CrashWithKey crash;
    if (!dumpIsMissing)
        QVERIFY(QDir(crash.key).mkpath("report.cdp/in the way"));
    QVERIFY(crash.startSaving());
    if (dumpIsMissing)
        QVERIFY(QFile::remove(crash.run.tmpFolder() + "/r4.core"));
    crash.enterName("report");
    if (!dumpIsMissing)
        QVERIFY(crash.answer(overwriteTitle, "alt+y"));
    QVERIFY(crash.answer(errorTitle, "Return"));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, unmounted}));
    QCOMPARE(filesBelow(crash.key),
             dumpIsMissing ? QStringList() : QStringList{"report.cdp/in the way/"});

    QVERIFY(crash.pressRestartAfterSave());
    QVERIFY2(crash.waitForWindow(questionTitle), "nothing was saved");
    crash.session.press({"alt+n"});
    QCOMPARE(crash.finish().end, End::Reboot);
    QCOMPARE(crash.systemCalls(),
             (QList<QByteArray>{keyMountCall, keyUnmountCall, unmountCall, rebootCall}));
}

void AttendedSaveTest::keyThatIsBusyIsUnmountedByTheNextSave()
{
    CrashWithKey crash;
    const QByteArray failed = R"(umount("/usbkey") = -1 EBUSY)";
    crash.keys.letFail("umount", EBUSY);
    QVERIFY(crash.startSaving());
    crash.enterName("first");
    QVERIFY2(crash.answer(successTitle, "Return"), "the report is on the key all the same");
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, failed}));

    crash.keys.letSucceed("umount");
    QVERIFY(crash.pressSaveAgain());
    QVERIFY(crash.waitForWindow(saveTitle));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, failed}));
    crash.enterName("second");
    QVERIFY(crash.answer(successTitle, "Return"));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mounted, failed}));
    QCOMPARE(filesBelow(crash.key), (QStringList{"first.cdp", "second.cdp"}));
}

QTEST_GUILESS_MAIN(AttendedSaveTest)
#include "tst_attended_save.moc"
