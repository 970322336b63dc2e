// A package that takes longer than a second: what goes on meanwhile, and what must not.

#include "save_fixture.h"
#include "screen_parts.h"

#include "crash_reporter/progress_window.h"

#include <QFile>
#include <QLabel>
#include <QSignalSpy>

#include <linux/watchdog.h>

#include <functional>

using namespace TestSupport;
using Tessel::sharedClientInfo;

namespace {

/** Nothing but zeros takes no room, and yet a few seconds to pack. */
constexpr qint64 longDump = 800LL * 1000 * 1000;

ProgressWindow *progressWindow()
{
    return qobject_cast<ProgressWindow *>(QApplication::activeModalWidget());
}

/** Does something once, when the event loop turns inside the package. */
class InsidePackage : public QObject
{
public:
    explicit InsidePackage(const std::function<void()> &action)
    {
        connect(&timer, &QTimer::timeout, this, [this, action] {
            if (!progressWindow())
                return;
            timer.stop();
            action();
            ++times;
        });
        timer.start(0);
    }
    int times = 0;

private:
    QTimer timer;
};

int kicks()
{
    int count = 0;
    for (const KernelCall &call : KernelFakes::instance().calls(KernelFunction::Ioctl))
        count += call.code == WDIOC_KEEPALIVE;
    return count;
}

} // namespace

class ApplicationLongSaveTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void nothingElseBeginsInside();
    void theWatchdogIsFedAndDevicesMayComeAndGo();
    void unattendedNothingIsShown();

private:
    /** crashFile() with a dump that takes long. */
    QString longCrashFile();
    void shortenDump();
};

QString ApplicationLongSaveTest::longCrashFile()
{
    QString path = crashFile();
    if (!QFile::resize(scratch->filePath(QStringLiteral("r4.core")), longDump))
        return {};
    return path;
}

void ApplicationLongSaveTest::shortenDump()
{
    QVERIFY(QFile::resize(scratch->filePath(QStringLiteral("r4.core")), 10));
}

void ApplicationLongSaveTest::nothingElseBeginsInside()
{
    sharedClientInfo()->autoActionSeconds = 2;
    const RunningReporter reporter({longCrashFile()});
    launchInFront(reporter);
    const int countdown = reporter.timerWith(1000);
    const QLabel *seconds = ScreenParts(*reporter.crashScreen()).number;
    QVERIFY(countdown != 0);
    QCOMPARE(seconds->text(), QStringLiteral("2"));
    log->clear();
    const InsidePackage inside([&] {
        for (int tick = 0; tick < 3; ++tick)
            reporter.fire(countdown);
        emit reporter.crashScreen()->saveRequested();
        emit reporter.crashScreen()->sendRequested();
        emit reporter.crashScreen()->restartRequested();
        emit reporter.crashScreen()->shutdownRequested();
        QCOMPARE(log->texts(), QList<QByteArray>{"Creating dump package\n"});
        QCOMPARE(seconds->text(), QStringLiteral("2"));
        QVERIFY(progressWindow() && reporter.crashScreen()->isVisible());
    });
    const QString path = scratch->filePath(QStringLiteral("long.cdp"));
    QVERIFY(reporter->createDumpPackage(path));
    QCOMPARE(inside.times, 1);
    QVERIFY(!QApplication::activeModalWidget());
    QVERIFY(reporter.crashScreen()->isVisible());
    QCOMPARE(unmounts() + reboots() + mounts(), 0);
    QVERIFY(QFileInfo(path).size() > 0);

    shortenDump();
    reporter.fire(countdown);
    QCOMPARE(seconds->text(), QStringLiteral("1"));
    reporter.fire(countdown);
    QCOMPARE(packages(), QStringList{QStringLiteral("Crash Report 0.cdp")});
    QCOMPARE(reboots(), 1);
}

void ApplicationLongSaveTest::theWatchdogIsFedAndDevicesMayComeAndGo()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    const PluggedKey key;
    const RunningReporter reporter({longCrashFile()});
    launchInFront(reporter);
    const int watchdog = reporter.timerWith(120000);
    QVERIFY(watchdog != 0);
    const InsidePackage inside([&] {
        const int before = kicks();
        reporter.fire(watchdog);
        QCOMPARE(kicks(), before + 1);
        QSignalSpy inserted(USBSupport::instance(), &USBSupport::usbKeyInserted);
        addNode(QStringLiteral("sda1"));
        QTRY_COMPARE(inserted.count(), 1);
        DeviceNotificationEvent removal(QStringLiteral("sda1"), false);
        QCoreApplication::sendEvent(USBSupport::instance(), &removal);
        removeNode(QStringLiteral("sda1"));
    });
    SavingOperator saver;
    saver.entersName(QStringLiteral("long"));
    QVERIFY(reporter->saveCrashReport());
    QCOMPARE(inside.times, 1);
    QCOMPARE(saver.boxes.size(), 1);
    QCOMPARE(saver.boxes.first().text, successText);
    QCOMPARE(filesOnKey(), QStringList{QStringLiteral("long.cdp")});
}

void ApplicationLongSaveTest::unattendedNothingIsShown()
{
    sharedClientInfo()->unattendedRestart = 1;
    const RunningReporter reporter({longCrashFile()});
    int turns = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] {
        ++turns;
        QVERIFY(!QApplication::activeModalWidget());
        for (const QWidget *widget : QApplication::topLevelWidgets())
            QVERIFY(!widget->isVisible() || widget == reporter.backdrop());
        QCOMPARE(reboots(), 0);
    });
    timer.start(100);
    reporter.launch();
    QVERIFY2(turns > 0, "the event loop has turned inside the package");
    QCOMPARE(reboots(), 1);
    QCOMPARE(packages(), QStringList{QStringLiteral("Crash Report 0.cdp")});
}

APPLICATION_TEST_MAIN(ApplicationLongSaveTest)
#include "tst_application_long_save.moc"
