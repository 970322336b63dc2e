#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/style/style.h"

#include "support/style_options.h"

#include <QFocusFrame>
#include <QPainter>
#include <QScrollArea>
#include <QSpinBox>
#include <QtTest>

#include <algorithm>
#include <functional>

using namespace Vireling;
using TestSupport::makeComplexOption;
using TestSupport::OptionKind;

namespace {

using State = QStyle::State;

constexpr State normalState = QStyle::State_Enabled | QStyle::State_Active;

const Style &style()
{
    return *static_cast<Style *>(QApplication::style());
}

/** One control of the style, painted with its option in whatever state a test asks for. */
struct Painted
{
    const char *name;
    std::function<void(QPainter *, State)> paint;
};

void fillOption(QStyleOption &option, State state)
{
    option.rect = QRect(4, 4, 112, 24);
    option.palette = style().standardPalette();
    option.palette.setCurrentColorGroup(state & QStyle::State_Enabled ? QPalette::Active
                                                                      : QPalette::Disabled);
    option.state = state;
}

QStyleOptionButton buttonOption(State state)
{
    QStyleOptionButton option;
    fillOption(option, state);
    option.text = QStringLiteral("Text");
    return option;
}

Painted control(const char *name, QStyle::ControlElement element,
                QStyleOptionButton::ButtonFeatures features = QStyleOptionButton::None)
{
    return {name, [=](QPainter *painter, State state) {
                QStyleOptionButton option = buttonOption(state);
                option.features = features;
                style().drawControl(element, &option, painter);
            }};
}

Painted complex(const char *name, QStyle::ComplexControl what, OptionKind kind)
{
    return {name, [=](QPainter *painter, State state) {
                const auto option = makeComplexOption(kind);
                fillOption(*option, state);
                option->activeSubControls = what == QStyle::CC_SpinBox    ? QStyle::SC_SpinBoxUp
                                            : what == QStyle::CC_ComboBox ? QStyle::SC_ComboBoxArrow
                                                                          : QStyle::SC_ToolButton;
                if (what == QStyle::CC_GroupBox)
                    option->activeSubControls = QStyle::SC_GroupBoxCheckBox;
                style().drawComplexControl(what, option.get(), painter);
            }};
}

Painted lineEdit()
{
    return {"line edit", [](QPainter *painter, State state) {
                QStyleOptionFrame option;
                fillOption(option, state);
                option.lineWidth = 1;
                style().drawPrimitive(QStyle::PE_PanelLineEdit, &option, painter);
            }};
}

QVector<Painted> buttons()
{
    return {control("push button", QStyle::CE_PushButton),
            control("default button", QStyle::CE_PushButton, QStyleOptionButton::DefaultButton),
            control("flat button", QStyle::CE_PushButton, QStyleOptionButton::Flat),
            control("command link", QStyle::CE_PushButton, QStyleOptionButton::CommandLinkButton),
            complex("tool button", QStyle::CC_ToolButton, OptionKind::ToolButton)};
}

QVector<Painted> choices()
{
    return {control("check box", QStyle::CE_CheckBox),
            control("radio button", QStyle::CE_RadioButton),
            complex("group box", QStyle::CC_GroupBox, OptionKind::GroupBox)};
}

QVector<Painted> fields()
{
    return {lineEdit(), complex("spin box", QStyle::CC_SpinBox, OptionKind::SpinBox),
            complex("combo box", QStyle::CC_ComboBox, OptionKind::ComboBox)};
}

QVector<Painted> everyControl()
{
    return buttons() + choices() + fields();
}

QImage picture(const Painted &what, State state)
{
    QImage image(120, 32, QImage::Format_RGB32);
    image.fill(style().standardPalette().color(QPalette::Window));
    QPainter painter(&image);
    what.paint(&painter, state);
    return image;
}

/** How many pixels differ in lightness, hue left aside, so that a weak eye can tell. */
int visiblyDifferentPixels(const QImage &one, const QImage &other)
{
    constexpr int visible = 16;
    int count = 0;
    for (int y = 0; y < one.height(); ++y)
        for (int x = 0; x < one.width(); ++x)
            count += qAbs(qGray(one.pixel(x, y)) - qGray(other.pixel(x, y))) >= visible;
    return count;
}

} // namespace

class TestStyleFieldStates : public QObject
{
    Q_OBJECT

private slots:
    void statesDifferNotByHueAlone_data();
    void statesDifferNotByHueAlone();
    void partlyCheckedDiffersFromBoth();
    void focusIsVisible_data();
    void focusIsVisible();
    void readOnlyFieldsHaveNoBox();
    void readOnlySpinBoxesHideTheirButtons();
    void framelessScrollAreasReachedByKeyboardAreMarked();
};

