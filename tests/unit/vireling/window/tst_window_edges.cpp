#include "vireling/window/window_edges.h"

#include <QWidget>
#include <QtTest>

#include <initializer_list>

using namespace Vireling;

namespace {

using Operation = std::optional<WindowOperation>;
constexpr WindowSizing sizable{true, true};

/** A window of 100 x 80 with margins 4 left, 5 top, 6 right, 7 bottom. */
constexpr QSize windowSize(100, 80);
constexpr QMargins windowMargins(4, 5, 6, 7);

Operation at(int x, int y, const WindowSizing &sizing = sizable)
{
    return resizeOperationAt({x, y}, windowSize, windowMargins, sizing);
}

QRegion regionOf(std::initializer_list<QRect> rects)
{
    QRegion region;
    for (const QRect &rect : rects)
        region += rect;
    return region;
}

} // namespace

Q_DECLARE_METATYPE(QMargins)
Q_DECLARE_METATYPE(QSizePolicy::Policy)
Q_DECLARE_METATYPE(Operation)

class TestWindowEdges : public QObject
{
    Q_OBJECT

private slots:
    void findsTheEdgeOfAPoint_data()
    {
        QTest::addColumn<QPoint>("point");
        QTest::addColumn<Operation>("operation");
        const auto row = [](const char *name, int x, int y, Operation operation) {
            QTest::newRow(name) << QPoint(x, y) << operation;
        };
        row("first of the left", 0, 40, WindowOperation::ResizeLeft);
        row("last of the left", 3, 40, WindowOperation::ResizeLeft);
        row("past the left", 4, 40, {});
        row("before the right", 93, 40, {});
        row("first of the right", 94, 40, WindowOperation::ResizeRight);
        row("last of the right", 99, 40, WindowOperation::ResizeRight);
        row("beyond the right", 100, 40, {});
        row("before the left", -1, 40, {});
        row("first of the top", 50, 0, WindowOperation::ResizeTop);
        row("last of the top", 50, 4, WindowOperation::ResizeTop);
        row("past the top", 50, 5, {});
        row("above the top", 50, -1, {});
        row("before the bottom", 50, 72, {});
        row("first of the bottom", 50, 73, WindowOperation::ResizeBottom);
        row("last of the bottom", 50, 79, WindowOperation::ResizeBottom);
        row("beyond the bottom", 50, 80, {});
        row("top left", 0, 0, WindowOperation::ResizeTopLeft);
        row("inner end of top left", 3, 4, WindowOperation::ResizeTopLeft);
        row("top right", 99, 0, WindowOperation::ResizeTopRight);
        row("inner end of top right", 94, 4, WindowOperation::ResizeTopRight);
        row("bottom left", 0, 79, WindowOperation::ResizeBottomLeft);
        row("inner end of bottom left", 3, 73, WindowOperation::ResizeBottomLeft);
        row("bottom right", 99, 79, WindowOperation::ResizeBottomRight);
        row("inner end of bottom right", 94, 73, WindowOperation::ResizeBottomRight);
        row("middle", 50, 40, {});
    }
    void findsTheEdgeOfAPoint()
    {
        QFETCH(QPoint, point);
        QTEST(at(point.x(), point.y()), "operation");
    }

    void aFixedWidthLeavesOnlyTopAndBottom()
    {
        const WindowSizing sizing{false, true};
        QCOMPARE(at(0, 40, sizing), Operation());
        QCOMPARE(at(99, 40, sizing), Operation());
        QCOMPARE(at(0, 0, sizing), Operation());
        QCOMPARE(at(99, 79, sizing), Operation());
        QCOMPARE(at(50, 0, sizing), Operation(WindowOperation::ResizeTop));
        QCOMPARE(at(50, 79, sizing), Operation(WindowOperation::ResizeBottom));
    }

