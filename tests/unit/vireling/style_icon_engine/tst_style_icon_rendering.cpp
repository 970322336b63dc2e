#include "icon_fixture.h"

#include <QImage>
#include <QPainter>
#include <QtTest>

using Vireling::StyleIconEngine;

Q_DECLARE_METATYPE(QIcon::Mode)
Q_DECLARE_METATYPE(QIcon::State)

namespace {

constexpr int roundingSlack = 2; // of premultiplied 8-bit channels

// 3:1, at an offset: only the extents count.
constexpr char thriceAsWideAtAnOffset[] =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" viewBox=\"5 7 30 10\">"
    "<path fill=\"#c82800\" d=\"M5 7h30v10H5z\"/></svg>";

// What is left of the drawn colour when `weight` of it is kept.
QColor faded(qreal weight)
{
    const auto mixed = [weight](int drawn, int base) {
        return qRound(drawn * weight + base * (1.0 - weight));
    };
    return QColor(mixed(drawnColour.red(), baseColour.red()),
                  mixed(drawnColour.green(), baseColour.green()),
                  mixed(drawnColour.blue(), baseColour.blue()));
}

bool areAlike(const QColor &one, const QColor &other)
{
    return qAbs(one.red() - other.red()) <= roundingSlack &&
           qAbs(one.green() - other.green()) <= roundingSlack &&
           qAbs(one.blue() - other.blue()) <= roundingSlack && one.alpha() == other.alpha();
}

} // namespace

class TestStyleIconRendering : public QObject
{
    Q_OBJECT

public:
    // A ratio no image of these tests has by itself.
    static void initMain() { qputenv("QT_SCALE_FACTOR", "3"); }

private slots:
    void initTestCase();
    void init();

    void modeAndStateChooseTheTint_data();
    void modeAndStateChooseTheTint();
    void fadesTowardTheCurrentPalettesBase();
    void fadesOnlyWhatIsDrawn();
    void fadesWithAForeignStylesPaletteToo();
    void keepsTheProportions_data();
    void keepsTheProportions();
    void nothingIsMadeOfAnEmptySize();
    void neverStretchesToWholePixels();
    void paintsAtTheDevicesRatio_data();
    void paintsAtTheDevicesRatio();
    void paintsAtTheApplicationsRatioWithoutADevice();
    void paintsTheWholePictureIntoTheRectangle();
    void anIconIsNotMultipliedTwice();

private:
    PictureFolder folder;
    const QString half = folder.write("half.svg", halfDrawn);
};

void TestStyleIconRendering::initTestCase()
{
    QCOMPARE(qApp->devicePixelRatio(), 3.0);
}

void TestStyleIconRendering::init()
{
    QPixmapCache::clear();
    fadeToward(baseColour);
}

void TestStyleIconRendering::modeAndStateChooseTheTint_data()
{
    QTest::addColumn<QIcon::Mode>("mode");
    QTest::addColumn<QIcon::State>("state");
    QTest::addColumn<QString>("tint");
    QTest::addColumn<qreal>("weight");

    QTest::newRow("disabled, off") << QIcon::Disabled << QIcon::Off << "01" << 0.3;
    QTest::newRow("disabled, on") << QIcon::Disabled << QIcon::On << "01" << 0.3;
    QTest::newRow("normal, off") << QIcon::Normal << QIcon::Off << "00" << 0.8;
    QTest::newRow("normal, on") << QIcon::Normal << QIcon::On << "02" << 1.0;
    QTest::newRow("active, off") << QIcon::Active << QIcon::Off << "02" << 1.0;
    QTest::newRow("active, on") << QIcon::Active << QIcon::On << "02" << 1.0;
    QTest::newRow("selected, off") << QIcon::Selected << QIcon::Off << "02" << 1.0;
    QTest::newRow("selected, on") << QIcon::Selected << QIcon::On << "02" << 1.0;
}

void TestStyleIconRendering::modeAndStateChooseTheTint()
{
    QFETCH(QIcon::Mode, mode);
    QFETCH(QIcon::State, state);
    QFETCH(QString, tint);
    QFETCH(qreal, weight);

    const QString number = nextEngineNumber();
    const QImage picture = StyleIconEngine(half).pixmap(QSize(16, 16), mode, state).toImage();
    QVERIFY(isCached("vr_style_icon" + number + tint + "1616"));
    QVERIFY2(areAlike(picture.pixelColor(3, 8), faded(weight)),
             qPrintable(picture.pixelColor(3, 8).name()));
}

