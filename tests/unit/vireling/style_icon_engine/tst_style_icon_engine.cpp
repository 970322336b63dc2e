#include "icon_fixture.h"

#include <QImage>
#include <QPainter>
#include <QRegularExpression>
#include <QSet>
#include <QtTest>

#include <memory>

using Vireling::StyleIconEngine;
using Vireling::StyleIconEngineData;

class TestStyleIconEngine : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void isKnownByItsKey();
    void numbersAreFourHexadecimalDigitsAndCountUp();
    void numbersBeginAgainAfterSixteenBits();
    void cachesUnderNumberTintAndSize();
    void activeAndNormalOnAreOnePixmap();
    void everyTintAndSizeIsAPixmapOfItsOwn();
    void takesWhatTheCacheHolds();
    void rendersAgainWhatTheCacheLost();
    void twoIconsOfOneFileShareNothing();
    void clonesShareRendererAndPixmaps();
    void readsItsFileOnFirstUse();
    void aFileThatIsNoPictureGivesNullPixmapsSilently_data();
    void aFileThatIsNoPictureGivesNullPixmapsSilently();
    void anSvgThatDoesNotParseGivesNullPixmaps();

private:
    PictureFolder folder;
    const QString half = folder.write("half.svg", halfDrawn);
};

void TestStyleIconEngine::init()
{
    QPixmapCache::clear();
    fadeToward(baseColour);
}

void TestStyleIconEngine::isKnownByItsKey()
{
    QCOMPARE(StyleIconEngine(half).key(), QString("VirelingStyleIconEngine"));
}

void TestStyleIconEngine::numbersAreFourHexadecimalDigitsAndCountUp()
{
    const StyleIconEngineData first(half);
    const StyleIconEngineData second(half);
    QCOMPARE(first.engineNumber().size(), 4);
    QCOMPARE(second.engineNumber().size(), 4);
    QCOMPARE(second.engineNumber().toUInt(nullptr, 16),
             (first.engineNumber().toUInt(nullptr, 16) + 1) & 0xffff);
}

void TestStyleIconEngine::numbersBeginAgainAfterSixteenBits()
{
    QSet<QString> numbers;
    for (int i = 0; i < 0x10000; ++i)
        numbers.insert(StyleIconEngineData(half).engineNumber());
    QCOMPARE(numbers.size(), 0x10000);
    QVERIFY(numbers.contains(StyleIconEngineData(half).engineNumber()));
}

void TestStyleIconEngine::cachesUnderNumberTintAndSize()
{
    const QString number = nextEngineNumber();
    StyleIconEngine engine(folder.write("wide.svg", twiceAsWide));
    const QString key = "vr_style_icon" + number + "02" + "48" + "24";
    QVERIFY(!isCached(key));
    const QPixmap picture = engine.pixmap(QSize(48, 48), QIcon::Active, QIcon::Off);
    QPixmap cached;
    QVERIFY(QPixmapCache::find(key, &cached));
    QCOMPARE(cached.cacheKey(), picture.cacheKey());
}

void TestStyleIconEngine::activeAndNormalOnAreOnePixmap()
{
    StyleIconEngine engine(half);
    const QPixmap active = engine.pixmap(QSize(16, 16), QIcon::Active, QIcon::Off);
    const QPixmap normalOn = engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::On);
    QVERIFY(!active.isNull());
    QCOMPARE(active.cacheKey(), normalOn.cacheKey());
}

void TestStyleIconEngine::everyTintAndSizeIsAPixmapOfItsOwn()
{
    StyleIconEngine engine(half);
    QSet<qint64> pixmaps;
    for (const int extent : {16, 32}) {
        const QSize size(extent, extent);
        pixmaps.insert(engine.pixmap(size, QIcon::Normal, QIcon::Off).cacheKey());
        pixmaps.insert(engine.pixmap(size, QIcon::Disabled, QIcon::Off).cacheKey());
        pixmaps.insert(engine.pixmap(size, QIcon::Active, QIcon::Off).cacheKey());
    }
    QCOMPARE(pixmaps.size(), 6);
}