    void aFixedHeightLeavesOnlyLeftAndRight()
    {
        const WindowSizing sizing{true, false};
        QCOMPARE(at(50, 0, sizing), Operation());
        QCOMPARE(at(50, 79, sizing), Operation());
        QCOMPARE(at(0, 0, sizing), Operation());
        QCOMPARE(at(0, 40, sizing), Operation(WindowOperation::ResizeLeft));
        QCOMPARE(at(99, 40, sizing), Operation(WindowOperation::ResizeRight));
    }

    void noMarginsHaveNoEdges()
    {
        for (const QPoint &point : {QPoint(0, 0), QPoint(99, 79), QPoint(50, 0)})
            QCOMPARE(resizeOperationAt(point, windowSize, QMargins(), sizable), Operation());
    }

    void oppositeEdgesAtOnceAreNone()
    {
        const QSize narrow(6, 80);
        const QMargins clipped = clippedMargins({4, 0, 4, 0}, narrow);
        QCOMPARE(resizeOperationAt({3, 40}, narrow, clipped, sizable), Operation());
        QCOMPARE(resizeOperationAt({0, 40}, narrow, clipped, sizable),
                 Operation(WindowOperation::ResizeLeft));
        QCOMPARE(resizeOperationAt({5, 40}, narrow, clipped, sizable),
                 Operation(WindowOperation::ResizeRight));
        const QSize flat(80, 6);
        QCOMPARE(resizeOperationAt({40, 3}, flat, {0, 4, 0, 4}, sizable), Operation());
        QCOMPARE(resizeOperationAt({2, 3}, {6, 6}, {4, 4, 4, 4}, sizable), Operation());
    }

    void clipsMarginsToTheWidget_data()
    {
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QMargins>("clipped");
        QTest::newRow("smaller") << QMargins(1, 2, 3, 4) << QSize(10, 10) << QMargins(1, 2, 3, 4);
        QTest::newRow("larger") << QMargins(20, 30, 40, 50) << QSize(10, 15)
                                << QMargins(10, 15, 10, 15);
        QTest::newRow("negative") << QMargins(-1, -2, -3, -4) << QSize(10, 10) << QMargins();
        QTest::newRow("no widget") << QMargins(1, 2, 3, 4) << QSize(0, 0) << QMargins();
        QTest::newRow("invalid size") << QMargins(1, 2, 3, 4) << QSize() << QMargins();
    }
    void clipsMarginsToTheWidget()
    {
        QFETCH(QMargins, margins);
        QFETCH(QSize, size);
        QTEST(clippedMargins(margins, size), "clipped");
    }

    void masksTheBorderStrips_data()
    {
        QTest::addColumn<QMargins>("margins");
        QTest::addColumn<QSize>("size");
        QTest::addColumn<QRegion>("mask");
        const QRect whole(0, 0, 100, 80);
        QTest::newRow("four strips")
            << windowMargins << windowSize
            << regionOf({{0, 0, 4, 80}, {4, 0, 90, 5}, {94, 0, 6, 80}, {4, 73, 90, 7}});
        QTest::newRow("left alone")
            << QMargins(4, 0, 0, 0) << windowSize << regionOf({{0, 0, 4, 80}});
        QTest::newRow("bottom alone")
            << QMargins(0, 0, 0, 7) << windowSize << regionOf({{0, 73, 100, 7}});
        QTest::newRow("none") << QMargins() << windowSize << QRegion();
        QTest::newRow("one pixel left inside")
            << QMargins(50, 40, 49, 39) << windowSize << (QRegion(whole) - QRect(50, 40, 1, 1));
        QTest::newRow("nothing left between left and right")
            << QMargins(50, 0, 50, 0) << windowSize << QRegion(whole);
        QTest::newRow("nothing left between top and bottom")
            << QMargins(0, 40, 0, 40) << windowSize << QRegion(whole);
        QTest::newRow("margins over margins")
            << QMargins(100, 80, 100, 80) << windowSize << QRegion(whole);
        QTest::newRow("no widget") << QMargins() << QSize(0, 0) << QRegion();
    }
    void masksTheBorderStrips()
    {
        QFETCH(QMargins, margins);
        QFETCH(QSize, size);
        QTEST(resizeMask(margins, size), "mask");
    }

