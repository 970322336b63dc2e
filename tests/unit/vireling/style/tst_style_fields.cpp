#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style.h"

#include "support/style_options.h"

#include <QComboBox>
#include <QDateTimeEdit>
#include <QLineEdit>
#include <QPushButton>
#include <QSpinBox>
#include <QStyledItemDelegate>
#include <QToolButton>
#include <QtTest>

#include <functional>
#include <memory>

using namespace Vireling;
using TestSupport::makeComplexOption;
using TestSupport::OptionKind;

namespace {

using WidgetMaker = std::function<QWidget *()>;

const Style &style()
{
    return *static_cast<Style *>(QApplication::style());
}

QComboBox *makeComboBox(bool editable)
{
    auto *box = new QComboBox;
    box->addItem(QStringLiteral("Text"));
    box->setEditable(editable);
    return box;
}

QDateEdit *makeCalendarEdit()
{
    auto *edit = new QDateEdit(QDate(2021, 3, 4));
    edit->setCalendarPopup(true);
    return edit;
}

QToolButton *makeToolButton()
{
    auto *button = new QToolButton;
    button->setText(QStringLiteral("Text"));
    return button;
}

/** The kinds of controls that stand in one row of a form. */
QVector<QPair<const char *, WidgetMaker>> fieldMakers()
{
    return {{"push button", [] { return new QPushButton(QStringLiteral("Text")); }},
            {"line edit", [] { return new QLineEdit; }},
            {"spin box", [] { return new QSpinBox; }},
            {"double spin box", [] { return new QDoubleSpinBox; }},
            {"date-time edit", [] { return new QDateTimeEdit; }},
            {"date edit with calendar", [] { return makeCalendarEdit(); }},
            {"combo box", [] { return makeComboBox(false); }},
            {"editable combo box", [] { return makeComboBox(true); }},
            {"tool button", [] { return makeToolButton(); }}};
}

struct ComplexPart
{
    const char *name;
    QStyle::ComplexControl control;
    OptionKind kind;
    QStyle::SubControl part;
};

const ComplexPart complexParts[] = {
    {"spin box up", QStyle::CC_SpinBox, OptionKind::SpinBox, QStyle::SC_SpinBoxUp},
    {"spin box down", QStyle::CC_SpinBox, OptionKind::SpinBox, QStyle::SC_SpinBoxDown},
    {"spin box text", QStyle::CC_SpinBox, OptionKind::SpinBox, QStyle::SC_SpinBoxEditField},
    {"combo box arrow", QStyle::CC_ComboBox, OptionKind::ComboBox, QStyle::SC_ComboBoxArrow},
    {"combo box text", QStyle::CC_ComboBox, OptionKind::ComboBox, QStyle::SC_ComboBoxEditField},
    {"tool button", QStyle::CC_ToolButton, OptionKind::ToolButton, QStyle::SC_ToolButton},
    {"tool button menu", QStyle::CC_ToolButton, OptionKind::ToolButton, QStyle::SC_ToolButtonMenu},
    {"group box label", QStyle::CC_GroupBox, OptionKind::GroupBox, QStyle::SC_GroupBoxLabel},
    {"group box check", QStyle::CC_GroupBox, OptionKind::GroupBox, QStyle::SC_GroupBoxCheckBox},
    {"group box contents", QStyle::CC_GroupBox, OptionKind::GroupBox, QStyle::SC_GroupBoxContents},
};

/** An option with all its parts, whose rectangle begins away from the origin. */
TestSupport::ComplexOptionPointer optionOf(const ComplexPart &part)
{
    auto option = makeComplexOption(part.kind);
    option->rect = QRect(10, 20, 160, 60);
    option->direction = Qt::LeftToRight;
    option->subControls = QStyle::SC_All;
    if (auto *button = qstyleoption_cast<QStyleOptionToolButton *>(option.get()))
        button->features |= QStyleOptionToolButton::MenuButtonPopup;
    return option;
}

void addComplexParts()
{
    QTest::addColumn<int>("index");
    for (int index = 0; index < int(std::size(complexParts)); ++index)
        QTest::newRow(complexParts[index].name) << index;
}

} // namespace

class TestStyleFields : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void oneRowIsEquallyHigh_data();
    void oneRowIsEquallyHigh();
    void pushButtonsHaveAMinimumWidth();
    void autoDefaultDoesNotGrowAButton();
    void displayCharCountConverts_data();
    void displayCharCountConverts();
    void displayCharCountIsTheContentsWidth();
    void emptyDisplayCharCountKeepsTheOldOne();
    void partsLieWithinTheControl_data();
    void partsLieWithinTheControl();
    void partsAreMirrored_data();
    void partsAreMirrored();
    void partsAreHitInTheirMiddle_data();
    void partsAreHitInTheirMiddle();
    void partsDoNotOverlap();
    void buttonlessSpinBoxesGiveTheirTextAllRoom();
    void comboBoxesKeepAProgramsDelegate();
    void wrongOptionsFallThrough();
};

