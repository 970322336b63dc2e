#include "vireling/style/style.h"

#include "support/style_dpi.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>

using namespace Vireling;

Q_DECLARE_METATYPE(QStyleOptionViewItem::Position)

namespace {

constexpr int itemWidth = 200;
constexpr int itemHeight = 24;

QIcon makeIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::red);
    return pixmap;
}

struct Parts
{
    QRect check;
    QRect icon;
    QRect text;
};

Parts partsOf(const Style &style, const QStyleOptionViewItem &item)
{
    return {style.subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item),
            style.subElementRect(QStyle::SE_ItemViewItemDecoration, &item),
            style.subElementRect(QStyle::SE_ItemViewItemText, &item)};
}

QStyleOptionViewItem makeItem()
{
    QStyleOptionViewItem item;
    item.rect = QRect(0, 0, itemWidth, itemHeight);
    item.state = QStyle::State_Enabled | QStyle::State_Active;
    item.showDecorationSelected = true;
    item.decorationSize = QSize(16, 16);
    item.decorationAlignment = Qt::AlignCenter;
    item.displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    return item;
}

QStyleOptionViewItem filled(QStyleOptionViewItem::Position position, bool checkable)
{
    QStyleOptionViewItem item = makeItem();
    item.decorationPosition = position;
    item.features |= QStyleOptionViewItem::HasDecoration | QStyleOptionViewItem::HasDisplay;
    if (checkable)
        item.features |= QStyleOptionViewItem::HasCheckIndicator;
    item.text = QStringLiteral("Crash report of today");
    item.icon = makeIcon();
    return item;
}

} // namespace

class TestStyleItemLayout : public QObject
{
    Q_OBJECT

private slots:
    void partsLieInTheItemAndApart_data();
    void partsLieInTheItemAndApart();
    void partsLieInAnItemTooSmallForThem();
    void rightToLeftMirrorsEveryPart_data();
    void rightToLeftMirrorsEveryPart();
    void theSizeHoldsEveryPart_data();
    void theSizeHoldsEveryPart();
    void rowsWithAndWithoutAnIconAreEquallyHigh();
    void aWrappedTextMakesTheItemHigher();
    void twiceTheDensityTakesTwiceTheRoom();

private:
    const Style style;
};

void TestStyleItemLayout::partsLieInTheItemAndApart_data()
{
    QTest::addColumn<QStyleOptionViewItem::Position>("position");
    QTest::addColumn<bool>("checkable");
    QTest::newRow("left") << QStyleOptionViewItem::Left << false;
    QTest::newRow("right") << QStyleOptionViewItem::Right << false;
    QTest::newRow("top") << QStyleOptionViewItem::Top << false;
    QTest::newRow("bottom") << QStyleOptionViewItem::Bottom << false;
    QTest::newRow("left, checkable") << QStyleOptionViewItem::Left << true;
    QTest::newRow("right, checkable") << QStyleOptionViewItem::Right << true;
    QTest::newRow("top, checkable") << QStyleOptionViewItem::Top << true;
    QTest::newRow("bottom, checkable") << QStyleOptionViewItem::Bottom << true;
}

void TestStyleItemLayout::partsLieInTheItemAndApart()
{
    QFETCH(QStyleOptionViewItem::Position, position);
    QFETCH(bool, checkable);
    QStyleOptionViewItem item = filled(position, checkable);
    item.rect = QRect(30, 10, itemWidth, 60);
    const Parts parts = partsOf(style, item);
    QCOMPARE(parts.check.isEmpty(), !checkable);
    QCOMPARE(parts.icon.size(), item.decorationSize);
    for (const QRect &part : {parts.icon, parts.text})
        QVERIFY(item.rect.contains(part));
    QVERIFY(!parts.icon.intersects(parts.text));
    QVERIFY(!parts.check.intersects(parts.text));
    QVERIFY(!parts.check.intersects(parts.icon));
    if (checkable)
        QVERIFY(item.rect.contains(parts.check));
    switch (position) {
    case QStyleOptionViewItem::Left:
        QVERIFY(parts.icon.right() < parts.text.left());
        break;
    case QStyleOptionViewItem::Right:
        QVERIFY(parts.icon.left() > parts.text.right());
        break;
    case QStyleOptionViewItem::Top:
        QVERIFY(parts.icon.bottom() < parts.text.top());
        break;
    case QStyleOptionViewItem::Bottom:
        QVERIFY(parts.icon.top() > parts.text.bottom());
        break;
    }
}

