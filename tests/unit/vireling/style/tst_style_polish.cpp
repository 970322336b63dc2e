#include "vireling/palette/theme.h"
#include "vireling/style/style.h"

#include <QtTest>
#include <QtWidgets>

#include <algorithm>
#include <cmath>
#include <memory>

Q_DECLARE_METATYPE(QSpacerItem *)

namespace Vireling {

/** Stands in for the toolkit's own: the style knows it by its class's name alone. */
class WindowTitleBar : public QWidget
{
    Q_OBJECT
};

} // namespace Vireling

using namespace Vireling;

namespace {

const QPalette::ColorGroup groups[] = {QPalette::Active, QPalette::Disabled, QPalette::Inactive};

enum class Kind
{
    Header,
    Table,
    List,
    Tree,
    Column,
    Calendar
};

std::unique_ptr<QWidget> makeWidget(Kind kind)
{
    switch (kind) {
    case Kind::Header:
        return std::make_unique<QHeaderView>(Qt::Horizontal);
    case Kind::Table:
        return std::make_unique<QTableView>();
    case Kind::List:
        return std::make_unique<QListView>();
    case Kind::Tree:
        return std::make_unique<QTreeView>();
    case Kind::Column:
        return std::make_unique<QColumnView>();
    case Kind::Calendar:
        break;
    }
    return std::make_unique<QCalendarWidget>();
}

/** What wears the palette: of a calendar, the table inside. */
QWidget *dressed(QWidget *widget)
{
    auto *calendar = qobject_cast<QCalendarWidget *>(widget);
    return calendar ? calendar->findChild<QTableView *>() : widget;
}

qreal luminance(const QColor &colour)
{
    const auto linear = [](qreal channel) {
        return channel <= 0.03928 ? channel / 12.92 : std::pow((channel + 0.055) / 1.055, 2.4);
    };
    return 0.2126 * linear(colour.redF()) + 0.7152 * linear(colour.greenF()) +
           0.0722 * linear(colour.blueF());
}

qreal contrast(const QColor &first, const QColor &second)
{
    const qreal a = luminance(first) + 0.05;
    const qreal b = luminance(second) + 0.05;
    return std::max(a, b) / std::min(a, b);
}

QSpacerItem *spacerOf(const QMessageBox &box)
{
    return box.layout()->property(messageBoxSpacerProperty).value<QSpacerItem *>();
}

int spacerCount(const QMessageBox &box)
{
    int count = 0;
    for (int i = 0; i < box.layout()->count(); ++i)
        count += box.layout()->itemAt(i) == spacerOf(box);
    return count;
}

} // namespace

Q_DECLARE_METATYPE(Kind)
Q_DECLARE_METATYPE(Vireling::ColourRole)

class TestStylePolish : public QObject
{
    Q_OBJECT

private slots:
    void aViewWearsTheRolesOfItsClass_data();
    void aViewWearsTheRolesOfItsClass();
    void aHeaderInATableIsAHeaderFirst();
    void otherWidgetsKeepTheirPalette();
    void theTitleOfAnInactiveWindowIsAPlaceholder_data();
    void theTitleOfAnInactiveWindowIsAPlaceholder();
    void aCalendarReads_data();
    void aCalendarReads();
    void aControlOnAnItemIsDrawnAsElsewhere();
    void aControlOnAnItemKeepsAPaletteOfItsOwn();
    void whatFollowsThePointerHearsOfIt();
    void unpolishingTakesPaletteAndAttributeBack();
    void aMessageBoxGetsOneSpacerHoweverOftenPolished();
    void theSpacerIsResizedAtEveryPolish();
    void theSpacerSpansTheLastRow();
    void aRebuiltMessageBoxGetsASpacerAgain();
    void unpolishingRemovesTheSpacer();
    void aWidgetWithoutTheGridIsLeftAlone();
};