void TestStyleFields::initTestCase()
{
    installAppearance(Theme::Dark);
}

void TestStyleFields::oneRowIsEquallyHigh_data()
{
    QTest::addColumn<qreal>("pointSize");
    for (const qreal size : {6.0, 8.25, 11.0, 15.0, 24.0})
        QTest::addRow("%g points", size) << size;
}

void TestStyleFields::oneRowIsEquallyHigh()
{
    QFETCH(qreal, pointSize);
    int expected = 0;
    for (const auto &[name, make] : fieldMakers()) {
        const std::unique_ptr<QWidget> widget(make());
        QFont font = widget->font();
        font.setPointSizeF(pointSize);
        widget->setFont(font);
        const int height = widget->sizeHint().height();
        if (!expected)
            expected = height;
        QVERIFY2(height == expected,
                 qPrintable(QStringLiteral("%1: %2, not %3").arg(name).arg(height).arg(expected)));
    }
}

void TestStyleFields::pushButtonsHaveAMinimumWidth()
{
    QCOMPARE(QPushButton(QStringLiteral("A")).sizeHint().width(),
             QPushButton(QStringLiteral("OK")).sizeHint().width());
    const QPushButton longText(QStringLiteral("A text that is wider than the minimum"));
    const int textWidth = longText.fontMetrics().horizontalAdvance(longText.text());
    QVERIFY(longText.sizeHint().width() > textWidth);
}

void TestStyleFields::autoDefaultDoesNotGrowAButton()
{
    QPushButton plain(QStringLiteral("A text that is wider than the minimum"));
    plain.setAutoDefault(false);
    QPushButton autoDefault(plain.text());
    autoDefault.setAutoDefault(true);
    QPushButton standard(plain.text());
    standard.setDefault(true);
    QCOMPARE(autoDefault.sizeHint(), plain.sizeHint());
    QCOMPARE(standard.sizeHint(), plain.sizeHint());
}

void TestStyleFields::displayCharCountConverts_data()
{
    QTest::addColumn<QVariant>("stored");
    QTest::addColumn<int>("count");
    QTest::newRow("a number") << QVariant(30) << 30;
    QTest::newRow("the text of a number") << QVariant(QStringLiteral("12")) << 12;
    QTest::newRow("another text") << QVariant(QStringLiteral("wide")) << 0;
    QTest::newRow("a real number") << QVariant(7.0) << 7;
    QTest::newRow("what no number is") << QVariant(QRect()) << 0;
}

void TestStyleFields::displayCharCountConverts()
{
    QFETCH(QVariant, stored);
    QLineEdit edit;
    QVERIFY(!Style::displayCharCount(&edit));
    edit.setProperty(displayCharCountProperty, stored);
    QTEST(Style::displayCharCount(&edit).value_or(-1), "count");
    QVERIFY(!Style::displayCharCount(nullptr));
}

void TestStyleFields::displayCharCountIsTheContentsWidth()
{
    constexpr int count = 30;
    const QSize contents(200, 16);
    QLineEdit edit;
    QStyleOptionFrame option;
    option.initFrom(&edit);
    option.lineWidth = 1;
    const QSize ordinary = style().sizeFromContents(QStyle::CT_LineEdit, &option, contents, &edit);
    Style::setDisplayCharCount(&edit, count);
    const QSize counted = style().sizeFromContents(QStyle::CT_LineEdit, &option, contents, &edit);
    const int textWidth = count * edit.fontMetrics().horizontalAdvance(QLatin1Char('x'));
    QCOMPARE(counted.width() - textWidth, ordinary.width() - contents.width());
    QCOMPARE(counted.height(), ordinary.height());

    // Qt's own margin of two pixels lies within the contents' rectangle.
    edit.resize(edit.sizeHint());
    option.rect = edit.rect();
    const QRect inner = style().subElementRect(QStyle::SE_LineEditContents, &option, &edit);
    QCOMPARE(inner.width() - 4, textWidth);
}

void TestStyleFields::emptyDisplayCharCountKeepsTheOldOne()
{
    QLineEdit edit;
    Style::setDisplayCharCount(&edit, std::nullopt);
    QVERIFY(!Style::displayCharCount(&edit));
    Style::setDisplayCharCount(&edit, 9);
    Style::setDisplayCharCount(&edit, std::nullopt);
    QCOMPARE(Style::displayCharCount(&edit).value_or(-1), 9);
    Style::setDisplayCharCount(nullptr, 9);
}

void TestStyleFields::partsLieWithinTheControl_data()
{
    addComplexParts();
}