void TestStyleIconEngine::takesWhatTheCacheHolds()
{
    const QString number = nextEngineNumber();
    StyleIconEngine engine(half);
    QPixmap marked(16, 16);
    marked.fill(Qt::green);
    QVERIFY(QPixmapCache::insert("vr_style_icon" + number + "001616", marked));
    const QPixmap picture = engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off);
    QCOMPARE(picture.cacheKey(), marked.cacheKey());
}

void TestStyleIconEngine::rendersAgainWhatTheCacheLost()
{
    StyleIconEngine engine(half);
    const QPixmap before = engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off);
    QPixmapCache::clear();
    const QPixmap after = engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off);
    QVERIFY(after.cacheKey() != before.cacheKey());
    QCOMPARE(after.toImage(), before.toImage());
}

void TestStyleIconEngine::twoIconsOfOneFileShareNothing()
{
    StyleIconEngine one(half);
    StyleIconEngine other(half);
    const QPixmap first = one.pixmap(QSize(16, 16), QIcon::Active, QIcon::Off);
    const QPixmap second = other.pixmap(QSize(16, 16), QIcon::Active, QIcon::Off);
    QVERIFY(first.cacheKey() != second.cacheKey());
    QCOMPARE(first.toImage(), second.toImage());
}

void TestStyleIconEngine::clonesShareRendererAndPixmaps()
{
    const QString path = folder.write("vanishing.svg", halfDrawn);
    StyleIconEngine engine(path);
    const QPixmap picture = engine.pixmap(QSize(16, 16), QIcon::Active, QIcon::Off);
    QVERIFY(QFile::remove(path));

    const std::unique_ptr<QIconEngine> clone(engine.clone());
    StyleIconEngine copy(engine);
    for (QIconEngine *sharing : {clone.get(), static_cast<QIconEngine *>(&copy)}) {
        QCOMPARE(sharing->key(), engine.key());
        QCOMPARE(sharing->pixmap(QSize(16, 16), QIcon::Active, QIcon::Off).cacheKey(),
                 picture.cacheKey());
        // The file is gone: only the renderer of the original can draw a new size.
        const QImage larger = sharing->pixmap(QSize(40, 40), QIcon::Active, QIcon::Off).toImage();
        QCOMPARE(larger.size(), QSize(40, 40));
        QCOMPARE(larger.pixelColor(3, 20), drawnColour);
    }
}

void TestStyleIconEngine::readsItsFileOnFirstUse()
{
    StyleIconEngine engine(folder.path("later.svg"));
    folder.write("later.svg", halfDrawn);
    QVERIFY(!engine.pixmap(QSize(16, 16), QIcon::Active, QIcon::Off).isNull());
}

void TestStyleIconEngine::aFileThatIsNoPictureGivesNullPixmapsSilently_data()
{
    QTest::addColumn<QString>("path");
    QTest::newRow("no path") << QString();
    QTest::newRow("no such file") << folder.path("missing.svg");
    QTest::newRow("unknown search prefix") << "nowhere:/missing.svg";
}

void TestStyleIconEngine::aFileThatIsNoPictureGivesNullPixmapsSilently()
{
    QFETCH(QString, path);
    StyleIconEngine engine(path);
    QImage canvas(16, 16, QImage::Format_ARGB32_Premultiplied);
    canvas.fill(Qt::transparent);
    const QImage untouched = canvas;

    const MessageCounter messages;
    QVERIFY(engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off).isNull());
    QPainter painter(&canvas);
    engine.paint(&painter, canvas.rect(), QIcon::Normal, QIcon::Off);
    painter.end();
    QCOMPARE(canvas, untouched);
    QCOMPARE(messages.count(), 0);
}

void TestStyleIconEngine::anSvgThatDoesNotParseGivesNullPixmaps()
{
    // Qt's own, once: the renderer is not tried again.
    QTest::ignoreMessage(QtWarningMsg, QRegularExpression("Cannot read file .*broken.svg"));
    StyleIconEngine engine(folder.write("broken.svg", "not a picture"));
    QVERIFY(engine.pixmap(QSize(16, 16), QIcon::Normal, QIcon::Off).isNull());
    QVERIFY(engine.pixmap(QSize(16, 16), QIcon::Disabled, QIcon::On).isNull());
}

QTEST_MAIN(TestStyleIconEngine)
#include "tst_style_icon_engine.moc"