void TestStylePolish::aViewWearsTheRolesOfItsClass_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::addColumn<Kind>("kind");
    QTest::addColumn<QPalette::ColorRole>("worn");
    QTest::addColumn<ColourRole>("role");
    struct Row
    {
        const char *name;
        Kind kind;
        QPalette::ColorRole worn;
        ColourRole role;
    };
    const Row rows[] = {
        {"header ground", Kind::Header, QPalette::Button, ColourRole::HeaderBase},
        {"header base", Kind::Header, QPalette::Base, ColourRole::HeaderBase},
        {"header text", Kind::Header, QPalette::ButtonText, ColourRole::HeaderText},
        {"table text", Kind::Table, QPalette::Text, ColourRole::CellText},
        {"table row text", Kind::Table, QPalette::HighlightedText, ColourRole::ViewItemActiveText},
        {"list ground", Kind::List, QPalette::Base, ColourRole::ViewItemBase},
        {"list second ground", Kind::List, QPalette::AlternateBase, ColourRole::ViewItemAltBase},
        {"list text", Kind::List, QPalette::Text, ColourRole::ViewItemText},
        {"tree ground", Kind::Tree, QPalette::Base, ColourRole::ViewItemBase},
        {"tree row text", Kind::Tree, QPalette::HighlightedText, ColourRole::ViewItemActiveText},
        {"column ground", Kind::Column, QPalette::Base, ColourRole::ViewItemBase},
        {"calendar ground", Kind::Calendar, QPalette::Base, ColourRole::ViewItemBase},
        {"calendar names", Kind::Calendar, QPalette::AlternateBase, ColourRole::ViewItemAltBase},
        {"calendar text", Kind::Calendar, QPalette::Text, ColourRole::ViewItemText},
    };
    for (const Row &row : rows) {
        QTest::addRow("dark %s", row.name) << Theme::Dark << row.kind << row.worn << row.role;
        QTest::addRow("light %s", row.name) << Theme::Light << row.kind << row.worn << row.role;
    }
}

void TestStylePolish::aViewWearsTheRolesOfItsClass()
{
    QFETCH(Theme, theme);
    QFETCH(Kind, kind);
    QFETCH(QPalette::ColorRole, worn);
    QFETCH(ColourRole, role);
    Style style(themePalette(theme));
    const auto widget = makeWidget(kind);
    style.polish(dressed(widget.get()));
    for (const QPalette::ColorGroup group : groups)
        QCOMPARE(dressed(widget.get())->palette().color(group, worn),
                 style.palette().colour(group, role));
}

void TestStylePolish::aHeaderInATableIsAHeaderFirst()
{
    Style style(themePalette(Theme::Dark));
    QTableView table;
    style.polish(&table);
    style.polish(table.horizontalHeader());
    const QPalette palette = table.horizontalHeader()->palette();
    QCOMPARE(palette.color(QPalette::Base),
             style.palette().colour(QPalette::Active, ColourRole::HeaderBase));
    // The accent of a pressed section is the window's, not the colour of the table's rows.
    QCOMPARE(palette.color(QPalette::Highlight),
             style.standardPalette().color(QPalette::Highlight));
}

void TestStylePolish::otherWidgetsKeepTheirPalette()
{
    Style style(themePalette(Theme::Light));
    QLabel label;
    QPushButton button;
    const QPalette before = label.palette();
    style.polish(&label);
    style.polish(&button);
    QCOMPARE(label.palette(), before);
    QVERIFY(!label.testAttribute(Qt::WA_SetPalette));
    QVERIFY(!button.testAttribute(Qt::WA_SetPalette));
}

void TestStylePolish::theTitleOfAnInactiveWindowIsAPlaceholder_data()
{
    QTest::addColumn<Theme>("theme");
    QTest::newRow("dark") << Theme::Dark;
    QTest::newRow("light") << Theme::Light;
}

