// What the operator sees of the application: which screen is up, when, and with what on it.

#include "application_fixture.h"
#include "screen_parts.h"
#include "support/package_reader.h"
#include "vireling/style/style.h"

#include <QLabel>
#include <QMouseEvent>
#include <QPlainTextEdit>
#include <QScreen>

#include <iostream>
#include <sstream>

using namespace TestSupport;
using Tessel::sharedClientInfo;

namespace {

bool showsMessage(const SafeShutdownWidget &backdrop)
{
    const QLabel *message = backdrop.findChild<QLabel *>();
    return message && message->isVisible();
}

QString messageOf(const SafeShutdownWidget &backdrop)
{
    return backdrop.findChild<QLabel *>()->text();
}

/** Calls back whenever something was written to standard output and flushed. */
class FlushedOutput : public std::stringbuf
{
public:
    explicit FlushedOutput(std::function<void()> callback)
        : flushed(std::move(callback))
        , before(std::cout.rdbuf(this))
    {}
    ~FlushedOutput() override { std::cout.rdbuf(before); }
    Q_DISABLE_COPY(FlushedOutput)

protected:
    int sync() override
    {
        flushed();
        return std::stringbuf::sync();
    }

private:
    std::function<void()> flushed;
    std::streambuf *before;
};

/** Writes down what becomes of the screens, in order. */
class ScreenLog : public QObject
{
public:
    bool eventFilter(QObject *watched, QEvent *event) override
    {
        const char *screen = nullptr;
        if (dynamic_cast<SafeShutdownWidget *>(watched))
            screen = "backdrop";
        else if (dynamic_cast<CrashReportWidget *>(watched))
            screen = "crash screen";
        if (screen && event->type() == QEvent::ZOrderChange)
            note(QByteArray(screen) + " raised");
        else if (screen && event->type() == QEvent::Show)
            note(QByteArray(screen) + " shown");
        else if (screen && event->type() == QEvent::Close)
            note(QByteArray(screen) + " closed");
        return false;
    }

    void note(const QByteArray &what) { lines << what; }

    QByteArrayList lines;
};

void moveTo(QWidget *receiver, const QPointF &position)
{
    QMouseEvent event(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &event);
}

} // namespace

class ApplicationScreensTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void theLookComesFirstThenTheWatchdogTheLineAndTheBackdrop();
    void theBackdropIsRaisedThenShown();
    void theBackdropIsUpBeforeTheLaunch();
    void theBackdropNamesTheDevice();
    void theScreenShowsTheCrash();
    void theScreenStandsBeforeTheBackdrop();
    void theCountdownTicksOnTheScreen();
    void activityHidesTheCountdown_data();
    void activityHidesTheCountdown();
    void aSmallMovementLeavesTheCountdown();
    void noCountdownShowsNoLine();
    void nothingBlinksWhileNothingHappens();
    void anUnattendedCrashShowsNoScreen();
    void shutdownClosesTheScreenAndRevealsTheMessageLast();
    void withoutArgumentTheMessageIsVisible();
    void commentsReachTheReport();
    void saveSaysThatThereIsNoKeyAndKeepsTheReportUnsaved();
    void buttonsDoWhatTheySay_data();
    void buttonsDoWhatTheySay();
    void escapeLeavesTheScreenUp();
};

void ApplicationScreensTest::theLookComesFirstThenTheWatchdogTheLineAndTheBackdrop()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    QByteArrayList order;
    KernelFakes::instance().observe(KernelFunction::Ioctl, [&](const KernelCall &) {
        if (!order.isEmpty())
            return;
        const bool styled = dynamic_cast<Vireling::Style *>(QApplication::style());
        order << (styled ? "look" : "no look") << "watchdog";
        order << (QApplication::topLevelWidgets().isEmpty() ? "no screen yet" : "a screen");
    });
    std::unique_ptr<RunningReporter> reporter;
    {
        const FlushedOutput output([&] {
            order << "connected"
                  << (QApplication::topLevelWidgets().isEmpty() ? "no screen yet" : "a screen");
        });
        reporter = std::make_unique<RunningReporter>();
    }
    order << (reporter->backdrop() ? "backdrop" : "no backdrop");
    QCOMPARE(order, QByteArrayList({"look", "watchdog", "no screen yet", "connected",
                                    "no screen yet", "backdrop"}));
}

void ApplicationScreensTest::theBackdropIsRaisedThenShown()
{
    KernelFakes::instance().provideDevice("/dev/watchdog");
    ScreenLog screens;
    // The first chance to watch an application object that is still being made.
    KernelFakes::instance().observe(
        KernelFunction::Ioctl, [&](const KernelCall &) { qApp->installEventFilter(&screens); });
    const RunningReporter reporter;
    reporter->removeEventFilter(&screens);
    KernelFakes::instance().reset();
    QCOMPARE(screens.lines, QByteArrayList({"backdrop raised", "backdrop shown"}));
}