void TestStyleIconRendering::fadesTowardTheCurrentPalettesBase()
{
    fadeToward(drawnColour);
    const QPixmap picture =
        StyleIconEngine(half).pixmap(QSize(16, 16), QIcon::Disabled, QIcon::Off);
    QVERIFY(areAlike(picture.toImage().pixelColor(3, 8), drawnColour));
}

void TestStyleIconRendering::fadesOnlyWhatIsDrawn()
{
    StyleIconEngine engine(half);
    for (const QIcon::Mode mode : {QIcon::Normal, QIcon::Disabled}) {
        // Seven pixels wide: the middle column is drawn by half.
        const QImage picture = engine.pixmap(QSize(7, 7), mode, QIcon::Off).toImage();
        QCOMPARE(picture.pixelColor(0, 3).alpha(), 255);
        QVERIFY(qAbs(picture.pixelColor(3, 3).alpha() - 128) <= roundingSlack);
        QCOMPARE(picture.pixel(5, 3), qRgba(0, 0, 0, 0));
    }
}

void TestStyleIconRendering::fadesWithAForeignStylesPaletteToo()
{
    QApplication::setStyle(new QCommonStyle);
    const QColor base = QPalette().color(QPalette::Base);
    QVERIFY(!areAlike(base, baseColour));
    const QColor pixel = StyleIconEngine(half)
                             .pixmap(QSize(16, 16), QIcon::Disabled, QIcon::Off)
                             .toImage()
                             .pixelColor(3, 8);
    QVERIFY(areAlike(pixel, QColor(qRound(drawnColour.red() * 0.3 + base.red() * 0.7),
                                   qRound(drawnColour.green() * 0.3 + base.green() * 0.7),
                                   qRound(drawnColour.blue() * 0.3 + base.blue() * 0.7))));
}

void TestStyleIconRendering::keepsTheProportions_data()
{
    QTest::addColumn<QByteArray>("svg");
    QTest::addColumn<QSize>("requested");
    QTest::addColumn<QSize>("actual");

    const QByteArray square = halfDrawn;
    const QByteArray wide = twiceAsWide;
    const QByteArray offset = thriceAsWideAtAnOffset;
    QTest::newRow("square in square") << square << QSize(24, 24) << QSize(24, 24);
    QTest::newRow("square in wide") << square << QSize(40, 16) << QSize(16, 16);
    QTest::newRow("square in tall") << square << QSize(16, 40) << QSize(16, 16);
    QTest::newRow("wide in square") << wide << QSize(16, 16) << QSize(16, 8);
    QTest::newRow("wide in tall") << wide << QSize(20, 60) << QSize(20, 10);
    QTest::newRow("wide in wider") << wide << QSize(90, 10) << QSize(20, 10);
    QTest::newRow("at an offset") << offset << QSize(60, 60) << QSize(60, 20);
}

void TestStyleIconRendering::keepsTheProportions()
{
    QFETCH(QByteArray, svg);
    QFETCH(QSize, requested);
    QFETCH(QSize, actual);

    StyleIconEngine engine(folder.write("proportions.svg", svg));
    QCOMPARE(engine.actualSize(requested, QIcon::Normal, QIcon::Off), actual);
    const QImage picture = engine.pixmap(requested, QIcon::Normal, QIcon::On).toImage();
    QCOMPARE(picture.size(), actual);
    QCOMPARE(picture.pixelColor(0, 0), drawnColour);
    QCOMPARE(picture.pixelColor(0, actual.height() - 1), drawnColour);
}

void TestStyleIconRendering::nothingIsMadeOfAnEmptySize()
{
    StyleIconEngine engine(half);
    const MessageCounter messages;
    QVERIFY(engine.pixmap(QSize(0, 0), QIcon::Normal, QIcon::On).isNull());
    QVERIFY(engine.pixmap(QSize(16, 0), QIcon::Normal, QIcon::On).isNull());
    QVERIFY(engine.pixmap(QSize(), QIcon::Normal, QIcon::On).isNull());
    QCOMPARE(messages.count(), 0);
}

