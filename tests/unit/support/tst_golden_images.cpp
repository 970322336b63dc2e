#include "support/golden_images.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

using TestSupport::compareWithGolden;

/** The comparison must fail where it should, or no picture proves anything. */
class GoldenImagesTest : public QObject
{
    Q_OBJECT

private slots:
    void init()
    {
        qunsetenv("R4_RENEW_GOLDEN");
        place.reset(new QTemporaryDir);
        folders = {place->filePath("references"), place->filePath("failures")};
        picture = QImage(8, 4, QImage::Format_ARGB32);
        picture.fill(QColor(10, 20, 30));
        QVERIFY(QDir().mkpath(folders.references));
        QVERIFY(picture.save(QDir(folders.references).filePath("button.png")));
    }

    void aPictureLikeItsReferencePasses()
    {
        QCOMPARE(compareWithGolden("button", picture, folders), QString());
        QVERIFY(!QDir(folders.failures).exists());
    }

    void roundingPassesAndTheNextStepDoesNot()
    {
        picture.setPixelColor(3, 2, QColor(13, 17, 30));
        QCOMPARE(compareWithGolden("button", picture, folders), QString());
        picture.setPixelColor(3, 2, QColor(10, 20, 34));
        QVERIFY(compareWithGolden("button", picture, folders).contains("1 pixels differ"));
    }

    void aMismatchLeavesThreePictures()
    {
        picture.setPixelColor(7, 3, Qt::white);
        QVERIFY(!compareWithGolden("button", picture, folders).isEmpty());
        const QDir failures(folders.failures);
        QCOMPARE(QImage(failures.filePath("button_actual.png")).pixelColor(7, 3),
                 QColor(Qt::white));
        QCOMPARE(QImage(failures.filePath("button_expected.png")).pixelColor(7, 3),
                 QColor(10, 20, 30));
        const QImage difference(failures.filePath("button_difference.png"));
        QCOMPARE(difference.pixelColor(7, 3), QColor(Qt::white));
        QCOMPARE(difference.pixelColor(0, 0), QColor(Qt::black));
    }

    void anotherSizeIsAMismatch()
    {
        const QImage larger = picture.scaled(9, 4);
        QVERIFY(compareWithGolden("button", larger, folders).contains("size"));
    }

    void aMissingReferenceFailsAndLeavesThePicture()
    {
        QVERIFY(compareWithGolden("dark/slider", picture, folders).contains("no reference"));
        QVERIFY(QFile::exists(QDir(folders.failures).filePath("dark/slider_actual.png")));
    }

    void renewingWritesTheReferenceAndDoesNotPass()
    {
        qputenv("R4_RENEW_GOLDEN", "1");
        QVERIFY(compareWithGolden("dark/slider", picture, folders).contains("renewed"));
        qunsetenv("R4_RENEW_GOLDEN");
        QCOMPARE(compareWithGolden("dark/slider", picture, folders), QString());
    }

private:
    QScopedPointer<QTemporaryDir> place;
    TestSupport::GoldenFolders folders;
    QImage picture;
};

QTEST_GUILESS_MAIN(GoldenImagesTest)
#include "tst_golden_images.moc"
