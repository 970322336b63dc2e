#include "svg_attributes.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style_icon_engine/style_icon_engine.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QDataStream>
#include <QDir>
#include <QImage>
#include <QTemporaryDir>
#include <QtTest>

using Vireling::makeIcon;
using Vireling::StyleIcon;
using Vireling::styleIcon;
using Vireling::Theme;

Q_DECLARE_METATYPE(Vireling::StyleIcon)
Q_DECLARE_METATYPE(Vireling::Theme)

namespace {

constexpr int iconExtent = 16;

struct TableRow
{
    int index;
    StyleIcon icon;
    const char *fileName;
    const char *darkRoot;
    const char *lightRoot;
    const char *darkColour;
    const char *lightColour;
};

constexpr TableRow table[] = {
    {0, StyleIcon::ArrowDown, "arrow_down.svg", "", "", "#0072fd", "#0072fd"},
    {1, StyleIcon::ArrowLeft, "arrow_left.svg", "", "", "#0072fd", "#0072fd"},
    {2, StyleIcon::ArrowRight, "arrow_right.svg", "", "", "#0072fd", "#0072fd"},
    {3, StyleIcon::ArrowUp, "arrow_up.svg", "", "", "#0072fd", "#0072fd"},
    {4, StyleIcon::EditClear, "edit_clear.svg", "", "", "#0072fd", "#0072fd"},
    {5, StyleIcon::ExpandDown, "expand_down.svg", "", "", "#77808a", "#77808a"},
    {6, StyleIcon::ExpandLeft, "expand_left.svg", "", "", "#77808a", "#77808a"},
    {7, StyleIcon::ExpandRight, "expand_right.svg", "", "", "#77808a", "#77808a"},
    {8, StyleIcon::ExpandUp, "expand_up.svg", "", "", "#77808a", "#77808a"},
    {9, StyleIcon::WindowClose, "window_close.svg", "/dark", "/light", "#fff", "#3c4147"},
    {10, StyleIcon::WindowMaximise, "window_maximise.svg", "/dark", "/light", "#fff", "#3c4147"},
    {11, StyleIcon::WindowMinimise, "window_minimise.svg", "/dark", "/light", "#fff", "#3c4147"},
    {12, StyleIcon::WindowRestore, "window_restore.svg", "/dark", "/light", "#fff", "#3c4147"},
};

void useTheme(Theme theme)
{
    QDir::setSearchPaths("vireling", Vireling::themeSearchPaths(theme));
}

QString styledPath(const QString &fileName)
{
    return "vireling:/vireling_style/icons/" + fileName;
}

QByteArray bytesOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

// An icon writes its engine's key first.
QString engineKeyOf(const QIcon &icon)
{
    QByteArray bytes;
    {
        QDataStream out(&bytes, QIODevice::WriteOnly);
        out << icon;
    }
    QDataStream in(bytes);
    QString key;
    in >> key;
    return key;
}

QImage pictureOf(const QIcon &icon, int extent = iconExtent)
{
    return icon.pixmap(QSize(extent, extent), QIcon::Active, QIcon::Off)
        .toImage()
        .convertToFormat(QImage::Format_ARGB32);
}

// Where the eye sees something: pixels covered by a quarter at least.
QRect visibleBounds(const QImage &picture)
{
    constexpr int visibleAlpha = 64;
    QRect bounds;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            if (qAlpha(picture.pixel(x, y)) >= visibleAlpha)
                bounds |= QRect(x, y, 1, 1);
    return bounds;
}

} // namespace

