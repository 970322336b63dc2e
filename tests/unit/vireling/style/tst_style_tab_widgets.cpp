#include "vireling/palette/current_palette.h"
#include "vireling/style/style.h"

#include <QImage>
#include <QTabBar>
#include <QTabWidget>
#include <QtTest>

using namespace Vireling;

namespace {

QColor frame()
{
    return currentPalette().colour(QPalette::Active, ColourRole::Frame);
}

QColor window()
{
    return currentPalette().color(QPalette::Active, QPalette::Window);
}

} // namespace

class TestStyleTabWidgets : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QApplication::setStyle(new Style); }

    void pageGetsTheRoomItAsksFor_data();
    void pageGetsTheRoomItAsksFor();
    void selectedTabAndPaneAreOne();
    void documentModeHasNoFrame();
};

void TestStyleTabWidgets::pageGetsTheRoomItAsksFor_data()
{
    QTest::addColumn<QTabWidget::TabPosition>("position");
    QTest::newRow("north") << QTabWidget::North;
    QTest::newRow("south") << QTabWidget::South;
    QTest::newRow("west") << QTabWidget::West;
    QTest::newRow("east") << QTabWidget::East;
}

void TestStyleTabWidgets::pageGetsTheRoomItAsksFor()
{
    QFETCH(QTabWidget::TabPosition, position);
    struct Page : QWidget
    {
        QSize sizeHint() const override { return {300, 310}; }
    };
    QTabWidget widget;
    widget.setTabPosition(position);
    auto *page = new Page;
    widget.addTab(page, QStringLiteral("Page"));
    widget.resize(widget.sizeHint());
    widget.show();
    QVERIFY(page->width() >= 300 && page->width() <= 302);
    QVERIFY(page->height() >= 310 && page->height() <= 312);
}

void TestStyleTabWidgets::selectedTabAndPaneAreOne()
{
    QTabWidget widget;
    for (int i = 0; i < 3; ++i)
        widget.addTab(new QWidget, QStringLiteral("Page %1").arg(i));
    widget.setCurrentIndex(1);
    widget.resize(800, 200);
    widget.show();
    const QImage image = widget.grab().toImage();
    const QTabBar &bar = *widget.tabBar();
    const int line = bar.geometry().bottom(); // the pane begins below the tabs' last row
    const auto below = [&](int tab) {
        return QPoint(bar.mapTo(&widget, bar.tabRect(tab).center()).x(), line);
    };
    QCOMPARE(image.pixelColor(below(0)), frame());
    QCOMPARE(image.pixelColor(below(1)), window());
    QCOMPARE(image.pixelColor(below(2)), frame());
    QCOMPARE(image.pixelColor(790, line), frame());
    QCOMPARE(image.pixelColor(0, 100), frame());
    QCOMPARE(image.pixelColor(200, 199), frame());
    QVERIFY(image.pixelColor(0, 199) != frame()); // round
}

void TestStyleTabWidgets::documentModeHasNoFrame()
{
    QTabWidget widget;
    widget.setDocumentMode(true);
    widget.addTab(new QWidget, QStringLiteral("Page"));
    widget.addTab(new QWidget, QStringLiteral("Other"));
    widget.resize(800, 200);
    widget.show();
    const QImage image = widget.grab().toImage();
    QCOMPARE(image.pixelColor(0, 100), window());
    QCOMPARE(image.pixelColor(200, 199), window());
    const int line = widget.tabBar()->geometry().bottom();
    QCOMPARE(image.pixelColor(790, line), frame());
}

QTEST_MAIN(TestStyleTabWidgets)
#include "tst_style_tab_widgets.moc"
