// How an operator ends the crash reporter, and when no operator gets to see it: what
// the screen shows in the end, what is left, and in which state the machine is.

#include "attended_crash.h"

#include <QColor>
#include <QTest>

using namespace TestSupport;

namespace {

const QColor messageColour(240, 226, 80);

/** The safe message as the operator sees it; empty while it is hidden. */
QRect messageOn(const QImage &picture)
{
    return areaOf(picture, messageColour);
}

/** Whether any time since the start saw more windows than the backdrop alone. */
bool somethingWasShown(AttendedCrash &crash)
{
    const QStringList times = crash.session.windowsSoFar();
    for (const QString &windows : times)
        if (windows.contains(','))
            return true;
    return false;
}

} // namespace

class AttendedEndTest : public QObject
{
    Q_OBJECT

private slots:
    void restartAsksAboutTheReport_data();
    void restartAsksAboutTheReport();
    void shutdownLeavesTheSafeMessage_data();
    void shutdownLeavesTheSafeMessage();
    void withoutArgumentTheSafeMessageIsShownAtOnce();
    void nobodyExpectedSeesNothing_data();
    void nobodyExpectedSeesNothing();
};

void AttendedEndTest::restartAsksAboutTheReport_data()
{
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("filesLeft");
    QTest::newRow("Yes") << "alt+y" << QStringList{firstPackage};
    QTest::newRow("No") << "alt+n" << QStringList();
    QTest::newRow("Escape, which means No") << "Escape" << QStringList();
}

void AttendedEndTest::restartAsksAboutTheReport()
{
    QFETCH(QString, answer);
    QFETCH(QStringList, filesLeft);
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressRestart();
    QVERIFY(crash.waitForWindow(questionTitle));
    QVERIFY(crash.waitUntilAboveScreen(questionTitle));
    QVERIFY2(somethingWasShown(crash), "or the tests below that nothing is prove nothing");
    QCOMPARE(filesBelow(crash.run.userDataFolder()), QStringList());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());

    crash.session.press({answer});
    const SandboxResult result = crash.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.stdOut, QByteArray("connected\n"));
    QCOMPARE(result.filesLeft, filesLeft);
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), (QList<QByteArray>{unmountCall, rebootCall}));
    QCOMPARE(crash.report(), filesLeft.isEmpty() ? QByteArray() : reportWithComments({}));
}

void AttendedEndTest::shutdownLeavesTheSafeMessage_data()
{
    QTest::addColumn<bool>("byPointer");
    QTest::addColumn<QString>("answer");
    QTest::addColumn<QStringList>("filesLeft");
    QTest::newRow("by keys, Yes") << false << "alt+y" << QStringList{firstPackage};
    QTest::newRow("by pointer, No") << true << "alt+n" << QStringList();
}

void AttendedEndTest::shutdownLeavesTheSafeMessage()
{
    QFETCH(bool, byPointer);
    QFETCH(QString, answer);
    QFETCH(QStringList, filesLeft);
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    if (byPointer)
        crash.session.movePointer(crash.screen.bottomRight() - QPoint(45, 22));
    const QImage before = crash.session.picture();
    QCOMPARE(messageOn(before), QRect());
    if (byPointer)
        crash.session.click();
    else
        crash.pressShutdown();
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({answer});

    const auto messageIsShown = [&] { return !messageOn(crash.session.picture()).isEmpty(); };
    QVERIFY(crash.run.waitUntil(messageIsShown));
    QVERIFY2(crash.waitUntilIdle(), "it runs until the power goes");
    const QImage after = crash.session.picture();
    const QRect message = messageOn(after);
    // Nothing has moved: what differs is where the message and the crash screen are.
    const QRect changed = differenceOf(before, after);
    QVERIFY((crash.screen | message).contains(changed));
    QVERIFY(inkIn(after.copy(message)) > 100);
    QVERIFY(crash.session.geometry(screenTitle).isEmpty());

    QCOMPARE(crash.systemCalls(), QList<QByteArray>{unmountCall});
    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, filesLeft);
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>{unmountCall});
}

void AttendedEndTest::withoutArgumentTheSafeMessageIsShownAtOnce()
{
    AttendedCrash crash;
    crash.start({"--no-argument"});
    const auto messageIsShown = [&] { return !messageOn(crash.session.picture()).isEmpty(); };
    QVERIFY(crash.run.waitUntil(messageIsShown));
    QVERIFY(crash.waitUntilIdle());
    QVERIFY(!somethingWasShown(crash));
    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
}

void AttendedEndTest::nobodyExpectedSeesNothing_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::addColumn<QStringList>("reporterPrefix");
    QTest::addColumn<QStringList>("filesLeft");
    QTest::newRow("unattended") << QStringList{"--unattended"} << QStringList()
                                << QStringList{firstPackage};
    // The block's native key is a file in the temporary folder, which is none.
    QTest::newRow("no block to be had")
        << QStringList{"--no-block"} << QStringList{"/usr/bin/env", "TMPDIR=/dev/null"}
        << QStringList{"crash_dumps/"};
}

void AttendedEndTest::nobodyExpectedSeesNothing()
{
    QFETCH(QStringList, options);
    QFETCH(QStringList, reporterPrefix);
    QFETCH(QStringList, filesLeft);
    AttendedCrash crash;
    crash.start(options, reporterPrefix);
    const SandboxResult result = crash.finish();
    QVERIFY2(result.end == End::Reboot, result.stdErr.constData());
    QVERIFY(!somethingWasShown(crash));
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(result.filesLeft, filesLeft);
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), (QList<QByteArray>{unmountCall, rebootCall}));
}

QTEST_GUILESS_MAIN(AttendedEndTest)
#include "tst_attended_end.moc"