void TestStyleIconRendering::neverStretchesToWholePixels()
{
    // 16 by 5 pixels for 3:1: the picture is 15 wide, half a pixel from either edge.
    StyleIconEngine engine(folder.write("offset.svg", thriceAsWideAtAnOffset));
    const QImage picture = engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::On).toImage();
    QCOMPARE(picture.size(), QSize(16, 5));
    QCOMPARE(picture.pixelColor(8, 2), drawnColour);
    QVERIFY(qAbs(picture.pixelColor(0, 2).alpha() - 128) <= roundingSlack);
    QVERIFY(qAbs(picture.pixelColor(15, 2).alpha() - 128) <= roundingSlack);
}

void TestStyleIconRendering::paintsAtTheDevicesRatio_data()
{
    QTest::addColumn<qreal>("ratio");
    QTest::addColumn<int>("extent");
    QTest::addColumn<QString>("pixels");

    QTest::newRow("one") << 1.0 << 16 << "1616";
    QTest::newRow("two asks for double the size") << 2.0 << 16 << "3232";
    QTest::newRow("one and a half") << 1.5 << 16 << "2424";
    QTest::newRow("22.5 rounds away from zero") << 1.5 << 15 << "2323";
    QTest::newRow("21.25 rounds down") << 1.25 << 17 << "2121";
}

void TestStyleIconRendering::paintsAtTheDevicesRatio()
{
    QFETCH(qreal, ratio);
    QFETCH(int, extent);
    QFETCH(QString, pixels);

    const QString number = nextEngineNumber();
    StyleIconEngine engine(half);
    QImage canvas(64, 64, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    canvas.setDevicePixelRatio(ratio);
    QPainter painter(&canvas);
    engine.paint(&painter, QRect(0, 0, extent, extent), QIcon::Active, QIcon::Off);

    QPixmap cached;
    QVERIFY(QPixmapCache::find("vr_style_icon" + number + "02" + pixels, &cached));
    QCOMPARE(cached.devicePixelRatio(), 1.0);
}

void TestStyleIconRendering::paintsAtTheApplicationsRatioWithoutADevice()
{
    const QString number = nextEngineNumber();
    StyleIconEngine engine(half);
    QPainter withoutDevice;
    engine.paint(&withoutDevice, QRect(0, 0, 16, 16), QIcon::Active, QIcon::Off);
    QVERIFY(isCached("vr_style_icon" + number + "024848"));
}

void TestStyleIconRendering::paintsTheWholePictureIntoTheRectangle()
{
    StyleIconEngine engine(half);
    QImage canvas(40, 20, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    QPainter painter(&canvas);
    engine.paint(&painter, QRect(10, 2, 20, 16), QIcon::Active, QIcon::Off);
    painter.end();

    // The picture's drawn left half fills the left half of the rectangle, no more.
    QCOMPARE(canvas.pixelColor(10, 2), drawnColour);
    QCOMPARE(canvas.pixelColor(18, 17), drawnColour);
    for (const QPoint &outside : {QPoint(9, 8), QPoint(12, 1), QPoint(12, 18), QPoint(22, 8)})
        QCOMPARE(canvas.pixelColor(outside).alpha(), 0);
}

void TestStyleIconRendering::anIconIsNotMultipliedTwice()
{
    const QString number = nextEngineNumber();
    StyleIconEngine engine(half);
    const QPixmap picture = engine.pixmap(QSize(20, 20), QIcon::Active, QIcon::Off);
    QCOMPARE(picture.size(), QSize(20, 20));
    QCOMPARE(picture.devicePixelRatio(), 1.0);

    // QIcon multiplies and marks its copy; the cached pixmap stays as it was.
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps);
    const QPixmap marked = QIcon(engine.clone()).pixmap(QSize(20, 20), QIcon::Active, QIcon::Off);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, false);
    QCOMPARE(marked.size(), QSize(60, 60));
    QCOMPARE(marked.devicePixelRatio(), 3.0);
    QPixmap cached;
    QVERIFY(QPixmapCache::find("vr_style_icon" + number + "026060", &cached));
    QCOMPARE(cached.devicePixelRatio(), 1.0);
}

QTEST_MAIN(TestStyleIconRendering)
#include "tst_style_icon_rendering.moc"