void TestStyleFields::partsLieWithinTheControl()
{
    QFETCH(int, index);
    const ComplexPart &part = complexParts[index];
    const auto option = optionOf(part);
    for (const QRect &rect : {QRect(10, 20, 160, 60), QRect(3, 5, 40, 24), QRect(0, 0, 24, 24)}) {
        option->rect = rect;
        const QRect place = style().subControlRect(part.control, option.get(), part.part);
        QVERIFY(place.isEmpty() || part.control == QStyle::CC_GroupBox || rect.contains(place));
    }
    option->rect = QRect(10, 20, 160, 60);
    const QRect place = style().subControlRect(part.control, option.get(), part.part);
    QVERIFY(!place.isEmpty());
    QVERIFY(option->rect.contains(place));
}

void TestStyleFields::partsAreMirrored_data()
{
    addComplexParts();
}

void TestStyleFields::partsAreMirrored()
{
    QFETCH(int, index);
    const ComplexPart &part = complexParts[index];
    const auto option = optionOf(part);
    const QRect leftToRight = style().subControlRect(part.control, option.get(), part.part);
    option->direction = Qt::RightToLeft;
    const QRect rightToLeft = style().subControlRect(part.control, option.get(), part.part);
    QCOMPARE(rightToLeft, QStyle::visualRect(Qt::RightToLeft, option->rect, leftToRight));
}

void TestStyleFields::partsAreHitInTheirMiddle_data()
{
    addComplexParts();
}

void TestStyleFields::partsAreHitInTheirMiddle()
{
    QFETCH(int, index);
    const ComplexPart &part = complexParts[index];
    const auto option = optionOf(part);
    for (const Qt::LayoutDirection direction : {Qt::LeftToRight, Qt::RightToLeft}) {
        option->direction = direction;
        const QRect place = style().subControlRect(part.control, option.get(), part.part);
        // QCommonStyle asks a spin box for its frame before its text, where the line edit lies.
        const int expected =
            part.part == QStyle::SC_SpinBoxEditField && part.control == QStyle::CC_SpinBox
                ? QStyle::SC_SpinBoxFrame
                : part.part;
        QCOMPARE(int(style().hitTestComplexControl(part.control, option.get(), place.center())),
                 expected);
    }
}

void TestStyleFields::partsDoNotOverlap()
{
    for (const ComplexPart &one : complexParts)
        for (const ComplexPart &other : complexParts) {
            if (one.control != other.control || one.part == other.part)
                continue;
            const auto option = optionOf(one);
            const QRect first = style().subControlRect(one.control, option.get(), one.part);
            const QRect second = style().subControlRect(one.control, option.get(), other.part);
            QVERIFY2(!first.intersects(second), one.name);
        }
}

void TestStyleFields::buttonlessSpinBoxesGiveTheirTextAllRoom()
{
    const auto option = makeComplexOption(OptionKind::SpinBox);
    auto *spin = qstyleoption_cast<QStyleOptionSpinBox *>(option.get());
    const auto part = [&](QStyle::SubControl which) {
        return style().subControlRect(QStyle::CC_SpinBox, spin, which);
    };
    spin->buttonSymbols = QAbstractSpinBox::UpDownArrows;
    const QRect beside = part(QStyle::SC_SpinBoxEditField);
    spin->buttonSymbols = QAbstractSpinBox::NoButtons;
    QVERIFY(part(QStyle::SC_SpinBoxEditField).width() > beside.width());
    QVERIFY(part(QStyle::SC_SpinBoxUp).isEmpty());
    QVERIFY(part(QStyle::SC_SpinBoxDown).isEmpty());
}

void TestStyleFields::comboBoxesKeepAProgramsDelegate()
{
    QComboBox ordinary;
    ordinary.ensurePolished();
    QVERIFY(ordinary.itemDelegate()->inherits("Vireling::ComboBoxItemDelegate"));

    QStyledItemDelegate delegate;
    QComboBox own;
    own.setItemDelegate(&delegate);
    own.ensurePolished();
    QCOMPARE(own.itemDelegate(), &delegate);
}

void TestStyleFields::wrongOptionsFallThrough()
{
    const QCommonStyle common;
    QStyleOption bare;
    bare.rect = QRect(0, 0, 80, 24);
    const QSize contents(50, 14);
    for (const QStyle::ContentsType type :
         {QStyle::CT_PushButton, QStyle::CT_CheckBox, QStyle::CT_RadioButton, QStyle::CT_ToolButton,
          QStyle::CT_ComboBox, QStyle::CT_LineEdit, QStyle::CT_SpinBox, QStyle::CT_GroupBox})
        QCOMPARE(style().sizeFromContents(type, &bare, contents),
                 common.sizeFromContents(type, &bare, contents));
    QStyleOptionComplex bareComplex;
    bareComplex.rect = bare.rect;
    for (const ComplexPart &part : complexParts)
        QCOMPARE(style().subControlRect(part.control, &bareComplex, part.part),
                 common.subControlRect(part.control, &bareComplex, part.part));
}

QTEST_MAIN(TestStyleFields)
#include "tst_style_fields.moc"
