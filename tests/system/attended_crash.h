#pragma once

#include "support/key_folder.h"
#include "support/sandbox_run.h"
#include "support/x_session.h"

#include <QByteArray>
#include <QImage>
#include <QRect>
#include <QStringList>

/*
 * A crash of the main application with an operator in front of the screen: the
 * shipped program in the sandbox, shown on a screen of its own. It sees folders where
 * it mounts keys.
 */
namespace TestSupport {

const QString screenTitle = QStringLiteral("R4 Error Reporter");
const QString questionTitle = QStringLiteral("Crash report is not saved");
const QString errorTitle = QStringLiteral("Error");
const QString saveTitle = QStringLiteral("Save crash report");
const QString overwriteTitle = QStringLiteral("File exists");
const QString successTitle = QStringLiteral("Success");
const QString firstPackage = QStringLiteral("crash_dumps/Crash Report 0.cdp");

const QByteArray unmountCall = "umount2(\"/user_data/\", 0) = 0";
const QByteArray rebootCall =
    "reboot(LINUX_REBOOT_MAGIC1, LINUX_REBOOT_MAGIC2, LINUX_REBOOT_CMD_RESTART";

class AttendedCrash
{
public:
    AttendedCrash();

    /**
     * The crash has a dump, a log and fixed facts; `options` are those of crash_scenario.
     * `standIn` goes right before the program, and only the program sees it.
     */
    void start(const QStringList &options, const QStringList &reporterPrefix = {},
               const QStringList &standIn = withKeyStandIn());

    /** Until the window of that title has the keyboard and the program waits for it. */
    bool waitForWindow(const QString &title);
    /** The same of the crash screen; remembers where it is. */
    bool waitForScreen();
    /** Until that window is where the crash screen is: a window manager may place it late. */
    bool waitUntilAboveScreen(const QString &title);
    /** Until the program runs and has handled everything there was. */
    bool waitUntilIdle();

    /** The buttons of the crash screen, reached with the Tab key from the comments box. */
    void pressSave() const;
    void pressRestart() const;
    void pressShutdown() const;

    /** What is drawn where the countdown stands. */
    QImage countdown() const;
    bool countdownIsShown() const;
    /** Until the countdown's picture changes, to another number or to nothing. */
    bool waitForTick();

    /** The end, which comes by itself. */
    SandboxResult finish();
    /** Whoever switches the power off. */
    SandboxResult switchOff();

    /**
     * Every mount, umount and reboot that reached the kernel, in order; a restart has no
     * result. A key is mounted as the folder that stands for it.
     */
    QList<QByteArray> systemCalls() const;

    /** The report inside the first package, null when there is none. */
    QByteArray report() const;

    XSession session;
    KeyFolder keys;
    SandboxRun run;
    QRect screen;
};

/** The report inside a package, null when it is none, or not whole. */
QByteArray reportIn(const QString &package);

/** The report of an AttendedCrash with these comments, written as XML. */
QByteArray reportWithComments(const QByteArray &xml);

/** What stays in "/tmp": files of the main application, and the record of the system calls. */
QStringList filesOfTheCrash();

} // namespace TestSupport
