#include "vireling/palette/theme.h"
#include "vireling/style/elements/item_view.h"
#include "vireling/style/style.h"
#include "vireling/style/style_polish.h"

#include "style_pixels.h"

#include <QtTest>
#include <QtWidgets>

#include <memory>

using namespace Vireling;
using TestSupport::count;
using TestSupport::isFilled;

namespace {

constexpr int itemWidth = 200;
constexpr int itemHeight = 24;

} // namespace

class TestStyleViews : public QObject
{
    Q_OBJECT

private slots:
    void init();

    void theSelectedRowHasASurfaceAndABar_data();
    void theSelectedRowHasASurfaceAndABar();
    void thePointedAtRowHasASurface_data();
    void thePointedAtRowHasASurface();
    void alternatingRowsHaveTheSecondGround();
    void theModelsBackgroundShowsUnlessTheRowIsSelected();
    void theFocusedItemHasAnOutline();
    void aRunOfSelectedCellsHasOneBar();
    void inATreeTheBarStandsBeforeTheBranches();
    void aTickOnASelectedRowIsDrawnInTheAccent();
    void aDropShowsWhereItWouldGo();

    void branchesWithChildrenHaveAnArrow();
    void theArrowTurnsWhenTheBranchOpens();
    void columnsHaveAnArrowAndAGrip();

    void optionsOfAnotherKindAreNotHandled();

private:
    Theme shownTheme = Theme::Dark;
    std::unique_ptr<Style> style;
    std::unique_ptr<QListView> list; // wears the palette of item views

    QColor role(ColourRole which) const { return style->palette().colour(QPalette::Active, which); }
    QColor role(QPalette::ColorRole which) const { return style->standardPalette().color(which); }
    /** The accent, in the light theme the row's text: the accent would not show there. */
    QColor barColour() const
    {
        return shownTheme == Theme::Light ? role(ColourRole::ViewItemActiveText)
                                          : role(QPalette::Highlight);
    }
    QColor selectedRow() const { return selectedRowBase(style->palette(), QPalette::Active).rgb(); }

    void useTheme(Theme theme);
    QStyleOptionViewItem makeItem() const;
    QImage blank(const QStyleOption &option) const;
    QImage paint(const QStyleOptionViewItem &item, const QWidget *view = nullptr) const;
    QImage paint(QStyle::PrimitiveElement element, const QStyleOption &option) const;
};

void TestStyleViews::init()
{
    useTheme(Theme::Dark);
}

void TestStyleViews::useTheme(Theme theme)
{
    shownTheme = theme;
    style = std::make_unique<Style>(themePalette(theme));
    list = std::make_unique<QListView>();
    style->polish(list.get());
}

QStyleOptionViewItem TestStyleViews::makeItem() const
{
    QStyleOptionViewItem item;
    item.rect = QRect(0, 0, itemWidth, itemHeight);
    item.state = QStyle::State_Enabled | QStyle::State_Active;
    item.palette = list->palette();
    item.showDecorationSelected = true;
    return item;
}

QImage TestStyleViews::blank(const QStyleOption &option) const
{
    QImage image(option.rect.size(), QImage::Format_RGB32);
    image.fill(option.palette.color(QPalette::Base));
    return image;
}

QImage TestStyleViews::paint(const QStyleOptionViewItem &item, const QWidget *view) const
{
    QImage image = blank(item);
    QPainter painter(&image);
    style->drawControl(QStyle::CE_ItemViewItem, &item, &painter, view);
    return image;
}

QImage TestStyleViews::paint(QStyle::PrimitiveElement element, const QStyleOption &option) const
{
    QImage image = blank(option);
    QPainter painter(&image);
    style->drawPrimitive(element, &option, &painter);
    return image;
}

void TestStyleViews::theSelectedRowHasASurfaceAndABar_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("dark") << Theme::Dark << Qt::LeftToRight;
    QTest::newRow("light") << Theme::Light << Qt::LeftToRight;
    QTest::newRow("light, right to left") << Theme::Light << Qt::RightToLeft;
}

void TestStyleViews::theSelectedRowHasASurfaceAndABar()
{
    QFETCH(Theme, theme);
    QFETCH(Qt::LayoutDirection, direction);
    useTheme(theme);
    QStyleOptionViewItem item = makeItem();
    item.direction = direction;
    QVERIFY(isFilled(paint(item), role(ColourRole::ViewItemBase), item.rect));
    item.state |= QStyle::State_Selected | QStyle::State_MouseOver;
    const QImage image = paint(item);
    const QRect bar = QStyle::visualRect(direction, item.rect, QRect(0, 0, 3, itemHeight));
    const QRect rest =
        QStyle::visualRect(direction, item.rect, QRect(3, 0, itemWidth - 3, itemHeight));
    QVERIFY(isFilled(image, barColour(), bar));
    QVERIFY(isFilled(image, selectedRow(), rest));
}

