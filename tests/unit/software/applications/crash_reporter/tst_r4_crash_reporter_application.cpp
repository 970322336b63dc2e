// Runs in the sandbox: "/user_data" is scratch, and what ends the appliance is faked.

#include "crash_reporter/r4_crash_reporter_application.h"
#include "support/kernel_fakes.h"
#include "support/log_capture.h"
#include "support/package_reader.h"
#include "tessel_core/shared_client_info.h"

#include <QAbstractEventDispatcher>
#include <QDataStream>
#include <QDir>
#include <QFile>
#include <QMessageBox>
#include <QMouseEvent>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>
#include <QWindow>

#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <sys/reboot.h>
#include <sys/stat.h>

#include <limits>
#include <memory>

using namespace TestSupport;
using Tessel::sharedClientInfo;

namespace {

const QString packageFolder = QStringLiteral("/user_data/crash_dumps");
const QString questionTitle = QStringLiteral("Crash report is not saved");

using Reporter = R4CrashReporterApplication;

/** An application object with the command line it keeps a reference to. */
class RunningReporter
{
public:
    explicit RunningReporter(const QStringList &arguments = {})
    {
        words.append("crash_reporter");
        for (const QString &argument : arguments)
            words.append(argument.toLocal8Bit());
        for (QByteArray &word : words)
            argv.append(word.data());
        argc = argv.size();
        argv.append(nullptr);
        app = std::make_unique<Reporter>(argc, argv.data());
    }

    Reporter *operator->() const { return app.get(); }
    Reporter *get() const { return app.get(); }
    void launch() const { QCoreApplication::sendPostedEvents(); }
    void end() { app.reset(); }

    /** The id of the one coarse timer (Qt makes long ones very coarse), 0 when there is none. */
    int timerWith(int milliseconds) const
    {
        const auto timers = QAbstractEventDispatcher::instance()->registeredTimers(app.get());
        for (const auto &timer : timers) {
            if (timer.interval == milliseconds && timer.timerType != Qt::PreciseTimer)
                return timer.timerId;
        }
        return 0;
    }
    bool countsDown() const { return timerWith(1000) != 0; }
    void fire(int timerId) const
    {
        QTimerEvent event(timerId);
        QCoreApplication::sendEvent(app.get(), &event);
    }

private:
    QVector<QByteArray> words;
    QVector<char *> argv;
    int argc = 0;
    std::unique_ptr<Reporter> app;
};

/** Presses a button of the next message box and remembers what the box said. */
class BoxAnswer : public QObject
{
public:
    explicit BoxAnswer(QMessageBox::StandardButton button)
    {
        connect(&timer, &QTimer::timeout, this, [this, button] {
            auto *box = qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
            if (!box)
                return;
            timer.stop();
            ++boxes;
            title = box->windowTitle();
            text = box->text();
            icon = box->icon();
            buttons = box->standardButtons();
            hadDefault = box->defaultButton() != nullptr;
            box->button(button)->click();
        });
        timer.start(0);
    }

    int boxes = 0;
    QString title;
    QString text;
    QMessageBox::Icon icon = QMessageBox::NoIcon;
    QMessageBox::StandardButtons buttons;
    bool hadDefault = false;

private:
    QTimer timer;
};

QStringList packages()
{
    return QDir(packageFolder).entryList(QDir::Files, QDir::Name);
}

int unmounts()
{
    return static_cast<int>(KernelFakes::instance().calls(KernelFunction::Unmount).size());
}

int reboots()
{
    return static_cast<int>(KernelFakes::instance().calls(KernelFunction::Reboot).size());
}

void move(QObject *receiver, QPointF position)
{
    QMouseEvent event(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &event);
}

} // namespace

class ApplicationTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

    void startUpFeedsTheWatchdogAndSaysConnected();
    void aMissingWatchdogIsLoggedByTheDriverAndTracedByTheApplication();
    void theWatchdogTickKicks();
    void otherTimersAreIgnored();
    void withoutArgumentItShutsDownAndUnmountsNothing();
    void theDestructorAlwaysUnmounts();
    void anUnattendedCrashIsSavedUnmountedAndRebooted();
    void theCrashFileIsDeletedWhateverItIs_data();
    void theCrashFileIsDeletedWhateverItIs();
    void negativeOrNoSecondsActNotByThemselves_data();
    void negativeOrNoSecondsActNotByThemselves();
    void theCountdownEndsInSaveAndReboot();
    void pressesAndKeysStopTheCountdown_data();
    void pressesAndKeysStopTheCountdown();
    void theCountdownIsCancelledOnlyOnce();
    void movementStopsTheCountdownBeyondNinePixels_data();
    void movementStopsTheCountdownBeyondNinePixels();
    void movementIsComparedWithoutMappingBetweenWidgets();
    void theNativeWindowsMovementsDoNotCount();
    void movementWithoutCountdownSetsNoAnchor();
    void autoSaveTakesTheFirstFreeNumber();
    void aFailedAutoSaveCountsAsHandled();
    void restartAsksAndSavesOnYes();
    void restartAsksAndGoesOnOnNo();
    void shutdownAsksUnmountsAndStays();
    void exitIsAShutdown();
    void aFailedUnmountIsPrintedAndTheRebootGoesOn();
    void anEndActionRunsOnceWhenTheEventLoopTurnsInsideIt();
    void anUnansweredQuestionDoesNotStopTheCountdown();
    void sendingBuildsAndDiscardsAPackage();
    void sendingWithoutDumpShowsItsError();

private:
    QString writeCrashFile(const QString &dump);
    QString crashFile();

    std::unique_ptr<QTemporaryDir> scratch;
    std::unique_ptr<LogCapture> log;
};

void ApplicationTest::initTestCase()
{
    QVERIFY2(qEnvironmentVariableIsSet("R4_SANDBOX"),
             "this test writes into /user_data: run it in the sandbox");
    QVERIFY(sharedClientInfo());
}

void ApplicationTest::init()
{
    scratch = std::make_unique<QTemporaryDir>();
    log = std::make_unique<LogCapture>();
    KernelFakes::instance().reset();
    *sharedClientInfo() = {};
}

void ApplicationTest::cleanup()
{
    log.reset();
    QDir(packageFolder).removeRecursively();
}

QString ApplicationTest::writeCrashFile(const QString &dump)
{
    QString path = scratch->filePath(QStringLiteral("crash_data"));
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return {};
    QDataStream stream(&file);
    stream << dump << QDateTime(QDate(2026, 11, 21), QTime(12, 0))
           << QStringList{QStringLiteral("last words")};
    return path;
}

QString ApplicationTest::crashFile()
{
    QFile dump(scratch->filePath(QStringLiteral("r4.core")));
    if (!dump.open(QIODevice::WriteOnly))
        return {};
    dump.write("a core image");
    return writeCrashFile(dump.fileName());
}

void ApplicationTest::startUpFeedsTheWatchdogAndSaysConnected()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    QByteArray output;
    std::unique_ptr<RunningReporter> reporter;
    output = captureStandardOutput([&] { reporter = std::make_unique<RunningReporter>(); });
    QCOMPARE(output, QByteArray("connected\n"));

    QVector<QPair<unsigned long, int>> requests;
    for (const KernelCall &call : KernelFakes::instance().calls(KernelFunction::Ioctl))
        requests.append({call.code, call.value.value_or(0)});
    const QVector<QPair<unsigned long, int>> expected = {{WDIOC_SETTIMEOUT, 240},
                                                         {WDIOC_SETPRETIMEOUT, 1},
                                                         {WDIOC_SETTIMEOUT, 240},
                                                         {WDIOC_SETPRETIMEOUT, 1},
                                                         {WDIOC_KEEPALIVE, 0}};
    QCOMPARE(requests, expected);
    QCOMPARE(unmounts() + reboots(), 0);
}

void ApplicationTest::aMissingWatchdogIsLoggedByTheDriverAndTracedByTheApplication()
{
    const RunningReporter reporter;
    const auto entries = log->entries();
    QCOMPARE(entries.size(), std::size_t(2));
    QCOMPARE(entries.at(0).priority, 130u);
    QCOMPARE(entries.at(0).text,
             QByteArray("Watchdog failed to open, No such file or directory\n"));
    QCOMPARE(entries.at(1).priority, 104u);
    QCOMPARE(entries.at(1).text, QByteArray("Failed to init talvorin watchdog\n"));
}

void ApplicationTest::theWatchdogTickKicks()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    const RunningReporter reporter;
    const int tick = reporter.timerWith(120000);
    QVERIFY(tick != 0);
    const auto before = KernelFakes::instance().calls(KernelFunction::Ioctl).size();
    reporter.fire(tick);
    const auto calls = KernelFakes::instance().calls(KernelFunction::Ioctl);
    QCOMPARE(calls.size(), before + 1);
    QCOMPARE(calls.back().code, static_cast<unsigned long>(WDIOC_KEEPALIVE));
}

