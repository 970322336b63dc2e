#include "system_move_fake.h"
#include "window_test_support.h"

#include "vireling/window/window_control.h"
#include "vireling/window/window_proxy_base.h"
#include "vireling/window/window_resize_area.h"
#include "vireling/window/window_title_bar.h"

#include <QAction>
#include <QDialog>
#include <QtTest>

#include <initializer_list>
#include <memory>

using namespace Vireling;

namespace {

constexpr Qt::WindowFlags allHints = Qt::Window | Qt::WindowTitleHint | Qt::WindowSystemMenuHint |
                                     Qt::WindowCloseButtonHint | Qt::WindowMinMaxButtonsHint;

constexpr WindowOperation resizeOperations[] = {
    WindowOperation::ResizeBottom,      WindowOperation::ResizeBottomLeft,
    WindowOperation::ResizeBottomRight, WindowOperation::ResizeLeft,
    WindowOperation::ResizeRight,       WindowOperation::ResizeTop,
    WindowOperation::ResizeTopLeft,     WindowOperation::ResizeTopRight};

} // namespace

/** A proxy on a plain window with all hints. */
class TestWindowProxy : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        SystemMoveFake::instance() = SystemMoveFake();
        window = std::make_unique<QWidget>(nullptr, allHints);
        window->resize(300, 200);
        proxy = std::make_unique<WindowProxyBase>();
        QVERIFY(proxy->attach(window.get()));
    }
    void cleanup()
    {
        proxy.reset();
        window.reset();
    }

    void makesTheWindowFramelessAndKeepsItsHints()
    {
        QCOMPARE(window->windowFlags(), allHints | Qt::FramelessWindowHint);
    }

    void keepsTheAutomaticHintsOfADialog()
    {
        QDialog dialog;
        WindowProxyBase other;
        other.attach(&dialog);
        QVERIFY(dialog.windowFlags().testFlag(Qt::FramelessWindowHint));
        QVERIFY(dialog.windowFlags().testFlag(Qt::WindowCloseButtonHint));
        QVERIFY(other.isControlAvailable(WindowControl::Close));
    }

    void makesAChildAWindow()
    {
        QWidget *const child = new QWidget(window.get());
        WindowProxyBase other;
        QVERIFY(other.attach(child));
        QVERIFY(child->isWindow());
        QCOMPARE(child->parentWidget(), window.get());
    }

    void attachesOnce()
    {
        WindowTitleBar *const bar = proxy->titleBar();
        QWidget other;
        QVERIFY(!proxy->attach(&other));
        QVERIFY(!proxy->attach(window.get()));
        QVERIFY(!WindowProxyBase().attach(nullptr));
        QCOMPARE(proxy->titleBar(), bar);
        QVERIFY(!other.windowFlags().testFlag(Qt::FramelessWindowHint));
    }

    void putsItsPartsIntoTheWindow()
    {
        QCOMPARE(proxy->titleBar()->parentWidget(), window.get());
        QCOMPARE(proxy->resizeArea()->parentWidget(), window.get());
        QVERIFY(!proxy->titleBar()->controlAction(WindowControl::Close)->icon().isNull());
    }

    void offersControlsByHintsAndSize_data()
    {
        QTest::addColumn<int>("hints");
        QTest::addColumn<bool>("resizable");
        QTest::addColumn<bool>("maximised");
        QTest::addColumn<QString>("available"); // initials in enum order
        const int none = Qt::CustomizeWindowHint;
        const int close = none | Qt::WindowCloseButtonHint;
        const int minimise = none | Qt::WindowMinimizeButtonHint;
        QTest::newRow("close") << close << false << false << "C";
        QTest::newRow("minimise") << minimise << false << false << "I";
        QTest::newRow("neither") << none << false << false << "";
        QTest::newRow("resizable") << none << true << false << "A";
        QTest::newRow("maximised") << none << true << true << "R";
        QTest::newRow("maximised of fixed size") << none << false << true << "";
        QTest::newRow("the hint alone does not maximise")
            << (none | int(Qt::WindowMaximizeButtonHint)) << false << false << "";
        QTest::newRow("all") << (close | minimise) << true << false << "CAI";
        QTest::newRow("all, maximised") << (close | minimise) << true << true << "CIR";
    }
    void offersControlsByHintsAndSize()
    {
        QFETCH(int, hints);
        QFETCH(bool, resizable);
        QFETCH(bool, maximised);
        window->setWindowFlags(Qt::Window | Qt::FramelessWindowHint | Qt::WindowFlags(hints));
        if (!resizable)
            window->setFixedSize(300, 200);
        window->setWindowState(maximised ? Qt::WindowMaximized : Qt::WindowNoState);
        QTEST(availableControls(), "available");
        QVERIFY(proxy->updateControls());
        for (const WindowControl control : windowControls) {
            const QAction *const action = proxy->titleBar()->controlAction(control);
            QCOMPARE(action->isEnabled(), proxy->isControlAvailable(control));
            QCOMPARE(action->isVisible(), proxy->isControlAvailable(control));
        }
    }

    void knowsNoControlBeyondTheList()
    {
        QVERIFY(!proxy->isControlAvailable(WindowControl(4)));
        QVERIFY(!proxy->triggerControl(WindowControl(4)));
    }

    void triggersWhatIsAvailable()
    {
        window->show();
        QVERIFY(!proxy->triggerControl(WindowControl::Restore));
        QVERIFY(proxy->triggerControl(WindowControl::Maximise));
        QVERIFY(window->isMaximized());
        QVERIFY(!proxy->triggerControl(WindowControl::Maximise));
        QVERIFY(proxy->triggerControl(WindowControl::Restore));
        QVERIFY(!window->isMaximized());
        QVERIFY(proxy->triggerControl(WindowControl::Minimise));
        QVERIFY(window->isMinimized());
        QVERIFY(proxy->triggerControl(WindowControl::Close));
        QVERIFY(!window->isVisible());
    }

    void doesNotCloseAWindowWithoutTheHint()
    {
        window->setWindowFlag(Qt::WindowCloseButtonHint, false);
        window->show();
        QVERIFY(!proxy->titleBar()->controlAction(WindowControl::Close)->isEnabled());
        QVERIFY(!proxy->titleBar()->controlButton(WindowControl::Close)->isVisible());
        QVERIFY(!proxy->triggerControl(WindowControl::Close));
        QVERIFY(window->isVisible());
    }

    void movesByTheWindowSystem()
    {
        window->show();
        QVERIFY(proxy->handleOperation(WindowOperation::Move));
        QCOMPARE(SystemMoveFake::instance().calls, 1);
        SystemMoveFake::instance().answer = false;
        QVERIFY(!proxy->handleOperation(WindowOperation::Move));
    }

    void doesNotMoveAWindowThatWasNeverShown()
    {
        QVERIFY(!proxy->handleOperation(WindowOperation::Move));
        QCOMPARE(SystemMoveFake::instance().calls, 0);
    }

    void togglesMaximised()
    {
        window->show();
        QVERIFY(proxy->handleOperation(WindowOperation::ToggleMaximise));
        QVERIFY(window->isMaximized());
        QVERIFY(proxy->handleOperation(WindowOperation::ToggleMaximise));
        QVERIFY(!window->isMaximized());
    }

    void doesNotToggleAWindowOfFixedSize()
    {
        window->setFixedSize(300, 200);
        window->show();
        QVERIFY(!proxy->handleOperation(WindowOperation::ToggleMaximise));
        QVERIFY(!window->isMaximized());
    }

    /** Kept on purpose: the edges show their cursors and ask, but windows keep their size. */
    void resizeOperationsDoNothing()
    {
        window->show();
        const QRect before = window->geometry();
        for (const WindowOperation operation : resizeOperations)
            QVERIFY(!proxy->handleOperation(operation));
        QCOMPARE(window->geometry(), before);
        QCOMPARE(SystemMoveFake::instance().calls, 0);
    }

    void frameIsTheStylesUnlessSet()
    {
        QCOMPARE(proxy->frameWidth(), 1);
        QVERIFY(proxy->setFrameWidth(5));
        QCOMPARE(proxy->frameWidth(), 5);
        QVERIFY(proxy->setFrameWidth(std::nullopt));
        QCOMPARE(proxy->frameWidth(), 1);
    }

    void contentsLieWithinFrameAndTitleBar()
    {
        QCOMPARE(window->contentsMargins(), QMargins(1, 31, 1, 1));
        proxy->setFrameWidth(5);
        QCOMPARE(window->contentsMargins(), QMargins(5, 35, 5, 5));
        QCOMPARE(proxy->titleBar()->pos(), QPoint(5, 5));
    }

    void contentsReachUpWhereTheTitleBarIsHidden()
    {
        proxy->titleBar()->hide();
        QCOMPARE(window->contentsMargins(), QMargins(1, 1, 1, 1));
        proxy->titleBar()->show();
        QCOMPARE(window->contentsMargins(), QMargins(1, 31, 1, 1));
        window->show();
        proxy->titleBar()->hide();
        QCOMPARE(window->contentsMargins(), QMargins(1, 1, 1, 1));
    }

    void resizeAreaIsAsWideAsFrameAndExtra()
    {
        QCOMPARE(proxy->resizeArea()->margins(), QMargins(1, 1, 1, 1));
        QVERIFY(proxy->setExtraResizeMargins({1, 2, 3, 4}));
        QCOMPARE(proxy->resizeArea()->margins(), QMargins(2, 3, 4, 5));
        QCOMPARE(proxy->extraResizeMargins(), QMargins(1, 2, 3, 4));
        proxy->setFrameWidth(10);
        QCOMPARE(proxy->resizeArea()->margins(), QMargins(11, 12, 13, 14));
        QCOMPARE(window->contentsMargins(), QMargins(10, 40, 10, 10));
    }

    void aFrameOfNoWidthHasNoResizeArea()
    {
        window->show();
        proxy->setFrameWidth(0);
        QVERIFY(!proxy->resizeArea()->isVisible());
    }

    void doesNothingOnceTheWindowIsGone()
    {
        window.reset();
        for (const WindowControl control : windowControls) {
            QVERIFY(!proxy->isControlAvailable(control));
            QVERIFY(!proxy->triggerControl(control));
        }
        for (int operation = 0; operation <= 9; ++operation)
            QVERIFY(!proxy->handleOperation(WindowOperation(operation)));
        QVERIFY(!proxy->updateControls());
        QVERIFY(!proxy->updateContentsMargins());
        QVERIFY(!proxy->setFrameWidth(3));
        QVERIFY(!proxy->setExtraResizeMargins({1, 1, 1, 1}));
        QCOMPARE(proxy->frameWidth(), 0);
        QCOMPARE(proxy->titleBar(), nullptr);
        QCOMPARE(proxy->resizeArea(), nullptr);
    }

    void doesNothingBeforeItHasAWindow()
    {
        WindowProxyBase fresh;
        QVERIFY(!fresh.isControlAvailable(WindowControl::Close));
        QVERIFY(!fresh.handleOperation(WindowOperation::ToggleMaximise));
        QVERIFY(!fresh.updateControls());
    }

private:
    QString availableControls() const
    {
        QString available;
        for (const WindowControl control : windowControls)
            if (proxy->isControlAvailable(control))
                available += QLatin1Char("CAIR"[int(control)]);
        return available;
    }

    std::unique_ptr<QWidget> window;
    std::unique_ptr<WindowProxyBase> proxy;
};

QTEST_MAIN(TestWindowProxy)
#include "tst_window_proxy.moc"
