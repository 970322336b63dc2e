// The countdown, and what stops it.

#include "application_fixture.h"

#include <QMouseEvent>
#include <QWidget>
#include <QWindow>

#include <limits>

using namespace TestSupport;
using Tessel::sharedClientInfo;

namespace {

void move(QObject *receiver, QPointF position)
{
    QMouseEvent event(QEvent::MouseMove, position, Qt::NoButton, Qt::NoButton, Qt::NoModifier);
    QCoreApplication::sendEvent(receiver, &event);
}

} // namespace

class ApplicationCountdownTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void otherTimersAreIgnored();
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
    void anUnansweredQuestionDoesNotStopTheCountdown();
};

void ApplicationCountdownTest::otherTimersAreIgnored()
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

void ApplicationCountdownTest::negativeOrNoSecondsActNotByThemselves_data()
{
    QTest::addColumn<int>("seconds");
    QTest::addColumn<int>("flag");
    QTest::newRow("0, attended") << 0 << 0;
    QTest::newRow("-5, attended") << -5 << 0;
    QTest::newRow("-5, unattended: the flag is not looked at") << -5 << 1;
    QTest::newRow("least") << std::numeric_limits<qint32>::min() << 1;
}

void ApplicationCountdownTest::negativeOrNoSecondsActNotByThemselves()
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

void ApplicationCountdownTest::theCountdownEndsInSaveAndReboot()
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

void ApplicationCountdownTest::pressesAndKeysStopTheCountdown_data()
{
    QTest::addColumn<QString>("receiver");
    QTest::addColumn<int>("type");
    QTest::newRow("press on a widget") << "widget" << int(QEvent::MouseButtonPress);
    QTest::newRow("press on a native window") << "window" << int(QEvent::MouseButtonPress);
    QTest::newRow("key on a widget") << "widget" << int(QEvent::KeyPress);
    QTest::newRow("key on a native window") << "window" << int(QEvent::KeyPress);
}

void ApplicationCountdownTest::pressesAndKeysStopTheCountdown()
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

void ApplicationCountdownTest::theCountdownIsCancelledOnlyOnce()
{
    sharedClientInfo()->autoActionSeconds = 30;
    const RunningReporter reporter({crashFile()});
    reporter.launch();
    log->clear();
    reporter->cancelAutoAction();
    reporter->cancelAutoAction();
    QCOMPARE(log->texts(), QList<QByteArray>{"Canceled auto-action timer\n"});
}

void ApplicationCountdownTest::movementStopsTheCountdownBeyondNinePixels_data()
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

void ApplicationCountdownTest::movementStopsTheCountdownBeyondNinePixels()
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

void ApplicationCountdownTest::movementIsComparedWithoutMappingBetweenWidgets()
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

void ApplicationCountdownTest::theNativeWindowsMovementsDoNotCount()
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

void ApplicationCountdownTest::movementWithoutCountdownSetsNoAnchor()
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

void ApplicationCountdownTest::anUnansweredQuestionDoesNotStopTheCountdown()
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

APPLICATION_TEST_MAIN(ApplicationCountdownTest)
#include "tst_application_countdown.moc"