void TestStyleViews::thePointedAtRowHasASurface_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::newRow("dark") << Theme::Dark;
    QTest::newRow("light") << Theme::Light;
}

void TestStyleViews::thePointedAtRowHasASurface()
{
    QFETCH(Theme, theme);
    useTheme(theme);
    QStyleOptionViewItem item = makeItem();
    item.state |= QStyle::State_MouseOver;
    QVERIFY(isFilled(paint(item), role(ColourRole::HoverBase), item.rect));
    item.state &= ~QStyle::State_Enabled;
    QVERIFY(isFilled(paint(item), role(ColourRole::ViewItemBase), item.rect));
}

void TestStyleViews::alternatingRowsHaveTheSecondGround()
{
    QStyleOptionViewItem item = makeItem();
    QVERIFY(isFilled(paint(QStyle::PE_PanelItemViewRow, item), role(ColourRole::ViewItemBase),
                     item.rect));
    item.features |= QStyleOptionViewItem::Alternate;
    QVERIFY(isFilled(paint(QStyle::PE_PanelItemViewRow, item), role(ColourRole::ViewItemAltBase),
                     item.rect));
}

void TestStyleViews::theModelsBackgroundShowsUnlessTheRowIsSelected()
{
    QStyleOptionViewItem item = makeItem();
    item.backgroundBrush = QBrush(Qt::green);
    QVERIFY(isFilled(paint(item), Qt::green, item.rect));
    item.state |= QStyle::State_Selected;
    QCOMPARE(count(paint(item), Qt::green), 0);
}

void TestStyleViews::theFocusedItemHasAnOutline()
{
    QStyleOptionViewItem item = makeItem();
    item.state |= QStyle::State_HasFocus;
    const QImage plain = paint(item);
    QCOMPARE(count(plain, role(ColourRole::ViewItemText)),
             2 * (itemWidth - 2) + 2 * (itemHeight - 4)); // one pixel within the edge
    item.state |= QStyle::State_Selected;
    const QImage selected = paint(item);
    QVERIFY(count(selected, role(ColourRole::ViewItemActiveText)) > itemWidth);
    QVERIFY(isFilled(selected, barColour(), QRect(0, 0, 3, itemHeight)));
}

void TestStyleViews::aRunOfSelectedCellsHasOneBar()
{
    QTableWidget table(2, 3);
    style->polish(&table);
    table.setRangeSelected(QTableWidgetSelectionRange(0, 1, 0, 2), true);
    QStyleOptionViewItem item = makeItem();
    item.palette = table.palette();
    item.state |= QStyle::State_Selected;
    const QRect edge(0, 0, 3, itemHeight);
    item.index = table.model()->index(0, 1);
    QVERIFY(isFilled(paint(item, &table), barColour(), edge));
    item.index = table.model()->index(0, 2);
    QVERIFY(isFilled(paint(item, &table), selectedRow(), edge));
    // In what order the columns stand on the screen counts, and whether they are there.
    table.horizontalHeader()->setSectionHidden(1, true);
    QVERIFY(isFilled(paint(item, &table), barColour(), edge));
}

void TestStyleViews::inATreeTheBarStandsBeforeTheBranches()
{
    QTreeWidget tree;
    style->polish(&tree);
    auto *top = new QTreeWidgetItem(&tree, {QStringLiteral("Top")});
    new QTreeWidgetItem(top, {QStringLiteral("Child")});
    QStyleOptionViewItem item = makeItem();
    item.state |= QStyle::State_Selected;
    item.viewItemPosition = QStyleOptionViewItem::OnlyOne;
    item.index = tree.model()->index(0, 0);
    const QRect edge(0, 0, 3, itemHeight);
    QVERIFY(isFilled(paint(item, &tree), selectedRow(), edge));
    QVERIFY(isFilled(paint(QStyle::PE_PanelItemViewRow, item), barColour(), edge));

    tree.setRootIsDecorated(false); // now no branches are drawn at the top level
    QVERIFY(isFilled(paint(item, &tree), barColour(), edge));
    item.index = item.index.model()->index(0, 0, item.index);
    QVERIFY(isFilled(paint(item, &tree), selectedRow(), edge));
    item.viewItemPosition = QStyleOptionViewItem::End;
    QCOMPARE(count(paint(QStyle::PE_PanelItemViewRow, item), barColour()), 0);
}

void TestStyleViews::aTickOnASelectedRowIsDrawnInTheAccent()
{
    QStyleOptionViewItem item = makeItem();
    item.features = QStyleOptionViewItem::HasCheckIndicator;
    item.checkState = Qt::Checked;
    item.state |= QStyle::State_Selected;
    const QRect place = style->subElementRect(QStyle::SE_ItemViewItemCheckIndicator, &item);
    QVERIFY(count(paint(item), role(QPalette::Highlight), place) > 40);
    item.checkState = Qt::Unchecked;
    QCOMPARE(count(paint(item), role(QPalette::Highlight), place), 0);
}

