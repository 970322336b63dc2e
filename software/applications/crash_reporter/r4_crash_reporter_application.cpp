#include "crash_reporter/r4_crash_reporter_application.h"

#include "common/usb_support.h"
#include "crash_reporter/crash_data.h"
#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/device_type.h"
#include "crash_reporter/display_fallback.h"
#include "crash_reporter/safe_shutdown_widget.h"
#include "tessel_core/error_report.h"
#include "tessel_core/log.h"
#include "tessel_core/shared_client_info.h"
#include "tessel_core/talvorin_watchdog.h"
#include "tessel_core/watchdog.h"
#include "vireling/style/appearance.h"
#include "vireling/window/message_box_frames.h"

#include <QFile>
#include <QFileInfo>
#include <QMouseEvent>
#include <QScopedValueRollback>
#include <QScreen>
#include <QTimerEvent>
#include <QWindow>

#include <sys/mount.h>
#include <sys/reboot.h>

#include <csignal>
#include <cstdio>
#include <iostream>

using namespace Tessel;

namespace {

const auto launchEventType = static_cast<QEvent::Type>(QEvent::registerEventType());

constexpr quint32 watchdogTimeoutSeconds = 240;
constexpr int watchdogTickMilliseconds = 120000;
constexpr quint32 watchdogClient = 0;

constexpr char userDataMountPoint[] = "/user_data/";

constexpr QPoint noAnchor(-1, -1);
/** Pixels, right plus down, within which a pointer still counts as resting. */
constexpr int restlessPointer = 9;

/**
 * Pressing the backdrop makes a window manager raise it, and the operator would be left
 * with a crash screen behind it that no key brings back.
 */
void keepAboveBackdrop(const QWidget &screen, const QWidget &backdrop)
{
    screen.winId(); // makes the native window
    screen.windowHandle()->setTransientParent(backdrop.windowHandle());
}

/** QDialog would leave room for a window manager's frame, which the screen does not have. */
void centreOnScreen(QWidget &window)
{
    const QRect screen = QGuiApplication::primaryScreen()->availableGeometry();
    window.move(screen.center() - window.rect().center());
}

/** Where the first movement was seen, in the coordinates of whichever widget got it. */
QPoint activityAnchor = noAnchor;

} // namespace

R4CrashReporterApplication::R4CrashReporterApplication(int &argc, char **argv)
    : QApplication(argc, argv)
{
    // Whoever started us has crashed, and may be gone before it reads a line of ours.
    std::signal(SIGPIPE, SIG_IGN);
    Vireling::installAppearance(Vireling::Theme::Dark);
    Vireling::frameMessageBoxes();
    setCursorFlashTime(0); // a blinking cursor would wake up the idle machine twice a second
    setUpWatchdog();
    sharedClientInfo();
    // The main application waits for this line, whatever became of the block.
    std::cout << "connected" << std::endl;
    showBackdrop();
    displayIsUp();
    postEvent(this, new QEvent(launchEventType));
}

R4CrashReporterApplication::~R4CrashReporterApplication()
{
    unmountUserData();
    USBSupport::destroyInstance();
}

void R4CrashReporterApplication::setUpWatchdog()
{
    watchdog = std::make_unique<TalvorinWatchdog>();
    if (!watchdog->isOpen())
        trace(0, "Failed to init talvorin watchdog\n");
    watchdog->setTimeout(watchdogTimeoutSeconds);
    pushWatchdogTimeout(watchdogTimeoutSeconds);
    setWatchdogClient(watchdogClient, true);
    watchdogTimerId = startTimer(watchdogTickMilliseconds, Qt::CoarseTimer);
    watchdogClientAlive(watchdogClient);
}

void R4CrashReporterApplication::showBackdrop()
{
    const SharedClientInfo *info = sharedClientInfo();
    safeShutdownWidget = new SafeShutdownWidget;
    safeShutdownWidget->setDeviceName(info ? deviceTypeName(info->deviceType) : QString());
    safeShutdownWidget->raise();
    safeShutdownWidget->showMaximized();
}

bool R4CrashReporterApplication::event(QEvent *event)
{
    if (event->type() != launchEventType)
        return QApplication::event(event);
    launch();
    return true;
}

void R4CrashReporterApplication::launch()
{
    trace(0, "Crash reporter launched\n");
    const QStringList commandLine = arguments();
    if (commandLine.size() < 2) {
        shutdown();
        return;
    }
    readCrashFile(commandLine.at(1));
    crashReported();
}

void R4CrashReporterApplication::readCrashFile(const QString &path)
{
    QFile file(path);
    // Opening a pipe or a device by mistake could wait for ever.
    if (QFileInfo(file).isFile() && file.open(QIODevice::ReadOnly)) {
        const CrashData data = readCrashData(file);
        dumpFilePath = data.dumpFilePath;
        crashTime = data.crashTime;
        outputLog = data.outputLog;
        trace(0, "Read crash report data\n");
    }
    QFile::remove(path);
}

void R4CrashReporterApplication::crashReported()
{
    trace(0, "Crash reported\n");
    awaitingReport = false;
    reportUnsaved = true;

    const SharedClientInfo *info = sharedClientInfo();
    const bool isUnattended = info && info->autoActionSeconds == 0 && info->unattendedRestart != 0;
    if (!info || isUnattended || hasNoDisplay()) {
        saveAndRestart();
        return;
    }
    showCrashReport(*info);
}

