#include "window_test_support.h"

#include "vireling/widgets/icon_label.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_title_bar.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

QIcon someIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

} // namespace

/** The menu that the title bar of a shown window opens. */
class TestWindowMenu : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        window = std::make_unique<QWidget>();
        window->setGeometry(50, 60, 400, 100);
        bar = new WindowTitleBar(window.get());
        bar->updateStyle();
        bar->setIcon(someIcon());
        bar->resize(400, bar->height());
        window->show();
    }
    void cleanup() { window.reset(); }

    void listsTheEnabledControlsInTheirOrder()
    {
        bar->controlAction(WindowControl::Maximise)->setEnabled(false);
        openByMouse({200, 10});
        QVERIFY(bar->windowMenu()->isVisible());
        QCOMPARE(bar->windowMenu()->actions(),
                 QList<QAction *>({bar->controlAction(WindowControl::Close),
                                   bar->controlAction(WindowControl::Minimise),
                                   bar->controlAction(WindowControl::Restore)}));
    }

    void listsAnewEachTime()
    {
        openByMouse({200, 10});
        QCOMPARE(bar->windowMenu()->actions().count(), 4);
        const_cast<QMenu *>(bar->windowMenu())->close();
        bar->controlAction(WindowControl::Close)->setEnabled(false);
        openByMouse({200, 10});
        QCOMPARE(bar->windowMenu()->actions().count(), 3);
        QVERIFY(bar->controlAction(WindowControl::Close)); // still there for its button
    }

    void isNotShownWithoutEnabledControls()
    {
        for (const WindowControl control : windowControls)
            bar->controlAction(control)->setEnabled(false);
        openByMouse({200, 10});
        QVERIFY(!bar->windowMenu()->isVisible());
        sendMouse(*bar, QEvent::MouseButtonPress, iconCentre());
        QVERIFY(!bar->windowMenu()->isVisible());
    }

    void opensWhereTheMouseIs()
    {
        QVERIFY(openByMouse({200, 10}));
        QCOMPARE(bar->windowMenu()->pos(), bar->mapToGlobal({200, 10}));
    }

    void opensBelowTheTitleBarForTheKeyboard()
    {
        QContextMenuEvent event(QContextMenuEvent::Keyboard, {200, 10}, {999, 999});
        QCoreApplication::sendEvent(bar, &event);
        QVERIFY(event.isAccepted());
        QCOMPARE(bar->windowMenu()->pos(), bar->mapToGlobal(bar->rect().bottomLeft()));
    }

    void opensByAltAndSpaceFromAnywhereInTheWindow()
    {
        auto *const elsewhere = new QLineEdit(window.get());
        elsewhere->show();
        window->activateWindow();
        elsewhere->setFocus();
        QTRY_VERIFY(window->isActiveWindow());
        QTest::keyClick(elsewhere, Qt::Key_Space, Qt::AltModifier);
        QVERIFY(bar->windowMenu()->isVisible());
    }

    void opensByAPressOnTheIcon()
    {
        QSignalSpy operations(bar, &WindowTitleBar::operationRequested);
        QVERIFY(sendMouse(*bar, QEvent::MouseButtonPress, iconCentre()));
        QVERIFY(bar->windowMenu()->isVisible());
        sendMouse(*bar, QEvent::MouseMove, {300, 10}, Qt::NoButton);
        QCOMPARE(operations.count(), 0);
    }

    void doesNotOpenByAPressElsewhere()
    {
        sendMouse(*bar, QEvent::MouseButtonPress, {200, 10});
        sendMouse(*bar, QEvent::MouseButtonPress, iconCentre(), Qt::MiddleButton, Qt::MiddleButton);
        QVERIFY(!bar->windowMenu()->isVisible());
    }

    void doesNotOpenWhereTheIconIsGone()
    {
        const QPointF centre = iconCentre();
        bar->setIcon({});
        sendMouse(*bar, QEvent::MouseButtonPress, centre);
        QVERIFY(!bar->windowMenu()->isVisible());
    }

    void triggersTheControlThatIsChosen()
    {
        QSignalSpy controls(bar, &WindowTitleBar::controlTriggered);
        openByMouse({200, 10});
        QTest::keyClick(const_cast<QMenu *>(bar->windowMenu()), Qt::Key_Down);
        QTest::keyClick(const_cast<QMenu *>(bar->windowMenu()), Qt::Key_Return);
        QCOMPARE(controls.count(), 1);
        QCOMPARE(controls.first().first().value<WindowControl>(), WindowControl::Close);
    }

private:
    bool openByMouse(const QPoint &position)
    {
        QContextMenuEvent event(QContextMenuEvent::Mouse, position, bar->mapToGlobal(position));
        event.ignore();
        QCoreApplication::sendEvent(bar, &event);
        return event.isAccepted();
    }
    QPointF iconCentre() const { return bar->findChild<IconLabel *>()->geometry().center(); }

    std::unique_ptr<QWidget> window;
    WindowTitleBar *bar = nullptr; // the window's child
};

QTEST_MAIN(TestWindowMenu)
#include "tst_window_menu.moc"
