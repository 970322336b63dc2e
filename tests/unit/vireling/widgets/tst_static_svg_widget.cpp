#include "vireling/widgets/static_svg_widget.h"

#include <QAccessible>
#include <QTemporaryDir>
#include <QtTest>

using namespace Vireling;

namespace {

/** 40 by 20: the left half red, the right half blue. */
const QByteArray twoHalves =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"40\" height=\"20\" viewBox=\"0 0 40 20\">"
    "<rect width=\"20\" height=\"20\" fill=\"#ff0000\"/>"
    "<rect x=\"20\" width=\"20\" height=\"20\" fill=\"#0000ff\"/></svg>";

const QByteArray greenSquare =
    "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"10\" height=\"10\" viewBox=\"0 0 10 10\">"
    "<rect width=\"10\" height=\"10\" fill=\"#00ff00\"/></svg>";

QImage picture(QWidget &widget)
{
    QImage image(widget.size(), QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    return image;
}

/** The area of everything that is not white. */
QRect drawnArea(const QImage &image)
{
    QRect area;
    for (int y = 0; y < image.height(); ++y)
        for (int x = 0; x < image.width(); ++x)
            if (image.pixelColor(x, y) != QColor(Qt::white))
                area |= QRect(x, y, 1, 1);
    return area;
}

} // namespace

class TestStaticSvgWidget : public QObject
{
    Q_OBJECT

private slots:
    void bytesAreLoaded();
    void filesAreLoaded();
    void whatIsNoSvgShowsNothing_data();
    void whatIsNoSvgShowsNothing();
    void theHintIsTheSizeTheSvgStates();
    void thePictureFitsByItsMode_data();
    void thePictureFitsByItsMode();
    void marginsAreKeptFree();
    void aViewBoxShowsAPart();
    void anEmptyViewBoxBringsTheStatedOneBack();
    void aViewBoxOutlastsANewDocument();
    void theRatioOfThePixelsIsFollowed();
    void aNewDocumentReplacesTheKeptPicture();
    void aNewSizeIsRenderedSharply();
    void anUnchangedPictureIsNotRenderedAgain();
    void anAnimatedPictureStandsStill();
    void itIsAGraphic();
};

void TestStaticSvgWidget::bytesAreLoaded()
{
    StaticSvgWidget widget;
    QVERIFY(widget.load(twoHalves));
    widget.resize(40, 20);
    const QImage image = picture(widget);
    QCOMPARE(image.pixelColor(5, 10), QColor("#ff0000"));
    QCOMPARE(image.pixelColor(35, 10), QColor("#0000ff"));
}

void TestStaticSvgWidget::filesAreLoaded()
{
    QTemporaryDir folder;
    const QString path = folder.filePath("square.svg");
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write(greenSquare);
    file.close();

    StaticSvgWidget widget(path);
    widget.resize(10, 10);
    QCOMPARE(picture(widget).pixelColor(5, 5), QColor("#00ff00"));
    QVERIFY(!widget.load(folder.filePath("absent.svg")));
    QVERIFY(widget.load(path));
}

void TestStaticSvgWidget::whatIsNoSvgShowsNothing_data()
{
    QTest::addColumn<QByteArray>("contents");
    QTest::newRow("nothing") << QByteArray();
    QTest::newRow("no markup") << QByteArray("not an image");
    QTest::newRow("cut short") << twoHalves.left(60);
}

void TestStaticSvgWidget::whatIsNoSvgShowsNothing()
{
    QFETCH(QByteArray, contents);
    StaticSvgWidget widget;
    widget.load(twoHalves);
    widget.resize(40, 20);
    QVERIFY(!drawnArea(picture(widget)).isEmpty());
    QVERIFY(!widget.load(contents));
    QVERIFY(drawnArea(picture(widget)).isEmpty());
    QVERIFY(widget.defaultSize().isEmpty());
}

void TestStaticSvgWidget::theHintIsTheSizeTheSvgStates()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    QCOMPARE(widget.defaultSize(), QSize(40, 20));
    QCOMPARE(widget.sizeHint(), QSize(40, 20));
    widget.setContentsMargins(1, 2, 3, 4);
    QCOMPARE(widget.sizeHint(), QSize(44, 26));
    widget.setViewBox({0, 0, 20, 20});
    QCOMPARE(widget.sizeHint(), QSize(24, 26));
}

void TestStaticSvgWidget::thePictureFitsByItsMode_data()
{
    QTest::addColumn<int>("mode");
    QTest::addColumn<QRect>("area");
    QTest::addColumn<int>("borderBetweenHalves");
    QTest::newRow("keep") << int(Qt::KeepAspectRatio) << QRect(0, 25, 100, 50) << 50;
    QTest::newRow("ignore") << int(Qt::IgnoreAspectRatio) << QRect(0, 0, 100, 100) << 50;
    QTest::newRow("expand") << int(Qt::KeepAspectRatioByExpanding) << QRect(0, 0, 100, 100) << 50;
}

void TestStaticSvgWidget::thePictureFitsByItsMode()
{
    QFETCH(int, mode);
    QFETCH(QRect, area);
    QFETCH(int, borderBetweenHalves);
    StaticSvgWidget widget;
    QCOMPARE(widget.aspectRatioMode(), Qt::KeepAspectRatio);
    widget.load(twoHalves);
    widget.setAspectRatioMode(Qt::AspectRatioMode(mode));
    widget.resize(100, 100);
    const QImage image = picture(widget);
    QCOMPARE(drawnArea(image), area);
    QCOMPARE(image.pixelColor(borderBetweenHalves - 1, 50), QColor("#ff0000"));
    QCOMPARE(image.pixelColor(borderBetweenHalves, 50), QColor("#0000ff"));
}

