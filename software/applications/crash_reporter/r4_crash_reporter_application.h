#pragma once

#include <QApplication>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <memory>

class CrashReportWidget;
class SafeShutdownWidget;

namespace Tessel {
class TalvorinWatchdog;
struct SharedClientInfo;
} // namespace Tessel

/**
 * The crash reporter's own flow, from the command line to its end action: reads
 * and deletes the crash data file named by argument 1, then either saves a
 * package and reboots at once or leaves the decision to the operator, or to the
 * countdown. Feeds the hardware watchdog for as long as its event loop turns.
 *
 * Shows the safe shutdown screen as a backdrop from the start, and the crash report
 * screen before it where an operator is expected. Neither is ever deleted: the process
 * ends with the power.
 *
 * Everything runs on the GUI thread. The end actions are real: this object
 * unmounts "/user_data/" and reboots the machine it runs on.
 */
class R4CrashReporterApplication : public QApplication
{
    Q_OBJECT

public:
    /**
     * Installs the toolkit's look, starts feeding the watchdog, shows the backdrop, prints
     * "connected" and posts the launch event. From here on the process ignores SIGPIPE.
     */
    R4CrashReporterApplication(int &argc, char **argv);
    /** Unmounts "/user_data/", whatever happened before. */
    ~R4CrashReporterApplication() override;

    /** Offers to save an unsaved report, then unmounts "/user_data/" and reboots. True. */
    bool restart();
    /**
     * Offers to save an unsaved report, then unmounts "/user_data/" unless no
     * crash was handled, closes the crash report screen and reveals the message that
     * the appliance may be switched off. Never powers off: the process stays until the
     * operator does. True.
     */
    bool shutdown();
    /** shutdown() under its own trace line. True. */
    bool exitReporter();

    /**
     * For the operator: mounts the USB key, asks for a name on it, saves the package there
     * and unmounts it again. A message box says what became of it. False when it was not
     * saved. Runs nested event loops.
     */
    bool saveCrashReport();
    /**
     * Saves a package under the first free number in "/user_data/crash_dumps/".
     * Counts as handled even after a failure, which only qDebug hears of. True.
     */
    bool autoSaveCrashReport();
    /** Asks whether to save an unsaved report on internal storage. Runs a nested event loop. */
    void askToSaveCrashReport();
    /** Proves that a package can be built for mailing, and deletes it again. False. */
    bool sendCrashReport();
    /** writeDumpPackage() of this crash. Success clears the unsaved mark. */
    bool createDumpPackage(const QString &path);

    /** Decides, once the crash data is read, whether an operator is expected. */
    void crashReported();
    /** Stops the countdown; nothing when none runs. */
    void cancelAutoAction();

    /** Lets every key and mouse press, and every real mouse movement, stop the countdown. */
    bool notify(QObject *receiver, QEvent *event) override;

protected:
    bool event(QEvent *event) override;
    void timerEvent(QTimerEvent *event) override;

private:
    void setUpWatchdog();
    void showBackdrop();
    void showCrashReport(const Tessel::SharedClientInfo &info);
    void launch();
    void readCrashFile(const QString &path);
    void saveAndRestart();
    void startCountdown(qint32 seconds);
    void countDown();
    void pointerMoved(QPoint position);
    void unmountUserData();
    void rebootSystem();
    QString askForPackagePath() const;
    void showFailure(const QString &text) const;

    CrashReportWidget *crashReportWidget = nullptr;
    SafeShutdownWidget *safeShutdownWidget = nullptr;
    bool awaitingReport = true;
    bool reportUnsaved = false;
    qint32 autoActionTimerId = 0;
    qint32 autoActionSecondsLeft = 0;
    QString dumpFilePath;
    QDateTime crashTime;
    QStringList outputLog;
    qint32 watchdogTimerId = 0;
    std::unique_ptr<Tessel::TalvorinWatchdog> watchdog;
    /**
     * The event loop turns inside a package or an unmount: nothing else of ours is to
     * begin in there, neither by a click nor by the countdown, which waits.
     */
    bool busy = false;
};
