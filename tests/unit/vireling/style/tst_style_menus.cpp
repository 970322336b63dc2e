#include "vireling/palette/theme.h"
#include "vireling/style/elements/menu.h"
#include "vireling/style/elements/menu_bar.h"
#include "vireling/style/paint_utils.h"
#include "vireling/style/style.h"

#include "style_pixels.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>
#include <memory>

using namespace Vireling;
using TestSupport::count;
using TestSupport::isFilled;

namespace {

constexpr int rowWidth = 240;
constexpr int rowHeight = 24;

QStyleOptionMenuItem makeItem(const Style &style, const QString &text)
{
    QStyleOptionMenuItem item;
    item.text = text;
    item.palette = style.standardPalette();
    item.state = QStyle::State_Enabled | QStyle::State_Active;
    item.menuItemType = QStyleOptionMenuItem::Normal;
    item.checkType = QStyleOptionMenuItem::NotCheckable;
    item.menuHasCheckableItems = false;
    item.rect = QRect(0, 0, rowWidth, rowHeight);
    return item;
}

QIcon makeIcon(const QColor &colour)
{
    QPixmap pixmap(16, 16);
    pixmap.fill(colour);
    return pixmap;
}

/** The row that the columns of the test's data describe. */
QStyleOptionMenuItem fetchRow(const Style &style)
{
    QFETCH(bool, checkable);
    QFETCH(bool, hasIcon);
    QFETCH(bool, hasShortcut);
    QFETCH(bool, isSubmenu);
    QStyleOptionMenuItem item =
        makeItem(style, hasShortcut ? QStringLiteral("Save\tCtrl+S") : QStringLiteral("Save"));
    item.menuHasCheckableItems = checkable;
    item.maxIconWidth = hasIcon ? 20 : 0;
    if (isSubmenu)
        item.menuItemType = QStyleOptionMenuItem::SubMenu;
    return item;
}

MenuItemParts partsOf(const Style &style, const QStyleOptionMenuItem &item)
{
    return menuItemParts({style, item, nullptr}, item);
}

QImage blank(const Style &style, const QSize &size)
{
    QImage image(size, QImage::Format_RGB32);
    image.fill(style.standardPalette().color(QPalette::Window));
    return image;
}

QImage paintControl(const Style &style, QStyle::ControlElement element, const QStyleOption &option)
{
    QImage image = blank(style, option.rect.size());
    QPainter painter(&image);
    style.drawControl(element, &option, &painter);
    return image;
}

bool isBlank(const Style &style, const QImage &image, const QRect &within)
{
    return isFilled(image, style.standardPalette().color(QPalette::Window), within);
}

/** The uppermost pixel of a column that is not the ground's; the height if there is none. */
int firstMark(const Style &style, const QImage &image, int x)
{
    const QColor ground = style.standardPalette().color(QPalette::Window);
    int y = 0;
    while (y < image.height() && image.pixelColor(x, y) == ground)
        ++y;
    return y;
}

/** A menu that tells what options it hands to the style. */
class OpenMenu : public QMenu
{
public:
    QStyleOptionMenuItem option(QAction *action) const
    {
        QStyleOptionMenuItem item;
        initStyleOption(&item, action);
        item.rect = actionGeometry(action);
        return item;
    }
};

} // namespace

class TestStyleMenus : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void partsLieInTheRowAndApart_data();
    void partsLieInTheRowAndApart();
    void rightToLeftMirrorsEveryPart_data();
    void rightToLeftMirrorsEveryPart();
    void rowsOfOneMenuShareTheirColumns();
    void aMenuLeavesRoomForEveryText();
    void aRowIsAsHighAsAField();
    void aTitledSectionIsHigherThanALine();
    void theChosenRowHasASurfaceAndABar_data();
    void theChosenRowHasASurfaceAndABar();
    void aRowThatCannotBeChosenGetsNoSurface();
    void checksAndRadiosShowTheirState();
    void aLongNameIsCutNotPaintedOver();
    void aSubmenuHasAnArrowAtItsEnd();
    void shortcutsStepBackUntilTheRowIsChosen();
    void separatorsAreOneLine();
    void theFrameAndTheGroundHaveTheirRoles();
    void scrollersPointWhereTheyScroll();
    void barItemsArePadded();
    void theOpenBarItemHasABar();
    void anIconStandsInForTheBarItemsText();
    void optionsOfAnotherKindAreNotHandled();

