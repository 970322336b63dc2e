#include "vireling/palette/fonts.h"

#include <QtTest>

#include <array>
#include <climits>

using namespace Vireling;

class TestFonts : public QObject
{
    Q_OBJECT

private slots:
    void weightsAndSizesAreFixed_data();
    void weightsAndSizesAreFixed();
    void slotsAreFixed_data();
    void slotsAreFixed();
    void anyOtherSlotIsTheApplicationsDefault_data();
    void anyOtherSlotIsTheApplicationsDefault();
    void aSlotIsBuiltOnce();
    void noStyleNameOverridesTheWeight();
};

void TestFonts::weightsAndSizesAreFixed_data()
{
    QTest::addColumn<int>("weight");
    QTest::addColumn<int>("size");
    QTest::addColumn<int>("qtWeight");
    QTest::addColumn<qreal>("points");
    const std::array<int, 4> weights{12, 25, 50, 63};
    const std::array<qreal, 5> points{6.75, 8.25, 9, 9.75, 12};
    for (std::size_t weight = 0; weight < weights.size(); ++weight)
        for (std::size_t size = 0; size < points.size(); ++size)
            QTest::addRow("weight %d, size %d", int(weight), int(size))
                << int(weight) << int(size) << weights[weight] << points[size];
}

void TestFonts::weightsAndSizesAreFixed()
{
    QFETCH(int, weight);
    QFETCH(int, size);
    const QFont font = styleFont(FontWeight(weight), FontSize(size));
    QCOMPARE(font.family(), QString("Titillium Web"));
    QTEST(font.weight(), "qtWeight");
    QTEST(font.pointSizeF(), "points");
    QCOMPARE(font.pixelSize(), -1); // set by points
}

void TestFonts::slotsAreFixed_data()
{
    QTest::addColumn<int>("slot");
    QTest::addColumn<int>("qtWeight");
    QTest::addColumn<qreal>("points");
    QTest::newRow("application") << 0 << 25 << 8.25;
    QTest::newRow("1") << 1 << 50 << 8.25;
    QTest::newRow("2") << 2 << 25 << 9.75;
    QTest::newRow("3") << 3 << 63 << 9.75;
    QTest::newRow("4") << 4 << 50 << 9.75;
    QTest::newRow("5, like 4") << 5 << 50 << 9.75;
    QTest::newRow("6") << 6 << 12 << 6.75;
    QTest::newRow("tooltips") << 7 << 63 << 9.75;
}

void TestFonts::slotsAreFixed()
{
    QFETCH(int, slot);
    const QFont &font = styleFont(slot);
    QCOMPARE(font.family(), QString("Titillium Web"));
    QTEST(font.weight(), "qtWeight");
    QTEST(font.pointSizeF(), "points");
}

void TestFonts::anyOtherSlotIsTheApplicationsDefault_data()
{
    QTest::addColumn<int>("slot");
    QTest::newRow("one too many") << 8;
    QTest::newRow("negative") << -1;
    QTest::newRow("largest") << INT_MAX;
    QTest::newRow("smallest") << INT_MIN;
}

void TestFonts::anyOtherSlotIsTheApplicationsDefault()
{
    QFETCH(int, slot);
    QCOMPARE(&styleFont(slot), &styleFont(0));
}

void TestFonts::aSlotIsBuiltOnce()
{
    for (int slot = 0; slot < fontSlotCount; ++slot)
        QCOMPARE(&styleFont(slot), &styleFont(slot));
    QVERIFY(&styleFont(4) != &styleFont(5));
}

/** Where a substitute family has a style of that name, it would win over the weight. */
void TestFonts::noStyleNameOverridesTheWeight()
{
    for (int slot = 0; slot < fontSlotCount; ++slot)
        QCOMPARE(styleFont(slot).styleName(), QString());
}

QTEST_MAIN(TestFonts)
#include "tst_fonts.moc"