class TestStyleIcons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();

    void theTableHasThirteenIcons();
    void everyIconComesFromItsThemesFile_data();
    void everyIconComesFromItsThemesFile();
    void everyIconIsDrawnAndCentred_data();
    void everyIconIsDrawnAndCentred();
    void everyIconOfTheTableIsItsFile_data() { everyIconComesFromItsThemesFile_data(); }
    void everyIconOfTheTableIsItsFile();
    void mirroredIconsAreMirrored_data();
    void mirroredIconsAreMirrored();
    void anIconIsBuiltOnce();
    void aChangeOfThemeShowsTheNewThemesFile();
    void whatIsNoIconIsNull();

    void theEndingChoosesTheEngine_data();
    void theEndingChoosesTheEngine();
};

void TestStyleIcons::initTestCase()
{
    Vireling::initialiseResources();
    useTheme(Theme::Dark);
}

void TestStyleIcons::theTableHasThirteenIcons()
{
    QCOMPARE(int(StyleIcon::NStyleIcons), 13);
    QCOMPARE(int(std::size(table)), 13);
    for (int i = 0; i < 13; ++i) {
        QCOMPARE(table[i].index, i);
        QCOMPARE(int(table[i].icon), i);
    }
}

void TestStyleIcons::everyIconComesFromItsThemesFile_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::addColumn<StyleIcon>("icon");
    QTest::addColumn<QString>("fileName");
    QTest::addColumn<QString>("root");
    QTest::addColumn<QString>("colour");
    for (const TableRow &row : table) {
        QTest::addRow("dark %s", row.fileName)
            << Theme::Dark << row.icon << row.fileName << row.darkRoot << row.darkColour;
        QTest::addRow("light %s", row.fileName)
            << Theme::Light << row.icon << row.fileName << row.lightRoot << row.lightColour;
    }
}

void TestStyleIcons::everyIconComesFromItsThemesFile()
{
    QFETCH(Theme, theme);
    QFETCH(QString, fileName);
    QFETCH(QString, root);
    QFETCH(QString, colour);

    useTheme(theme);
    const QString path = styledPath(fileName);
    const QByteArray found = bytesOf(path);
    QVERIFY(!found.isEmpty());
    QCOMPARE(found, bytesOf(":" + root + "/vireling_style/icons/" + fileName));
    QCOMPARE(svgContents(path).colours, QSet<QString>{colour});

    // Untinted, the strongest pixel has the file's own colour.
    const QImage picture = pictureOf(makeIcon(path), 64);
    bool isColourThere = false;
    for (int y = 0; y < picture.height(); ++y)
        for (int x = 0; x < picture.width(); ++x)
            isColourThere |= picture.pixelColor(x, y) == QColor(colour);
    QVERIFY(isColourThere);
}

void TestStyleIcons::everyIconIsDrawnAndCentred_data()
{
    everyIconComesFromItsThemesFile_data();
}

void TestStyleIcons::everyIconIsDrawnAndCentred()
{
    QFETCH(Theme, theme);
    QFETCH(QString, fileName);

    useTheme(theme);
    const QRect bounds = visibleBounds(pictureOf(makeIcon(styledPath(fileName))));
    QVERIFY(!bounds.isEmpty());
    // A shape cut off at the edge of its box would touch it.
    QVERIFY(bounds.left() > 0 && bounds.top() > 0);
    QVERIFY(bounds.right() < iconExtent - 1 && bounds.bottom() < iconExtent - 1);
    const qreal right = iconExtent - 1 - bounds.right();
    const qreal bottom = iconExtent - 1 - bounds.bottom();
    QVERIFY(qAbs(bounds.left() - right) <= 1.0);
    QVERIFY(qAbs(bounds.top() - bottom) <= 1.0);
}

// The table's icons are built once a process, here in the dark theme.
void TestStyleIcons::everyIconOfTheTableIsItsFile()
{
    QFETCH(StyleIcon, icon);
    QFETCH(QString, fileName);

    useTheme(Theme::Dark);
    const QIcon ofTable = styleIcon(icon);
    QVERIFY(!ofTable.isNull());
    QCOMPARE(engineKeyOf(ofTable), QString("VirelingStyleIconEngine"));
    QCOMPARE(pictureOf(ofTable), pictureOf(makeIcon(styledPath(fileName))));
}

