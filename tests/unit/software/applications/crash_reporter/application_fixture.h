#pragma once

#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/r4_crash_reporter_application.h"
#include "crash_reporter/safe_shutdown_widget.h"
#include "support/kernel_fakes.h"
#include "support/log_capture.h"
#include "tessel_core/shared_client_info.h"
#include "vireling/palette/process_initialisers.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QMessageBox>
#include <QObject>
#include <QPointer>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>
#include <QTimer>

#include <memory>

/*
 * What the tests of the application object share. They run in the sandbox:
 * "/user_data" is scratch, and what ends the appliance is faked.
 */
namespace TestSupport {

inline const QString packageFolder = QStringLiteral("/user_data/crash_dumps");

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
        app = std::make_unique<R4CrashReporterApplication>(argc, argv.data());
    }
    ~RunningReporter() { end(); }
    Q_DISABLE_COPY(RunningReporter)

    R4CrashReporterApplication *operator->() const { return app.get(); }
    R4CrashReporterApplication *get() const { return app.get(); }
    void launch() const { QCoreApplication::sendPostedEvents(); }
    /** Ends the application object, and the screens, which it leaves to the end of the process. */
    void end();

    /** The screens; null while there is none. */
    SafeShutdownWidget *backdrop() const;
    CrashReportWidget *crashScreen() const;

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
    std::unique_ptr<R4CrashReporterApplication> app;
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
            parent = box->parentWidget();
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
    QPointer<QWidget> parent;

private:
    QTimer timer;
};

/** The files in packageFolder, sorted. */
QStringList packages();

/** How often the kernel was asked to unmount, and to reboot, in this test. */
int unmounts();
int reboots();

/** The base of a test class: a log, a scratch folder and an empty shared block for each test. */
class ApplicationFixture : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();

protected:
    /** Both give the path of a new crash data file; crashFile() one whose dump exists. */
    QString writeCrashFile(const QString &dump);
    QString crashFile();

    std::unique_ptr<QTemporaryDir> scratch;
    std::unique_ptr<LogCapture> log;
};

/** Instead of QTEST_MAIN: each test makes an application object of its own, as main() does. */
#define APPLICATION_TEST_MAIN(TestClass)                                                           \
    int main(int argc, char **argv)                                                                \
    {                                                                                              \
        Vireling::initialiseHighDpi();                                                             \
        Vireling::initialiseResources();                                                           \
        Vireling::initialiseToolkit();                                                             \
        TestClass test;                                                                            \
        return QTest::qExec(&test, argc, argv);                                                    \
    }

} // namespace TestSupport