void TestStyleViews::aDropShowsWhereItWouldGo()
{
    QStyleOption onItem;
    onItem.palette = list->palette();
    onItem.rect = QRect(0, 0, itemWidth, itemHeight);
    onItem.state = QStyle::State_Enabled | QStyle::State_Active;
    const QImage outline = paint(QStyle::PE_IndicatorItemViewItemDrop, onItem);
    const QPoint centre = onItem.rect.center();
    QCOMPARE(outline.pixelColor(0, centre.y()), role(QPalette::Highlight));
    QCOMPARE(outline.pixelColor(centre), role(ColourRole::ViewItemBase));

    QImage image = blank(onItem);
    QPainter painter(&image);
    onItem.rect = QRect(0, 10, itemWidth, 0); // between two items
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemDrop, &onItem, &painter);
    QCOMPARE(count(image, role(QPalette::Highlight)), 2 * itemWidth);
    QVERIFY(isFilled(image, role(QPalette::Highlight), QRect(0, 9, itemWidth, 2)));

    onItem.rect = QRect(0, 0, itemWidth, 0); // above the first: not above the view
    image.fill(Qt::black);
    style->drawPrimitive(QStyle::PE_IndicatorItemViewItemDrop, &onItem, &painter);
    QCOMPARE(count(image, role(QPalette::Highlight)), 2 * itemWidth);
}

void TestStyleViews::branchesWithChildrenHaveAnArrow()
{
    QStyleOption branch;
    branch.palette = list->palette();
    branch.rect = QRect(0, 0, 20, itemHeight);
    branch.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Sibling;
    const QColor ground = role(ColourRole::ViewItemBase);
    QVERIFY(isFilled(paint(QStyle::PE_IndicatorBranch, branch), ground, branch.rect));
    branch.state |= QStyle::State_Children;
    const QImage arrow = paint(QStyle::PE_IndicatorBranch, branch);
    QVERIFY(count(arrow, ground) < 20 * itemHeight);
    const QRect place = style->subElementRect(QStyle::SE_TreeViewDisclosureItem, &branch);
    QVERIFY(branch.rect.contains(place));
    QCOMPARE(count(arrow, ground) + place.width() * place.height() - count(arrow, ground, place),
             20 * itemHeight);
}

void TestStyleViews::theArrowTurnsWhenTheBranchOpens()
{
    QStyleOption branch;
    branch.palette = list->palette();
    branch.rect = QRect(0, 0, 24, 24);
    branch.state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Children;
    const QImage closed = paint(QStyle::PE_IndicatorBranch, branch);
    branch.direction = Qt::RightToLeft;
    QCOMPARE(paint(QStyle::PE_IndicatorBranch, branch), closed.mirrored(true, false));
    branch.direction = Qt::LeftToRight;
    branch.state |= QStyle::State_Open;
    QVERIFY(paint(QStyle::PE_IndicatorBranch, branch) != closed);
}

void TestStyleViews::columnsHaveAnArrowAndAGrip()
{
    QStyleOptionViewItem item = makeItem();
    item.rect = QRect(0, 0, 16, 16);
    const QImage arrow = paint(QStyle::PE_IndicatorColumnViewArrow, item);
    QVERIFY(count(arrow, role(ColourRole::ViewItemBase)) < 16 * 16);
    item.direction = Qt::RightToLeft;
    QCOMPARE(paint(QStyle::PE_IndicatorColumnViewArrow, item), arrow.mirrored(true, false));

    QStyleOption grip;
    grip.palette = style->standardPalette();
    grip.rect = QRect(0, 0, 20, 20);
    grip.state = QStyle::State_Enabled | QStyle::State_Active;
    QImage image = blank(grip);
    QPainter painter(&image);
    style->drawControl(QStyle::CE_ColumnViewGrip, &grip, &painter);
    QCOMPARE(count(image, role(ColourRole::MenuIconBase)), 2 * 10);
}

void TestStyleViews::optionsOfAnotherKindAreNotHandled()
{
    QImage image(20, 20, QImage::Format_RGB32);
    QPainter painter(&image);
    const QStyleOptionButton wrong;
    const ElementContext context{*style, wrong, nullptr, &painter};
    QVERIFY(!paintItem(context));
    QVERIFY(!paintItemPanel(context));
    QVERIFY(!paintRowPanel(context));
    QVERIFY(!itemPart(context, QStyle::SE_ItemViewItemText));
    QVERIFY(!itemSize(context, QSize()));
}

QTEST_MAIN(TestStyleViews)
#include "tst_style_views.moc"
