#include "vireling/style/kept_picture.h"
#include "vireling/style/rounded_panel.h"

#include <QImage>
#include <QPainter>
#include <QWidget>
#include <QtTest>

#include <cmath>

using namespace Vireling;

namespace {

/** A panel on a canvas; a painter that is not quite opaque never takes pictures. */
QImage drawn(const RoundedPanel &panel, const QSize &size, qreal ratio, bool throughPicture)
{
    QImage canvas(size * ratio * 2, QImage::Format_ARGB32_Premultiplied);
    canvas.setDevicePixelRatio(ratio);
    canvas.fill(Qt::darkGreen);
    QPainter painter(&canvas);
    if (!throughPicture)
        painter.setOpacity(std::nextafter(1.0, 0.0)); // as good as opaque, but not plain
    drawRoundedPanel(painter, QRectF(QPointF(3, 5), size), panel);
    return canvas;
}

int largestDifference(const QImage &one, const QImage &other)
{
    int largest = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x) {
            const QColor a = one.pixelColor(x, y);
            const QColor b = other.pixelColor(x, y);
            largest = std::max({largest, std::abs(a.red() - b.red()),
                                std::abs(a.green() - b.green()), std::abs(a.blue() - b.blue())});
        }
    return largest;
}

} // namespace

Q_DECLARE_METATYPE(RoundedPanel)

/** Notes the ratio of the pictures it is painted with. */
class RatioWidget : public QWidget
{
public:
    int ratio = -1;

protected:
    void paintEvent(QPaintEvent *) override
    {
        const QPainter painter(this);
        ratio = exactPictureRatio(painter, QRectF(1, 2, 8, 8));
    }
};

/** Kept pictures are a short cut: nobody may see whether it was taken. */
class TestStyleKeptPictures : public QObject
{
    Q_OBJECT

public:
    /** Before there is an application: the widgets' own pixels are a fourth of a logical one. */
    static void initMain() { qputenv("QT_SCALE_FACTOR", "2"); }

private slots:
    void panelsLookAsIfDrawnAsOnePath_data();
    void panelsLookAsIfDrawnAsOnePath();
    void aPictureIsDrawnOnce();
    void whatDiffersIsDrawnAnew();
    void offThePixelGridThereIsNoPicture_data();
    void offThePixelGridThereIsNoPicture();
    void thePixelsDrawnOnCountNotTheWidgets();
    void betweenPixelsThereIsAPictureOfItsOwn();
    void betweenPixelsItLooksAsIfDrawnThere();
    void thePainterKeepsItsState();
};

void TestStyleKeptPictures::panelsLookAsIfDrawnAsOnePath_data()
{
    QTest::addColumn<RoundedPanel>("panel");
    QTest::addColumn<QSize>("size");
    QTest::addColumn<qreal>("ratio");
    const QColor clear(Qt::transparent);
    const RoundedPanel button{Qt::white, Qt::red, 1, 3};
    const RoundedPanel ring{clear, Qt::blue, 2, 3};
    const RoundedPanel pill{Qt::yellow, clear, 0, 7};
    const RoundedPanel indicator{Qt::white, Qt::red, 1.5, 2};
    const RoundedPanel veil{QColor(0, 0, 255, 90), QColor(255, 0, 0, 120), 1, 4.5};
    for (const qreal ratio : {1.0, 2.0}) {
        QTest::addRow("button at %g", ratio) << button << QSize(80, 25) << ratio;
        QTest::addRow("ring at %g", ratio) << ring << QSize(80, 25) << ratio;
        QTest::addRow("pill at %g", ratio) << pill << QSize(60, 14) << ratio;
        QTest::addRow("circle at %g", ratio) << pill << QSize(14, 14) << ratio;
        QTest::addRow("indicator at %g", ratio) << indicator << QSize(12, 12) << ratio;
        QTest::addRow("translucent at %g", ratio) << veil << QSize(31, 17) << ratio;
    }
}

void TestStyleKeptPictures::panelsLookAsIfDrawnAsOnePath()
{
    // Qt's arcs are not quite alike in all corners and sizes; nobody sees these steps.
    constexpr int alike = 10;
    QFETCH(RoundedPanel, panel);
    QFETCH(QSize, size);
    QFETCH(qreal, ratio);
    const QImage path = drawn(panel, size, ratio, false);
    QVERIFY(largestDifference(drawn(panel, size, ratio, true), path) <= alike);
    QVERIFY(largestDifference(drawn(panel, size, ratio, true), path) <= alike); // out of the cache
}

void TestStyleKeptPictures::aPictureIsDrawnOnce()
{
    int drawings = 0;
    const auto draw = [&drawings](QPainter &) { ++drawings; };
    const PictureKey key{PictureShape::Cross, QColor(1, 2, 3), Qt::transparent, 1.5, 0};
    for (int time = 0; time < 3; ++time)
        keptPicture(key, QSize(9, 9), 1, draw);
    QCOMPARE(drawings, 1);
}

