#include "svg_attributes.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"

#include <QDir>
#include <QDirIterator>
#include <QImage>
#include <QPainter>
#include <QSvgRenderer>
#include <QtTest>

#include <cmath>

using Vireling::Theme;

Q_DECLARE_METATYPE(Vireling::Theme)

namespace {

const QStringList commonIcons = {
    "arrow_down.svg",  "arrow_left.svg",  "arrow_right.svg",  "arrow_up.svg",  "edit_clear.svg",
    "expand_down.svg", "expand_left.svg", "expand_right.svg", "expand_up.svg",
};
const QStringList windowIcons = {
    "window_close.svg",        "window_maximise.svg",    "window_minimise.svg",
    "window_restore.svg",      "win_window_close.svg",   "win_window_maximise.svg",
    "win_window_minimise.svg", "win_window_restore.svg",
};
const QStringList fileIcons = {"file.svg",       "folder.svg",       "internal_storage.svg",
                               "new_folder.svg", "up_directory.svg", "usb_key.svg"};
const QStringList logos = {"r4_logo.svg", "tovask_logo.svg"};

// Outlines only: no text, whose font the appliance may lack, and no style sheet or
// filter, which Qt does not draw.
const QSet<QString> drawingElements = {"svg", "g", "path"};

QStringList filesIn(const QString &folder)
{
    return QDir(folder).entryList(QDir::Files, QDir::Name);
}

QStringList sorted(QStringList names)
{
    names.sort();
    return names;
}

// Every icon file of the bundle.
QStringList iconPaths()
{
    QStringList paths;
    for (const char *folder : {":/vireling_style/icons/", ":/dark/vireling_style/icons/",
                               ":/light/vireling_style/icons/", ":/common/icons/"})
        for (const QString &name : filesIn(folder))
            paths << folder + name;
    return paths;
}

QImage rendered(const QString &path, const QSize &size)
{
    QImage picture(size, QImage::Format_ARGB32_Premultiplied);
    picture.fill(Qt::transparent);
    QPainter painter(&picture);
    QSvgRenderer(path).render(&painter);
    return picture;
}

bool isBlank(const QImage &picture)
{
    QImage blank(picture.size(), picture.format());
    blank.fill(Qt::transparent);
    return picture == blank;
}

qreal relativeLuminance(const QColor &colour)
{
    const auto linear = [](qreal channel) {
        return channel <= 0.04045 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

qreal contrast(const QColor &one, const QColor &other)
{
    const qreal first = relativeLuminance(one) + 0.05;
    const qreal second = relativeLuminance(other) + 0.05;
    return qMax(first, second) / qMin(first, second);
}

} // namespace

class TestResources : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void theBundleHoldsWhatTheToolkitShows();
    void registeringAgainChangesNothing();
    void everyPathResolvesInBothThemes_data();
    void everyPathResolvesInBothThemes();

    void iconsAreValidOnTheSameGrid_data();
    void iconsAreValidOnTheSameGrid();
    void windowsOwnLookIsWhiteOrDefaultBlack();
    void fileIconsReadOnBothThemes_data();
    void fileIconsReadOnBothThemes();

    void logosAreOutlinesInLandscape_data();
    void logosAreOutlinesInLandscape();
    void logosFillTheirBoxesInWholePixels_data();
    void logosFillTheirBoxesInWholePixels();
    void logosReadOnEveryGround_data();
    void logosReadOnEveryGround();
};

void TestResources::initTestCase()
{
    Vireling::initialiseResources();
}

void TestResources::theBundleHoldsWhatTheToolkitShows()
{
    QCOMPARE(filesIn(":/vireling_style/icons"), sorted(commonIcons));
    QCOMPARE(filesIn(":/dark/vireling_style/icons"), sorted(windowIcons));
    QCOMPARE(filesIn(":/light/vireling_style/icons"), sorted(windowIcons));
    QCOMPARE(filesIn(":/common/icons"), sorted(fileIcons));
    QCOMPARE(filesIn(":/images"), sorted(logos));
}

void TestResources::registeringAgainChangesNothing()
{
    Vireling::initialiseResources();
    QCOMPARE(filesIn(":/images"), sorted(logos));
}

void TestResources::everyPathResolvesInBothThemes_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::newRow("system") << Theme::System;
    QTest::newRow("dark") << Theme::Dark;
    QTest::newRow("light") << Theme::Light;
}

void TestResources::everyPathResolvesInBothThemes()
{
    QFETCH(Theme, theme);
    QDir::setSearchPaths("vireling", Vireling::themeSearchPaths(theme));
    for (const QString &name : commonIcons + windowIcons)
        QVERIFY2(QFile::exists("vireling:/vireling_style/icons/" + name), qPrintable(name));
    for (const QString &name : fileIcons)
        QVERIFY2(QFile::exists("vireling:/common/icons/" + name), qPrintable(name));
    for (const QString &name : logos)
        QVERIFY2(QFile::exists("vireling:/images/" + name), qPrintable(name));
}