void TestStyleFieldStates::statesDifferNotByHueAlone_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("added");
    const auto addRows = [](const char *state, int flag, const QVector<Painted> &controls) {
        const QVector<Painted> all = everyControl();
        for (const Theme theme : {Theme::Dark, Theme::Light})
            for (const Painted &what : controls) {
                const auto same = [&](const Painted &other) {
                    return qstrcmp(other.name, what.name) == 0;
                };
                const int index = int(std::find_if(all.begin(), all.end(), same) - all.begin());
                QTest::addRow("%s %s, %s", state, what.name,
                              theme == Theme::Dark ? "dark" : "light")
                    << int(theme) << index << flag;
            }
    };
    addRows("hovered", QStyle::State_MouseOver, everyControl());
    addRows("pressed", QStyle::State_MouseOver | QStyle::State_Sunken, buttons() + fields().mid(1));
    addRows("checked", QStyle::State_On, buttons() + choices());
    addRows("disabled", QStyle::State_Enabled, everyControl());
}

void TestStyleFieldStates::statesDifferNotByHueAlone()
{
    QFETCH(int, theme);
    QFETCH(int, control);
    QFETCH(int, added);
    installAppearance(Theme(theme));
    const Painted what = everyControl().at(control);
    const QImage plain = picture(what, normalState);
    const QImage changed = picture(what, normalState ^ State(added));
    const int different = visiblyDifferentPixels(plain, changed);
    QVERIFY2(different >= 20, qPrintable(QString::number(different)));
}

void TestStyleFieldStates::partlyCheckedDiffersFromBoth()
{
    for (const Theme theme : {Theme::Dark, Theme::Light}) {
        installAppearance(theme);
        const Painted box = control("check box", QStyle::CE_CheckBox);
        const QImage partly = picture(box, normalState | QStyle::State_NoChange);
        QVERIFY(visiblyDifferentPixels(partly, picture(box, normalState)) >= 20);
        QVERIFY(visiblyDifferentPixels(partly, picture(box, normalState | QStyle::State_On)) >= 8);
        const QPoint middleOfIndicator(10, 15);
        QCOMPARE(partly.pixel(middleOfIndicator),
                 style().palette().colour(QPalette::Active, ColourRole::IndicatorBase).rgb());
    }
}

void TestStyleFieldStates::focusIsVisible_data()
{
    QTest::addColumn<int>("theme");
    QTest::addColumn<int>("control");
    QTest::addColumn<int>("state");
    const QVector<Painted> all = everyControl();
    const QPair<const char *, State> states[] = {
        {"plain", State()}, {"hovered", QStyle::State_MouseOver}, {"checked", QStyle::State_On}};
    for (const Theme theme : {Theme::Dark, Theme::Light})
        for (int index = 0; index < all.size(); ++index)
            for (const auto &[name, state] : states)
                QTest::addRow("%s %s, %s", name, all[index].name,
                              theme == Theme::Dark ? "dark" : "light")
                    << int(theme) << index << int(state);
}

void TestStyleFieldStates::focusIsVisible()
{
    QFETCH(int, theme);
    QFETCH(int, control);
    QFETCH(int, state);
    installAppearance(Theme(theme));
    const Painted what = everyControl().at(control);
    const State without = normalState | State(state);
    const int different = visiblyDifferentPixels(picture(what, without),
                                                 picture(what, without | QStyle::State_HasFocus));
    QVERIFY2(different >= 100, qPrintable(QString::number(different)));
}

void TestStyleFieldStates::readOnlyFieldsHaveNoBox()
{
    installAppearance(Theme::Dark);
    const QImage image = picture(lineEdit(), normalState | QStyle::State_ReadOnly);
    const QRgb ground = style().standardPalette().color(QPalette::Window).rgb();
    QCOMPARE(image.pixel(60, 4), ground);   // the upper edge
    QCOMPARE(image.pixel(4, 16), ground);   // the left edge
    QVERIFY(image.pixel(60, 27) != ground); // the line below
}

void TestStyleFieldStates::readOnlySpinBoxesHideTheirButtons()
{
    installAppearance(Theme::Dark);
    QSpinBox box;
    box.setReadOnly(true);
    box.ensurePolished();
    box.resize(100, 24);
    const QImage image = box.grab().toImage();
    const QRgb ground = style().standardPalette().color(QPalette::Window).rgb();
    for (int x = 78; x < 100; ++x)
        for (int y = 0; y < 22; ++y)
            QCOMPARE(image.pixel(x, y), ground);
}

void TestStyleFieldStates::framelessScrollAreasReachedByKeyboardAreMarked()
{
    QWidget window;
    QScrollArea area(&window);
    area.setFrameShape(QFrame::NoFrame);
    window.show();
    QFocusEvent byKeyboard(QEvent::FocusIn, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&area, &byKeyboard);
    const auto *frame = window.findChild<QFocusFrame *>();
    QVERIFY(frame);
    QCOMPARE(frame->widget(), &area);

    QFocusEvent left(QEvent::FocusOut, Qt::TabFocusReason);
    QCoreApplication::sendEvent(&area, &left);
    QVERIFY(!frame->widget());

    QFocusEvent byMouse(QEvent::FocusIn, Qt::MouseFocusReason);
    QCoreApplication::sendEvent(&area, &byMouse);
    QVERIFY(!frame->widget());
}

QTEST_MAIN(TestStyleFieldStates)
#include "tst_style_field_states.moc"
