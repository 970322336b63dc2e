#include "window_test_support.h"

#include "vireling/window/window_resize_area.h"

#include <QApplication>
#include <QSignalSpy>
#include <QtTest>

#include <memory>

using namespace Vireling;

/** A shown window of 200 x 100 under a resize area of margins 4, with a record of its requests. */
class TestWindowResizeArea : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { installToolkit(); }

    void init()
    {
        window = std::make_unique<QWidget>();
        window->resize(200, 100);
        area = new WindowResizeArea(window.get());
        area->resize(window->size());
        area->setMargins(4, 4, 4, 4);
        requests = std::make_unique<QSignalSpy>(area, &WindowResizeArea::operationRequested);
        window->show();
    }
    void cleanup()
    {
        requests.reset();
        window.reset();
    }

    void tracksTheMouseAndIsTransparent()
    {
        QVERIFY(area->hasMouseTracking());
        QVERIFY(area->testAttribute(Qt::WA_StaticContents));
        QVERIFY(!area->autoFillBackground());
    }

    void leavesTheInsideToTheWindow()
    {
        QVERIFY(area->isVisible());
        QCOMPARE(window->childAt(0, 50), area);
        QCOMPARE(window->childAt(3, 50), area);
        QCOMPARE(window->childAt(4, 50), nullptr);
        QCOMPARE(window->childAt(199, 99), area);
        QCOMPARE(area->mask(), QRegion(0, 0, 200, 100) - QRegion(4, 4, 192, 92));
    }

    void takesNoMouseInputWithoutMargins()
    {
        area->setMargins(0, 0, 0, 0);
        QVERIFY(area->testAttribute(Qt::WA_DontShowOnScreen));
        QVERIFY(!area->isVisible());
        QVERIFY(area->mask().isEmpty());
        QCOMPARE(window->childAt(0, 50), nullptr);
        QCOMPARE(window->childAt(100, 50), nullptr);
    }

    void isNotShownBeforeItGetsMargins()
    {
        auto *fresh = new WindowResizeArea(window.get());
        QVERIFY(fresh->testAttribute(Qt::WA_DontShowOnScreen));
        QWidget other;
        fresh->setParent(&other);
        other.show();
        QVERIFY(!fresh->isVisible());
    }

    void comesBackWithMargins()
    {
        area->setMargins(0, 0, 0, 0);
        area->setMargins(0, 0, 0, 2);
        QVERIFY(!area->testAttribute(Qt::WA_DontShowOnScreen));
        QVERIFY(area->isVisible());
        QCOMPARE(area->mask(), QRegion(0, 98, 200, 2));
    }

    void staysHiddenWhenOnlyItsMarginsChange()
    {
        area->hide();
        area->setMargins(5, 5, 5, 5);
        QVERIFY(!area->isVisible());
    }

    void isWholeWhereMarginsLeaveNothingInside()
    {
        area->setMargins(150, 4, 150, 4);
        QCOMPARE(area->mask(), QRegion(0, 0, 200, 100));
    }

    void masksItselfAnewWhenResized()
    {
        area->resize(100, 60);
        QCOMPARE(area->mask(), QRegion(0, 0, 100, 60) - QRegion(4, 4, 92, 52));
    }

    void showsTheCursorOfTheEdgeUnderThePointer_data()
    {
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<int>("shape");
        QTest::newRow("left") << QPointF(1, 50) << int(Qt::SizeHorCursor);
        QTest::newRow("right") << QPointF(198, 50) << int(Qt::SizeHorCursor);
        QTest::newRow("top") << QPointF(100, 0) << int(Qt::SizeVerCursor);
        QTest::newRow("bottom") << QPointF(100, 99) << int(Qt::SizeVerCursor);
        QTest::newRow("top left") << QPointF(0, 0) << int(Qt::SizeFDiagCursor);
        QTest::newRow("bottom right") << QPointF(199, 99) << int(Qt::SizeFDiagCursor);
        QTest::newRow("top right") << QPointF(199, 0) << int(Qt::SizeBDiagCursor);
        QTest::newRow("bottom left") << QPointF(0, 99) << int(Qt::SizeBDiagCursor);
        QTest::newRow("rounded inwards") << QPointF(3.5, 50) << int(Qt::ArrowCursor);
        QTest::newRow("rounded to the edge") << QPointF(3.4, 50) << int(Qt::SizeHorCursor);
        QTest::newRow("inside") << QPointF(100, 50) << int(Qt::ArrowCursor);
    }
    void showsTheCursorOfTheEdgeUnderThePointer()
    {
        QFETCH(QPointF, position);
        QVERIFY(hover(*area, position));
        QTEST(int(area->cursor().shape()), "shape");
        QCOMPARE(area->testAttribute(Qt::WA_SetCursor), area->cursor().shape() != Qt::ArrowCursor);
    }

    void takesTheCursorBackInside()
    {
        hover(*area, {0, 50});
        QVERIFY(area->testAttribute(Qt::WA_SetCursor));
        hover(*area, {100, 50});
        QVERIFY(!area->testAttribute(Qt::WA_SetCursor));
    }

    void changesTheCursorOnlyForAnotherShape()
    {
        hover(*area, {0, 50});
        area->setCursor(Qt::WaitCursor); // would be overwritten by setting the same again
        hover(*area, {199, 50});
        QCOMPARE(area->cursor().shape(), Qt::WaitCursor);
        hover(*area, {100, 0});
        QCOMPARE(area->cursor().shape(), Qt::SizeVerCursor);
    }

    void showsNoCursorAtTheSidesOfAWindowOfFixedWidth()
    {
        window->setMinimumSize(200, 100);
        window->setMaximumSize(200, 100);
        for (const QPointF &position : {QPointF(0, 50), QPointF(199, 50), QPointF(100, 0)}) {
            hover(*area, position);
            QVERIFY(!area->testAttribute(Qt::WA_SetCursor));
        }
    }

    void asksForResizingOnceDraggedFarEnough()
    {
        const int distance = QApplication::startDragDistance();
        QVERIFY(sendMouse(*area, QEvent::MouseButtonPress, {0, 0}));
        QVERIFY(sendMouse(*area, QEvent::MouseMove, {qreal(distance - 1), 0}, Qt::NoButton));
        QCOMPARE(requests->count(), 0);
        QVERIFY(sendMouse(*area, QEvent::MouseMove, {qreal(distance - 1), 1}, Qt::NoButton));
        QCOMPARE(requests->count(), 1);
        QCOMPARE(requests->first().first().value<WindowOperation>(),
                 WindowOperation::ResizeTopLeft);
    }

    void asksOnceForADrag()
    {
        sendMouse(*area, QEvent::MouseButtonPress, {0, 50});
        sendMouse(*area, QEvent::MouseMove, {50, 50}, Qt::NoButton);
        sendMouse(*area, QEvent::MouseMove, {90, 50}, Qt::NoButton);
        QCOMPARE(requests->count(), 1);
    }

    void keepsTheCursorWhileDragged()
    {
        hover(*area, {0, 50});
        sendMouse(*area, QEvent::MouseButtonPress, {0, 50});
        sendMouse(*area, QEvent::MouseMove, {5, 50}, Qt::NoButton);
        QCOMPARE(area->cursor().shape(), Qt::SizeHorCursor);
    }

    void aShortDragAsksForNothing()
    {
        sendMouse(*area, QEvent::MouseButtonPress, {0, 50});
        sendMouse(*area, QEvent::MouseMove, {6, 50}, Qt::NoButton);
        QVERIFY(
            sendMouse(*area, QEvent::MouseButtonRelease, {6, 50}, Qt::LeftButton, Qt::NoButton));
        hover(*area, {100, 50});
        QCOMPARE(requests->count(), 0);
    }

    void refreshesTheCursorWhenReleased()
    {
        hover(*area, {0, 50});
        sendMouse(*area, QEvent::MouseButtonPress, {0, 50});
        sendMouse(*area, QEvent::MouseButtonRelease, {6, 50}, Qt::LeftButton, Qt::NoButton);
        QVERIFY(!area->testAttribute(Qt::WA_SetCursor));
    }

    void ignoresOtherButtons()
    {
        QVERIFY(
            sendMouse(*area, QEvent::MouseButtonPress, {0, 50}, Qt::RightButton, Qt::RightButton));
        sendMouse(*area, QEvent::MouseMove, {80, 50}, Qt::NoButton, Qt::RightButton);
        QVERIFY(
            sendMouse(*area, QEvent::MouseButtonRelease, {80, 50}, Qt::RightButton, Qt::NoButton));
        QCOMPARE(requests->count(), 0);
    }

    void aPressOffTheEdgesBeginsNothing()
    {
        QVERIFY(sendMouse(*area, QEvent::MouseButtonPress, {100, 50}));
        sendMouse(*area, QEvent::MouseMove, {150, 50}, Qt::NoButton);
        QCOMPARE(requests->count(), 0);
    }

    void aPressOnAFixedEdgeBeginsNothing()
    {
        window->setFixedWidth(200);
        sendMouse(*area, QEvent::MouseButtonPress, {0, 50});
        sendMouse(*area, QEvent::MouseMove, {80, 50}, Qt::NoButton);
        QCOMPARE(requests->count(), 0);
    }

private:
    std::unique_ptr<QWidget> window;
    WindowResizeArea *area = nullptr; // the window's child
    std::unique_ptr<QSignalSpy> requests;
};

QTEST_MAIN(TestWindowResizeArea)
#include "tst_window_resize_area.moc"