void TestStyleItemLayout::partsLieInAnItemTooSmallForThem()
{
    for (const QSize &size : {QSize(0, 0), QSize(5, 5), QSize(20, 8), QSize(30, 200)})
        for (const auto position : {QStyleOptionViewItem::Left, QStyleOptionViewItem::Right,
                                    QStyleOptionViewItem::Top, QStyleOptionViewItem::Bottom}) {
            QStyleOptionViewItem item = filled(position, true);
            item.rect.setSize(size);
            const Parts parts = partsOf(style, item);
            for (const QRect &part : {parts.check, parts.icon, parts.text})
                QVERIFY(part.isEmpty() || item.rect.contains(part));
        }
}

void TestStyleItemLayout::rightToLeftMirrorsEveryPart_data()
{
    partsLieInTheItemAndApart_data();
}

void TestStyleItemLayout::rightToLeftMirrorsEveryPart()
{
    QFETCH(QStyleOptionViewItem::Position, position);
    QFETCH(bool, checkable);
    QStyleOptionViewItem item = filled(position, checkable);
    item.rect = QRect(30, 10, itemWidth, 60);
    const Parts there = partsOf(style, item);
    item.direction = Qt::RightToLeft;
    const Parts back = partsOf(style, item);
    const auto mirrored = [&](const QRect &part) {
        return QStyle::visualRect(Qt::RightToLeft, item.rect, part);
    };
    if (checkable)
        QCOMPARE(back.check, mirrored(there.check));
    QCOMPARE(back.icon, mirrored(there.icon));
    QCOMPARE(back.text, mirrored(there.text));
}

void TestStyleItemLayout::theSizeHoldsEveryPart_data()
{
    partsLieInTheItemAndApart_data();
}

void TestStyleItemLayout::theSizeHoldsEveryPart()
{
    QFETCH(QStyleOptionViewItem::Position, position);
    QFETCH(bool, checkable);
    QStyleOptionViewItem item = filled(position, checkable);
    item.rect = QRect();
    item.rect = QRect(QPoint(0, 0), style.sizeFromContents(QStyle::CT_ItemViewItem, &item, {}));
    const Parts parts = partsOf(style, item);
    QCOMPARE(parts.icon.size(), item.decorationSize);
    QVERIFY(parts.text.width() >= item.fontMetrics.horizontalAdvance(item.text) + 2);
    QVERIFY(parts.text.height() >= item.fontMetrics.height());
    if (checkable)
        QCOMPARE(parts.check.size(), QSize(12, 12));
}

void TestStyleItemLayout::rowsWithAndWithoutAnIconAreEquallyHigh()
{
    const QStyleOptionViewItem bare = makeItem();
    QStyleOptionViewItem text = makeItem();
    text.features = QStyleOptionViewItem::HasDisplay;
    text.text = QStringLiteral("Text");
    const QStyleOptionViewItem all = filled(QStyleOptionViewItem::Left, true);
    for (const QStyleOptionViewItem &item : {bare, text, all})
        QCOMPARE(style.sizeFromContents(QStyle::CT_ItemViewItem, &item, {}).height(),
                 std::max(16, item.fontMetrics.height()) + 2 * 4);
}

void TestStyleItemLayout::aWrappedTextMakesTheItemHigher()
{
    QStyleOptionViewItem item = filled(QStyleOptionViewItem::Left, true);
    item.text = QStringLiteral("A text of quite some words that does not go into one line");
    item.rect = QRect(0, 0, 120, itemHeight);
    const int oneLine = style.sizeFromContents(QStyle::CT_ItemViewItem, &item, {}).height();
    item.features |= QStyleOptionViewItem::WrapText;
    const QSize wrapped = style.sizeFromContents(QStyle::CT_ItemViewItem, &item, {});
    QVERIFY(wrapped.height() >= oneLine + 2 * item.fontMetrics.height());
    QVERIFY(wrapped.width() <= item.rect.width());
}

void TestStyleItemLayout::twiceTheDensityTakesTwiceTheRoom()
{
    QStyleOptionViewItem item = filled(QStyleOptionViewItem::Left, true);
    item.rect = QRect(0, 0, 400, 48);
    item.decorationSize = QSize(32, 32);
    item.fontMetrics = TestSupport::fontMetricsAt(192);
    const Parts parts = partsOf(style, item);
    QCOMPARE(parts.check, QRect(16, 12, 24, 24));
    QCOMPARE(parts.icon, QRect(52, 8, 32, 32));
    QCOMPARE(parts.text.left(), 96);
    QCOMPARE(parts.text.right(), 383);
}

QTEST_MAIN(TestStyleItemLayout)
#include "tst_style_item_layout.moc"
