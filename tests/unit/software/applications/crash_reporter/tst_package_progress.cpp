// A package that takes long: what the operator sees of it, and what the event loop does.

#include "crash_reporter/package_progress.h"
#include "crash_reporter/progress_window.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QElapsedTimer>
#include <QLabel>
#include <QLineEdit>
#include <QProgressBar>
#include <QPushButton>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>
#include <QVBoxLayout>
#include <QWindow>
#include <qpa/qwindowsysteminterface.h>

#include <memory>

namespace {

constexpr qint64 patience = 1000;
constexpr qint64 betweenTurns = 50;
constexpr qint64 deadline = 20000;

constexpr quint64 megabyte = 1000000;
constexpr quint64 gigabyte = 1000 * megabyte;

const auto probeType = static_cast<QEvent::Type>(QEvent::registerEventType());

ProgressWindow *shownWindow()
{
    for (QWidget *widget : QApplication::topLevelWidgets()) {
        auto *window = qobject_cast<ProgressWindow *>(widget);
        if (window && window->isVisible())
            return window;
    }
    return nullptr;
}

/** Counts what the event loop delivers to it. */
class TurnProbe : public QObject
{
public:
    void post() { QCoreApplication::postEvent(this, new QEvent(probeType)); }
    int delivered = 0;

protected:
    bool event(QEvent *event) override
    {
        delivered += event->type() == probeType;
        return QObject::event(event);
    }
};

/** Moves on, as a package does, until the condition holds; false when it never does. */
template <typename Condition>
bool advanceUntil(PackageProgress &progress, Condition condition, quint64 bytesDone = 1)
{
    QElapsedTimer waited;
    waited.start();
    while (!condition()) {
        if (waited.hasExpired(deadline))
            return false;
        progress.advance(bytesDone);
    }
    return true;
}

/** What stands behind: a screen with something to press and something to type into. */
class Behind : public QWidget
{
public:
    Behind()
        : button(new QPushButton(QStringLiteral("Restart")))
        , line(new QLineEdit)
        , clicks(button, &QPushButton::clicked)
    {
        auto *layout = new QVBoxLayout(this);
        layout->addWidget(button);
        layout->addWidget(line);
        button->setFocusPolicy(Qt::NoFocus); // a click leaves the keys with the line
        show();
        activateWindow();
        line->setFocus();
    }

    /** From the platform's side, as if the operator had just done it. */
    void queueInput()
    {
        using Platform = QWindowSystemInterface;
        using Later = Platform::AsynchronousDelivery;
        const QPointF local = button->mapTo(this, button->rect().center());
        const QPointF global = mapToGlobal(local.toPoint());
        const auto mouse = [&](Qt::MouseButtons pressed, QEvent::Type type) {
            Platform::handleMouseEvent<Later>(windowHandle(), local, global, pressed,
                                              Qt::LeftButton, type);
        };
        mouse(Qt::LeftButton, QEvent::MouseButtonPress);
        mouse(Qt::NoButton, QEvent::MouseButtonRelease);
        for (const auto type : {QEvent::KeyPress, QEvent::KeyRelease})
            Platform::handleKeyEvent<Later>(windowHandle(), type, Qt::Key_X, Qt::NoModifier,
                                            QStringLiteral("x"));
    }

    bool isUntouched() const { return clicks.isEmpty() && line->text().isEmpty(); }

    QPushButton *button;
    QLineEdit *line;
    QSignalSpy clicks;
};

} // namespace

class PackageProgressTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void withinASecondNothingHappens();
    void afterASecondAWindowStandsBeforeTheScreen();
    void theWindowMovesOnWithThePackage();
    void theEndOfThePackageTakesTheWindowAway();
    void twoStepsInARowTurnTheLoopOnce();
    void timersRunWhileBytesMove();
    void withoutStepsNothingTurns();
    void inputNeverReachesTheScreenBehind();
    void inputBeforeAQuickPackageIsKept();
    void inputWaitsWhereNoWindowStands();
    void withoutAScreenTheLoopTurnsAndNothingIsShown();
    void aScreenThatGoesTakesTheWindowAlong();
};

