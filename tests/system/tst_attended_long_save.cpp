// A dump that takes long to pack: the operator sees it move, and nothing else happens.

#include "attended_crash.h"

#include <QFile>
#include <QFileInfo>
#include <QProcess>
#include <QTest>

using namespace TestSupport;

namespace {

const QString progressTitle = QStringLiteral("Saving the crash report");

constexpr qint64 twoGibibytes = 2LL * 1024 * 1024 * 1024;
/** Still a few seconds to pack. */
constexpr qint64 aSecondsWorth = 800LL * 1000 * 1000;
constexpr int longTime = 120000;

/** A crash with a dump of zeros, which takes no room here, and a key in the machine. */
class LongCrash : public AttendedCrash
{
public:
    explicit LongCrash(qint64 dumpSize)
    {
        setDumpSize(dumpSize);
        keys.plugBeforehand({"sdb", "sdb1"});
        key = keys.format("sdb1");
    }

    bool setDumpSize(qint64 size) const
    {
        return QFile::resize(run.tmpFolder() + "/r4.core", size);
    }

    bool saveAs(const QString &name)
    {
        if (!waitForWindow(saveTitle))
            return false;
        session.type(name);
        session.press({"Return"});
        return true;
    }

    bool waitForProgress()
    {
        return run.waitUntil(
            [&] { return !(progress = session.geometry(progressTitle)).isEmpty(); }, longTime);
    }

    /** Until the window looks otherwise; false when it has gone before. */
    bool waitUntilItMoves()
    {
        const QImage before = session.picture(progress);
        return run.waitUntil([&] { return session.picture(progress) != before; }, longTime) &&
               isInProgress();
    }

    bool isInProgress() const { return !session.geometry(progressTitle).isEmpty(); }

    /** On Save, Restart and Shutdown, which cannot be covered by a window in the middle. */
    void clickTheButtonsBehind() const
    {
        for (const int fromTheRight : {215, 130, 45}) {
            session.movePointer(screen.bottomRight() - QPoint(fromTheRight, 26));
            session.click();
        }
    }

    /** Closes the message of that title, which comes at the end. */
    bool dismiss(const QString &title)
    {
        if (!run.waitUntil([&] { return session.activeWindow() == title; }, longTime) ||
            !waitForWindow(title))
            return false;
        session.press({"Return"});
        return waitForWindow(screenTitle);
    }

    QString key;
    QRect progress;
};

/** The library that records kicks, and asks for them often. */
QStringList withWatchdogStandIn()
{
    return {"env", "LD_PRELOAD=" R4_WATCHDOG_STAND_IN};
}

/** What GNU tar lists, one "name size" an entry. */
QStringList listing(const QString &package)
{
    QProcess tar;
    tar.start("tar", {"--list", "--verbose", "--gzip", "--file", package});
    if (!tar.waitForFinished(longTime) || tar.exitCode() != 0)
        return {"not readable"};
    QStringList entries;
    for (const QString &line : QString::fromUtf8(tar.readAllStandardOutput()).split('\n')) {
        const QStringList words = line.simplified().split(' ');
        if (words.size() > 2)
            entries.append(words.last() + ' ' + words.at(2));
    }
    return entries;
}

} // namespace

class AttendedLongSaveTest : public QObject
{
    Q_OBJECT

private slots:
    void twoGibibytesAreSavedAndNothingElseHappens();
    void theExpiredCountdownShowsItsProgress();
    void theWatchdogIsFedMeanwhile();
};

void AttendedLongSaveTest::twoGibibytesAreSavedAndNothingElseHappens()
{
    LongCrash crash(twoGibibytes);
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.saveAs("long"));
    crash.clickTheButtonsBehind(); // before the window is there
    QVERIFY(crash.waitForProgress());
    QVERIFY(crash.waitUntilItMoves());

    crash.clickTheButtonsBehind();
    crash.session.type("what is this\n");
    crash.session.press({"Tab", "space", "Escape", "alt+F4"});
    QVERIFY(crash.keys.plug(crash.run, {"sda", "sda1"}));
    QVERIFY(crash.waitUntilItMoves());
    QVERIFY(crash.keys.pull(crash.run, {"sda1", "sda"}));
    QVERIFY(crash.waitUntilItMoves());

    QVERIFY(crash.dismiss(successTitle));
    QCOMPARE(crash.keys.calls().size(), 2);
    QCOMPARE(filesBelow(crash.key), QStringList{"long.cdp"});
    QCOMPARE(listing(crash.key + "/long.cdp").first(), "r4.core " + QString::number(twoGibibytes));

    // What is behind is as it was: the comments are empty, and the report is saved.
    QVERIFY(crash.setDumpSize(10));
    crash.session.press({"space"});
    QVERIFY(crash.saveAs("short"));
    QVERIFY(crash.dismiss(successTitle));
    QCOMPARE(reportIn(crash.key + "/short.cdp"), reportWithComments({}));
    crash.session.press({"Tab", "space"});
    const SandboxResult result = crash.finish();
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(crash.systemCalls().count(unmountCall), 1);
    QCOMPARE(crash.systemCalls().count(rebootCall), 1);
}

void AttendedLongSaveTest::theExpiredCountdownShowsItsProgress()
{
    LongCrash crash(aSecondsWorth);
    crash.start({"--seconds", "2"});
    QVERIFY(crash.waitForScreen());
    QVERIFY(crash.waitForProgress());
    QVERIFY(crash.waitUntilItMoves());
    crash.clickTheButtonsBehind();
    crash.session.type("x");
    const SandboxResult result = crash.run.finish(longTime);
    QCOMPARE(result.end, End::Reboot);
    QCOMPARE(result.filesLeft, QStringList{firstPackage});
    QCOMPARE(crash.systemCalls(), (QList<QByteArray>{unmountCall, rebootCall}));
    QCOMPARE(listing(crash.run.userDataFolder() + '/' + firstPackage).first(),
             "r4.core " + QString::number(aSecondsWorth));
}

void AttendedLongSaveTest::theWatchdogIsFedMeanwhile()
{
    LongCrash crash(aSecondsWorth);
    const QString kicks = crash.run.tmpFolder() + "/kicks";
    const QStringList withWatchdog = {"sh", "-c", ": > /dev/watchdog; exec \"$@\"", "sh"};
    crash.start({"--seconds", "0"}, withWatchdog, withWatchdogStandIn());
    QVERIFY(crash.waitForScreen());
    QVERIFY(crash.run.waitUntil([&] { return QFileInfo(kicks).size() > 1; }));
    crash.pressRestart();
    QVERIFY(crash.waitForWindow(questionTitle));
    crash.session.press({"alt+y"});
    QVERIFY(crash.waitForProgress());
    const qint64 before = QFileInfo(kicks).size();
    QVERIFY(crash.run.waitUntil([&] { return QFileInfo(kicks).size() >= before + 2; }));
    QVERIFY2(crash.isInProgress(), "the bytes of the package were moving all the while");
    QCOMPARE(crash.run.finish(longTime).end, End::Reboot);
}

QTEST_GUILESS_MAIN(AttendedLongSaveTest)
#include "tst_attended_long_save.moc"
