#include "window_test_support.h"

#include "vireling/palette/current_palette.h"
#include "vireling/style_icon_engine/style_icons.h"
#include "vireling/widgets/elided_label.h"
#include "vireling/widgets/icon_label.h"
#include "vireling/window/window_control.h"
#include "vireling/window/window_title_bar.h"

#include <QAccessible>
#include <QAction>
#include <QApplication>
#include <QLayout>
#include <QSignalSpy>
#include <QTranslator>
#include <QtTest>

#include <memory>

using namespace Vireling;

namespace {

/** Answers every text of one context in capitals. */
class CapitalTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return qstrcmp(context, "WindowControl") == 0 ? QString::fromLatin1(text).toUpper()
                                                      : QString();
    }
};

QIcon someIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return QIcon(pixmap);
}

} // namespace

/** A shown title bar of 400 pixels with an icon, a title and all controls, on its own window. */
class TestWindowTitleBar : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        window = std::make_unique<QWidget>();
        window->resize(400, 100);
        bar = new WindowTitleBar(window.get());
        bar->updateStyle();
        bar->setTitle(QStringLiteral("Title"));
        bar->setIcon(someIcon());
        bar->controlAction(WindowControl::Restore)->setVisible(false);
        bar->resize(400, bar->height());
        operations = std::make_unique<QSignalSpy>(bar, &WindowTitleBar::operationRequested);
        controls = std::make_unique<QSignalSpy>(bar, &WindowTitleBar::controlTriggered);
        window->show();
    }
    void cleanup()
    {
        operations.reset();
        controls.reset();
        window.reset();
    }

    void takesItsSizesFromTheStyle()
    {
        QCOMPARE(bar->height(), 30);
        QCOMPARE(bar->sizeHint().height(), 30);
        QCOMPARE(iconLabel()->size(), QSize(24, 24));
        QCOMPARE(bar->layout()->contentsMargins(), QMargins(8, 0, 8, 0));
    }

    void takesItsIconsFromTheStyle_data()
    {
        QTest::addColumn<int>("control");
        QTest::addColumn<int>("icon");
        QTest::newRow("close") << 0 << int(StyleIcon::WindowClose);
        QTest::newRow("maximise") << 1 << int(StyleIcon::WindowMaximise);
        QTest::newRow("minimise") << 2 << int(StyleIcon::WindowMinimise);
        QTest::newRow("restore") << 3 << int(StyleIcon::WindowRestore);
    }
    void takesItsIconsFromTheStyle()
    {
        QFETCH(int, control);
        QFETCH(int, icon);
        const QIcon shown = bar->controlAction(WindowControl(control))->icon();
        QVERIFY(!shown.isNull());
        QCOMPARE(shown.cacheKey(), styleIcon(StyleIcon(icon)).cacheKey());
    }

    void followsAChangeOfStyle()
    {
        iconLabel()->setFixedSize(1, 1);
        bar->layout()->setContentsMargins(0, 0, 0, 0);
        for (const WindowControl control : windowControls)
            bar->controlAction(control)->setIcon({});
        QEvent change(QEvent::StyleChange);
        QCoreApplication::sendEvent(bar, &change);
        QCOMPARE(iconLabel()->size(), QSize(24, 24));
        QCOMPARE(bar->layout()->contentsMargins(), QMargins(8, 0, 8, 0));
        for (const WindowControl control : windowControls)
            QVERIFY(!bar->controlAction(control)->icon().isNull());
    }

    void ordersIconTitleAndControls()
    {
        QVERIFY(iconLabel()->x() < titleLabel()->x());
        QVERIFY(titleLabel()->x() < button(WindowControl::Minimise)->x());
        QVERIFY(button(WindowControl::Minimise)->x() < button(WindowControl::Maximise)->x());
        QVERIFY(button(WindowControl::Maximise)->x() < button(WindowControl::Close)->x());
        QCOMPARE(button(WindowControl::Close)->geometry(), QRect(400 - 8 - 24, 3, 24, 24));
    }

    void mirrorsItselfFromRightToLeft()
    {
        bar->setLayoutDirection(Qt::RightToLeft);
        bar->layout()->activate();
        QCOMPARE(iconLabel()->geometry(), QRect(400 - 8 - 24, 3, 24, 24));
        QCOMPARE(button(WindowControl::Close)->geometry(), QRect(8, 3, 24, 24));
    }

    void aNullIconTakesNoRoom()
    {
        bar->setIcon({});
        bar->layout()->activate();
        QVERIFY(iconLabel()->isHidden());
        QCOMPARE(titleLabel()->x(), 8);
        QCOMPARE(titleLabel()->contentsRect().x(), 0);
    }

    void stepsBackInAnInactiveWindow()
    {
        const Palette &colours = currentPalette();
        for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText}) {
            QCOMPARE(titleLabel()->palette().color(QPalette::Inactive, role),
                     colours.placeholderText().color());
            QCOMPARE(titleLabel()->palette().color(QPalette::Active, role),
                     colours.color(QPalette::Active, role));
        }
    }

    void signalsCarryTypesKnownByName()
    {
        QCOMPARE(QMetaType::type("Vireling::WindowControl"), qMetaTypeId<WindowControl>());
        QCOMPARE(QMetaType::type("Vireling::WindowOperation"), qMetaTypeId<WindowOperation>());
    }

    void controlsAskByTheirOwnSignal()
    {
        QTest::mouseClick(button(WindowControl::Close), Qt::LeftButton);
        bar->controlAction(WindowControl::Minimise)->trigger();
        QCOMPARE(controls->count(), 2);
        QCOMPARE(controls->at(0).first().value<WindowControl>(), WindowControl::Close);
        QCOMPARE(controls->at(1).first().value<WindowControl>(), WindowControl::Minimise);
        QCOMPARE(operations->count(), 0);
    }

    void asksForMovingOnceDraggedFarEnough()
    {
        const int distance = QApplication::startDragDistance();
        QVERIFY(sendMouse(*bar, QEvent::MouseButtonPress, {200, 10}));
        QVERIFY(dragTo({200 + qreal(distance) - 1, 10}));
        QCOMPARE(operations->count(), 0);
        QVERIFY(dragTo({200 + qreal(distance) - 1, 9}));
        QCOMPARE(operations->count(), 1);
        QCOMPARE(lastOperation(), WindowOperation::Move);
        dragTo({300, 10});
        QCOMPARE(operations->count(), 1);
    }

    void movesByItsTitleToo()
    {
        sendMouse(*titleLabel(), QEvent::MouseButtonPress, {5, 5});
        dragTo({200, 10});
        QCOMPARE(operations->count(), 1);
    }

    void doesNotMoveOnceReleased()
    {
        sendMouse(*bar, QEvent::MouseButtonPress, {200, 10});
        QVERIFY(
            sendMouse(*bar, QEvent::MouseButtonRelease, {200, 10}, Qt::LeftButton, Qt::NoButton));
        dragTo({300, 10});
        QCOMPARE(operations->count(), 0);
    }

    void doesNotMoveWithoutTheLeftButtonHeld()
    {
        sendMouse(*bar, QEvent::MouseButtonPress, {200, 10});
        hover(*bar, {300, 10});
        QCOMPARE(operations->count(), 0);
    }

    void doesNotMoveByOtherButtons()
    {
        QVERIFY(sendMouse(*bar, QEvent::MouseButtonPress, {200, 10}, Qt::MiddleButton,
                          Qt::MiddleButton));
        dragTo({300, 10});
        QCOMPARE(operations->count(), 0);
    }

    void leavesAPressOnAVisibleButtonToIt()
    {
        const QPointF centre = button(WindowControl::Close)->geometry().center();
        sendMouse(*bar, QEvent::MouseButtonPress, centre);
        dragTo({100, 10});
        QCOMPARE(operations->count(), 0);
    }

    void movesWhereAButtonIsHidden()
    {
        const QPointF centre = button(WindowControl::Minimise)->geometry().center();
        bar->controlAction(WindowControl::Minimise)->setVisible(false);
        sendMouse(*bar, QEvent::MouseButtonPress, centre);
        dragTo({100, 10});
        QCOMPARE(operations->count(), 1);
    }

    void togglesMaximisedOnADoubleClick()
    {
        QVERIFY(sendMouse(*bar, QEvent::MouseButtonDblClick, {200, 10}));
        QCOMPARE(operations->count(), 1);
        QCOMPARE(lastOperation(), WindowOperation::ToggleMaximise);
    }

    void aDoubleClickEndsTheDrag()
    {
        sendMouse(*bar, QEvent::MouseButtonPress, {200, 10});
        sendMouse(*bar, QEvent::MouseButtonDblClick, {200, 10});
        dragTo({300, 10});
        QCOMPARE(operations->count(), 1);
        QCOMPARE(lastOperation(), WindowOperation::ToggleMaximise);
    }

    void leavesADoubleClickOnAButtonToIt()
    {
        sendMouse(*bar, QEvent::MouseButtonDblClick,
                  button(WindowControl::Close)->geometry().center());
        QCOMPARE(operations->count(), 0);
    }

    void ignoresDoubleClicksOfOtherButtons()
    {
        sendMouse(*bar, QEvent::MouseButtonDblClick, {200, 10}, Qt::RightButton, Qt::RightButton);
        QCOMPARE(operations->count(), 0);
    }

    void forgetsThePointerWhenTheWindowJumps()
    {
        button(WindowControl::Close)->setAttribute(Qt::WA_UnderMouse);
        button(WindowControl::Close)->setDown(true);
        bar->refreshMaximisedState();
        QVERIFY(!button(WindowControl::Close)->underMouse());
        QVERIFY(!button(WindowControl::Close)->isDown());
    }

    void changesItsTextsWithTheLanguage()
    {
        QCOMPARE(bar->controlAction(WindowControl::Close)->text(), QStringLiteral("Close"));
        CapitalTranslator translator;
        QCoreApplication::installTranslator(&translator);
        QCoreApplication::sendPostedEvents();
        for (const WindowControl control : windowControls)
            QCOMPARE(bar->controlAction(control)->text(), windowControlText(control));
        QCOMPARE(button(WindowControl::Maximise)->text(), QStringLiteral("MAXIMISE"));
        QCOMPARE(button(WindowControl::Maximise)->toolTip(), QStringLiteral("MAXIMISE"));
        QCoreApplication::removeTranslator(&translator);
        QCoreApplication::sendPostedEvents();
        QCOMPARE(button(WindowControl::Maximise)->text(), QStringLiteral("Maximise"));
    }

    void buttonsHaveNameAndRoleForAssistiveTools()
    {
        for (const WindowControl control : windowControls) {
            QAccessibleInterface *interface =
                QAccessible::queryAccessibleInterface(button(control));
            QVERIFY(interface);
            QCOMPARE(interface->text(QAccessible::Name), windowControlText(control));
            QCOMPARE(interface->role(), QAccessible::PushButton);
        }
    }

private:
    IconLabel *iconLabel() const { return bar->findChild<IconLabel *>(); }
    ElidedLabel *titleLabel() const { return bar->findChild<ElidedLabel *>(); }
    WindowControlButton *button(WindowControl control) const { return bar->controlButton(control); }
    bool dragTo(const QPointF &position)
    {
        return sendMouse(*bar, QEvent::MouseMove, position, Qt::NoButton, Qt::LeftButton);
    }
    WindowOperation lastOperation() const
    {
        return operations->last().first().value<WindowOperation>();
    }

    std::unique_ptr<QWidget> window;
    WindowTitleBar *bar = nullptr; // the window's child
    std::unique_ptr<QSignalSpy> operations;
    std::unique_ptr<QSignalSpy> controls;
};

QTEST_MAIN(TestWindowTitleBar)
#include "tst_window_title_bar.moc"