void PackageProgressTest::initTestCase()
{
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
}

void PackageProgressTest::withinASecondNothingHappens()
{
    QWidget screen;
    TurnProbe probe;
    QElapsedTimer sinceBefore; // never behind the package's own clock
    sinceBefore.start();
    PackageProgress progress(&screen);
    progress.setBytesInAll(100);
    probe.post();
    for (;;) {
        progress.advance(1);
        const bool quiet = probe.delivered == 0 && !shownWindow();
        if (sinceBefore.hasExpired(patience - 1))
            break;
        QVERIFY(quiet);
    }
    QVERIFY(advanceUntil(progress, [&] { return probe.delivered == 1; }));
    QVERIFY(sinceBefore.elapsed() >= patience);
}

void PackageProgressTest::afterASecondAWindowStandsBeforeTheScreen()
{
    QWidget screen;
    screen.show();
    PackageProgress progress(&screen);
    progress.setBytesInAll(2 * gigabyte);
    QVERIFY(advanceUntil(progress, shownWindow, 500 * megabyte));
    const ProgressWindow *window = shownWindow();
    QCOMPARE(window->windowTitle(), QStringLiteral("Saving the crash report"));
    QCOMPARE(window->parentWidget(), &screen);
    QCOMPARE(window->windowModality(), Qt::ApplicationModal);
    QCOMPARE(QApplication::activeModalWidget(), window);
    QCOMPARE(window->findChild<QLabel *>()->text(), QStringLiteral("500.0 MB of 2.0 GB"));
    const auto *bar = window->findChild<QProgressBar *>();
    QCOMPARE(bar->value() * 4, bar->maximum());
    QVERIFY2(window->findChildren<QPushButton *>().isEmpty(), "there is nothing to cancel");
}

void PackageProgressTest::theWindowMovesOnWithThePackage()
{
    QWidget screen;
    PackageProgress progress(&screen);
    progress.setBytesInAll(100 * megabyte);
    QVERIFY(advanceUntil(progress, shownWindow, 10 * megabyte));
    const auto *bar = shownWindow()->findChild<QProgressBar *>();
    const int before = bar->value();
    QVERIFY(advanceUntil(
        progress, [&] { return bar->value() > before; }, 60 * megabyte));
    QCOMPARE(shownWindow()->findChild<QLabel *>()->text(), QStringLiteral("60.0 MB of 100.0 MB"));
}

void PackageProgressTest::theEndOfThePackageTakesTheWindowAway()
{
    QWidget screen;
    screen.show();
    {
        PackageProgress progress(&screen);
        QVERIFY(advanceUntil(progress, shownWindow));
    }
    QVERIFY(screen.findChildren<ProgressWindow *>().isEmpty());
    QVERIFY(!QApplication::activeModalWidget());
}

void PackageProgressTest::twoStepsInARowTurnTheLoopOnce()
{
    PackageProgress progress(nullptr);
    TurnProbe probe;
    bool sawTwoInARow = false;
    for (int attempt = 0; attempt < 20; ++attempt) {
        const int before = probe.delivered;
        probe.post();
        QElapsedTimer sinceBeforeTurn; // never behind the package's own clock
        QVERIFY(advanceUntil(progress, [&] {
            if (probe.delivered == before)
                sinceBeforeTurn.start();
            return probe.delivered > before;
        }));
        probe.post();
        progress.advance(2);
        const bool turnedAgain = probe.delivered == before + 2;
        if (sinceBeforeTurn.hasExpired(betweenTurns - 1)) {
            QCoreApplication::removePostedEvents(&probe); // or the next attempt begins with two
            continue;                                     // a busy machine
        }
        QVERIFY(!turnedAgain);
        sawTwoInARow = true;
        QVERIFY(advanceUntil(progress, [&] { return probe.delivered == before + 2; }));
        QVERIFY(sinceBeforeTurn.elapsed() >= betweenTurns);
    }
    QVERIFY(sawTwoInARow);
}