void ApplicationScreensTest::theBackdropIsUpBeforeTheLaunch()
{
    const RunningReporter reporter({crashFile()});
    QVERIFY(reporter.backdrop());
    QVERIFY(reporter.backdrop()->isVisible());
    QVERIFY(reporter.backdrop()->isMaximized());
    QVERIFY(!showsMessage(*reporter.backdrop()));
    QVERIFY(!reporter.crashScreen());
    QVERIFY2(!log->texts().contains("Crash reporter launched\n"), "that waits for the event loop");
    reporter.launch();
    QVERIFY(log->texts().contains("Crash reporter launched\n"));
}

void ApplicationScreensTest::theBackdropNamesTheDevice()
{
    sharedClientInfo()->deviceType = 6;
    const RunningReporter reporter;
    QCOMPARE(messageOf(*reporter.backdrop()),
             QStringLiteral("It is now safe to switch off your\nR4-210 System Controller"));
}

void ApplicationScreensTest::theScreenShowsTheCrash()
{
    qstrcpy(sharedClientInfo()->serialNumber, "R4-000117");
    sharedClientInfo()->deviceType = 3;
    sharedClientInfo()->version = {2, 5, 1, 131};
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    const CrashReportWidget *screen = reporter.crashScreen();
    QVERIFY(screen && screen->isVisible() && !screen->isMaximized());
    QVERIFY(!screen->parentWidget());
    QCOMPARE(screen->windowTitle(), QStringLiteral("R4 Error Reporter"));
    QCOMPARE(screen->size(), screen->sizeHint());
    const QPoint middle = QGuiApplication::primaryScreen()->availableGeometry().center();
    QVERIFY((screen->geometry().center() - middle).manhattanLength() <= 2);
    QStringList values;
    for (const QLabel *value : ScreenParts(*screen).values)
        values << value->text();
    QCOMPARE(values, QStringList({QStringLiteral("12:00:00 on Saturday 21 November 2026"),
                                  QStringLiteral("R4-000117"), QStringLiteral("R4-220"),
                                  QStringLiteral("2.5.1 BETA3")}));
}

void ApplicationScreensTest::theScreenStandsBeforeTheBackdrop()
{
    const RunningReporter reporter({crashFile()});
    ScreenLog screens;
    reporter->installEventFilter(&screens);
    reporter.launch();
    QCOMPARE(screens.lines, QByteArrayList{"crash screen shown"});
    QVERIFY(reporter.backdrop()->isVisible());
    QVERIFY(!showsMessage(*reporter.backdrop()));
}

void ApplicationScreensTest::theCountdownTicksOnTheScreen()
{
    sharedClientInfo()->autoActionSeconds = 3;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    const ScreenParts parts(*reporter.crashScreen());
    QVERIFY(parts.countdown->isVisible());
    QCOMPARE(parts.number->text(), QStringLiteral("3"));
    reporter.fire(reporter.timerWith(1000));
    QCOMPARE(parts.number->text(), QStringLiteral("2"));
    reporter.fire(reporter.timerWith(1000));
    QCOMPARE(parts.number->text(), QStringLiteral("1"));
    QVERIFY(parts.countdown->isVisible());
}

void ApplicationScreensTest::activityHidesTheCountdown_data()
{
    QTest::addColumn<QByteArray>("activity");
    for (const char *activity : {"key", "press", "move of 10"})
        QTest::newRow(activity) << QByteArray(activity);
}

void ApplicationScreensTest::activityHidesTheCountdown()
{
    QFETCH(QByteArray, activity);
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    CrashReportWidget *screen = reporter.crashScreen();
    const ScreenParts parts(*screen);
    QVERIFY(parts.countdown->isVisible());
    if (activity == "key") {
        QTest::keyClick(parts.comments, Qt::Key_A);
        QCOMPARE(screen->comments(), QStringLiteral("a"));
    } else if (activity == "press") {
        QTest::mousePress(parts.title, Qt::LeftButton);
    } else {
        moveTo(screen, {100, 100});
        moveTo(screen, {95, 105});
    }
    QVERIFY(!reporter.countsDown());
    QVERIFY(parts.countdown->isHidden());
    QVERIFY(screen->isVisible());
}

void ApplicationScreensTest::aSmallMovementLeavesTheCountdown()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    CrashReportWidget *screen = reporter.crashScreen();
    moveTo(screen, {100, 100});
    moveTo(screen, {95, 104});
    QVERIFY(reporter.countsDown());
    QVERIFY(ScreenParts(*screen).countdown->isVisible());
    moveTo(screen, {500, 500}); // leaves no anchor to the next test
}

void ApplicationScreensTest::noCountdownShowsNoLine()
{
    sharedClientInfo()->autoActionSeconds = -5;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(reporter.crashScreen()->isVisible());
    QVERIFY(ScreenParts(*reporter.crashScreen()).countdown->isHidden());
}

void ApplicationScreensTest::nothingBlinksWhileNothingHappens()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QCOMPARE(QApplication::cursorFlashTime(), 0);
}

void ApplicationScreensTest::anUnattendedCrashShowsNoScreen()
{
    sharedClientInfo()->unattendedRestart = 1;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(!reporter.crashScreen());
    QCOMPARE(reboots(), 1);
}

