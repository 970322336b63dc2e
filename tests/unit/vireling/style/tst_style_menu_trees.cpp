#include "vireling/palette/theme.h"
#include "vireling/style/elements/menu.h"
#include "vireling/style/style.h"
#include "vireling/style/tree_menu_item.h"

#include "style_pixels.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

using namespace Vireling;
using TestSupport::isFilled;

class TestStyleMenuTrees : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void aLevelMovesIconAndNameIn_data();
    void aLevelMovesIconAndNameIn();
    void rightToLeftTheyMoveFromTheRight();
    void theRowGrowsByItsIndentation();
    void aDeepRowKeepsHalfOfItselfForItsName();
    void theHighlightKeepsTheWholeRow();
    void aPlainMenuItemHasNoLevel();

private:
    TreeMenuItemOption row(int level) const;
    MenuItemParts partsOf(const QStyleOptionMenuItem &item) const
    {
        return menuItemParts({*style, item, nullptr}, item);
    }
    int step() const { return style->pixelMetric(QStyle::PM_TreeViewIndentation); }

    std::unique_ptr<Style> style;
};

void TestStyleMenuTrees::init()
{
    style = std::make_unique<Style>(themePalette(Theme::Dark));
}

TreeMenuItemOption TestStyleMenuTrees::row(int level) const
{
    TreeMenuItemOption item;
    item.palette = style->standardPalette();
    item.state = QStyle::State_Enabled | QStyle::State_Active;
    item.menuHasCheckableItems = false;
    item.maxIconWidth = 16;
    item.text = QStringLiteral("shows");
    item.rect = QRect(0, 0, 400, 26);
    item.level = level;
    return item;
}

void TestStyleMenuTrees::aLevelMovesIconAndNameIn_data()
{
    QTest::addColumn<int>("level");
    for (const int level : {0, 1, 2, 5})
        QTest::addRow("%d", level) << level;
}

void TestStyleMenuTrees::aLevelMovesIconAndNameIn()
{
    QFETCH(int, level);
    const MenuItemParts root = partsOf(row(0));
    const MenuItemParts moved = partsOf(row(level));
    QVERIFY(step() > 0);
    QCOMPARE(moved.icon, root.icon.translated(level * step(), 0));
    QCOMPARE(moved.text.left(), root.text.left() + level * step());
    QCOMPARE(moved.text.right(), root.text.right());
}

void TestStyleMenuTrees::rightToLeftTheyMoveFromTheRight()
{
    TreeMenuItemOption item = row(3);
    const MenuItemParts there = partsOf(item);
    item.direction = Qt::RightToLeft;
    const MenuItemParts back = partsOf(item);
    QCOMPARE(back.icon, QStyle::visualRect(Qt::RightToLeft, item.rect, there.icon));
    QCOMPARE(back.text, QStyle::visualRect(Qt::RightToLeft, item.rect, there.text));
}

void TestStyleMenuTrees::theRowGrowsByItsIndentation()
{
    const auto sizeOf = [this](int level) {
        const TreeMenuItemOption item = row(level);
        return style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(40, 14), nullptr);
    };
    QCOMPARE(sizeOf(4), sizeOf(0) + QSize(4 * step(), 0));
}

void TestStyleMenuTrees::aDeepRowKeepsHalfOfItselfForItsName()
{
    const TreeMenuItemOption item = row(1000);
    const MenuItemParts parts = partsOf(item);
    QVERIFY(item.rect.contains(parts.text));
    QVERIFY(parts.text.width() >= item.rect.width() / 2 - (parts.text.left() - parts.icon.left()) -
                                      (item.rect.right() - parts.text.right()));
    QVERIFY(parts.text.width() > item.rect.width() / 3);
}

void TestStyleMenuTrees::theHighlightKeepsTheWholeRow()
{
    TreeMenuItemOption item = row(3);
    item.text.clear();
    item.state |= QStyle::State_Selected;
    QImage image(item.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::black);
    QPainter painter(&image);
    style->drawControl(QStyle::CE_MenuItem, &item, &painter);
    painter.end();
    const QColor surface = style->palette().colour(QPalette::Active, ColourRole::HoverBase);
    QVERIFY(isFilled(image, surface, item.rect.adjusted(6, 4, -4, -4)));
}

void TestStyleMenuTrees::aPlainMenuItemHasNoLevel()
{
    const TreeMenuItemOption tree = row(0);
    const QStyleOptionMenuItem plain(tree);
    QCOMPARE(qstyleoption_cast<const TreeMenuItemOption *>(&plain), nullptr);
    QCOMPARE(qstyleoption_cast<const QStyleOptionMenuItem *>(&tree), &tree);
    QCOMPARE(partsOf(plain).icon, partsOf(tree).icon);
    QCOMPARE(partsOf(plain).text, partsOf(tree).text);
}

QTEST_MAIN(TestStyleMenuTrees)
#include "tst_style_menu_trees.moc"