private:
    std::unique_ptr<Style> style;

    QColor role(ColourRole which) const { return style->palette().colour(QPalette::Active, which); }
    QColor role(QPalette::ColorRole which) const { return style->standardPalette().color(which); }
};

void TestStyleMenus::init()
{
    style = std::make_unique<Style>(themePalette(Theme::Dark));
}

void TestStyleMenus::partsLieInTheRowAndApart_data()
{
    QTest::addColumn<bool>("checkable");
    QTest::addColumn<bool>("hasIcon");
    QTest::addColumn<bool>("hasShortcut");
    QTest::addColumn<bool>("isSubmenu");
    for (int bits = 0; bits < 16; ++bits)
        QTest::addRow("%s%s%s%s", bits & 1 ? "check " : "", bits & 2 ? "icon " : "",
                      bits & 4 ? "shortcut " : "", bits & 8 ? "submenu" : "text")
            << bool(bits & 1) << bool(bits & 2) << bool(bits & 4) << bool(bits & 8);
}

void TestStyleMenus::partsLieInTheRowAndApart()
{
    const QStyleOptionMenuItem item = fetchRow(*style);
    const MenuItemParts parts = partsOf(*style, item);
    QCOMPARE(!parts.check.isEmpty(), item.menuHasCheckableItems);
    QCOMPARE(!parts.icon.isEmpty(), item.maxIconWidth > 0);
    QCOMPARE(!parts.shortcut.isEmpty(), item.text.contains(QLatin1Char('\t')));
    QCOMPARE(!parts.arrow.isEmpty(), item.menuItemType == QStyleOptionMenuItem::SubMenu);
    int end = 0;
    for (const QRect &part : {parts.check, parts.icon, parts.text, parts.shortcut, parts.arrow}) {
        if (part.isEmpty())
            continue;
        QVERIFY(item.rect.contains(part));
        QVERIFY(part.left() > end);
        end = part.right();
    }
}

void TestStyleMenus::rightToLeftMirrorsEveryPart_data()
{
    partsLieInTheRowAndApart_data();
}

void TestStyleMenus::rightToLeftMirrorsEveryPart()
{
    QStyleOptionMenuItem item = fetchRow(*style);
    const MenuItemParts there = partsOf(*style, item);
    item.direction = Qt::RightToLeft;
    const MenuItemParts back = partsOf(*style, item);
    const auto mirrored = [&](const QRect &part) {
        return part.isNull() ? part : QStyle::visualRect(Qt::RightToLeft, item.rect, part);
    };
    QCOMPARE(back.check, mirrored(there.check));
    QCOMPARE(back.icon, mirrored(there.icon));
    QCOMPARE(back.text, mirrored(there.text));
    QCOMPARE(back.shortcut, mirrored(there.shortcut));
    QCOMPARE(back.arrow, mirrored(there.arrow));
}

void TestStyleMenus::rowsOfOneMenuShareTheirColumns()
{
    QStyleOptionMenuItem plain = makeItem(*style, QStringLiteral("Plain"));
    plain.menuHasCheckableItems = true;
    plain.maxIconWidth = 20;
    QStyleOptionMenuItem checked = plain;
    checked.checkType = QStyleOptionMenuItem::NonExclusive;
    checked.icon = makeIcon(Qt::red);
    QCOMPARE(partsOf(*style, plain).text.left(), partsOf(*style, checked).text.left());
    QCOMPARE(partsOf(*style, plain).check, partsOf(*style, checked).check);
    QCOMPARE(partsOf(*style, plain).icon, partsOf(*style, checked).icon);
}

