#include "system_move_fake.h"
#include "window_test_support.h"

#include "vireling/palette/current_palette.h"
#include "vireling/window/window.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_proxy_base.h"

#include <QAction>
#include <QApplication>
#include <QProxyStyle>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

/** The toolkit's style with frames of another width, and title bars of another height. */
class WideFrameStyle : public QProxyStyle
{
public:
    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        if (metric == PM_DefaultFrameWidth)
            return 4;
        return metric == PM_TitleBarHeight ? 50 : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

QIcon someIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

} // namespace

/** What a proxy does when something happens to its shown window of 300 x 200. */
class TestWindowProxyEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        SystemMoveFake::instance() = SystemMoveFake();
        window = std::make_unique<QWidget>();
        window->resize(300, 200);
        proxy = std::make_unique<WindowProxyBase>();
        proxy->attach(window.get());
        window->show();
    }
    void cleanup()
    {
        proxy.reset();
        window.reset();
    }

    void companionIsKnownByItsName()
    {
        QCOMPARE(Window::staticMetaObject.className(), "Vireling::Window");
    }

    void partsFitTheWindow()
    {
        QCOMPARE(proxy->titleBar()->geometry(), QRect(1, 1, 298, 30));
        QCOMPARE(proxy->resizeArea()->geometry(), QRect(0, 0, 300, 200));
    }

    void partsFollowTheSizeOfTheWindow()
    {
        window->resize(400, 250);
        QCOMPARE(proxy->titleBar()->geometry(), QRect(1, 1, 398, 30));
        QCOMPARE(proxy->resizeArea()->geometry(), QRect(0, 0, 400, 250));
        proxy->setFrameWidth(5);
        QCOMPARE(proxy->titleBar()->geometry(), QRect(5, 5, 390, 30));
    }

    void titleFollowsTheWindow()
    {
        window->setWindowTitle(QStringLiteral("A title"));
        QCOMPARE(proxy->titleBar()->title(), QStringLiteral("A title"));
    }

    void titleMarksUnsavedChanges()
    {
        window->setWindowTitle(QStringLiteral("Name[*]"));
        QCOMPARE(proxy->titleBar()->title(), QStringLiteral("Name"));
        window->setWindowModified(true);
        QCOMPARE(proxy->titleBar()->title(), QStringLiteral("Name*"));
    }

    void iconFollowsTheWindow()
    {
        QVERIFY(proxy->titleBar()->icon().isNull());
        const QIcon icon = someIcon();
        window->setWindowIcon(icon);
        QCOMPARE(proxy->titleBar()->icon().cacheKey(), icon.cacheKey());
    }

    void takesTitleAndIconThatWereThereBefore()
    {
        QWidget other;
        other.setWindowTitle(QStringLiteral("Before"));
        other.setWindowIcon(someIcon());
        WindowProxyBase late;
        late.attach(&other);
        QCOMPARE(late.titleBar()->title(), QStringLiteral("Before"));
        QVERIFY(!late.titleBar()->icon().isNull());
    }

    void controlsFollowShowing()
    {
        window->hide();
        window->setFixedSize(300, 200);
        QVERIFY(actionOf(WindowControl::Maximise)->isVisible());
        window->show();
        QVERIFY(!actionOf(WindowControl::Maximise)->isVisible());
    }

    void exactlyOneOfMaximiseAndRestoreIsThere()
    {
        const auto shown = [this] {
            return std::make_pair(actionOf(WindowControl::Maximise)->isVisible(),
                                  actionOf(WindowControl::Restore)->isVisible());
        };
        QCOMPARE(shown(), std::make_pair(true, false));
        window->showMaximized();
        QCOMPARE(shown(), std::make_pair(false, true));
        window->showNormal();
        QCOMPARE(shown(), std::make_pair(true, false));
    }

    void buttonsForgetThePointerWhenTheStateChanges()
    {
        WindowControlButton *const close = proxy->titleBar()->controlButton(WindowControl::Close);
        close->setAttribute(Qt::WA_UnderMouse);
        window->showMaximized();
        QVERIFY(!close->underMouse());
    }

    void marginsFollowTheStyle()
    {
        WideFrameStyle wide;
        window->setStyle(&wide);
        proxy->titleBar()->setStyle(&wide);
        QCOMPARE(window->contentsMargins(), QMargins(4, 54, 4, 4));
        QCOMPARE(proxy->resizeArea()->margins(), QMargins(4, 4, 4, 4));
        QCOMPARE(proxy->titleBar()->geometry(), QRect(4, 4, 292, 50));
        window->setStyle(nullptr);
        proxy->titleBar()->setStyle(nullptr);
        QCOMPARE(window->contentsMargins(), QMargins(1, 31, 1, 1));
    }

    void anExplicitFrameWidthStaysWithAnotherStyle()
    {
        proxy->setFrameWidth(2);
        WideFrameStyle wide;
        window->setStyle(&wide);
        QCOMPARE(window->contentsMargins().left(), 2);
        QCOMPARE(proxy->resizeArea()->margins(), QMargins(2, 2, 2, 2));
        window->setStyle(nullptr);
    }

    void theTitleBarMovesTheWindow()
    {
        sendMouse(*proxy->titleBar(), QEvent::MouseButtonPress, {100, 10});
        sendMouse(*proxy->titleBar(), QEvent::MouseMove, {150, 10}, Qt::NoButton);
        QCOMPARE(SystemMoveFake::instance().calls, 1);
    }

    void aShortDragMovesNothing()
    {
        sendMouse(*proxy->titleBar(), QEvent::MouseButtonPress, {100, 10});
        sendMouse(*proxy->titleBar(), QEvent::MouseMove, {102, 10}, Qt::NoButton);
        sendMouse(*proxy->titleBar(), QEvent::MouseButtonRelease, {102, 10});
        QCOMPARE(SystemMoveFake::instance().calls, 0);
    }

    void aDoubleClickOnTheTitleBarMaximises()
    {
        sendMouse(*proxy->titleBar(), QEvent::MouseButtonDblClick, {100, 10});
        QVERIFY(window->isMaximized());
    }

    void aControlOfTheTitleBarActs()
    {
        QTest::mouseClick(proxy->titleBar()->controlButton(WindowControl::Close), Qt::LeftButton);
        QVERIFY(!window->isVisible());
    }

    void aDragAtTheEdgeLeavesTheWindowAsItIs()
    {
        const QRect before = window->geometry();
        QSignalSpy requests(proxy->resizeArea(), &WindowResizeArea::operationRequested);
        sendMouse(*proxy->resizeArea(), QEvent::MouseButtonPress, {0, 100});
        sendMouse(*proxy->resizeArea(), QEvent::MouseMove, {50, 100}, Qt::NoButton);
        QCOMPARE(requests.count(), 1);
        QCOMPARE(window->geometry(), before);
    }

    void theResizeAreaIsAboveLaterContents()
    {
        window->hide();
        auto *const later = new QWidget(window.get());
        later->setGeometry(0, 0, 300, 200);
        window->show();
        QCOMPARE(window->childAt(0, 100), proxy->resizeArea());
        QCOMPARE(window->childAt(100, 100), later);
    }

    void paintsAFrameAroundTheWindow()
    {
        const QImage picture = window->grab().toImage();
        const QColor ground = window->palette().color(QPalette::Window);
        for (const QPoint &edge : {QPoint(0, 100), QPoint(299, 100), QPoint(150, 199), QPoint(0, 0),
                                   QPoint(299, 0), QPoint(299, 199)})
            QCOMPARE(picture.pixelColor(edge), frameColour());
        for (const QPoint &inside : {QPoint(1, 100), QPoint(298, 100), QPoint(150, 198)})
            QCOMPARE(picture.pixelColor(inside), ground);
        QVERIFY(frameColour() != ground);
    }

    void aFrameOfNoWidthIsNotPainted()
    {
        proxy->setFrameWidth(0);
        const QImage picture = window->grab().toImage();
        QCOMPARE(picture.pixelColor(0, 100), window->palette().color(QPalette::Window));
    }

    void paintsALineBelowTheTitleBar()
    {
        const QImage picture = window->grab().toImage();
        QCOMPARE(picture.pixelColor(100, 30), frameColour());
        QCOMPARE(picture.pixelColor(100, 31), window->palette().color(QPalette::Window));
    }

    void aProxyMayEndBeforeItsWindow()
    {
        proxy.reset();
        window->resize(500, 300);
        window->setWindowTitle(QStringLiteral("Alone"));
        window->hide();
        window->show();
    }

    void aWindowMayEndBeforeItsProxy()
    {
        window.reset();
        QVERIFY(!proxy->isControlAvailable(WindowControl::Close));
    }

private:
    QColor frameColour() const
    {
        return currentColour(ColourRole::Frame,
                             window->isActiveWindow() ? QPalette::Active : QPalette::Inactive);
    }
    QAction *actionOf(WindowControl control) const
    {
        return proxy->titleBar()->controlAction(control);
    }

    std::unique_ptr<QWidget> window;
    std::unique_ptr<WindowProxyBase> proxy;
};

QTEST_MAIN(TestWindowProxyEvents)
#include "tst_window_proxy_events.moc"