void TestStylePolish::theTitleOfAnInactiveWindowIsAPlaceholder()
{
    QFETCH(Theme, theme);
    Style style(themePalette(theme));
    WindowTitleBar titleBar;
    QPalette own;
    own.setColor(QPalette::Text, Qt::red);
    own.setColor(QPalette::WindowText, Qt::red);
    own.setColor(QPalette::Window, Qt::green);
    titleBar.setPalette(own);
    style.polish(&titleBar);

    const QPalette wanted = style.standardPalette();
    for (const QPalette::ColorRole role : {QPalette::Text, QPalette::WindowText}) {
        for (const QPalette::ColorGroup group : {QPalette::Active, QPalette::Disabled})
            QCOMPARE(titleBar.palette().color(group, role), wanted.color(group, role));
        QCOMPARE(titleBar.palette().color(QPalette::Inactive, role),
                 wanted.color(QPalette::PlaceholderText));
    }
    QCOMPARE(titleBar.palette().color(QPalette::Window), QColor(Qt::green));
}

void TestStylePolish::aCalendarReads_data()
{
    theTitleOfAnInactiveWindowIsAPlaceholder_data();
}

void TestStylePolish::aCalendarReads()
{
    QFETCH(Theme, theme);
    Style style(themePalette(theme));
    QCalendarWidget calendar;
    const QList<QWidget *> parts = calendar.findChildren<QWidget *>();
    for (QWidget *part : parts)
        style.polish(part);
    const QPalette days = calendar.findChild<QTableView *>()->palette();
    QVERIFY(contrast(days.color(QPalette::Text), days.color(QPalette::Base)) >= 4.5);
    QVERIFY(contrast(days.color(QPalette::Text), days.color(QPalette::AlternateBase)) >= 4.5);

    // The arrows beside the month have the arrows' blue: the ground must not be blue, too.
    const auto *bar = calendar.findChild<QWidget *>(QStringLiteral("qt_calendar_navigationbar"));
    QVERIFY(bar);
    const QPalette names = bar->palette();
    const QColor ground = names.color(QPalette::Highlight);
    QVERIFY(contrast(names.color(QPalette::HighlightedText), ground) >= 4.5);
    QVERIFY(contrast(style.palette().colour(QPalette::Active, ColourRole::ArrowIconBase), ground) >=
            3);
    // Selected digits of the year stand out from the others.
    const auto *year = calendar.findChild<QSpinBox *>();
    QCOMPARE(year->palette().color(QPalette::Highlight),
             style.standardPalette().color(QPalette::Highlight));
}

void TestStylePolish::aControlOnAnItemIsDrawnAsElsewhere()
{
    Style style(themePalette(Theme::Dark));
    QTableWidget table(1, 1);
    auto *box = new QCheckBox;
    table.setCellWidget(0, 0, box);
    style.polish(&table);
    style.polish(box);
    // Otherwise its tick would be white on the white of a selected row.
    for (const QPalette::ColorRole role : {QPalette::Highlight, QPalette::Base, QPalette::Text})
        QCOMPARE(box->palette().color(role), style.standardPalette().color(role));
}

void TestStylePolish::aControlOnAnItemKeepsAPaletteOfItsOwn()
{
    Style style(themePalette(Theme::Dark));
    QTableWidget table(1, 1);
    auto *label = new QLabel;
    QPalette own;
    own.setColor(QPalette::Text, Qt::red);
    label->setPalette(own);
    table.setCellWidget(0, 0, label);
    style.polish(&table);
    style.polish(label);
    QCOMPARE(label->palette().color(QPalette::Text), QColor(Qt::red));
}

void TestStylePolish::whatFollowsThePointerHearsOfIt()
{
    Style style;
    QPushButton button;
    QComboBox box;
    QHeaderView header(Qt::Horizontal);
    QMenuBar bar;
    QListView list;
    QLabel label;
    for (QWidget *widget :
         std::initializer_list<QWidget *>{&button, &box, &header, &bar, &list, &label}) {
        widget->setAttribute(Qt::WA_Hover, false);
        style.polish(widget);
    }
    for (const QWidget *widget :
         std::initializer_list<const QWidget *>{&button, &box, &header, &bar, list.viewport()})
        QVERIFY(widget->testAttribute(Qt::WA_Hover));
    QVERIFY(!label.testAttribute(Qt::WA_Hover));
}

