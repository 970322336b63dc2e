#include "vireling/style/busy_indicator_animator.h"
#include "vireling/style/style.h"

#include "style_pictures.h"

#include <QProgressBar>
#include <QStyleOption>
#include <QtTest>

using namespace Vireling;

namespace {

QImage paintedBar(const QStyleOptionProgressBar &option, const QWidget *widget = nullptr)
{
    return painted(option.rect.size(), [&](QPainter &painter) {
        QApplication::style()->drawControl(QStyle::CE_ProgressBar, &option, &painter, widget);
    });
}

QStyleOptionProgressBar barOption(int progress)
{
    QStyleOptionProgressBar option;
    option.rect = QRect(0, 0, 202, 24);
    option.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Horizontal;
    option.palette = QApplication::palette();
    option.maximum = 100;
    option.progress = progress;
    return option;
}

/** The first and last pixel of the chunk along the middle of the bar; -1 without one. */
QPair<int, int> chunkOf(const QImage &image, Qt::Orientation orientation = Qt::Horizontal)
{
    const QColor ground = QApplication::palette().color(QPalette::Base);
    const int middle = (orientation == Qt::Horizontal ? image.height() : image.width()) / 2;
    const int end = (orientation == Qt::Horizontal ? image.width() : image.height()) - 1;
    QPair<int, int> chunk(-1, -1);
    for (int i = 1; i < end; ++i) {
        const QPoint point = orientation == Qt::Horizontal ? QPoint(i, middle) : QPoint(middle, i);
        if (image.pixelColor(point) == ground)
            continue;
        chunk = {chunk.first < 0 ? i : chunk.first, i};
    }
    return chunk;
}

BusyIndicatorAnimator *animator()
{
    return QApplication::style()->findChild<BusyIndicatorAnimator *>();
}

} // namespace

class TestStyleProgress : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new Style); }

    void chunkIsAsLongAsTheProgress_data();
    void chunkIsAsLongAsTheProgress();
    void chunkGrowsFromTheRightEnd_data();
    void chunkGrowsFromTheRightEnd();
    void textChangesColourAtTheChunksEdge();
    void busySegmentStandsAtItsPhase();
    void busySegmentOfNoWidgetStandsInTheMiddle();
    void progressBarsAreAsHighAsFields();

    void timerRunsOnlyWhileABusyBarIsSeen();
    void barOfFixedPhaseNeedsNoTimer();
    void timerStopsForBarsThatGetDone();
    void busyBarIsRepaintedByTheTimer();

    void foreignOptionsAreSurvived();
};

void TestStyleProgress::chunkIsAsLongAsTheProgress_data()
{
    QTest::addColumn<int>("progress");
    QTest::addColumn<int>("last");
    QTest::newRow("nothing") << 0 << -1;
    QTest::newRow("not begun") << -1 << -1;
    QTest::newRow("a quarter") << 25 << 50;
    QTest::newRow("half") << 50 << 100;
    QTest::newRow("all") << 100 << 200;
    QTest::newRow("too much") << 1000 << 200;
}

void TestStyleProgress::chunkIsAsLongAsTheProgress()
{
    QFETCH(int, progress);
    QFETCH(int, last);
    const QPair<int, int> chunk = chunkOf(paintedBar(barOption(progress)));
    QCOMPARE(chunk.first, last < 0 ? -1 : 1);
    QCOMPARE(chunk.second, last);
}

void TestStyleProgress::chunkGrowsFromTheRightEnd_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<bool>("inverted");
    QTest::addColumn<bool>("rightToLeft");
    QTest::addColumn<bool>("atStart");
    QTest::newRow("horizontal") << Qt::Horizontal << false << false << true;
    QTest::newRow("inverted") << Qt::Horizontal << true << false << false;
    QTest::newRow("right to left") << Qt::Horizontal << false << true << false;
    QTest::newRow("right to left, inverted") << Qt::Horizontal << true << true << true;
    QTest::newRow("vertical, from the bottom") << Qt::Vertical << false << false << false;
    QTest::newRow("vertical, inverted") << Qt::Vertical << true << false << true;
    QTest::newRow("vertical, right to left") << Qt::Vertical << false << true << false;
}

void TestStyleProgress::chunkGrowsFromTheRightEnd()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(bool, inverted);
    QFETCH(bool, rightToLeft);
    QFETCH(bool, atStart);
    QStyleOptionProgressBar option = barOption(25);
    option.orientation = orientation;
    option.invertedAppearance = inverted;
    option.direction = rightToLeft ? Qt::RightToLeft : Qt::LeftToRight;
    if (orientation == Qt::Vertical)
        option.rect = QRect(0, 0, 24, 202);
    const QPair<int, int> chunk = chunkOf(paintedBar(option), orientation);
    QCOMPARE(chunk, atStart ? qMakePair(1, 50) : qMakePair(151, 200));
}

void TestStyleProgress::textChangesColourAtTheChunksEdge()
{
    QStyleOptionProgressBar option = barOption(50);
    option.palette.setColor(QPalette::Text, Qt::yellow);
    option.palette.setColor(QPalette::HighlightedText, Qt::green);
    option.textVisible = true;
    option.text = QStringLiteral("MMMMMMMM");
    QProgressBar bar;
    QFont font = bar.font();
    font.setPixelSize(20);
    font.setBold(true);
    bar.setFont(font);
    option.fontMetrics = QFontMetrics(font);
    const QImage image = paintedBar(option, &bar);
    const QRect over(0, 0, 101, 24);
    const QRect beside(101, 0, 101, 24);
    QVERIFY(shows(image, Qt::green, over));
    QVERIFY(!shows(image, Qt::green, beside));
    QVERIFY(shows(image, Qt::yellow, beside));
    QVERIFY(!shows(image, Qt::yellow, over));
}

