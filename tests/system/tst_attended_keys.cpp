// An operator who wants to save and has no key, a broken one, or one that comes and goes:
// what the program says, and which nodes it tried to mount.

#include "attended_crash.h"

#include <QTest>

using namespace TestSupport;

namespace {

QByteArray mountOf(const char *node, const QByteArray &result)
{
    return "mount(\"/dev/" + QByteArray(node) +
           "\", \"/usbkey\", \"vfat\", MS_NOATIME, \"\") = " + result;
}

const QByteArray unmounted = R"(umount("/usbkey") = 0)";

/** Messages of one title are told apart by their size: their texts are in pixels only. */
QSize sizeOfError(const AttendedCrash &crash)
{
    return crash.session.geometry(errorTitle).size();
}

/**
 * Presses Save, and dismisses what it says, until the program has tried to mount something:
 * that a key has come is told on another thread.
 */
bool saveUntilItMounts(AttendedCrash &crash)
{
    return crash.run.waitUntil([&] {
        if (!crash.waitForWindow(screenTitle))
            return false;
        crash.session.press({"space"});
        const auto hasMounted = [&] { return !crash.keys.calls().isEmpty(); };
        const auto isAnswered = [&] {
            return hasMounted() || crash.session.activeWindow() == errorTitle;
        };
        if (!crash.run.waitUntil(isAnswered) || hasMounted())
            return hasMounted();
        crash.waitUntilIdle();
        crash.session.press({"Return"});
        return false;
    });
}

} // namespace

class AttendedKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void keysThatCannotBeMountedAreTriedInOrder_data();
    void keysThatCannotBeMountedAreTriedInOrder();
    void secondKeyIsTakenWhenTheFirstIsBroken();
    void keyPluggedWhileTheScreenStandsIsFound();
    void keyPulledBeforeTheFirstSaveIsNotDetected();
    void keyPulledAfterASaveCannotBeMounted();
};

void AttendedKeysTest::keysThatCannotBeMountedAreTriedInOrder_data()
{
    QTest::addColumn<QStringList>("nodes");
    QTest::addColumn<QByteArrayList>("tried");
    QTest::newRow("one") << QStringList{"sdb", "sdb1"} << QByteArrayList{"sdb1"};
    QTest::newRow("two") << QStringList{"sdb", "sdb1", "sda", "sda1"}
                         << QByteArrayList{"sda1", "sdb1"};
    QTest::newRow("without partitions")
        << QStringList{"sdb", "sda"} << QByteArrayList{"sda", "sdb"};
    QTest::newRow("one of each") << QStringList{"sdb", "sdb1", "sda"}
                                 << QByteArrayList{"sda", "sdb1"};
}

void AttendedKeysTest::keysThatCannotBeMountedAreTriedInOrder()
{
    QFETCH(QStringList, nodes);
    QFETCH(QByteArrayList, tried);
    AttendedCrash crash;
    crash.keys.plugBeforehand(nodes);
    QList<QByteArray> calls;
    for (const QByteArray &node : tried) {
        crash.keys.format(node);
        crash.keys.letFail(node, EIO);
        calls.append(mountOf(node, "-1 EIO"));
    }
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.waitForWindow(errorTitle));
    QCOMPARE(crash.keys.calls(), calls);
    crash.session.press({"Return"});
    QVERIFY(crash.waitForWindow(screenTitle));

    // Nothing is held from the failure: the next attempt mounts again.
    crash.session.press({"space"});
    QVERIFY(crash.waitForWindow(errorTitle));
    QCOMPARE(crash.keys.calls(), calls + calls);
    const SandboxResult result = crash.switchOff();
    QCOMPARE(result.filesLeft, QStringList());
    QCOMPARE(crash.systemCalls(), QList<QByteArray>());
}

void AttendedKeysTest::secondKeyIsTakenWhenTheFirstIsBroken()
{
    AttendedCrash crash;
    crash.keys.plugBeforehand({"sda", "sda1", "sdb", "sdb1"});
    crash.keys.format("sdb1");
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.waitForWindow(saveTitle));
    crash.session.type("report\n");
    QVERIFY(crash.waitForWindow(successTitle));
    QCOMPARE(crash.keys.calls(),
             (QList<QByteArray>{mountOf("sda1", "-1 EINVAL"), mountOf("sdb1", "0"), unmounted}));
    QCOMPARE(crash.keys.filesOn("sdb1"), QStringList{"report.cdp"});
}