void TestStyleIcons::mirroredIconsAreMirrored_data()
{
    QTest::addColumn<QString>("one");
    QTest::addColumn<QString>("other");
    QTest::addColumn<bool>("horizontally");
    QTest::newRow("arrow left, right") << "arrow_left.svg"
                                       << "arrow_right.svg" << true;
    QTest::newRow("arrow up, down") << "arrow_up.svg"
                                    << "arrow_down.svg" << false;
    QTest::newRow("expand left, right") << "expand_left.svg"
                                        << "expand_right.svg" << true;
    QTest::newRow("expand up, down") << "expand_up.svg"
                                     << "expand_down.svg" << false;
}

void TestStyleIcons::mirroredIconsAreMirrored()
{
    QFETCH(QString, one);
    QFETCH(QString, other);
    QFETCH(bool, horizontally);

    const QRect bounds = visibleBounds(pictureOf(makeIcon(styledPath(one)), 64));
    const QRect mirrored = visibleBounds(
        pictureOf(makeIcon(styledPath(other)), 64).mirrored(horizontally, !horizontally));
    QCOMPARE(mirrored, bounds);
}

void TestStyleIcons::anIconIsBuiltOnce()
{
    const QIcon first = styleIcon(StyleIcon::ArrowUp);
    const QIcon second = styleIcon(StyleIcon::ArrowUp);
    QCOMPARE(first.cacheKey(), second.cacheKey());
    QVERIFY(first.cacheKey() != styleIcon(StyleIcon::ArrowDown).cacheKey());
}

void TestStyleIcons::aChangeOfThemeShowsTheNewThemesFile()
{
    const QIcon close = styleIcon(StyleIcon::WindowClose);
    const QImage dark = pictureOf(close);
    useTheme(Theme::Light);
    Vireling::reloadStyleIcons();
    const QImage light = pictureOf(close);
    useTheme(Theme::Dark);
    Vireling::reloadStyleIcons();

    const QPoint stroke(8, 8);
    QCOMPARE(dark.pixelColor(stroke), QColor("#ffffff"));
    QCOMPARE(light.pixelColor(stroke), QColor("#3c4147"));
    QCOMPARE(pictureOf(close), dark);
}

void TestStyleIcons::whatIsNoIconIsNull()
{
    QVERIFY(styleIcon(StyleIcon::NStyleIcons).isNull());
    QVERIFY(styleIcon(StyleIcon(14)).isNull());
    QVERIFY(styleIcon(StyleIcon(-1)).isNull());
}

void TestStyleIcons::theEndingChoosesTheEngine_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isStyled");
    QTest::newRow("svg") << "icon.svg" << true;
    QTest::newRow("upper-case SVG") << "ICON.SVG" << true;
    QTest::newRow("mixed-case Svg") << "Icon.Svg" << true;
    QTest::newRow("png") << "icon.png" << false;
    QTest::newRow("svg in the middle") << "icon.svg.png" << false;
}

void TestStyleIcons::theEndingChoosesTheEngine()
{
    QFETCH(QString, name);
    QFETCH(bool, isStyled);

    QTemporaryDir folder;
    const QString path = folder.filePath(name);
    if (isStyled) {
        QVERIFY(QFile::copy(":/vireling_style/icons/edit_clear.svg", path));
    } else {
        QImage picture(iconExtent, iconExtent, QImage::Format_ARGB32);
        picture.fill(Qt::red);
        QVERIFY(picture.save(path, "PNG"));
    }

    const QIcon icon = makeIcon(path);
    QCOMPARE(engineKeyOf(icon) == "VirelingStyleIconEngine", isStyled);
    QCOMPARE(pictureOf(icon).size(), QSize(iconExtent, iconExtent));
}

QTEST_MAIN(TestStyleIcons)
#include "tst_style_icons.moc"