    void showsACursorForEveryResizing_data()
    {
        QTest::addColumn<int>("operation");
        QTest::addColumn<int>("shape");
        constexpr int none = -1;
        QTest::newRow("move") << 0 << none;
        QTest::newRow("bottom") << 1 << int(Qt::SizeVerCursor);
        QTest::newRow("bottom left") << 2 << int(Qt::SizeBDiagCursor);
        QTest::newRow("bottom right") << 3 << int(Qt::SizeFDiagCursor);
        QTest::newRow("left") << 4 << int(Qt::SizeHorCursor);
        QTest::newRow("right") << 5 << int(Qt::SizeHorCursor);
        QTest::newRow("top") << 6 << int(Qt::SizeVerCursor);
        QTest::newRow("top left") << 7 << int(Qt::SizeFDiagCursor);
        QTest::newRow("top right") << 8 << int(Qt::SizeBDiagCursor);
        QTest::newRow("toggle maximise") << 9 << none;
    }
    void showsACursorForEveryResizing()
    {
        QFETCH(int, operation);
        const auto shape = cursorShape(WindowOperation(operation));
        QTEST(shape ? int(*shape) : -1, "shape");
    }

    void aDirectionChangesWhenLimitsDifferAndThePolicyGivesWay_data()
    {
        QTest::addColumn<QSizePolicy::Policy>("policy");
        QTest::addColumn<bool>("changes");
        QTest::newRow("fixed") << QSizePolicy::Fixed << false;
        QTest::newRow("minimum") << QSizePolicy::Minimum << true;
        QTest::newRow("maximum") << QSizePolicy::Maximum << true;
        QTest::newRow("preferred") << QSizePolicy::Preferred << true;
        QTest::newRow("minimum expanding") << QSizePolicy::MinimumExpanding << true;
        QTest::newRow("expanding") << QSizePolicy::Expanding << true;
        QTest::newRow("ignored") << QSizePolicy::Ignored << true;
    }
    void aDirectionChangesWhenLimitsDifferAndThePolicyGivesWay()
    {
        QFETCH(QSizePolicy::Policy, policy);
        QTEST(canChange(10, 11, policy), "changes");
        QVERIFY(!canChange(10, 10, policy));
    }

    void aWindowIsResizableInEitherDirection()
    {
        QWidget window;
        QVERIFY(isResizable(window));
        window.setFixedWidth(100);
        QVERIFY(isResizable(window));
        QVERIFY(!windowSizing(window).width);
        QVERIFY(windowSizing(window).height);
        window.setFixedHeight(100);
        QVERIFY(!isResizable(window));
    }

    void aFixedPolicyIsNotResizable()
    {
        QWidget window;
        window.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
        QVERIFY(!isResizable(window));
        window.setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Maximum);
        QVERIFY(isResizable(window));
        QVERIFY(!windowSizing(window).width);
    }

    void roundsHalvesAwayFromZero_data()
    {
        QTest::addColumn<QPointF>("position");
        QTest::addColumn<QPoint>("whole");
        QTest::newRow("half up") << QPointF(2.5, 3.5) << QPoint(3, 4);
        QTest::newRow("below half") << QPointF(2.4, 3.49) << QPoint(2, 3);
        QTest::newRow("negative half") << QPointF(-0.5, -2.5) << QPoint(-1, -3);
        QTest::newRow("negative below half") << QPointF(-0.4, -2.4) << QPoint(0, -2);
    }
    void roundsHalvesAwayFromZero()
    {
        QFETCH(QPointF, position);
        QTEST(wholePosition(position), "whole");
    }
};

QTEST_MAIN(TestWindowEdges)
#include "tst_window_edges.moc"
