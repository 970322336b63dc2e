#include "vireling/palette/colour_mixing.h"

#include <QtTest>

using namespace Vireling;

class TestColourMixing : public QObject
{
    Q_OBJECT

private slots:
    void theWeightIsTheShareOfTheFirst_data();
    void theWeightIsTheShareOfTheFirst();
    void atTheEndsAColourComesBackAsItIs_data();
    void atTheEndsAColourComesBackAsItIs();
    void aTransparentColourLendsNoHue();
    void opacityIsMixedLinearly();
    void twoTransparentColoursGiveATransparentOne();
    void aColourMixedWithItselfIsItself();
};

void TestColourMixing::theWeightIsTheShareOfTheFirst_data()
{
    QTest::addColumn<QColor>("first");
    QTest::addColumn<QColor>("second");
    QTest::addColumn<qreal>("weight");
    QTest::addColumn<QColor>("mixed");
    QTest::newRow("half") << QColor("#ff0000") << QColor("#0000ff") << 0.5 << QColor("#800080");
    QTest::newRow("a fifth") << QColor("#ffffff") << QColor("#000000") << 0.2 << QColor("#333333");
    QTest::newRow("four fifths") << QColor("#ffffff") << QColor("#000000") << 0.8
                                 << QColor("#cccccc");
    QTest::newRow("faded highlight")
        << QColor("#227cc2") << QColor("#181c21") << 0.3 << QColor("#1b3951");
}

void TestColourMixing::theWeightIsTheShareOfTheFirst()
{
    QFETCH(QColor, first);
    QFETCH(QColor, second);
    QFETCH(qreal, weight);
    QFETCH(QColor, mixed);
    QCOMPARE(mixColours(first, second, weight).rgba(), mixed.rgba());
}

void TestColourMixing::atTheEndsAColourComesBackAsItIs_data()
{
    QTest::addColumn<qreal>("weight");
    QTest::addColumn<bool>("isFirst");
    QTest::newRow("nothing of the first") << 0.0 << false;
    QTest::newRow("less than nothing") << -0.5 << false;
    QTest::newRow("all of the first") << 1.0 << true;
    QTest::newRow("more than all") << 1.5 << true;
}

void TestColourMixing::atTheEndsAColourComesBackAsItIs()
{
    QFETCH(qreal, weight);
    QFETCH(bool, isFirst);
    const QColor first = QColor::fromHsv(200, 100, 90, 40);
    const QColor second = QColor::fromRgb(1, 2, 3, 0);
    QCOMPARE(mixColours(first, second, weight), isFirst ? first : second);
}

void TestColourMixing::aTransparentColourLendsNoHue()
{
    const QColor mixed = mixColours(QColor(255, 0, 0, 0), QColor(0, 0, 255), 0.5);
    QCOMPARE(mixed.rgb(), qRgb(0, 0, 255));
    QCOMPARE(mixed.alpha(), 128);
}

void TestColourMixing::opacityIsMixedLinearly()
{
    const QColor mixed = mixColours(QColor(255, 0, 0, 204), QColor(0, 0, 255, 51), 0.25);
    QCOMPARE(mixed.alpha(), 89); // 0.25 * 0.8 + 0.75 * 0.2 = 0.35
    QCOMPARE(mixed.red(), 146);  // 0.2 / 0.35
    QCOMPARE(mixed.green(), 0);
    QCOMPARE(mixed.blue(), 109); // 0.15 / 0.35
}

void TestColourMixing::twoTransparentColoursGiveATransparentOne()
{
    QCOMPARE(mixColours(QColor(9, 8, 7, 0), QColor(1, 2, 3, 0), 0.5), QColor(Qt::transparent));
}

/** No rounding carries a channel beyond its range, where QColor becomes another kind or invalid. */
void TestColourMixing::aColourMixedWithItselfIsItself()
{
    for (const int alpha : {1, 77, 254, 255})
        for (int percent = 1; percent < 100; ++percent) {
            const QColor colour(255, 0, 254, alpha);
            const QColor mixed = mixColours(colour, colour, percent / 100.0);
            QCOMPARE(mixed.spec(), QColor::Rgb);
            QCOMPARE(mixed.rgba(), colour.rgba());
        }
}

QTEST_APPLESS_MAIN(TestColourMixing)
#include "tst_colour_mixing.moc"
