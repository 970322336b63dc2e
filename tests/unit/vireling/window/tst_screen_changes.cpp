#include "window_test_support.h"

#include "vireling/window/dialog.h"
#include "vireling/window/screen_changes.h"
#include "vireling/window/window_title_bar.h"

#include <QGuiApplication>
#include <QProxyStyle>
#include <QScreen>
#include <QVBoxLayout>
#include <QWindow>
#include <QtTest>

using namespace Vireling;

namespace {

/** Counts what the style and Qt tell it. */
class Witness : public QWidget
{
public:
    using QWidget::QWidget;
    int styleChanges = 0;

protected:
    void changeEvent(QEvent *event) override
    {
        styleChanges += event->type() == QEvent::StyleChange ? 1 : 0;
        QWidget::changeEvent(event);
    }
};

/** The application's style, where title bars may grow as on a denser screen. */
class GrowingStyle : public QProxyStyle
{
public:
    int titleBarHeight = 30;

    int pixelMetric(PixelMetric metric, const QStyleOption *option,
                    const QWidget *widget) const override
    {
        return metric == PM_TitleBarHeight ? titleBarHeight
                                           : QProxyStyle::pixelMetric(metric, option, widget);
    }
};

void changeDensity(QScreen &screen)
{
    emit screen.logicalDotsPerInchChanged(192);
}

} // namespace

class TestScreenChanges : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase()
    {
        installToolkit();
        screen = QGuiApplication::primaryScreen();
        QVERIFY(!screen->property("vrl_screen_change_handler").isValid());
    }

    void init() { screen->setProperty("vrl_screen_change_handler", QVariant()); }
    void cleanup() { screen->disconnect(screen); }

    void showingAWindowMarksItsScreen()
    {
        Dialog dialog;
        QVERIFY(!screen->property("vrl_screen_change_handler").isValid());
        dialog.show();
        QCOMPARE(screen->property("vrl_screen_change_handler"), QVariant(true));
    }

    void aScreenIsWatchedOnce()
    {
        Witness window;
        window.show();
        watchScreen(screen);
        watchScreen(screen);
        Dialog dialog;
        dialog.show();
        changeDensity(*screen);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(window.styleChanges, 1);
    }

    void aMarkedScreenIsNotConnected()
    {
        screen->setProperty("vrl_screen_change_handler", true);
        Witness window;
        window.show();
        watchScreen(screen);
        changeDensity(*screen);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(window.styleChanges, 0);
    }

    void noScreenIsNoScreen() { watchScreen(nullptr); }

    void windowsAreRefreshedLater()
    {
        Witness window;
        Witness inner(&window);
        window.show();
        watchScreen(screen);
        changeDensity(*screen);
        QCOMPARE(window.styleChanges, 0);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(window.styleChanges, 1);
        QCOMPARE(inner.styleChanges, 1);
    }

    void windowsThatWereNeverShownAreLeftAlone()
    {
        Witness window;
        refreshWindowsOn(*screen);
        QCOMPARE(window.styleChanges, 0);
    }

    void titleBarsAndWindowsGrow()
    {
        GrowingStyle style;
        Dialog dialog;
        auto *const layout = new QVBoxLayout(&dialog);
        auto *const content = new QWidget;
        content->setMinimumSize(200, 100);
        layout->addWidget(content);
        dialog.setStyle(&style);
        dialog.titleBar()->setStyle(&style);
        dialog.resize(dialog.minimumSizeHint());
        dialog.show();
        const int before = dialog.height();
        style.titleBarHeight = 60;
        refreshWindowsOn(*screen);
        QCOMPARE(dialog.titleBar()->height(), 60);
        QCOMPARE(dialog.contentsMargins().top(), 61);
        QTRY_COMPARE(dialog.height(), before + 30);
        dialog.setStyle(nullptr);
        dialog.titleBar()->setStyle(nullptr);
    }

    void aScreenChangeReachesNativeChildrenOfAllDepths()
    {
        Witness window;
        Witness child(&window);
        child.setAttribute(Qt::WA_NativeWindow);
        Witness grandchild(&child);
        grandchild.setAttribute(Qt::WA_NativeWindow);
        window.show();
        QVERIFY(grandchild.windowHandle());
        QCOMPARE(grandchild.windowHandle()->parent(), child.windowHandle());
        child.styleChanges = grandchild.styleChanges = window.styleChanges = 0;
        forwardScreenChange(*window.windowHandle(), screen);
        QCOMPARE(window.styleChanges, 1);
        QCOMPARE(child.styleChanges, 1);
        QCOMPARE(grandchild.styleChanges, 1);
    }

    void aDialogOfAWindowIsRefreshedOnce()
    {
        Witness window;
        window.show();
        Witness dialog(&window, Qt::Dialog);
        dialog.show();
        refreshWindowsOn(*screen);
        QCOMPARE(window.styleChanges, 1);
        QCOMPARE(dialog.styleChanges, 1);
    }

    void maximisedWindowsKeepTheirSize()
    {
        Witness window;
        window.showMaximized();
        const QSize before = window.size();
        auto *const layout = new QVBoxLayout(&window);
        layout->setSizeConstraint(QLayout::SetNoConstraint);
        auto *const content = new QWidget;
        content->setMinimumSize(before * 2);
        layout->addWidget(content);
        refreshWindowsOn(*screen);
        QCOMPARE(window.size(), before);
    }

    void aScreenChangeWatchesTheNewScreen()
    {
        QWindow window;
        forwardScreenChange(window, screen);
        QCOMPARE(screen->property("vrl_screen_change_handler"), QVariant(true));
    }

    void aDialogFollowsItsScreen()
    {
        Dialog dialog;
        Witness inner(&dialog);
        dialog.show();
        inner.styleChanges = 0;
        emit dialog.windowHandle()->screenChanged(screen);
        QCOMPARE(inner.styleChanges, 1);
    }

    void aDialogShownTwiceFollowsItsScreenOnce()
    {
        Dialog dialog;
        Witness inner(&dialog);
        dialog.show();
        dialog.hide();
        dialog.show();
        inner.styleChanges = 0;
        emit dialog.windowHandle()->screenChanged(screen);
        QCOMPARE(inner.styleChanges, 1);
    }

private:
    QScreen *screen = nullptr;
};

QTEST_MAIN(TestScreenChanges)
#include "tst_screen_changes.moc"
