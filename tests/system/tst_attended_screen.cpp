// The crash screen while it is up: what the operator's keys and pointer do to it,
// and what of it reaches the report.

#include "attended_crash.h"

#include <QFile>
#include <QTest>
#include <QVector>

using namespace TestSupport;

namespace {

/** The rows of pixels in which something is drawn, as bands of lines of text. */
QVector<QRect> bandsOf(const QImage &picture)
{
    QVector<QRect> bands;
    for (int y = 0, start = -1; y <= picture.height(); ++y) {
        const bool hasInk =
            y < picture.height() && inkIn(picture.copy(0, y, picture.width(), 1)) > 0;
        if (hasInk && start < 0)
            start = y;
        if (!hasInk && start >= 0) {
            bands.append(QRect(0, start, picture.width(), y - start));
            start = -1;
        }
    }
    return bands;
}

} // namespace

class AttendedScreenTest : public QObject
{
    Q_OBJECT

private slots:
    void commentsReachTheReport_data();
    void commentsReachTheReport();
    void theTabKeyVisitsTheButtonsAndReturns();
    void theReturnKeyPressesTheButtonWithTheFocus();
    void escapeLeavesItUp();
    void savingWithoutAKeySaysSoAboveTheScreen();
    void aPressOnTheBackdropDoesNotCoverIt();
    void aChangeOfLanguageReachesEveryText();
};

void AttendedScreenTest::commentsReachTheReport_data()
{
    QTest::addColumn<QString>("typed");
    QTest::addColumn<QByteArray>("written");
    QTest::newRow("nothing") << QString() << QByteArray();
    QTest::newRow("lines") << "first\n\n third " << QByteArray("first\n\n third ");
    QTest::newRow("marks of XML") << "\"a\" & 'b' <c> ]]> &amp;"
                                  << QByteArray(
                                         "&quot;a&quot; &amp; 'b' &lt;c&gt; ]]&gt; &amp;amp;");
    QTest::newRow("letters of the world") << QString::fromUtf8("é € 日") << QByteArray("é € 日");
    QTest::newRow("beyond 16 bits")
        << QString::fromUtf8("lost 😀 again😀") << QByteArray("lost 😀 again😀");
}

void AttendedScreenTest::commentsReachTheReport()
{
    QFETCH(QString, typed);
    QFETCH(QByteArray, written);
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.session.type(typed);
    crash.pressRestart();
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({"alt+y"});
    const SandboxResult result = crash.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(crash.report(), reportWithComments(written));
}

void AttendedScreenTest::theTabKeyVisitsTheButtonsAndReturns()
{
    AttendedCrash crash;
    crash.start({});
    QVERIFY(crash.waitForScreen());
    crash.session.type("to ");
    crash.session.press({"Tab", "Tab", "Tab", "Tab"});
    crash.session.type("and fr");
    crash.session.press({"shift+Tab", "shift+Tab", "shift+Tab", "shift+Tab"});
    crash.session.type("o");
    crash.pressRestart();
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({"alt+y"});
    QCOMPARE(crash.finish().end, End::Reboot);
    QCOMPARE(crash.report(), reportWithComments("to and fro"));
}

void AttendedScreenTest::theReturnKeyPressesTheButtonWithTheFocus()
{
    AttendedCrash crash;
    crash.start({});
    QVERIFY(crash.waitForScreen());
    crash.session.press({"Tab", "Tab", "Return"});
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({"alt+n"});
    QCOMPARE(crash.finish().end, End::Reboot);
}

void AttendedScreenTest::escapeLeavesItUp()
{
    AttendedCrash crash;
    crash.start({});
    QVERIFY(crash.waitForScreen());
    crash.session.press({"Escape"});
    // Also with the focus on a button, where a dialog would act on it just as well.
    crash.session.press({"Tab", "Escape", "shift+Tab"});
    crash.session.type("still here");
    QVERIFY(crash.waitUntilIdle());
    QCOMPARE(crash.session.activeWindow(), screenTitle);
    QCOMPARE(crash.session.geometry(screenTitle), crash.screen);
    crash.pressRestart();
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({"alt+y"});
    QCOMPARE(crash.finish().end, End::Reboot);
    QCOMPARE(crash.report(), reportWithComments("still here"));
}

void AttendedScreenTest::savingWithoutAKeySaysSoAboveTheScreen()
{
    AttendedCrash crash;
    crash.start({});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.waitForWindow(errorTitle));
    QVERIFY(crash.waitUntilAboveScreen(errorTitle));
    crash.session.press({"Return"});
    QVERIFY(crash.waitForWindow(screenTitle));
    QVERIFY(crash.run.waitUntil([&] { return crash.session.geometry(errorTitle).isEmpty(); }));

    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.userData, UserData::Mounted);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(leftInTmp(result), filesOfTheCrash());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
    QCOMPARE(crash.keys.calls(), QList<QByteArray>());
}

/** The window manager raises what is pressed: the crash screen has to come along. */
void AttendedScreenTest::aPressOnTheBackdropDoesNotCoverIt()
{
    AttendedCrash crash;
    crash.start({});
    QVERIFY(crash.waitForScreen());
    const QImage before = crash.session.picture(crash.screen);
    crash.session.movePointer(crash.screen.topLeft() - QPoint(100, 50));
    crash.session.click();
    const auto hasLostTheKeyboard = [&] { return crash.session.activeWindow() != screenTitle; };
    crash.run.waitUntil(hasLostTheKeyboard, 1000);
    QVERIFY(crash.waitUntilIdle());
    // Without the keyboard its frames look different, but not what it says.
    const QRect words(40, 40, crash.screen.width() - 80, 100);
    QCOMPARE(crash.session.picture(crash.screen).copy(words), before.copy(words));
    crash.session.movePointer(crash.screen.bottomRight() - QPoint(45, 22));
    crash.session.click();
    QVERIFY(crash.waitForWindow(questionTitle));
}

void AttendedScreenTest::aChangeOfLanguageReachesEveryText()
{
    AttendedCrash crash;
    crash.start({}, {}, {"env", "LD_PRELOAD=" R4_LANGUAGE_STAND_IN});
    QVERIFY(crash.waitForScreen());
    crash.session.type("typed before");
    QVERIFY(crash.waitUntilIdle());
    // The captions stand in a column of their own, left of the comments box.
    const QRect captions(crash.screen.left() + 30, crash.screen.top() + 40, 70,
                         crash.screen.height() - 90);
    const QRect buttons(crash.screen.right() - 250, crash.screen.bottom() - 36, 240, 30);
    const QImage captionsBefore = crash.session.picture(captions);
    const QImage buttonsBefore = crash.session.picture(buttons);
    const QVector<QRect> texts = bandsOf(captionsBefore);
    QVERIFY2(texts.size() >= 8, "three sentences and five captions");

    QFile change(crash.run.tmpFolder() + "/language");
    QVERIFY(change.open(QIODevice::WriteOnly));
    QVERIFY(crash.run.waitUntil([&] { return crash.session.picture(buttons) != buttonsBefore; }));
    QVERIFY(crash.waitUntilIdle());
    const QImage captionsAfter = crash.session.picture(captions);
    for (const QRect &text : texts)
        QVERIFY2(captionsAfter.copy(text) != captionsBefore.copy(text),
                 qPrintable(QString::number(text.top())));
    // Nothing but texts has changed: no box has come up, and nothing was done.
    QCOMPARE(crash.session.activeWindow(), screenTitle);
    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
}

QTEST_GUILESS_MAIN(AttendedScreenTest)
#include "tst_attended_screen.moc"