void ApplicationScreensTest::shutdownClosesTheScreenAndRevealsTheMessageLast()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    reporter->autoSaveCrashReport(); // so that nothing is asked
    ScreenLog screens;
    KernelFakes::instance().observe(KernelFunction::Unmount,
                                    [&](const KernelCall &) { screens.note("unmounted"); });
    reporter->installEventFilter(&screens);
    QVERIFY(reporter->shutdown());
    QCOMPARE(screens.lines,
             QByteArrayList({"unmounted", "crash screen closed", "backdrop raised"}));
    QVERIFY(reporter.crashScreen()); // not deleted
    QVERIFY(!reporter.crashScreen()->isVisible());
    QVERIFY(reporter.backdrop()->isVisible());
    QVERIFY(reporter.backdrop()->isMaximized());
    QVERIFY(showsMessage(*reporter.backdrop()));
    reporter->removeEventFilter(&screens);
    KernelFakes::instance().reset();
}

void ApplicationScreensTest::withoutArgumentTheMessageIsVisible()
{
    const RunningReporter reporter;
    reporter.launch();
    QVERIFY(reporter.backdrop()->isVisible());
    QVERIFY(showsMessage(*reporter.backdrop()));
    QVERIFY(!reporter.crashScreen());
    QCOMPARE(unmounts() + reboots(), 0);
}

void ApplicationScreensTest::commentsReachTheReport()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QPlainTextEdit *comments = ScreenParts(*reporter.crashScreen()).comments;
    QTest::keyClicks(comments, QStringLiteral("one \"quoted\""));
    QTest::keyClick(comments, Qt::Key_Return);
    comments->insertPlainText(QStringLiteral(u"<two> & \U0001F600"));
    reporter->autoSaveCrashReport();
    const Package package = readPackage(packageFolder + QStringLiteral("/Crash Report 0.cdp"));
    QVERIFY(package.isWellFormed());
    const QString report = QString::fromUtf8(package.members.at(1).bytes);
    const int start = report.indexOf(QLatin1String("<Comments>"));
    const int end = report.indexOf(QLatin1String("</Comments>"));
    QVERIFY(start >= 0 && end > start);
    QString written = report.mid(start + 10, end - start - 10);
    written.replace(QLatin1String("&quot;"), QLatin1String("\""));
    QCOMPARE(written, QStringLiteral(u"one \"quoted\"\n&lt;two&gt; &amp; \U0001F600"));
}

void ApplicationScreensTest::saveSaysThatThereIsNoKeyAndKeepsTheReportUnsaved()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QApplication::setActiveWindow(reporter.crashScreen());
    {
        const BoxAnswer answer(QMessageBox::Ok);
        ScreenParts(*reporter.crashScreen()).save->click();
        QCOMPARE(answer.boxes, 1);
        QCOMPARE(answer.title, QStringLiteral("Error"));
        QCOMPARE(answer.text,
                 QStringLiteral("Failed to detect a USB disk.  Please ensure your USB disk is "
                                "correctly inserted."));
        QCOMPARE(answer.icon, QMessageBox::Critical);
        QCOMPARE(answer.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
        QCOMPARE(answer.parent.data(), reporter.crashScreen());
    }
    QVERIFY(reporter.crashScreen()->isVisible());
    QCOMPARE(packages(), QStringList());
    const BoxAnswer question(QMessageBox::No);
    reporter->askToSaveCrashReport();
    QCOMPARE(question.boxes, 1);
}

void ApplicationScreensTest::buttonsDoWhatTheySay_data()
{
    QTest::addColumn<ButtonPart>("button");
    QTest::addColumn<QByteArray>("trace");
    QTest::addColumn<int>("expectedReboots");
    QTest::newRow("email, though hidden")
        << ButtonPart(&ScreenParts::email) << QByteArray("Sending crash report\n") << 0;
    QTest::newRow("restart") << ButtonPart(&ScreenParts::restart) << QByteArray("Restarting R4\n")
                             << 1;
    QTest::newRow("shutdown") << ButtonPart(&ScreenParts::shutdown)
                              << QByteArray("Shutting down R4\n") << 0;
}

void ApplicationScreensTest::buttonsDoWhatTheySay()
{
    QFETCH(ButtonPart, button);
    QFETCH(QByteArray, trace);
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    reporter->autoSaveCrashReport(); // so that nothing is asked
    log->clear();
    (ScreenParts(*reporter.crashScreen()).*button)->click();
    QCOMPARE(log->texts().value(0), trace);
    QTEST(reboots(), "expectedReboots");
}

void ApplicationScreensTest::escapeLeavesTheScreenUp()
{
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    QTest::keyClick(ScreenParts(*reporter.crashScreen()).comments, Qt::Key_Escape);
    QVERIFY(reporter.crashScreen()->isVisible());
    QCOMPARE(unmounts() + reboots(), 0);
}

APPLICATION_TEST_MAIN(ApplicationScreensTest)
#include "tst_application_screens.moc"