void ApplicationTest::otherTimersAreIgnored()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    sharedClientInfo()->autoActionSeconds = 1;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    const auto before = KernelFakes::instance().calls().size();
    reporter.fire(0);
    reporter.fire(123456);
    QCOMPARE(KernelFakes::instance().calls().size(), before);
    QVERIFY(reporter.countsDown());
}

void ApplicationTest::withoutArgumentItShutsDownAndUnmountsNothing()
{
    const RunningReporter reporter;
    log->clear();
    reporter.launch();
    QCOMPARE(log->texts(), QList<QByteArray>({"Crash reporter launched\n", "Shutting down R4\n"}));
    QCOMPARE(unmounts(), 0);
    QCOMPARE(reboots(), 0);
}

void ApplicationTest::theDestructorAlwaysUnmounts()
{
    RunningReporter reporter;
    reporter.launch();
    reporter.end();
    const auto calls = KernelFakes::instance().calls(KernelFunction::Unmount);
    QCOMPARE(calls.size(), std::size_t(1));
    QCOMPARE(calls.front().path, QByteArray("/user_data/"));
    QCOMPARE(reboots(), 0);
}

void ApplicationTest::anUnattendedCrashIsSavedUnmountedAndRebooted()
{
    sharedClientInfo()->unattendedRestart = 7;
    QStringList atReboot;
    int unmountsAtReboot = 0;
    unsigned long command = 0;
    KernelFakes::instance().observe(KernelFunction::Reboot, [&](const KernelCall &call) {
        atReboot = packages();
        unmountsAtReboot = unmounts();
        command = call.code;
    });
    const RunningReporter reporter({crashFile(), QStringLiteral("ignored")});
    log->clear();
    reporter.launch();

    QCOMPARE(atReboot, QStringList{QStringLiteral("Crash Report 0.cdp")});
    QCOMPARE(unmountsAtReboot, 1);
    QCOMPARE(command, static_cast<unsigned long>(RB_AUTOBOOT));
    QCOMPARE(log->texts(),
             QList<QByteArray>({"Crash reporter launched\n", "Read crash report data\n",
                                "Crash reported\n", "Auto-saving crash report\n",
                                "Creating dump package\n", "Restarting R4\n"}));
    for (const auto &entry : log->entries())
        QCOMPARE(entry.priority, 104u);

    const Package package = readPackage(packageFolder + QStringLiteral("/Crash Report 0.cdp"));
    QVERIFY(package.isWellFormed());
    QCOMPARE(package.members.at(0).bytes, QByteArray("a core image"));
    QVERIFY(package.members.at(1).bytes.contains("<Date>21/11/2026</Date>"));
    QVERIFY(package.members.at(1).bytes.contains("<Entry>last words</Entry>"));
    QVERIFY(package.members.at(1).bytes.contains("<Comments></Comments>"));
}

void ApplicationTest::theCrashFileIsDeletedWhateverItIs_data()
{
    QTest::addColumn<QString>("kind");
    QTest::addColumn<bool>("wasRead");
    QTest::newRow("well-formed") << "good" << true;
    QTest::newRow("empty") << "empty" << true;
    QTest::newRow("a pipe nobody writes to") << "pipe" << false;
    QTest::newRow("a link to nowhere") << "link" << false;
    QTest::newRow("absent") << "absent" << false;
}

void ApplicationTest::theCrashFileIsDeletedWhateverItIs()
{
    QFETCH(QString, kind);
    QString path = scratch->filePath(kind);
    if (kind == QLatin1String("good"))
        path = crashFile();
    else if (kind == QLatin1String("empty"))
        QVERIFY(QFile(path).open(QIODevice::WriteOnly));
    else if (kind == QLatin1String("pipe"))
        QCOMPARE(mkfifo(path.toLocal8Bit().constData(), 0600), 0);
    else if (kind == QLatin1String("link"))
        QVERIFY(QFile::link(QStringLiteral("/nowhere"), path));

    const RunningReporter reporter({path});
    reporter.launch();
    QVERIFY(!QFileInfo(path).isSymLink() && !QFileInfo::exists(path));
    QTEST(log->texts().contains("Read crash report data\n"), "wasRead");
    QVERIFY(log->texts().contains("Crash reported\n"));
}

void ApplicationTest::negativeOrNoSecondsActNotByThemselves_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("flag");
    QTest::newRow("0, attended") << 0 << 0;
    QTest::newRow("-5, attended") << -5 << 0;
    QTest::newRow("-5, unattended: the flag is not looked at") << -5 << 1;
    QTest::newRow("least") << std::numeric_limits<qint32>::min() << 1;
}