void TestStyleMenus::aMenuLeavesRoomForEveryText()
{
    OpenMenu menu;
    menu.setStyle(style.get());
    menu.addAction(QStringLiteral("A name longer than all the others"))
        ->setShortcut(QKeySequence(QStringLiteral("Ctrl+Alt+Shift+S")));
    menu.addAction(makeIcon(Qt::red), QStringLiteral("With an icon"))->setCheckable(true);
    menu.setDefaultAction(menu.addAction(QStringLiteral("What a double click would have chosen")));
    menu.addMenu(QStringLiteral("A submenu whose name is long as well, this one"));
    menu.resize(menu.sizeHint());
    for (QAction *action : menu.actions()) {
        const QStyleOptionMenuItem item = menu.option(action);
        const MenuItemParts parts = partsOf(*style, item);
        QFont font = item.font;
        font.setBold(item.menuItemType == QStyleOptionMenuItem::DefaultItem);
        QVERIFY(parts.text.width() >= QFontMetrics(font).horizontalAdvance(action->text()));
        QVERIFY(!parts.text.intersects(parts.shortcut));
        QVERIFY(!parts.text.intersects(parts.arrow));
        QVERIFY(item.rect.contains(parts.text));
    }
}

void TestStyleMenus::aRowIsAsHighAsAField()
{
    QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("Save"));
    const int row = style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(40, 14)).height();
    QLineEdit field;
    field.setStyle(style.get());
    QCOMPARE(row, field.sizeHint().height());
    QVERIFY(row >= item.fontMetrics.height() + 8);
}

void TestStyleMenus::aTitledSectionIsHigherThanALine()
{
    OpenMenu menu;
    menu.setStyle(style.get());
    menu.addAction(QStringLiteral("Above"));
    QAction *section = menu.addSection(QStringLiteral("View"));
    menu.addAction(QStringLiteral("Between"));
    QAction *line = menu.addSeparator();
    menu.addAction(QStringLiteral("Below"));
    menu.resize(menu.sizeHint());
    const int titleHeight = menu.fontMetrics().height();
    QVERIFY(menu.actionGeometry(section).height() > titleHeight);
    QVERIFY(menu.actionGeometry(line).height() < titleHeight);
    QCOMPARE(menu.actionGeometry(line).height() % 2, 1); // the line has a middle to lie on
}

void TestStyleMenus::theChosenRowHasASurfaceAndABar_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::addColumn<Qt::LayoutDirection>("direction");
    QTest::newRow("dark") << Theme::Dark << Qt::LeftToRight;
    QTest::newRow("light") << Theme::Light << Qt::LeftToRight;
    QTest::newRow("dark, right to left") << Theme::Dark << Qt::RightToLeft;
}

void TestStyleMenus::theChosenRowHasASurfaceAndABar()
{
    QFETCH(Theme, theme);
    QFETCH(Qt::LayoutDirection, direction);
    style = std::make_unique<Style>(themePalette(theme));
    QStyleOptionMenuItem item = makeItem(*style, QString());
    item.direction = direction;
    const QImage idle = paintControl(*style, QStyle::CE_MenuItem, item);
    item.state |= QStyle::State_Selected;
    const QImage chosen = paintControl(*style, QStyle::CE_MenuItem, item);

    QVERIFY(isBlank(*style, idle, idle.rect()));
    QCOMPARE(chosen.pixelColor(chosen.rect().center()), role(ColourRole::HoverBase));
    const bool leftToRight = direction == Qt::LeftToRight;
    const int bar = leftToRight ? 1 : rowWidth - 2;
    const int far = leftToRight ? rowWidth - 2 : 1;
    QCOMPARE(chosen.pixelColor(bar, rowHeight / 2), role(QPalette::Highlight));
    QCOMPARE(chosen.pixelColor(far, rowHeight / 2), role(ColourRole::HoverBase));
}

void TestStyleMenus::aRowThatCannotBeChosenGetsNoSurface()
{
    QStyleOptionMenuItem item = makeItem(*style, QString());
    item.state = QStyle::State_Active | QStyle::State_Selected;
    const QImage image = paintControl(*style, QStyle::CE_MenuItem, item);
    QVERIFY(isBlank(*style, image, image.rect().adjusted(2, 2, -2, -2)));
    QVERIFY(!isBlank(*style, image, image.rect())); // yet the keys' place shows
}