void TestStaticSvgWidget::marginsAreKeptFree()
{
    for (const Qt::AspectRatioMode mode : {Qt::KeepAspectRatio, Qt::KeepAspectRatioByExpanding}) {
        StaticSvgWidget widget;
        widget.load(greenSquare);
        widget.setAspectRatioMode(mode);
        widget.setContentsMargins(10, 20, 30, 40);
        widget.resize(100, 120);
        QCOMPARE(drawnArea(picture(widget)), QRect(10, 20, 60, 60));
    }
}

void TestStaticSvgWidget::aViewBoxShowsAPart()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    QCOMPARE(widget.viewBox(), QRectF(0, 0, 40, 20));
    widget.setViewBox({20, 0, 20, 20});
    QCOMPARE(widget.viewBox(), QRectF(20, 0, 20, 20));
    widget.resize(60, 60);
    const QImage image = picture(widget);
    QCOMPARE(drawnArea(image), QRect(0, 0, 60, 60));
    QCOMPARE(image.pixelColor(1, 1), QColor("#0000ff"));
}

void TestStaticSvgWidget::anEmptyViewBoxBringsTheStatedOneBack()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    widget.resize(40, 20);
    const QImage whole = picture(widget);
    widget.setViewBox({20, 0, 20, 20});
    QVERIFY(picture(widget) != whole);
    widget.setViewBox(QRectF());
    QCOMPARE(widget.viewBox(), QRectF(0, 0, 40, 20));
    QCOMPARE(picture(widget), whole);
}

void TestStaticSvgWidget::aViewBoxOutlastsANewDocument()
{
    StaticSvgWidget widget;
    widget.setViewBox({20, 0, 20, 20});
    widget.load(twoHalves);
    widget.resize(20, 20);
    QCOMPARE(picture(widget).pixelColor(1, 1), QColor("#0000ff"));
}

void TestStaticSvgWidget::theRatioOfThePixelsIsFollowed()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    widget.resize(41, 20); // the halves meet between two logical pixels
    widget.setAspectRatioMode(Qt::IgnoreAspectRatio);
    QImage image(widget.size() * 2, QImage::Format_ARGB32_Premultiplied);
    image.setDevicePixelRatio(2);
    image.fill(Qt::white);
    widget.render(&image, QPoint(), QRegion(), QWidget::DrawChildren);
    QCOMPARE(drawnArea(image), QRect(0, 0, 82, 40));
}

void TestStaticSvgWidget::aNewDocumentReplacesTheKeptPicture()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    widget.resize(20, 20);
    picture(widget);
    widget.load(greenSquare);
    QCOMPARE(picture(widget).pixelColor(10, 10), QColor("#00ff00"));
    QCOMPARE(widget.sizeHint(), QSize(10, 10));
}

void TestStaticSvgWidget::aNewSizeIsRenderedSharply()
{
    StaticSvgWidget widget;
    widget.load(twoHalves);
    widget.resize(40, 20);
    picture(widget);
    widget.resize(400, 200);
    const QImage image = picture(widget);
    QCOMPARE(image.pixelColor(199, 100), QColor("#ff0000")); // no blur where the halves meet
    QCOMPARE(image.pixelColor(200, 100), QColor("#0000ff"));
}

void TestStaticSvgWidget::anUnchangedPictureIsNotRenderedAgain()
{
    QByteArray laborious =
        "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"200\" height=\"200\">";
    for (int number = 0; number < 2000; ++number)
        laborious += "<circle cx=\"100\" cy=\"100\" r=\"90\" stroke=\"#000000\" opacity=\"0.5\"/>";
    StaticSvgWidget widget;
    QVERIFY(widget.load(laborious + "</svg>"));
    widget.resize(200, 200);
    QElapsedTimer timer;
    timer.start();
    const QImage first = picture(widget);
    const qint64 firstTime = timer.nsecsElapsed();
    timer.restart();
    const QImage second = picture(widget);
    const qint64 secondTime = timer.nsecsElapsed();
    QCOMPARE(second, first);
    // A hundred times in practice; the margin is for a busy machine.
    QVERIFY2(secondTime * 5 < firstTime,
             qPrintable(QStringLiteral("%1 ns, %2 ns").arg(firstTime).arg(secondTime)));
}

void TestStaticSvgWidget::anAnimatedPictureStandsStill()
{
    StaticSvgWidget widget;
    QVERIFY(widget.load(
        QByteArray("<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"20\" height=\"20\">"
                   "<rect width=\"20\" height=\"20\" fill=\"#ff0000\">"
                   "<animate attributeName=\"fill\" from=\"#ff0000\" to=\"#0000ff\" dur=\"10ms\""
                   " repeatCount=\"indefinite\"/></rect></svg>")));
    struct Repaints : QObject
    {
        int count = 0;
        bool eventFilter(QObject *, QEvent *event) override
        {
            count += event->type() == QEvent::Paint ? 1 : 0;
            return false;
        }
    } repaints;
    widget.resize(20, 20);
    widget.show();
    QVERIFY(QTest::qWaitForWindowExposed(&widget));
    QCoreApplication::processEvents();
    widget.installEventFilter(&repaints);
    QTest::qWait(100); // an animation would ask for many pictures within
    QCOMPARE(repaints.count, 0);
}

void TestStaticSvgWidget::itIsAGraphic()
{
    StaticSvgWidget widget;
    widget.setAccessibleName("Logo");
    QAccessibleInterface *interface = QAccessible::queryAccessibleInterface(&widget);
    QVERIFY(interface);
    QCOMPARE(interface->role(), QAccessible::Graphic);
    QCOMPARE(interface->text(QAccessible::Name), QString("Logo"));
}

QTEST_MAIN(TestStaticSvgWidget)
#include "tst_static_svg_widget.moc"
