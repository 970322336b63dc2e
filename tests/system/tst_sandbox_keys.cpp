/*
 * Keys in the sandbox: nodes that come and go in a scratch "/dev", and the stand-in for
 * vfat that shows what is on them.
 */
#include "probe.h"
#include "support/key_folder.h"
#include "support/sandbox_run.h"

#include <QtTest>

#include <cerrno>
#include <csignal>
#include <unistd.h>

using namespace TestSupport;

namespace {

const QByteArray mountCall = R"(mount("/dev/sdb1", "/usbkey", "vfat", MS_NOATIME, "") = )";
const QByteArray unmountCall = R"(umount("/usbkey") = )";

QStringList onAKey(const QString &actions)
{
    return withKeyStandIn() + probe(actions);
}

QStringList hostDevices()
{
    return QDir("/dev").entryList(QDir::AllEntries | QDir::System | QDir::Hidden);
}

} // namespace

class TestSandboxKeys : public QObject
{
    Q_OBJECT

private slots:
    void keyPluggedBeforehandIsThereAtOnce();
    void keysComeAndGoWhileTheCommandRuns_data();
    void keysComeAndGoWhileTheCommandRuns();
    void nodesOfTheMachineCannotBePlugged();
    void whatIsWrittenToAKeyIsThereAfterwards_data();
    void whatIsWrittenToAKeyIsThereAfterwards();
    void mountingFailsAsTheKernelWouldSay_data();
    void mountingFailsAsTheKernelWouldSay();
    void keyInUseCannotBeUnmounted();
    void unmountingFailsAsAsked();
    void otherMountsPassThrough();
    void sandboxEndsWhileKeysMayBePlugged_data();
    void sandboxEndsWhileKeysMayBePlugged();
    void keysCanBePluggedAfterEverybodyWasKilled();
    void keysBelongToOneSandbox();
};

void TestSandboxKeys::keyPluggedBeforehandIsThereAtOnce()
{
    KeyFolder keys;
    keys.plugBeforehand({"sda", "sda1"});
    SandboxRun run(keys.sandboxOptions());
    const auto result = run.run(probe("open /dev/sda open /dev/sda1 open /dev/sdb"));
    QCOMPARE(result.stdErr, QByteArray());
    QCOMPARE(result.stdOut, QByteArray("open /dev/sdb: ENOENT\n"));
    QCOMPARE(keys.plugged(), (QList<QByteArray>{"sda", "sda1"}));
}

void TestSandboxKeys::keysComeAndGoWhileTheCommandRuns_data()
{
    QTest::addColumn<QStringList>("options");
    QTest::newRow("as everybody") << QStringList();
    if (geteuid() == 0)
        QTest::newRow("without a user namespace") << QStringList{"--without-user-namespace"};
}

void TestSandboxKeys::keysComeAndGoWhileTheCommandRuns()
{
    QFETCH(QStringList, options);
    const QStringList before = hostDevices();
    KeyFolder keys;
    SandboxRun run(keys.sandboxOptions() + options);
    run.start(probe("watch /dev"));
    QVERIFY(run.waitForOutput("watching\n"));

    QVERIFY(keys.plug(run, {"sdb", "sdb1"}));
    QVERIFY(run.waitForOutput("created sdb\ncreated sdb1\n"));
    QCOMPARE(keys.plugged(), (QList<QByteArray>{"sdb", "sdb1"}));
    QVERIFY(keys.pull(run, {"sdb1", "sdb"}));
    QVERIFY(run.waitForOutput("deleted sdb1\ndeleted sdb\n"));
    QCOMPARE(keys.plugged(), QList<QByteArray>());
    QCOMPARE(hostDevices(), before);

    run.terminate();
    const auto result = run.finish();
    QCOMPARE(result.stdErr, QByteArray());
    QCOMPARE(result.stdOut, QByteArray("watching\ncreated sdb\ncreated sdb1\n"
                                       "deleted sdb1\ndeleted sdb\n"));
    QCOMPARE(filesBelow(keys.path()), QStringList{"plugged"});
}