void PackageProgressTest::timersRunWhileBytesMove()
{
    PackageProgress progress(nullptr);
    int ticks = 0;
    QTimer timer;
    connect(&timer, &QTimer::timeout, this, [&] { ++ticks; });
    timer.start(100);
    QVERIFY(advanceUntil(progress, [&] { return ticks >= 5; }));
}

/** A write that hangs must look to the watchdog as what it is. */
void PackageProgressTest::withoutStepsNothingTurns()
{
    QWidget screen;
    PackageProgress progress(&screen);
    QVERIFY(advanceUntil(progress, shownWindow));
    TurnProbe probe;
    probe.post();
    QTest::qSleep(4 * betweenTurns); // the write hangs
    QCOMPARE(probe.delivered, 0);
    progress.advance(2);
    QCOMPARE(probe.delivered, 1);
}

void PackageProgressTest::inputNeverReachesTheScreenBehind()
{
    Behind screen;
    QVERIFY(QTest::qWaitForWindowActive(&screen));
    {
        PackageProgress progress(&screen);
        // Earlier input is queued by a real screen only: the offscreen one hands out its
        // whole queue when a window is made.
        QVERIFY(advanceUntil(progress, shownWindow));
        screen.queueInput();
        TurnProbe probe;
        probe.post();
        QVERIFY(advanceUntil(progress, [&] { return probe.delivered == 1; }));
        QVERIFY(screen.isUntouched());
        QVERIFY2(shownWindow(), "a key is no way to close it");
        screen.queueInput();
    }
    QCoreApplication::processEvents();
    QVERIFY(screen.isUntouched());

    screen.activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(&screen));
    screen.queueInput();
    QTRY_COMPARE(screen.clicks.count(), 1);
    QTRY_COMPARE(screen.line->text(), QStringLiteral("x"));
}

void PackageProgressTest::inputBeforeAQuickPackageIsKept()
{
    Behind screen;
    QVERIFY(QTest::qWaitForWindowActive(&screen));
    {
        PackageProgress progress(&screen);
        screen.queueInput();
        progress.advance(1);
        QVERIFY(screen.isUntouched());
    }
    QTRY_COMPARE(screen.clicks.count(), 1);
}

void PackageProgressTest::inputWaitsWhereNoWindowStands()
{
    Behind behind;
    QVERIFY(QTest::qWaitForWindowActive(&behind));
    {
        PackageProgress progress(nullptr);
        behind.queueInput();
        TurnProbe probe;
        probe.post();
        QVERIFY(advanceUntil(progress, [&] { return probe.delivered == 1; }));
        QVERIFY(behind.isUntouched());
    }
    QVERIFY(behind.isUntouched());
    QTRY_COMPARE(behind.clicks.count(), 1);
}

void PackageProgressTest::withoutAScreenTheLoopTurnsAndNothingIsShown()
{
    PackageProgress progress(nullptr);
    TurnProbe probe;
    for (int turn = 1; turn <= 3; ++turn) {
        probe.post();
        QVERIFY(advanceUntil(progress, [&] { return probe.delivered == turn; }));
        for (const QWindow *window : QGuiApplication::topLevelWindows())
            QVERIFY(!window->isVisible());
    }
}

void PackageProgressTest::aScreenThatGoesTakesTheWindowAlong()
{
    auto screen = std::make_unique<QWidget>();
    PackageProgress progress(screen.get());
    QVERIFY(advanceUntil(progress, shownWindow));
    screen.reset();
    TurnProbe probe;
    probe.post();
    QVERIFY(advanceUntil(progress, [&] { return probe.delivered == 1; }));
    QVERIFY(!shownWindow());
}

QTEST_MAIN(PackageProgressTest)
#include "tst_package_progress.moc"