void TestStylePolish::unpolishingTakesPaletteAndAttributeBack()
{
    Style style(themePalette(Theme::Light));
    QListView list;
    QTableView table;
    QHeaderView header(Qt::Vertical);
    WindowTitleBar titleBar;
    QPushButton button;
    for (QWidget *widget :
         std::initializer_list<QWidget *>{&list, &table, &header, &titleBar, &button}) {
        const QColor text = widget->palette().color(QPalette::Text);
        const QColor base = widget->palette().color(QPalette::Base);
        style.polish(widget);
        style.unpolish(widget);
        QCOMPARE(widget->palette().color(QPalette::Text), text);
        QCOMPARE(widget->palette().color(QPalette::Base), base);
        QVERIFY(!widget->testAttribute(Qt::WA_SetPalette));
    }
    QVERIFY(!button.testAttribute(Qt::WA_Hover));
    QVERIFY(!header.testAttribute(Qt::WA_Hover));
    QVERIFY(!list.viewport()->testAttribute(Qt::WA_Hover));
}

void TestStylePolish::aMessageBoxGetsOneSpacerHoweverOftenPolished()
{
    Style style;
    QMessageBox box;
    QVERIFY(!spacerOf(box));
    style.polish(&box);
    const QSpacerItem *first = spacerOf(box);
    QVERIFY(first);
    const int items = box.layout()->count();
    style.polish(&box);
    QCOMPARE(spacerOf(box), first);
    QCOMPARE(box.layout()->count(), items);
    QCOMPARE(spacerCount(box), 1);
}

void TestStylePolish::theSpacerIsResizedAtEveryPolish()
{
    Style style;
    QMessageBox box;
    style.polish(&box);
    const QSize wanted = spacerOf(box)->sizeHint();
    QVERIFY(wanted.width() > 0);
    spacerOf(box)->changeSize(1, 1);
    style.polish(&box);
    QCOMPARE(spacerOf(box)->sizeHint(), wanted);
    QVERIFY(box.layout()->minimumSize().width() >= wanted.width());
}

void TestStylePolish::theSpacerSpansTheLastRow()
{
    Style style;
    QMessageBox box;
    auto *grid = qobject_cast<QGridLayout *>(box.layout());
    const int rowsBefore = grid->rowCount();
    style.polish(&box);
    int row, column, rowSpan, columnSpan;
    grid->getItemPosition(grid->indexOf(spacerOf(box)), &row, &column, &rowSpan, &columnSpan);
    QCOMPARE(row, rowsBefore);
    QCOMPARE(column, 0);
    QCOMPARE(columnSpan, grid->columnCount());
}

void TestStylePolish::aRebuiltMessageBoxGetsASpacerAgain()
{
    Style style;
    QMessageBox box;
    style.polish(&box);
    box.setInformativeText(QStringLiteral("Builds the grid anew.")); // and the spacer is gone
    QVERIFY(!spacerOf(box));
    style.polish(&box);
    QCOMPARE(spacerCount(box), 1);
}

void TestStylePolish::unpolishingRemovesTheSpacer()
{
    Style style;
    QMessageBox box;
    const int items = box.layout()->count();
    style.polish(&box);
    style.unpolish(&box);
    QVERIFY(!spacerOf(box));
    QCOMPARE(box.layout()->count(), items);
}

void TestStylePolish::aWidgetWithoutTheGridIsLeftAlone()
{
    Style style;
    QDialog dialog;
    new QGridLayout(&dialog);
    style.polish(&dialog);
    style.unpolish(&dialog);
    QCOMPARE(dialog.layout()->count(), 0);
    QVERIFY(!dialog.layout()->property(messageBoxSpacerProperty).isValid());
}

QTEST_MAIN(TestStylePolish)
#include "tst_style_polish.moc"
