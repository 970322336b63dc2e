#include "vireling/palette/theme.h"
#include "vireling/style/elements/header.h"
#include "vireling/style/style.h"

#include "style_pixels.h"

#include <QtTest>
#include <QtWidgets>

using namespace Vireling;
using TestSupport::count;
using TestSupport::isFilled;

namespace {

constexpr int itemHeight = 24;

QIcon makeIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return pixmap;
}

} // namespace

class TestStyleHeaders : public QObject
{
    Q_OBJECT

private slots:
    void headerPartsLieInTheSectionAndApart_data();
    void headerPartsLieInTheSectionAndApart();
    void aSectionHasRoomForItsMark();
    void headersLineUpWithTheTextBelow();
    void aLongHeadingIsCutBeforeTheMark();
    void theMarkPointsTheWayOfTheSort();
    void sectionsAreParted_data();
    void sectionsAreParted();
    void theLastSectionNeedsNoLineAtTheFrame();
    void aSectionTellsOfPointerPressAndSelection();
    void theEmptyAreaContinuesTheHeader();
    void optionsOfAnotherKindAreNotHandled();

private:
    Style style{themePalette(Theme::Dark)};

    QColor role(ColourRole which) const { return style.palette().colour(QPalette::Active, which); }
    QColor role(QPalette::ColorRole which) const { return style.standardPalette().color(which); }

    QStyleOptionHeader makeSection(Qt::Orientation orientation);
    QImage blank(const QStyleOption &option) const;
    QImage paint(const QStyleOptionHeader &section, const QWidget *view = nullptr) const;
};

QStyleOptionHeader TestStyleHeaders::makeSection(Qt::Orientation orientation)
{
    QHeaderView header(orientation);
    style.polish(&header);
    QStyleOptionHeader section;
    section.rect = QRect(0, 0, 100, itemHeight);
    section.state = QStyle::State_Enabled | QStyle::State_Active;
    section.palette = header.palette();
    section.orientation = orientation;
    section.textAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    return section;
}

QImage TestStyleHeaders::blank(const QStyleOption &option) const
{
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(option.palette.color(QPalette::Base));
    return image;
}

QImage TestStyleHeaders::paint(const QStyleOptionHeader &section, const QWidget *view) const
{
    QImage image = blank(section);
    QPainter painter(&image);
    style.drawControl(QStyle::CE_Header, &section, &painter, view);
    return image;
}

void TestStyleHeaders::headerPartsLieInTheSectionAndApart_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<int>("width");
    QTest::newRow("horizontal") << Qt::Horizontal << 100;
    QTest::newRow("vertical") << Qt::Vertical << 100;
    QTest::newRow("narrow") << Qt::Horizontal << 40;
}

void TestStyleHeaders::headerPartsLieInTheSectionAndApart()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(int, width);
    QStyleOptionHeader section = makeSection(orientation);
    section.rect = QRect(50, 7, width, itemHeight);
    section.sortIndicator = QStyleOptionHeader::SortDown;
    const QRect label = style.subElementRect(QStyle::SE_HeaderLabel, &section);
    const QRect arrow = style.subElementRect(QStyle::SE_HeaderArrow, &section);
    QCOMPARE(arrow.size(), QSize(12, 12));
    QVERIFY(section.rect.contains(label));
    QVERIFY(section.rect.contains(arrow));
    QVERIFY(label.right() < arrow.left());

    section.direction = Qt::RightToLeft;
    QCOMPARE(style.subElementRect(QStyle::SE_HeaderLabel, &section),
             QStyle::visualRect(Qt::RightToLeft, section.rect, label));
    QCOMPARE(style.subElementRect(QStyle::SE_HeaderArrow, &section),
             QStyle::visualRect(Qt::RightToLeft, section.rect, arrow));
}

void TestStyleHeaders::aSectionHasRoomForItsMark()
{
    QStyleOptionHeader section = makeSection(Qt::Horizontal);
    section.text = QStringLiteral("Report");
    const int unsorted = style.sizeFromContents(QStyle::CT_HeaderSection, &section, {}).width();
    section.sortIndicator = QStyleOptionHeader::SortUp;
    section.icon = makeIcon();
    section.rect.setSize(style.sizeFromContents(QStyle::CT_HeaderSection, &section, {}));
    QCOMPARE(section.rect.width(), unsorted + (3 + 12) + (3 + 16));
    const QRect label = style.subElementRect(QStyle::SE_HeaderLabel, &section);
    QVERIFY(label.width() >= 16 + 3 + section.fontMetrics.horizontalAdvance(section.text));
    QVERIFY(section.rect.height() >= 16 + 2 * 3);
}

void TestStyleHeaders::headersLineUpWithTheTextBelow()
{
    QStyleOptionViewItem item;
    item.rect = QRect(0, 0, 100, itemHeight);
    item.features = QStyleOptionViewItem::HasDisplay;
    const QStyleOptionHeader section = makeSection(Qt::Horizontal);
    QCOMPARE(style.subElementRect(QStyle::SE_HeaderLabel, &section).left(),
             style.subElementRect(QStyle::SE_ItemViewItemText, &item).left() +
                 1); // QCommonStyle's margin of the text
}

