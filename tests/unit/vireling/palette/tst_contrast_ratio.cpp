#include "vireling/palette/contrast.h"

#include <QtTest>

using Vireling::contrastRatio;
using Vireling::darkened;
using Vireling::darkeningForText;

class TestContrastRatio : public QObject
{
    Q_OBJECT

private slots:
    void theRatioIsThatOfTheStandard()
    {
        QCOMPARE(contrastRatio(Qt::black, Qt::white), 21.0);
        QCOMPARE(contrastRatio(Qt::red, Qt::red), 1.0);
        QVERIFY(qAbs(contrastRatio(QColor("#777777"), Qt::white) - 4.478) < 0.001);
        QVERIFY(qAbs(contrastRatio(QColor("#0000ff"), Qt::white) - 8.592) < 0.001);
    }

    void itDoesNotMatterWhichIsTheGround()
    {
        QCOMPARE(contrastRatio(Qt::white, Qt::blue), contrastRatio(Qt::blue, Qt::white));
    }

    void aGroundThatIsDarkEnoughStays()
    {
        QCOMPARE(darkeningForText(QColor("#767676"), Qt::white), 0.0);
        QCOMPARE(darkened(QColor("#767676"), 0), QColor("#767676"));
    }

    void aGroundIsDarkenedJustFarEnough()
    {
        const QColor text("#fbfbfb");
        const QColor ground("#9199a2");
        const QColor dark = darkened(ground, darkeningForText(ground, text));
        QVERIFY(contrastRatio(dark, text) >= 4.5);
        QVERIFY(contrastRatio(dark, text) < 4.7);
        QVERIFY(qAbs(dark.hslHue() - ground.hslHue()) <= 3);
    }

    void textThatNeverReadsEndsAtBlack()
    {
        QCOMPARE(darkeningForText(QColor("#808080"), QColor("#303030")), 1.0);
        QCOMPARE(darkened(Qt::white, 1), QColor(Qt::black));
    }
};

QTEST_APPLESS_MAIN(TestContrastRatio)
#include "tst_contrast_ratio.moc"