void R4CrashReporterApplication::showCrashReport(const SharedClientInfo &info)
{
    crashReportWidget = new CrashReportWidget;
    crashReportWidget->setDateTime(crashTime);
    crashReportWidget->setClientInfo(&info);
    connect(crashReportWidget, &CrashReportWidget::sendRequested, this,
            &R4CrashReporterApplication::sendCrashReport);
    connect(crashReportWidget, &CrashReportWidget::saveRequested, this,
            &R4CrashReporterApplication::saveCrashReport);
    connect(crashReportWidget, &CrashReportWidget::restartRequested, this,
            &R4CrashReporterApplication::restart);
    connect(crashReportWidget, &CrashReportWidget::shutdownRequested, this,
            &R4CrashReporterApplication::shutdown);
    if (info.autoActionSeconds > 0)
        startCountdown(info.autoActionSeconds);
    crashReportWidget->setWindowTitle(tr("R4 Error Reporter"));
    crashReportWidget->resize(crashReportWidget->sizeHint());
    centreOnScreen(*crashReportWidget);
    keepAboveBackdrop(*crashReportWidget, *safeShutdownWidget);
    crashReportWidget->show();
}

void R4CrashReporterApplication::saveAndRestart()
{
    autoSaveCrashReport();
    restart();
}

void R4CrashReporterApplication::startCountdown(qint32 seconds)
{
    autoActionTimerId = startTimer(1000, Qt::CoarseTimer);
    autoActionSecondsLeft = seconds;
    crashReportWidget->setCountdown(seconds);
    trace(0, "Showing crash report widget for %d seconds\n", seconds);
}

void R4CrashReporterApplication::timerEvent(QTimerEvent *event)
{
    if (event->timerId() == autoActionTimerId)
        countDown();
    else if (event->timerId() == watchdogTimerId)
        watchdogClientAlive(watchdogClient);
}

void R4CrashReporterApplication::countDown()
{
    if (busy)
        return;
    crashReportWidget->setCountdown(--autoActionSecondsLeft);
    if (autoActionSecondsLeft != 0)
        return;
    trace(0, "Auto-action timer expired\n");
    killTimer(autoActionTimerId);
    autoActionTimerId = 0;
    saveAndRestart();
}

void R4CrashReporterApplication::cancelAutoAction()
{
    if (autoActionTimerId == 0)
        return;
    trace(0, "Canceled auto-action timer\n");
    killTimer(autoActionTimerId);
    autoActionTimerId = 0;
    autoActionSecondsLeft = 0;
    crashReportWidget->setCountdown(0);
}

bool R4CrashReporterApplication::notify(QObject *receiver, QEvent *event)
{
    switch (event->type()) {
    case QEvent::MouseButtonPress:
    case QEvent::KeyPress:
        cancelAutoAction();
        break;
    case QEvent::MouseMove:
        // Every mouse event passes twice, first for the native window in its own
        // coordinates: only the widget's copies can be compared with each other.
        if (receiver->isWidgetType()) {
            const QPointF position = static_cast<QMouseEvent *>(event)->localPos();
            pointerMoved(QPoint(qRound(position.x()), qRound(position.y())));
        }
        break;
    default:
        break;
    }
    return QApplication::notify(receiver, event);
}

/**
 * Positions are compared as each widget got them, without mapping: crossing from
 * one widget to another counts as activity, which operators are used to.
 */
void R4CrashReporterApplication::pointerMoved(QPoint position)
{
    if (autoActionTimerId == 0)
        return;
    if (activityAnchor == noAnchor) {
        activityAnchor = position;
        return;
    }
    if ((position - activityAnchor).manhattanLength() <= restlessPointer)
        return;
    activityAnchor = noAnchor;
    cancelAutoAction();
}

bool R4CrashReporterApplication::restart()
{
    if (busy)
        return true;
    trace(0, "Restarting R4\n");
    askToSaveCrashReport();
    rebootSystem();
    return true;
}

bool R4CrashReporterApplication::shutdown()
{
    if (busy)
        return true;
    trace(0, "Shutting down R4\n");
    askToSaveCrashReport();
    if (!awaitingReport)
        unmountUserData();
    if (crashReportWidget)
        crashReportWidget->close();
    safeShutdownWidget->setMessageVisible(true);
    safeShutdownWidget->raise();
    safeShutdownWidget->show();
    return true;
}

bool R4CrashReporterApplication::exitReporter()
{
    trace(0, "Exiting R4\n");
    return shutdown();
}

void R4CrashReporterApplication::unmountUserData()
{
    // sync() turns the event loop: a click or a countdown that ends in there must
    // not start a second end action inside the first.
    const QScopedValueRollback<bool> guard(busy, true);
    std::fflush(nullptr);
    sync();
    if (umount(userDataMountPoint) < 0)
        printError("Failed to unmount user_data\n");
}

void R4CrashReporterApplication::rebootSystem()
{
    unmountUserData();
    reboot(RB_AUTOBOOT);
}
