#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style.h"
#include "vireling/style_icon_engine/style_icons.h"

#include <QApplication>
#include <QMetaEnum>
#include <QStyleOption>
#include <QtTest>

#include <algorithm>

using namespace Vireling;

namespace {

struct IconRow
{
    QStyle::StandardPixmap standard;
    StyleIcon leftToRight;
    StyleIcon rightToLeft;
};

constexpr IconRow iconTable[] = {
    {QStyle::SP_ArrowUp, StyleIcon::ArrowUp, StyleIcon::ArrowUp},
    {QStyle::SP_ArrowDown, StyleIcon::ArrowDown, StyleIcon::ArrowDown},
    {QStyle::SP_ArrowLeft, StyleIcon::ArrowLeft, StyleIcon::ArrowLeft},
    {QStyle::SP_ArrowRight, StyleIcon::ArrowRight, StyleIcon::ArrowRight},
    {QStyle::SP_ArrowBack, StyleIcon::ArrowLeft, StyleIcon::ArrowRight},
    {QStyle::SP_ArrowForward, StyleIcon::ArrowRight, StyleIcon::ArrowLeft},
    {QStyle::SP_ToolBarHorizontalExtensionButton, StyleIcon::ExpandRight, StyleIcon::ExpandLeft},
    {QStyle::SP_ToolBarVerticalExtensionButton, StyleIcon::ExpandDown, StyleIcon::ExpandDown},
    {QStyle::SP_LineEditClearButton, StyleIcon::EditClear, StyleIcon::EditClear},
    {QStyle::SP_TitleBarCloseButton, StyleIcon::WindowClose, StyleIcon::WindowClose},
    {QStyle::SP_DockWidgetCloseButton, StyleIcon::WindowClose, StyleIcon::WindowClose},
    {QStyle::SP_TitleBarMaxButton, StyleIcon::WindowMaximise, StyleIcon::WindowMaximise},
    {QStyle::SP_TitleBarMinButton, StyleIcon::WindowMinimise, StyleIcon::WindowMinimise},
    {QStyle::SP_TitleBarNormalButton, StyleIcon::WindowRestore, StyleIcon::WindowRestore},
};

bool isInTable(QStyle::StandardPixmap standard)
{
    return std::any_of(std::begin(iconTable), std::end(iconTable),
                       [standard](const IconRow &row) { return row.standard == standard; });
}

QImage imageOf(const QIcon &icon)
{
    return icon.pixmap(32, 32).toImage();
}

} // namespace

class TestStyleStandardIcons : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void arrowsClearAndWindowControlsAreOfTheTable_data();
    void arrowsClearAndWindowControlsAreOfTheTable();
    void everyOtherIconIsQCommonStyles_data();
    void everyOtherIconIsQCommonStyles();
    void withoutAnOptionTheApplicationsDirectionCounts();
};

void TestStyleStandardIcons::initTestCase()
{
    initialiseResources();
    installAppearance(Theme::Dark);
}

void TestStyleStandardIcons::arrowsClearAndWindowControlsAreOfTheTable_data()
{
    QTest::addColumn<int>("row");
    int index = 0;
    for (const IconRow &row : iconTable)
        QTest::newRow(QMetaEnum::fromType<QStyle::StandardPixmap>().valueToKey(row.standard))
            << index++;
}

void TestStyleStandardIcons::arrowsClearAndWindowControlsAreOfTheTable()
{
    QFETCH(int, row);
    const IconRow &expected = iconTable[row];
    const Style style;
    QStyleOption option;
    option.direction = Qt::LeftToRight;
    const QIcon leftToRight = style.standardIcon(expected.standard, &option);
    QVERIFY(!imageOf(leftToRight).isNull());
    QCOMPARE(imageOf(leftToRight), imageOf(styleIcon(expected.leftToRight)));
    option.direction = Qt::RightToLeft;
    QCOMPARE(imageOf(style.standardIcon(expected.standard, &option)),
             imageOf(styleIcon(expected.rightToLeft)));
}

void TestStyleStandardIcons::everyOtherIconIsQCommonStyles_data()
{
    QTest::addColumn<int>("standard");
    const QMetaEnum icons = QMetaEnum::fromType<QStyle::StandardPixmap>();
    for (int i = 0; i < icons.keyCount(); ++i)
        if (!isInTable(QStyle::StandardPixmap(icons.value(i))))
            QTest::newRow(icons.key(i)) << icons.value(i);
}

void TestStyleStandardIcons::everyOtherIconIsQCommonStyles()
{
    QFETCH(int, standard);
    const auto which = QStyle::StandardPixmap(standard);
    const Style style;
    QCOMPARE(imageOf(style.standardIcon(which)), imageOf(style.QCommonStyle::standardIcon(which)));
}

void TestStyleStandardIcons::withoutAnOptionTheApplicationsDirectionCounts()
{
    const Style style;
    QGuiApplication::setLayoutDirection(Qt::RightToLeft);
    const QImage back = imageOf(style.standardIcon(QStyle::SP_ArrowBack));
    QGuiApplication::setLayoutDirection(Qt::LeftToRight);
    QCOMPARE(back, imageOf(styleIcon(StyleIcon::ArrowRight)));
}

QTEST_MAIN(TestStyleStandardIcons)
#include "tst_style_standard_icons.moc"
