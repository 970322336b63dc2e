// The countdown of the crash screen: what an operator sees of it, what stops it,
// and what becomes of the machine when nobody does.

#include "attended_crash.h"

#include <QElapsedTimer>
#include <QTest>

using namespace TestSupport;

namespace {

/** Inside the comments box, which is wide enough for every movement of the tests. */
QPoint pointerRest(const AttendedCrash &crash)
{
    return crash.screen.center() + QPoint(40, 60);
}

/** Two ticks after a movement it has certainly been handled; false when it ended the countdown. */
bool movePointerAndTick(AttendedCrash &crash, QPoint movement)
{
    crash.session.movePointer(pointerRest(crash) + movement);
    return crash.waitForTick() && crash.waitForTick() && crash.countdownIsShown();
}

} // namespace

class AttendedCountdownTest : public QObject
{
    Q_OBJECT

private slots:
    void itIsShownAndTicksOnceASecond();
    void withoutSecondsThereIsNone_data();
    void withoutSecondsThereIsNone();
    void activityCancelsIt_data();
    void activityCancelsIt();
    void cancelledItNeverRestarts();
    void aMovementOf9PixelsDoesNot_data();
    void aMovementOf9PixelsDoesNot();
    void itsEndIsPackageAndReboot();
};

void AttendedCountdownTest::itIsShownAndTicksOnceASecond()
{
    AttendedCrash crash;
    crash.start({"--seconds", "30"});
    QVERIFY(crash.waitForScreen());
    QVERIFY(crash.countdownIsShown());

    QVERIFY(crash.waitForTick());
    QElapsedTimer fromTickToTick;
    fromTickToTick.start();
    const QImage before = crash.countdown();
    QVERIFY(crash.waitForTick());
    const qint64 milliseconds = fromTickToTick.elapsed();
    QVERIFY2(milliseconds > 800 && milliseconds < 3000, qPrintable(QString::number(milliseconds)));
    // From 29 to 28 only the last digit is another one.
    const QRect changed = differenceOf(before, crash.countdown());
    QVERIFY2(changed.width() < 16, qPrintable(QString::number(changed.width())));

    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
}

void AttendedCountdownTest::withoutSecondsThereIsNone_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("0 seconds") << QStringList{"--seconds", "0"};
    QTest::newRow("-5 seconds, flag set") << QStringList{"--seconds", "-5", "--unattended"};
}

void AttendedCountdownTest::withoutSecondsThereIsNone()
{
    QFETCH(QStringList, options);
    AttendedCrash crash;
    crash.start(options);
    QVERIFY(crash.waitForScreen());
    QCOMPARE(inkIn(crash.countdown()), 0);
}

void AttendedCountdownTest::activityCancelsIt_data()
{
    // "key", "press" or "move", and the pointer's places after the first one.
    QTest::addColumn<QString>("activity");
    QTest::addColumn<QList<QPoint>>("movements");
    QTest::newRow("a key") << "key" << QList<QPoint>();
    QTest::newRow("a press") << "press" << QList<QPoint>();
    QTest::newRow("10 pixels to the right") << "move" << QList<QPoint>{{10, 0}};
    QTest::newRow("10 pixels up") << "move" << QList<QPoint>{{0, -10}};
    QTest::newRow("4 pixels left and 6 down") << "move" << QList<QPoint>{{-4, 6}};
    QTest::newRow("a few pixels at a time")
        << "move" << QList<QPoint>{{2, 0}, {3, 1}, {4, 2}, {4, 4}, {4, 6}};
}

void AttendedCountdownTest::activityCancelsIt()
{
    QFETCH(QString, activity);
    QFETCH(QList<QPoint>, movements);
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    if (activity == "key")
        crash.session.press({"x"});
    if (activity == "press" || activity == "move")
        QVERIFY(movePointerAndTick(crash, QPoint(0, 0)));
    if (activity == "press")
        crash.session.click();
    for (const QPoint &movement : movements)
        crash.session.movePointer(pointerRest(crash) + movement);
    QVERIFY(crash.run.waitUntil([&] { return !crash.countdownIsShown(); }));
    QCOMPARE(inkIn(crash.countdown()), 0);
}

void AttendedCountdownTest::cancelledItNeverRestarts()
{
    constexpr qint64 seconds = 3;
    QElapsedTimer sinceStart;
    sinceStart.start();
    AttendedCrash crash;
    crash.start({"--seconds", QString::number(seconds)});
    QVERIFY(crash.waitForScreen());
    crash.session.press({"x"});
    QVERIFY(crash.run.waitUntil([&] { return !crash.countdownIsShown(); }));
    QVERIFY(crash.run.waitUntil([&] { return sinceStart.hasExpired(2 * seconds * 1000); }));
    QVERIFY(crash.waitUntilIdle());

    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.end, End::Terminated);
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
}

void AttendedCountdownTest::aMovementOf9PixelsDoesNot_data()
{
    QTest::addColumn<QPoint>("movement");
    QTest::addColumn<QPoint>("onePixelMore");
    QTest::newRow("to the right") << QPoint(9, 0) << QPoint(10, 0);
    QTest::newRow("aslant") << QPoint(-4, 5) << QPoint(-5, 5);
}

void AttendedCountdownTest::aMovementOf9PixelsDoesNot()
{
    QFETCH(QPoint, movement);
    QFETCH(QPoint, onePixelMore);
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    QVERIFY(movePointerAndTick(crash, QPoint(0, 0)));
    QVERIFY(movePointerAndTick(crash, movement));
    crash.session.movePointer(pointerRest(crash) + onePixelMore);
    QVERIFY(crash.run.waitUntil([&] { return !crash.countdownIsShown(); }));
}

void AttendedCountdownTest::itsEndIsPackageAndReboot()
{
    AttendedCrash crash;
    crash.start({"--seconds", "3"});
    QVERIFY(crash.waitForScreen());
    QVERIFY(crash.countdownIsShown());
    QCOMPARE(filesBelow(crash.run.userDataFolder()), QStringList());
    const SandboxResult result = crash.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.userData, UserData::Unmounted);
    QVERIFY2(result.nanoseconds > 2800000000, qPrintable(QString::number(result.nanoseconds)));
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), (QList<QByteArray>{unmountCall, rebootCall}));
    QCOMPARE(crash.report(), reportWithComments({}));
}

QTEST_GUILESS_MAIN(AttendedCountdownTest)
#include "tst_attended_countdown.moc"