void TestStyleKeptPictures::whatDiffersIsDrawnAnew()
{
    int drawings = 0;
    const auto draw = [&drawings](QPainter &) { ++drawings; };
    const PictureKey key{PictureShape::CheckMark, QColor(9, 9, 9), Qt::transparent, 1.5, 0};
    keptPicture(key, QSize(9, 9), 1, draw);
    keptPicture(key, QSize(9, 9), 2, draw);
    keptPicture(key, QSize(9, 10), 1, draw);
    PictureKey other = key;
    other.shape = PictureShape::Cross;
    keptPicture(other, QSize(9, 9), 1, draw);
    other = key;
    other.first = QColor(9, 9, 10);
    keptPicture(other, QSize(9, 9), 1, draw);
    other = key;
    other.second = QColor(1, 1, 1);
    keptPicture(other, QSize(9, 9), 1, draw);
    other = key;
    other.line = 1.6;
    keptPicture(other, QSize(9, 9), 1, draw);
    other = key;
    other.radius = 0.1;
    keptPicture(other, QSize(9, 9), 1, draw);
    QCOMPARE(drawings, 8);
}

void TestStyleKeptPictures::offThePixelGridThereIsNoPicture_data()
{
    QTest::addColumn<QTransform>("transform");
    QTest::addColumn<QRectF>("rect");
    QTest::addColumn<int>("ratio");
    const QRectF whole(1, 2, 8, 8);
    QTest::newRow("on the grid") << QTransform() << whole << 1;
    QTest::newRow("moved by pixels") << QTransform::fromTranslate(3, 4) << whole << 1;
    QTest::newRow("moved by half") << QTransform::fromTranslate(0.5, 0) << whole << 0;
    QTest::newRow("scaled") << QTransform::fromScale(2, 2) << whole << 0;
    QTest::newRow("turned") << QTransform().rotate(90) << whole << 0;
    QTest::newRow("half a pixel wide") << QTransform() << QRectF(1, 2, 8.5, 8) << 0;
    QTest::newRow("half a pixel off") << QTransform() << QRectF(1, 2.5, 8, 8) << 0;
}

void TestStyleKeptPictures::offThePixelGridThereIsNoPicture()
{
    QFETCH(QTransform, transform);
    QFETCH(QRectF, rect);
    QImage canvas(32, 32, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    painter.setTransform(transform);
    QTEST(exactPictureRatio(painter, rect), "ratio");
}

void TestStyleKeptPictures::thePixelsDrawnOnCountNotTheWidgets()
{
    RatioWidget widget;
    widget.resize(16, 16);
    QCOMPARE(widget.devicePixelRatio(), 2);
    for (const int ratio : {1, 2}) {
        QImage canvas(widget.size() * ratio, QImage::Format_ARGB32_Premultiplied);
        canvas.setDevicePixelRatio(ratio);
        widget.render(&canvas);
        QCOMPARE(widget.ratio, ratio);
    }
}

void TestStyleKeptPictures::betweenPixelsThereIsAPictureOfItsOwn()
{
    int drawings = 0;
    const auto draw = [&drawings](QPainter &) { ++drawings; };
    const PictureKey key{PictureShape::Cross, QColor(3, 2, 1), Qt::transparent, 1.5, 0};
    QImage canvas(32, 32, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    drawKept(painter, QRectF(1.5, 2, 9, 9), key, draw);
    drawKept(painter, QRectF(4.5, 8, 9, 9), key, draw); // the same half
    QCOMPARE(drawings, 1);
    for (const QRectF &rect :
         {QRectF(1, 2.5, 9, 9), QRectF(1.25, 2, 9, 9), QRectF(1, 2, 9, 9), QRectF(1.5, 2, 9.5, 9)})
        drawKept(painter, rect, key, draw);
    QCOMPARE(drawings, 5);
}

void TestStyleKeptPictures::betweenPixelsItLooksAsIfDrawnThere()
{
    const QRectF rect(3.5, 5.5, 12, 11);
    const QPen pen(QColor(250, 240, 10), 1.5, Qt::SolidLine, Qt::RoundCap);
    const auto stroke = [&](QPainter &painter) {
        painter.setPen(pen);
        painter.drawLine(QPointF(2, 3), QPointF(10, 8));
    };
    QImage kept(32, 32, QImage::Format_ARGB32_Premultiplied);
    kept.fill(Qt::darkGreen);
    QImage direct = kept;
    QPainter keptPainter(&kept);
    drawKept(keptPainter, rect, {PictureShape::Cross, pen.color(), Qt::blue, 1.5, 0}, stroke);
    QPainter directPainter(&direct);
    directPainter.setRenderHint(QPainter::Antialiasing);
    directPainter.translate(rect.topLeft());
    stroke(directPainter);
    QVERIFY(largestDifference(kept, direct) <= 1);
}

void TestStyleKeptPictures::thePainterKeepsItsState()
{
    QImage canvas(32, 32, QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&canvas);
    painter.setPen(Qt::green);
    painter.setBrush(Qt::blue);
    for (const QRectF &rect : {QRectF(1, 1, 12, 12), QRectF(1.5, 1, 12, 12)}) {
        drawRoundedPanel(painter, rect, {Qt::white, Qt::red, 1.5, 2});
        QCOMPARE(painter.pen(), QPen(Qt::green));
        QCOMPARE(painter.brush(), QBrush(Qt::blue));
        QVERIFY(!painter.testRenderHint(QPainter::Antialiasing));
        QVERIFY(painter.transform().isIdentity());
    }
}

QTEST_MAIN(TestStyleKeptPictures)
#include "tst_style_kept_pictures.moc"