void TestStyleProgress::busySegmentStandsAtItsPhase()
{
    QProgressBar bar;
    QStyleOptionProgressBar option = barOption(0);
    option.maximum = 0;
    const auto chunk = [&](qreal phase) {
        bar.setProperty(busyPhaseProperty, phase);
        return chunkOf(paintedBar(option, &bar));
    };
    QCOMPARE(chunk(0), qMakePair(1, 60));
    QCOMPARE(chunk(0.5), qMakePair(71, 130));
    QCOMPARE(chunk(1), qMakePair(141, 200));
    QCOMPARE(chunk(7), qMakePair(141, 200));
    option.direction = Qt::RightToLeft;
    QCOMPARE(chunk(0), qMakePair(141, 200));
}

void TestStyleProgress::busySegmentOfNoWidgetStandsInTheMiddle()
{
    QCOMPARE(busyPosition(nullptr), 0.5);
    QWidget other;
    QCOMPARE(busyPosition(&other), 0.5);
    QProgressBar bar;
    const qreal moving = busyPosition(&bar);
    QVERIFY(moving >= 0 && moving <= 1);
    bar.setEnabled(false);
    QCOMPARE(busyPosition(&bar), 0.5);
}

void TestStyleProgress::progressBarsAreAsHighAsFields()
{
    QProgressBar bar;
    const int height = qMax(bar.fontMetrics().height(), 16) + 8;
    QCOMPARE(bar.sizeHint().height(), height);
    bar.setOrientation(Qt::Vertical);
    QCOMPARE(bar.sizeHint().width(), height);
}

void TestStyleProgress::timerRunsOnlyWhileABusyBarIsSeen()
{
    QWidget window;
    QProgressBar busy(&window);
    QProgressBar calm(&window);
    window.resize(200, 100);
    calm.move(0, 50);
    calm.setValue(10);
    window.show();
    QVERIFY(QTest::qWaitForWindowExposed(&window));
    QCoreApplication::processEvents();
    QVERIFY(!animator()->isRunning());

    busy.setRange(0, 0);
    QTRY_VERIFY(animator()->isRunning());
    busy.hide();
    QTRY_VERIFY(!animator()->isRunning());
    busy.show();
    QTRY_VERIFY(animator()->isRunning());
    busy.setEnabled(false);
    QTRY_VERIFY(!animator()->isRunning());
    busy.setEnabled(true);
    QTRY_VERIFY(animator()->isRunning());
    busy.move(0, 500); // out of the window
    QTRY_VERIFY(!animator()->isRunning());
    busy.move(0, 0);
    QTRY_VERIFY(animator()->isRunning());
    window.hide();
    QTRY_VERIFY(!animator()->isRunning());
}

void TestStyleProgress::barOfFixedPhaseNeedsNoTimer()
{
    QProgressBar bar;
    bar.setProperty(busyPhaseProperty, 0.25);
    bar.setRange(0, 0);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QCoreApplication::processEvents();
    QVERIFY(!animator()->isRunning());
    QCOMPARE(busyPosition(&bar), 0.25);
}

void TestStyleProgress::timerStopsForBarsThatGetDone()
{
    auto first = std::make_unique<QProgressBar>();
    QProgressBar second;
    for (QProgressBar *bar : {first.get(), &second}) {
        bar->setRange(0, 0);
        bar->show();
        QVERIFY(QTest::qWaitForWindowExposed(bar));
    }
    QTRY_VERIFY(animator()->isRunning());
    second.setRange(0, 100);
    second.setValue(100);
    QTest::qWait(100);
    QVERIFY(animator()->isRunning()); // the first is busy yet
    first.reset();
    QTRY_VERIFY(!animator()->isRunning());
}

void TestStyleProgress::busyBarIsRepaintedByTheTimer()
{
    struct CountingBar : QProgressBar
    {
        void paintEvent(QPaintEvent *event) override
        {
            ++paints;
            QProgressBar::paintEvent(event);
        }
        int paints = 0;
    };
    CountingBar bar;
    bar.setRange(0, 0);
    bar.show();
    QVERIFY(QTest::qWaitForWindowExposed(&bar));
    QTRY_VERIFY(bar.paints >= 5);
}

void TestStyleProgress::foreignOptionsAreSurvived()
{
    const QStyle &style = *QApplication::style();
    const QStyleOption plain;
    const QStyleOptionProgressBar empty;
    painted(QSize(20, 20), [&](QPainter &painter) {
        for (const auto element : {QStyle::CE_ProgressBar, QStyle::CE_ProgressBarGroove,
                                   QStyle::CE_ProgressBarContents, QStyle::CE_ProgressBarLabel}) {
            style.drawControl(element, &plain, &painter);
            style.drawControl(element, &empty, &painter);
        }
    });
    QCOMPARE(style.sizeFromContents(QStyle::CT_ProgressBar, &plain, QSize(7, 8)), QSize(7, 8));
}

QTEST_MAIN(TestStyleProgress)
#include "tst_style_progress.moc"