void AttendedKeysTest::keyPluggedWhileTheScreenStandsIsFound()
{
    AttendedCrash crash;
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.waitForWindow(errorTitle));
    crash.session.press({"Return"});
    QCOMPARE(crash.keys.calls(), QList<QByteArray>());

    crash.keys.format("sdb1");
    QVERIFY(crash.keys.plug(crash.run, {"sdb", "sdb1"}));
    QVERIFY(saveUntilItMounts(crash));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mountOf("sdb1", "0")});
    QVERIFY(crash.waitForWindow(saveTitle));
    crash.session.type("report\n");
    QVERIFY(crash.waitForWindow(successTitle));
    QCOMPARE(crash.keys.calls(), (QList<QByteArray>{mountOf("sdb1", "0"), unmounted}));
    QCOMPARE(crash.keys.filesOn("sdb1"), QStringList{"report.cdp"});
}

void AttendedKeysTest::keyPulledBeforeTheFirstSaveIsNotDetected()
{
    AttendedCrash crash;
    crash.keys.plugBeforehand({"sdb", "sdb1"});
    crash.keys.format("sdb1");
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    QVERIFY(crash.keys.pull(crash.run, {"sdb1", "sdb"}));
    crash.pressSave();
    QVERIFY(crash.waitForWindow(errorTitle));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>());
    const QSize notDetected = sizeOfError(crash);
    crash.session.press({"Return"});
    QVERIFY(crash.waitForWindow(screenTitle));

    // The same node comes back, and cannot be mounted: that is said in other words.
    crash.keys.letFail("sdb1", EIO);
    QVERIFY(crash.keys.plug(crash.run, {"sdb", "sdb1"}));
    QVERIFY(saveUntilItMounts(crash));
    QCOMPARE(crash.keys.calls(), QList<QByteArray>{mountOf("sdb1", "-1 EIO")});
    QVERIFY(crash.waitForWindow(errorTitle));
    QVERIFY(sizeOfError(crash) != notDetected);
}

/** That a key has gone is found out by mounting it: it counts as present until then. */
void AttendedKeysTest::keyPulledAfterASaveCannotBeMounted()
{
    AttendedCrash crash;
    crash.keys.plugBeforehand({"sdb", "sdb1"});
    crash.keys.format("sdb1");
    crash.keys.letFail("sdb1", EIO);
    crash.start({"--seconds", "60"});
    QVERIFY(crash.waitForScreen());
    crash.pressSave();
    QVERIFY(crash.waitForWindow(errorTitle));
    const QSize notMounted = sizeOfError(crash);
    crash.session.press({"Return"});
    QVERIFY(crash.waitForWindow(screenTitle));

    crash.keys.letSucceed("sdb1");
    crash.session.press({"space"});
    QVERIFY(crash.waitForWindow(saveTitle));
    crash.session.press({"Escape"});
    QVERIFY(crash.waitForWindow(screenTitle));
    const QList<QByteArray> before = crash.keys.calls();
    QCOMPARE(before,
             (QList<QByteArray>{mountOf("sdb1", "-1 EIO"), mountOf("sdb1", "0"), unmounted}));

    QVERIFY(crash.keys.pull(crash.run, {"sdb1", "sdb"}));
    crash.session.press({"space"});
    QVERIFY(crash.waitForWindow(errorTitle));
    QCOMPARE(sizeOfError(crash), notMounted);
    // The node may still have been known when it was tried.
    QList<QByteArray> after = crash.keys.calls().mid(before.size());
    after.removeAll(mountOf("sdb1", "-1 ENOENT"));
    QCOMPARE(after, QList<QByteArray>());
    QCOMPARE(crash.keys.filesOn("sdb1"), QStringList());
}

QTEST_GUILESS_MAIN(AttendedKeysTest)
#include "tst_attended_keys.moc"