void TestStyleMenus::checksAndRadiosShowTheirState()
{
    for (const auto type : {QStyleOptionMenuItem::NonExclusive, QStyleOptionMenuItem::Exclusive}) {
        QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("Details"));
        item.checkType = type;
        item.menuHasCheckableItems = true;
        const QRect place = partsOf(*style, item).check;
        const QImage off = paintControl(*style, QStyle::CE_MenuItem, item);
        item.checked = true;
        const QImage on = paintControl(*style, QStyle::CE_MenuItem, item);
        QCOMPARE(count(off, role(QPalette::Highlight), place), 0);
        QVERIFY(!isBlank(*style, off, place));
        QVERIFY(count(on, role(QPalette::Highlight), place) > 20);
        const QRect beside(place.right() + 1, 0, rowWidth - place.right() - 1, rowHeight);
        QCOMPARE(on.copy(beside), off.copy(beside));
    }
}

void TestStyleMenus::aLongNameIsCutNotPaintedOver()
{
    QStyleOptionMenuItem item =
        makeItem(*style, QString(200, QLatin1Char('m')) + QStringLiteral("\tCtrl+S"));
    const MenuItemParts parts = partsOf(*style, item);
    const QImage image = paintControl(*style, QStyle::CE_MenuItem, item);
    QVERIFY(!isBlank(*style, image, parts.text));
    QVERIFY(!isBlank(*style, image, parts.shortcut));
    const QRect gap(parts.text.right() + 1, 0, parts.shortcut.left() - parts.text.right() - 1,
                    rowHeight);
    QVERIFY(gap.width() > 0);
    QVERIFY(isBlank(*style, image, gap));
}

void TestStyleMenus::aSubmenuHasAnArrowAtItsEnd()
{
    QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("More"));
    item.menuItemType = QStyleOptionMenuItem::SubMenu;
    const QRect arrow = partsOf(*style, item).arrow;
    const QImage image = paintControl(*style, QStyle::CE_MenuItem, item);
    QVERIFY(!isBlank(*style, image, arrow));
    QVERIFY(arrow.left() > rowWidth - 24);
    item.direction = Qt::RightToLeft;
    const QImage mirrored = paintControl(*style, QStyle::CE_MenuItem, item);
    const QRect there = partsOf(*style, item).arrow;
    QCOMPARE(mirrored.copy(there), image.copy(arrow).mirrored(true, false));
}

void TestStyleMenus::shortcutsStepBackUntilTheRowIsChosen()
{
    QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("\tMMMM"));
    item.font.setPixelSize(20); // strokes of whole pixels
    const QRect place = partsOf(*style, item).shortcut;
    const QImage idle = paintControl(*style, QStyle::CE_MenuItem, item);
    const QColor steppedBack = secondaryText({*style, item, nullptr}).rgb();
    QVERIFY(count(idle, steppedBack, place) > 0);
    QCOMPARE(count(idle, role(QPalette::WindowText), place), 0);
    item.state |= QStyle::State_Selected;
    const QImage chosen = paintControl(*style, QStyle::CE_MenuItem, item);
    QVERIFY(count(chosen, role(QPalette::WindowText), place) > 0);
}

void TestStyleMenus::separatorsAreOneLine()
{
    QStyleOptionMenuItem item = makeItem(*style, QString());
    item.menuItemType = QStyleOptionMenuItem::Separator;
    item.rect.setSize(style->sizeFromContents(QStyle::CT_MenuItem, &item, QSize(rowWidth, 2)));
    const QImage image = paintControl(*style, QStyle::CE_MenuItem, item);
    const QRect middle(0, image.height() / 2, image.width(), 1);
    QVERIFY(count(image, role(ColourRole::Frame), middle) > rowWidth / 2);
    QCOMPARE(count(image, role(ColourRole::Frame)), count(image, role(ColourRole::Frame), middle));
}