void TestResources::iconsAreValidOnTheSameGrid_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &path : iconPaths())
        QTest::newRow(qPrintable(path)) << path;
}

void TestResources::iconsAreValidOnTheSameGrid()
{
    QFETCH(QString, path);
    const SvgContents contents = svgContents(path);
    QVERIFY(contents.wellFormed);
    QCOMPARE(contents.viewBox, QString("0 0 16 16"));
    QCOMPARE(contents.elements - drawingElements, QSet<QString>());
    const QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    QVERIFY(!renderer.animated());
    QCOMPARE(renderer.viewBox(), QRect(0, 0, 16, 16));
    QVERIFY(!isBlank(rendered(path, QSize(16, 16))));
}

void TestResources::windowsOwnLookIsWhiteOrDefaultBlack()
{
    for (const QString &name : windowIcons.filter("win_window_")) {
        const QString inTheme = "/vireling_style/icons/" + name;
        QCOMPARE(svgContents(":/dark" + inTheme).colours, QSet<QString>{"#fff"});
        QCOMPARE(svgContents(":/light" + inTheme).colours, QSet<QString>());
        // Without a colour of its own a shape is black: the same shape as in white.
        const QImage white = rendered(":/dark" + inTheme, QSize(32, 32));
        const QImage black = rendered(":/light" + inTheme, QSize(32, 32));
        QCOMPARE(white.convertToFormat(QImage::Format_Alpha8),
                 black.convertToFormat(QImage::Format_Alpha8));
    }
}

void TestResources::fileIconsReadOnBothThemes_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &name : fileIcons)
        QTest::newRow(qPrintable(name)) << ":/common/icons/" + name;
}

void TestResources::fileIconsReadOnBothThemes()
{
    QFETCH(QString, path);
    const QSet<QString> colours = svgContents(path).colours;
    QVERIFY(!colours.isEmpty());
    constexpr qreal enoughForGraphics = 3.0;
    for (const QString &colour : colours)
        for (const Theme theme : {Theme::Dark, Theme::Light}) {
            const QColor ground = Vireling::themePalette(theme).color(QPalette::Window);
            QVERIFY2(contrast(colour, ground) >= enoughForGraphics, qPrintable(colour));
        }
}

void TestResources::logosAreOutlinesInLandscape_data()
{
    QTest::addColumn<QString>("path");
    for (const QString &name : logos)
        QTest::newRow(qPrintable(name)) << ":/images/" + name;
}

void TestResources::logosAreOutlinesInLandscape()
{
    QFETCH(QString, path);
    const SvgContents contents = svgContents(path);
    QVERIFY(contents.wellFormed);
    QCOMPARE(contents.elements - drawingElements, QSet<QString>());
    const QSvgRenderer renderer(path);
    QVERIFY(renderer.isValid());
    QVERIFY(renderer.defaultSize().width() > renderer.defaultSize().height());
    QCOMPARE(renderer.viewBox(), QRect(QPoint(), renderer.defaultSize()));
}

void TestResources::logosFillTheirBoxesInWholePixels_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<int>("extent");
    QTest::newRow("the maker's") << ":/images/tovask_logo.svg" << 200;
    QTest::newRow("the product's") << ":/images/r4_logo.svg" << 300;
}

// A height between two pixels would be rounded here and cut there.
void TestResources::logosFillTheirBoxesInWholePixels()
{
    QFETCH(QString, path);
    QFETCH(int, extent);
    const QSizeF size = QSizeF(QSvgRenderer(path).defaultSize())
                            .scaled(QSizeF(extent, extent), Qt::KeepAspectRatio);
    QCOMPARE(size.width(), qreal(extent));
    QCOMPARE(size.height(), std::floor(size.height()));
}

void TestResources::logosReadOnEveryGround_data()
{
    logosAreOutlinesInLandscape_data();
}

// They carry a ground of their own: the middle of each edge and the box's inside
// are covered, whatever lies behind, and white letters stand on it.
void TestResources::logosReadOnEveryGround()
{
    QFETCH(QString, path);
    const QImage picture = rendered(path, QSvgRenderer(path).defaultSize());
    const int middleX = picture.width() / 2;
    const int middleY = picture.height() / 2;
    for (const QPoint &edge : {QPoint(middleX, 1), QPoint(middleX, picture.height() - 2),
                               QPoint(1, middleY), QPoint(picture.width() - 2, middleY)})
        QCOMPARE(picture.pixelColor(edge).alpha(), 255);

    const QColor ground = picture.pixelColor(middleX, picture.height() / 8);
    QCOMPARE(ground.alpha(), 255);
    QVERIFY(contrast(ground, Qt::white) >= 7.0);
    bool hasWhite = false;
    for (int x = 0; x < picture.width(); ++x)
        hasWhite |= picture.pixelColor(x, middleY) == QColor(Qt::white);
    QVERIFY(hasWhite);
}

QTEST_MAIN(TestResources)
#include "tst_resources.moc"