void ApplicationTest::negativeOrNoSecondsActNotByThemselves()
{
    QFETCH(int, seconds);
    QFETCH(int, flag);
    sharedClientInfo()->autoActionSeconds = seconds;
    sharedClientInfo()->unattendedRestart = static_cast<quint8>(flag);
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(!reporter.countsDown());
    QCOMPARE(packages(), QStringList());
    QCOMPARE(unmounts() + reboots(), 0);
}

void ApplicationTest::theCountdownEndsInSaveAndReboot()
{
    sharedClientInfo()->autoActionSeconds = 3;
    sharedClientInfo()->unattendedRestart = 1;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(log->texts().contains("Showing crash report widget for 3 seconds\n"));

    const int timer = reporter.timerWith(1000);
    QVERIFY(timer != 0);
    reporter.fire(timer);
    reporter.fire(timer);
    QCOMPARE(packages(), QStringList());
    QCOMPARE(reboots(), 0);

    log->clear();
    reporter.fire(timer);
    QVERIFY(!reporter.countsDown());
    QCOMPARE(packages(), QStringList{QStringLiteral("Crash Report 0.cdp")});
    QCOMPARE(unmounts(), 1);
    QCOMPARE(reboots(), 1);
    QCOMPARE(log->texts(),
             QList<QByteArray>({"Auto-action timer expired\n", "Auto-saving crash report\n",
                                "Creating dump package\n", "Restarting R4\n"}));
}

void ApplicationTest::pressesAndKeysStopTheCountdown_data()
{
    QTest::addColumn<QString>("receiver");
    QTest::addColumn<int>("type");
    QTest::newRow("press on a widget") << "widget" << int(QEvent::MouseButtonPress);
    QTest::newRow("press on a native window") << "window" << int(QEvent::MouseButtonPress);
    QTest::newRow("key on a widget") << "widget" << int(QEvent::KeyPress);
    QTest::newRow("key on a native window") << "window" << int(QEvent::KeyPress);
}

void ApplicationTest::pressesAndKeysStopTheCountdown()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(reporter.countsDown());
    log->clear();

    QWidget widget;
    QWindow window;
    QFETCH(QString, receiver);
    QFETCH(int, type);
    QObject *target = &widget;
    if (receiver == QLatin1String("window"))
        target = &window;
    if (type == QEvent::KeyPress) {
        QKeyEvent event(QEvent::KeyPress, Qt::Key_A, Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
    } else {
        QMouseEvent event(QEvent::MouseButtonPress, QPointF(1, 1), Qt::LeftButton, Qt::LeftButton,
                          Qt::NoModifier);
        QCoreApplication::sendEvent(target, &event);
    }
    QVERIFY(!reporter.countsDown());
    QCOMPARE(log->texts(), QList<QByteArray>{"Canceled auto-action timer\n"});
}

void ApplicationTest::theCountdownIsCancelledOnlyOnce()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    log->clear();
    reporter->cancelAutoAction();
    reporter->cancelAutoAction();
    QCOMPARE(log->texts(), QList<QByteArray>{"Canceled auto-action timer\n"});
}

void ApplicationTest::movementStopsTheCountdownBeyondNinePixels_data()
{
    QTest::addColumn<QPointF>("from");
    QTest::addColumn<QPointF>("to");
    QTest::addColumn<bool>("stops");
    QTest::newRow("rests") << QPointF(50, 50) << QPointF(50, 50) << false;
    QTest::newRow("9 right") << QPointF(50, 50) << QPointF(59, 50) << false;
    QTest::newRow("10 right") << QPointF(50, 50) << QPointF(60, 50) << true;
    QTest::newRow("10 up") << QPointF(50, 50) << QPointF(50, 40) << true;
    QTest::newRow("4 left and 5 down") << QPointF(50, 50) << QPointF(46, 55) << false;
    QTest::newRow("5 left and 5 down") << QPointF(50, 50) << QPointF(45, 55) << true;
    QTest::newRow("rounded to 9") << QPointF(50.4, 50) << QPointF(59.4, 50.4) << false;
    QTest::newRow("rounded to 10") << QPointF(49.6, 50) << QPointF(59.5, 50) << true;
    QTest::newRow("a first move at -1, -1 is no anchor")
        << QPointF(-1, -1) << QPointF(50, 50) << false;
}

void ApplicationTest::movementStopsTheCountdownBeyondNinePixels()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QWidget widget;
    QFETCH(QPointF, from);
    QFETCH(QPointF, to);
    move(&widget, from);
    QVERIFY(reporter.countsDown());
    move(&widget, to);
    QFETCH(bool, stops);
    QCOMPARE(!reporter.countsDown(), stops);

    // However little it moves at a time, the distance is from the first movement.
    if (!stops) {
        move(&widget, QPointF(500, 500));
        QVERIFY(!reporter.countsDown());
    }
}

