#include "common/file_icons.h"

#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QApplication>
#include <QImage>
#include <QTest>

Q_DECLARE_METATYPE(FileIcon)

namespace {

QImage drawn(const QIcon &icon)
{
    return icon.pixmap(QSize(32, 32)).toImage().convertToFormat(QImage::Format_ARGB32);
}

/** How many pixels show, and how light those are on average. */
struct Ink
{
    explicit Ink(const QImage &picture)
    {
        qint64 sum = 0;
        for (int y = 0; y < picture.height(); ++y) {
            for (int x = 0; x < picture.width(); ++x) {
                const QColor colour = picture.pixelColor(x, y);
                if (colour.alpha() < 128)
                    continue;
                ++pixels;
                sum += colour.lightness();
            }
        }
        lightness = pixels ? int(sum / pixels) : -1;
    }
    int pixels = 0;
    int lightness = 0;
};

} // namespace

class FileIconsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { Vireling::initialiseResources(); }
    void valuesAreThoseTheApplicationsUse();
    void eachIsTheFileOfItsName_data();
    void eachIsTheFileOfItsName();
    void eachIsBuiltOnce_data() { eachIsTheFileOfItsName_data(); }
    void eachIsBuiltOnce();
    void eachShowsInBothThemes_data() { eachIsTheFileOfItsName_data(); }
    void eachShowsInBothThemes();
    void noTwoLookTheSame();
    void anyOtherValueIsNoIcon_data();
    void anyOtherValueIsNoIcon();
};

void FileIconsTest::valuesAreThoseTheApplicationsUse()
{
    QCOMPARE(int(FileIcon::InternalStorage), 0);
    QCOMPARE(int(FileIcon::NewFolder), 1);
    QCOMPARE(int(FileIcon::UsbKey), 2);
    QCOMPARE(int(FileIcon::UpDirectory), 3);
}

void FileIconsTest::eachIsTheFileOfItsName_data()
{
    QTest::addColumn<FileIcon>("icon");
    QTest::addColumn<QString>("path");
    QTest::newRow("internal storage")
        << FileIcon::InternalStorage << "vireling:/common/icons/internal_storage.svg";
    QTest::newRow("new folder") << FileIcon::NewFolder << "vireling:/common/icons/new_folder.svg";
    QTest::newRow("USB key") << FileIcon::UsbKey << "vireling:/common/icons/usb_key.svg";
    QTest::newRow("up") << FileIcon::UpDirectory << "vireling:/common/icons/up_directory.svg";
}

void FileIconsTest::eachIsTheFileOfItsName()
{
    QFETCH(FileIcon, icon);
    QFETCH(QString, path);
    QVERIFY(!fileIcon(icon).isNull());
    QCOMPARE(drawn(fileIcon(icon)), drawn(Vireling::makeIcon(path)));
}

void FileIconsTest::eachIsBuiltOnce()
{
    QFETCH(FileIcon, icon);
    QCOMPARE(fileIcon(icon).cacheKey(), fileIcon(icon).cacheKey());
}

void FileIconsTest::eachShowsInBothThemes()
{
    QFETCH(FileIcon, icon);
    for (const auto theme : {Vireling::Theme::Dark, Vireling::Theme::Light}) {
        Vireling::installAppearance(theme);
        const Ink ink(drawn(fileIcon(icon)));
        QVERIFY(ink.pixels > 50);
        const int ground = QApplication::palette().color(QPalette::Window).lightness();
        QVERIFY2(qAbs(ink.lightness - ground) > 60,
                 qPrintable(QStringLiteral("%1 on %2").arg(ink.lightness).arg(ground)));
    }
}

void FileIconsTest::noTwoLookTheSame()
{
    for (int one = 0; one < 4; ++one)
        for (int other = one + 1; other < 4; ++other)
            QVERIFY(drawn(fileIcon(FileIcon(one))) != drawn(fileIcon(FileIcon(other))));
}

void FileIconsTest::anyOtherValueIsNoIcon_data()
{
    QTest::addColumn<int>("value");
    for (const int value : {-1, 4, 5, 0x7fffffff})
        QTest::addRow("%d", value) << value;
}

void FileIconsTest::anyOtherValueIsNoIcon()
{
    QFETCH(int, value);
    QVERIFY(fileIcon(FileIcon(value)).isNull());
}

QTEST_MAIN(FileIconsTest)
#include "tst_file_icons.moc"