void TestStyleMenus::theFrameAndTheGroundHaveTheirRoles()
{
    QStyleOptionFrame frame;
    frame.palette = style->standardPalette();
    frame.rect = QRect(0, 0, 40, 30);
    frame.lineWidth = 1;
    frame.state = QStyle::State_Enabled | QStyle::State_Active;
    QImage image(frame.rect.size(), QImage::Format_RGB32);
    image.fill(Qt::red);
    QPainter painter(&image);
    style->drawPrimitive(QStyle::PE_PanelMenu, &frame, &painter);
    style->drawPrimitive(QStyle::PE_FrameMenu, &frame, &painter);
    for (const QPoint &corner : {QPoint(0, 0), QPoint(39, 0), QPoint(0, 29), QPoint(39, 29)})
        QCOMPARE(image.pixelColor(corner), role(ColourRole::Frame));
    QCOMPARE(count(image, role(QPalette::Window)), 38 * 28);
}

void TestStyleMenus::scrollersPointWhereTheyScroll()
{
    QStyleOptionMenuItem item = makeItem(*style, QString());
    const QImage up = paintControl(*style, QStyle::CE_MenuScroller, item);
    item.state |= QStyle::State_DownArrow;
    const QImage down = paintControl(*style, QStyle::CE_MenuScroller, item);
    const int tip = up.rect().center().x();
    const int arm = tip - 4;
    QVERIFY(firstMark(*style, up, tip) < firstMark(*style, up, arm));
    QVERIFY(firstMark(*style, up, arm) < rowHeight);
    QVERIFY(firstMark(*style, down, arm) < firstMark(*style, down, tip));
    QVERIFY(firstMark(*style, down, tip) < rowHeight);
}

void TestStyleMenus::barItemsArePadded()
{
    QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("File"));
    const QSize text = item.fontMetrics.size(Qt::TextShowMnemonic, item.text);
    const QSize size = style->sizeFromContents(QStyle::CT_MenuBarItem, &item, text);
    QCOMPARE(size.width(), text.width() + 16);
    QVERIFY(size.height() >= text.height() + 8);
    QCOMPARE(style->sizeFromContents(QStyle::CT_MenuBarItem, &item, QSize()), QSize());
}

void TestStyleMenus::theOpenBarItemHasABar()
{
    QStyleOptionMenuItem item = makeItem(*style, QString());
    const QImage idle = paintControl(*style, QStyle::CE_MenuBarItem, item);
    QVERIFY(isBlank(*style, idle, idle.rect()));
    item.state |= QStyle::State_Selected;
    const QImage hovered = paintControl(*style, QStyle::CE_MenuBarItem, item);
    const QPoint middle = hovered.rect().center();
    QCOMPARE(hovered.pixelColor(middle), role(ColourRole::HoverBase));
    QCOMPARE(count(hovered, role(QPalette::Highlight)), 0);
    item.state |= QStyle::State_Sunken;
    const QImage open = paintControl(*style, QStyle::CE_MenuBarItem, item);
    QCOMPARE(open.pixelColor(middle.x(), rowHeight - 1), role(QPalette::Highlight));
    item.state &= ~QStyle::State_Enabled;
    const QImage disabled = paintControl(*style, QStyle::CE_MenuBarItem, item);
    QVERIFY(isBlank(*style, disabled, disabled.rect()));
}

void TestStyleMenus::anIconStandsInForTheBarItemsText()
{
    QStyleOptionMenuItem item = makeItem(*style, QStringLiteral("MMMMMMMM"));
    item.icon = makeIcon(Qt::red);
    const QImage image = paintControl(*style, QStyle::CE_MenuBarItem, item);
    QCOMPARE(count(image, Qt::red), 16 * 16);
    QCOMPARE(count(image, role(QPalette::Window)), rowWidth * rowHeight - 16 * 16);
}

void TestStyleMenus::optionsOfAnotherKindAreNotHandled()
{
    QImage image = blank(*style, {rowWidth, rowHeight});
    QPainter painter(&image);
    const QStyleOptionButton wrong;
    const ElementContext context{*style, wrong, nullptr, &painter};
    QVERIFY(!paintMenuItem(context));
    QVERIFY(!paintMenuBarItem(context));
    QVERIFY(!menuItemSize(context, QSize(10, 10)));
}

QTEST_MAIN(TestStyleMenus)
#include "tst_style_menus.moc"