void TestStyleHeaders::aLongHeadingIsCutBeforeTheMark()
{
    QStyleOptionHeader section = makeSection(Qt::Horizontal);
    section.sortIndicator = QStyleOptionHeader::SortDown;
    const QImage without = paint(section);
    section.text = QString(100, QLatin1Char('W'));
    const QImage with = paint(section);
    const QRect label = style.subElementRect(QStyle::SE_HeaderLabel, &section);
    QVERIFY(with.copy(label) != without.copy(label));
    const QRect behind(label.right() + 1, 0, section.rect.right() - label.right(), itemHeight);
    QCOMPARE(with.copy(behind), without.copy(behind));
}

void TestStyleHeaders::theMarkPointsTheWayOfTheSort()
{
    QStyleOptionHeader section = makeSection(Qt::Horizontal);
    const QImage unsorted = paint(section);
    section.sortIndicator = QStyleOptionHeader::SortUp;
    const QImage up = paint(section);
    section.sortIndicator = QStyleOptionHeader::SortDown;
    const QImage down = paint(section);
    QVERIFY(up != down);
    QVERIFY(up != unsorted);
    QVERIFY(down != unsorted);
}

void TestStyleHeaders::sectionsAreParted_data()
{
    QTest::addColumn<Qt::Orientation>("orientation");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("horizontal") << Qt::Horizontal << Qt::LeftToRight;
    QTest::newRow("horizontal, right to left") << Qt::Horizontal << Qt::RightToLeft;
    QTest::newRow("vertical") << Qt::Vertical << Qt::LeftToRight;
    QTest::newRow("vertical, right to left") << Qt::Vertical << Qt::RightToLeft;
}

void TestStyleHeaders::sectionsAreParted()
{
    QFETCH(Qt::Orientation, orientation);
    QFETCH(Qt::LayoutDirection, direction);
    QStyleOptionHeader section = makeSection(orientation);
    section.direction = direction;
    const QImage image = paint(section);
    const QRect side = QStyle::visualRect(direction, section.rect, QRect(99, 0, 1, itemHeight));
    QVERIFY(isFilled(image, role(ColourRole::Frame), side));
    QVERIFY(isFilled(image, role(ColourRole::Frame), QRect(0, itemHeight - 1, 100, 1)));
    QCOMPARE(count(image, role(ColourRole::HeaderBase)), 99 * (itemHeight - 1));
}

void TestStyleHeaders::theLastSectionNeedsNoLineAtTheFrame()
{
    QHeaderView header(Qt::Horizontal);
    style.polish(&header);
    header.resize(100, itemHeight);
    header.viewport()->resize(100, itemHeight);
    QStyleOptionHeader section = makeSection(Qt::Horizontal);
    const QRect end(99, 0, 1, itemHeight - 1);
    QVERIFY(isFilled(paint(section, &header), role(ColourRole::HeaderBase), end));
    section.rect.setWidth(80);
    QVERIFY(isFilled(paint(section, &header), role(ColourRole::Frame), end.translated(-20, 0)));
}

void TestStyleHeaders::aSectionTellsOfPointerPressAndSelection()
{
    QStyleOptionHeader section = makeSection(Qt::Horizontal);
    const QStyle::State idle = section.state;
    QList<QColor> surfaces;
    for (const QStyle::State state : {QStyle::State(), QStyle::State(QStyle::State_MouseOver),
                                      QStyle::State(QStyle::State_Sunken)}) {
        section.state = idle | state;
        const QColor surface = paint(section).pixelColor(20, 5);
        QVERIFY(!surfaces.contains(surface));
        surfaces.append(surface);
    }
    section.state = idle | QStyle::State_On;
    const QImage selected = paint(section);
    QCOMPARE(selected.pixelColor(20, 5), role(ColourRole::HeaderBase));
    QVERIFY(isFilled(selected, role(QPalette::Highlight), QRect(0, itemHeight - 2, 100, 2)));
}

void TestStyleHeaders::theEmptyAreaContinuesTheHeader()
{
    QStyleOption area;
    area.palette = makeSection(Qt::Horizontal).palette;
    area.rect = QRect(0, 0, 100, itemHeight);
    area.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Horizontal;
    QImage image = blank(area);
    QPainter painter(&image);
    style.drawControl(QStyle::CE_HeaderEmptyArea, &area, &painter);
    QVERIFY(isFilled(image, role(ColourRole::HeaderBase), QRect(0, 0, 100, itemHeight - 1)));
    QVERIFY(isFilled(image, role(ColourRole::Frame), QRect(0, itemHeight - 1, 100, 1)));
}

void TestStyleHeaders::optionsOfAnotherKindAreNotHandled()
{
    QImage image(20, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    const QStyleOptionButton wrong;
    const ElementContext context{style, wrong, nullptr, &painter};
    QVERIFY(!paintHeaderLabel(context));
    QVERIFY(!paintHeaderArrow(context));
    QVERIFY(!headerPart(context, QStyle::SE_HeaderLabel));
    QVERIFY(!headerSectionSize(context, QSize()));
}

QTEST_MAIN(TestStyleHeaders)
#include "tst_style_headers.moc"