void TestSandboxKeys::nodesOfTheMachineCannotBePlugged()
{
    KeyFolder keys;
    keys.plugBeforehand({"null", "../tmp/here", "sda"});
    SandboxRun run(keys.sandboxOptions());
    run.start(probe("say ready wait"));
    QVERIFY(run.waitForOutput("ready\n"));
    QVERIFY(keys.plug(run, {"sdb"}));
    QVERIFY(keys.pull(run, {"stdin"}));
    QVERIFY(keys.pull(run, {"sda"}));
    run.terminate();
    const auto result = run.finish();
    QCOMPARE(result.stdErr, QByteArray("sandbox: plug null: File exists\n"
                                       "sandbox: no name of a node: ../tmp/here\n"
                                       "sandbox: pull stdin: not plugged\n"));
    QCOMPARE(result.tmpFilesLeft, QStringList());
    QCOMPARE(keys.plugged(), QList<QByteArray>{"sdb"});
}

void TestSandboxKeys::whatIsWrittenToAKeyIsThereAfterwards_data()
{
    keysComeAndGoWhileTheCommandRuns_data();
}

void TestSandboxKeys::whatIsWrittenToAKeyIsThereAfterwards()
{
    QFETCH(QStringList, options);
    KeyFolder keys;
    keys.plugBeforehand({"sdb", "sdb1"});
    QVERIFY(writeFile(keys.format("sdb1") + "/found", "found"));
    SandboxRun run(keys.sandboxOptions() + options);
    const auto result =
        run.run(onAKey("write /usbkey/before 1 mount /dev/sdb1 /usbkey copy /usbkey/found "
                       "/tmp/found write /usbkey/report 3 umount /usbkey open /usbkey/report"));
    QCOMPARE(result.stdErr, QByteArray());
    QCOMPARE(result.stdOut, QByteArray("open /usbkey/report: ENOENT\n"));
    QCOMPARE(keys.calls(), (QList<QByteArray>{mountCall + '0', unmountCall + '0'}));
    QCOMPARE(keys.filesOn("sdb1"), (QStringList{"found", "report"}));
    QCOMPARE(contentsOf(keys.path() + "/sdb1/report"), QByteArray("xxx"));
    QCOMPARE(contentsOf(run.tmpFolder() + "/found"), QByteArray("found"));
}

void TestSandboxKeys::mountingFailsAsTheKernelWouldSay_data()
{
    QTest::addColumn<QStringList>("nodes");
    QTest::addColumn<bool>("formatted");
    QTest::addColumn<int>("asked");
    QTest::addColumn<QByteArray>("error");
    QTest::newRow("no key") << QStringList{"sdb"} << true << 0 << QByteArray("ENOENT");
    QTest::newRow("no file system") << QStringList{"sdb1"} << false << 0 << QByteArray("EINVAL");
    for (const int error : {EIO, ENOMEDIUM, EROFS, EBUSY})
        QTest::newRow(strerrorname_np(error))
            << QStringList{"sdb1"} << true << error << QByteArray(strerrorname_np(error));
}

void TestSandboxKeys::mountingFailsAsTheKernelWouldSay()
{
    QFETCH(QStringList, nodes);
    QFETCH(bool, formatted);
    QFETCH(int, asked);
    QFETCH(QByteArray, error);
    KeyFolder keys;
    keys.plugBeforehand(nodes);
    if (formatted)
        keys.format("sdb1");
    if (asked)
        keys.letFail("sdb1", asked);
    SandboxRun run(keys.sandboxOptions());
    const auto result = run.run(onAKey("mount /dev/sdb1 /usbkey write /usbkey/report 1"));
    QCOMPARE(result.stdOut, "mount /dev/sdb1: " + error + '\n');
    QCOMPARE(keys.calls(), QList<QByteArray>{mountCall + "-1 " + error});
    QCOMPARE(keys.filesOn("sdb1"), QStringList());
}

/** The second mount is refused as well: one file system is mounted at a place once. */
void TestSandboxKeys::keyInUseCannotBeUnmounted()
{
    KeyFolder keys;
    keys.plugBeforehand({"sdb1"});
    keys.format("sdb1");
    SandboxRun run(keys.sandboxOptions());
    const auto result = run.run(onAKey("mount /dev/sdb1 /usbkey mount /dev/sdb1 /usbkey "
                                       "lock /usbkey/lock umount /usbkey"));
    QCOMPARE(result.stdOut, QByteArray("mount /dev/sdb1: EBUSY\numount /usbkey: EBUSY\n"));
    QCOMPARE(keys.calls(), (QList<QByteArray>{mountCall + '0', mountCall + "-1 EBUSY",
                                              unmountCall + "-1 EBUSY"}));
}

