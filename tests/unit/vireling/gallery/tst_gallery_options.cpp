#include "vireling/gallery/pages.h"

#include <QImage>
#include <QProcess>
#include <QTemporaryDir>
#include <QTest>

namespace {

constexpr int patience = 30000; // milliseconds; under sanitisers a page takes seconds

struct Outcome
{
    int exitCode;
    QString output;
    QString errors;
};

/** Runs the gallery; the exit code is -1 when it crashed or hung. */
Outcome runGallery(const QStringList &arguments)
{
    QProcess gallery;
    gallery.start(QStringLiteral(GALLERY_PROGRAM), arguments);
    const bool ended = gallery.waitForFinished(patience);
    const bool exited = ended && gallery.exitStatus() == QProcess::NormalExit;
    return {exited ? gallery.exitCode() : -1, QString::fromUtf8(gallery.readAllStandardOutput()),
            QString::fromUtf8(gallery.readAllStandardError())};
}

} // namespace

class TestGalleryOptions : public QObject
{
    Q_OBJECT

private slots:
    void pagesAreListed();
    void helpNamesEveryOption();
    void wrongUsageIsRefused_data();
    void wrongUsageIsRefused();
    void aPictureHasTheSizeOfItsScale_data();
    void aPictureHasTheSizeOfItsScale();
    void aPictureIsTakenOfEveryPage_data();
    void aPictureIsTakenOfEveryPage();
    void anOptionChangesThePicture_data();
    void anOptionChangesThePicture();
    void aPictureThatCannotBeWrittenFails();

private:
    QImage picture(const QStringList &arguments);

    QTemporaryDir directory;
};

QImage TestGalleryOptions::picture(const QStringList &arguments)
{
    const QString file = directory.filePath(QStringLiteral("page.png"));
    const Outcome outcome =
        runGallery(QStringList{QStringLiteral("--screenshot"), file} + arguments);
    return outcome.exitCode == 0 ? QImage(file) : QImage();
}

void TestGalleryOptions::pagesAreListed()
{
    QString expected;
    for (const Vireling::GalleryPage &page : Vireling::galleryPages())
        expected += QLatin1String(page.name) + QLatin1Char('\n');

    const Outcome outcome = runGallery({QStringLiteral("--list-pages")});

    QCOMPARE(outcome.exitCode, 0);
    QCOMPARE(outcome.output, expected);
}

void TestGalleryOptions::helpNamesEveryOption()
{
    const Outcome outcome = runGallery({QStringLiteral("--help")});

    QCOMPARE(outcome.exitCode, 0);
    for (const char *option : {"--theme", "--page", "--scale", "--rtl", "--disabled", "--style",
                               "--pseudo", "--screenshot", "--list-pages"})
        QVERIFY2(outcome.output.contains(QLatin1String(option)), option);
}

void TestGalleryOptions::wrongUsageIsRefused_data()
{
    QTest::addColumn<QStringList>("arguments");
    QTest::addColumn<QString>("named");

    QTest::newRow("theme") << QStringList{"--theme", "grey"} << "grey";
    QTest::newRow("system is no theme to show") << QStringList{"--theme", "system"} << "system";
    QTest::newRow("page") << QStringList{"--page", "nowhere"} << "nowhere";
    QTest::newRow("empty page") << QStringList{"--page", ""} << "page";
    QTest::newRow("scale") << QStringList{"--scale", "3"} << "3";
    QTest::newRow("scale in other words") << QStringList{"--scale", "2.0"} << "2.0";
    QTest::newRow("style") << QStringList{"--style", "baroque"} << "baroque";
    QTest::newRow("empty file") << QStringList{"--screenshot", ""} << "file";
    QTest::newRow("missing value") << QStringList{"--page"} << "page";
    QTest::newRow("option") << QStringList{"--turn"} << "turn";
    QTest::newRow("argument") << QStringList{"buttons"} << "buttons";
}

void TestGalleryOptions::wrongUsageIsRefused()
{
    QFETCH(QStringList, arguments);
    QFETCH(QString, named);

    const Outcome outcome = runGallery(arguments);

    QCOMPARE(outcome.exitCode, 2);
    QVERIFY2(outcome.errors.contains(named), qPrintable(outcome.errors));
    QCOMPARE(outcome.output, QString());
}

void TestGalleryOptions::aPictureHasTheSizeOfItsScale_data()
{
    QTest::addColumn<QString>("scale");
    QTest::addColumn<QSize>("size");

    // A page that has room to spare.
    QTest::newRow("1") << "1" << QSize(960, 640);
    QTest::newRow("1.5") << "1.5" << QSize(1440, 960);
    QTest::newRow("2") << "2" << QSize(1920, 1280);
}

void TestGalleryOptions::aPictureHasTheSizeOfItsScale()
{
    QFETCH(QString, scale);
    QFETCH(QSize, size);

    const QImage image = picture(
        {QStringLiteral("--page"), QStringLiteral("tool-tips"), QStringLiteral("--scale"), scale});

    QCOMPARE(image.size(), size);
}

void TestGalleryOptions::aPictureIsTakenOfEveryPage_data()
{
    QTest::addColumn<QString>("page");
    for (const Vireling::GalleryPage &page : Vireling::galleryPages())
        QTest::newRow(page.name) << QString::fromLatin1(page.name);
}

void TestGalleryOptions::aPictureIsTakenOfEveryPage()
{
    QFETCH(QString, page);

    const QImage image = picture({QStringLiteral("--page"), page});

    QVERIFY(!image.isNull());
    QVERIFY(image.width() >= 960 && image.height() >= 640);
}

void TestGalleryOptions::anOptionChangesThePicture_data()
{
    QTest::addColumn<QStringList>("arguments");

    QTest::newRow("light") << QStringList{"--theme", "light"};
    QTest::newRow("page") << QStringList{"--page", "dials"};
    QTest::newRow("right to left") << QStringList{"--rtl"};
    QTest::newRow("disabled") << QStringList{"--disabled"};
    QTest::newRow("pseudo") << QStringList{"--pseudo"};
    QTest::newRow("other style") << QStringList{"--style", "fusion"};
}

void TestGalleryOptions::anOptionChangesThePicture()
{
    QFETCH(QStringList, arguments);
    const QImage plain = picture({});

    const QImage changed = picture(arguments);

    QVERIFY(!plain.isNull() && !changed.isNull());
    QVERIFY(changed != plain);
    QCOMPARE(picture({}), plain); // and nothing else does
}

void TestGalleryOptions::aPictureThatCannotBeWrittenFails()
{
    const Outcome outcome = runGallery(
        {QStringLiteral("--screenshot"), directory.filePath(QStringLiteral("missing/page.png"))});

    QCOMPARE(outcome.exitCode, 1);
    QVERIFY(outcome.errors.contains(QStringLiteral("page.png")));
}

QTEST_GUILESS_MAIN(TestGalleryOptions)
#include "tst_gallery_options.moc"