void ApplicationTest::movementIsComparedWithoutMappingBetweenWidgets()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QWidget parent;
    QWidget child(&parent);
    child.move(100, 100);
    move(&parent, QPointF(100, 100));
    QVERIFY(reporter.countsDown());
    // The same place on the screen, but the child sees it at its own origin.
    move(&child, QPointF(0, 0));
    QVERIFY(!reporter.countsDown());
}

void ApplicationTest::theNativeWindowsMovementsDoNotCount()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QWindow window;
    QWidget widget;
    move(&window, QPointF(210, 160));
    move(&widget, QPointF(10, 10));
    move(&window, QPointF(400, 400));
    QVERIFY(reporter.countsDown());
    move(&widget, QPointF(20, 10));
    QVERIFY(!reporter.countsDown());
}

void ApplicationTest::movementWithoutCountdownSetsNoAnchor()
{
    const RunningReporter idle({crashFile()});
    idle.launch();
    QWidget widget;
    move(&widget, QPointF(0, 0));

    sharedClientInfo()->autoActionSeconds = 30;
    idle->crashReported();
    QVERIFY(idle.countsDown());
    move(&widget, QPointF(300, 300));
    QVERIFY2(idle.countsDown(), "the first movement of a countdown only sets the anchor");
    move(&widget, QPointF(310, 300));
    QVERIFY(!idle.countsDown());
}

void ApplicationTest::autoSaveTakesTheFirstFreeNumber()
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

void ApplicationTest::aFailedAutoSaveCountsAsHandled()
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

void ApplicationTest::restartAsksAndSavesOnYes()
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

void ApplicationTest::restartAsksAndGoesOnOnNo()
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

void ApplicationTest::shutdownAsksUnmountsAndStays()
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

void ApplicationTest::exitIsAShutdown()
{
    const RunningReporter reporter;
    log->clear();
    QVERIFY(reporter->exitReporter());
    QCOMPARE(log->texts(), QList<QByteArray>({"Exiting R4\n", "Shutting down R4\n"}));
    QCOMPARE(reboots(), 0);
}

void ApplicationTest::aFailedUnmountIsPrintedAndTheRebootGoesOn()
{
    sharedClientInfo()->unattendedRestart = 1;
    KernelFakes::instance().script(KernelFunction::Unmount, {-1, EBUSY, {}});
    const RunningReporter reporter({crashFile()});
    const QByteArray printed = captureStandardError([&] { reporter.launch(); });
    QCOMPARE(printed, QByteArray("Failed to unmount user_data\n"));
    QCOMPARE(reboots(), 1);
}

void ApplicationTest::anEndActionRunsOnceWhenTheEventLoopTurnsInsideIt()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    reporter->autoSaveCrashReport();
    log->clear();
    bool clicked = false;
    QMetaObject::invokeMethod(
        reporter.get(),
        [&] {
            clicked = true;
            reporter->shutdown();
            reporter->restart();
        },
        Qt::QueuedConnection);
    reporter->restart();
    QVERIFY2(clicked, "the event loop turns between the decision and the unmount");
    QCOMPARE(log->texts(), QList<QByteArray>{"Restarting R4\n"});
    QCOMPARE(unmounts(), 1);
    QCOMPARE(reboots(), 1);
}

void ApplicationTest::anUnansweredQuestionDoesNotStopTheCountdown()
{
    sharedClientInfo()->autoActionSeconds = 1;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    // The machine would be gone at the reboot; here the question is answered then.
    bool wasStillAsking = false;
    std::unique_ptr<BoxAnswer> afterwards;
    KernelFakes::instance().observe(KernelFunction::Reboot, [&](const KernelCall &) {
        if (afterwards)
            return;
        wasStillAsking = QApplication::activeModalWidget() != nullptr;
        afterwards = std::make_unique<BoxAnswer>(QMessageBox::No);
    });
    QTimer::singleShot(0, reporter.get(), [&] { reporter.fire(reporter.timerWith(1000)); });
    reporter->restart();
    QVERIFY(wasStillAsking);
    QCOMPARE(packages(), QStringList{QStringLiteral("Crash Report 0.cdp")});
}

void ApplicationTest::sendingBuildsAndDiscardsAPackage()
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

void ApplicationTest::sendingWithoutDumpShowsItsError()
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

int main(int argc, char **argv)
{
    // Each test makes an application object of its own.
    ApplicationTest test;
    return QTest::qExec(&test, argc, argv);
}

#include "tst_r4_crash_reporter_application.moc"