void TestSandboxKeys::unmountingFailsAsAsked()
{
    KeyFolder keys;
    keys.plugBeforehand({"sdb1"});
    keys.format("sdb1");
    keys.letFail("umount", EIO);
    SandboxRun run(keys.sandboxOptions());
    const auto result =
        run.run(onAKey("mount /dev/sdb1 /usbkey umount /usbkey write /usbkey/report 1"));
    QCOMPARE(result.stdOut, QByteArray("umount /usbkey: EIO\n"));
    QCOMPARE(keys.calls(), (QList<QByteArray>{mountCall + '0', unmountCall + "-1 EIO"}));
    QCOMPARE(keys.filesOn("sdb1"), QStringList{"report"});
}

void TestSandboxKeys::otherMountsPassThrough()
{
    KeyFolder keys;
    SandboxRun run(keys.sandboxOptions());
    const auto result = run.run(onAKey("umount /user_data/ umount /user_data/"));
    QCOMPARE(result.stdOut, QByteArray("umount /user_data/: EINVAL\n"));
    QCOMPARE(result.userData, UserData::Unmounted);
    QCOMPARE(keys.calls(), QList<QByteArray>());
}

void TestSandboxKeys::sandboxEndsWhileKeysMayBePlugged_data()
{
    QTest::addColumn<QString>("actions");
    QTest::addColumn<int>("end");
    QTest::newRow("exit") << "exit 3" << int(End::Exit);
    QTest::newRow("signal") << "signal 9" << int(End::Signal);
    QTest::newRow("reboot") << "reboot" << int(End::Reboot);
    QTest::newRow("ended from outside") << "say ready wait" << int(End::Terminated);
}

void TestSandboxKeys::sandboxEndsWhileKeysMayBePlugged()
{
    QFETCH(QString, actions);
    QFETCH(int, end);
    KeyFolder keys;
    SandboxRun run(keys.sandboxOptions());
    run.start(probe(actions));
    if (end == int(End::Terminated)) {
        QVERIFY(run.waitForOutput("ready\n"));
        run.terminate();
    }
    const auto result = run.finish();
    QCOMPARE(int(result.end), end);
    QVERIFY(!result.timedOut);
    QCOMPARE(result.scratchLeft, QStringList());
    QCOMPARE(filesBelow(keys.path()), QStringList{"plugged"});
}

void TestSandboxKeys::keysCanBePluggedAfterEverybodyWasKilled()
{
    KeyFolder keys;
    keys.plugBeforehand({"sda"});
    SandboxRun run(keys.sandboxOptions());
    // A shell is spared by its own signal to everybody.
    run.start({"sh", "-c", "kill -9 -1; echo killed; sleep 60"});
    QVERIFY(run.waitForOutput("killed\n"));
    QVERIFY(keys.plug(run, {"sdb"}));
    QCOMPARE(keys.plugged(), (QList<QByteArray>{"sda", "sdb"}));
    run.terminate();
    QCOMPARE(run.finish().end, End::Terminated);
}

void TestSandboxKeys::keysBelongToOneSandbox()
{
    KeyFolder keys;
    SandboxRun first(keys.sandboxOptions());
    first.start(probe("say ready wait"));
    QVERIFY(first.waitForOutput("ready\n"));
    SandboxRun second(keys.sandboxOptions());
    const auto result = second.run(probe("write /user_data/ran 1"));
    QCOMPARE(result.end, End::NotRun);
    QCOMPARE(result.sandboxStatus, 125);
    QVERIFY2(result.stdErr.endsWith("sandbox: cannot make " + keys.path().toUtf8() + "/control\n"),
             result.stdErr.constData());
    QVERIFY2(keys.plug(first, {"sdb"}), "the first one's pipe is left alone");
}

QTEST_GUILESS_MAIN(TestSandboxKeys)
#include "tst_sandbox_keys.moc"
