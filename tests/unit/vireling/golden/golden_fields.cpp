#include "golden_control.h"

#include "vireling/style_icon_engine/style_icons.h"
#include "vireling/widgets/card_button.h"

#include <QComboBox>
#include <QLineEdit>

namespace {

QStyleOptionButton button(const GoldenCell &cell, const char *text,
                          QStyleOptionButton::ButtonFeatures features = QStyleOptionButton::None)
{
    auto option = cell.option<QStyleOptionButton>();
    option.text = QString::fromLatin1(text);
    option.features = features;
    return option;
}

void pushButton(const GoldenCell &cell)
{
    const auto option = button(cell, "&Save");
    cell.style.drawControl(QStyle::CE_PushButton, &option, &cell.painter);
}

void defaultButton(const GoldenCell &cell)
{
    const auto option = button(cell, "&Save", QStyleOptionButton::DefaultButton);
    cell.style.drawControl(QStyle::CE_PushButton, &option, &cell.painter);
}

void flatButton(const GoldenCell &cell)
{
    const auto option = button(cell, "&Save", QStyleOptionButton::Flat);
    cell.style.drawControl(QStyle::CE_PushButton, &option, &cell.painter);
}

void menuButton(const GoldenCell &cell)
{
    const auto option = button(cell, "More", QStyleOptionButton::HasMenu);
    cell.style.drawControl(QStyle::CE_PushButton, &option, &cell.painter);
}

void checkBox(const GoldenCell &cell)
{
    auto option = button(cell, "Remember");
    if (!(option.state & QStyle::State_On))
        option.state |= QStyle::State_Off;
    cell.style.drawControl(QStyle::CE_CheckBox, &option, &cell.painter);
}

void partialCheckBox(const GoldenCell &cell)
{
    auto option = button(cell, "Remember");
    option.state &= ~QStyle::State_On;
    option.state |= QStyle::State_NoChange;
    cell.style.drawControl(QStyle::CE_CheckBox, &option, &cell.painter);
}

void radioButton(const GoldenCell &cell)
{
    auto option = button(cell, "Dark");
    if (!(option.state & QStyle::State_On))
        option.state |= QStyle::State_Off;
    cell.style.drawControl(QStyle::CE_RadioButton, &option, &cell.painter);
}

QStyleOptionToolButton toolButton(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionToolButton>();
    option.text = QStringLiteral("Find");
    option.icon = Vireling::styleIcon(Vireling::StyleIcon::ExpandDown);
    option.iconSize = QSize(16, 16);
    option.toolButtonStyle = Qt::ToolButtonTextBesideIcon;
    option.subControls = QStyle::SC_ToolButton;
    if (option.state & QStyle::State_Sunken)
        option.activeSubControls = QStyle::SC_ToolButton;
    return option;
}

void raisedToolButton(const GoldenCell &cell)
{
    const auto option = toolButton(cell);
    cell.style.drawComplexControl(QStyle::CC_ToolButton, &option, &cell.painter);
}

void autoRaiseToolButton(const GoldenCell &cell)
{
    auto option = toolButton(cell);
    option.state |= QStyle::State_AutoRaise;
    cell.style.drawComplexControl(QStyle::CC_ToolButton, &option, &cell.painter);
}

void menuToolButton(const GoldenCell &cell)
{
    auto option = toolButton(cell);
    option.subControls |= QStyle::SC_ToolButtonMenu;
    option.features = QStyleOptionToolButton::Menu | QStyleOptionToolButton::HasMenu |
                      QStyleOptionToolButton::MenuButtonPopup;
    cell.style.drawComplexControl(QStyle::CC_ToolButton, &option, &cell.painter);
}

void arrowToolButton(const GoldenCell &cell)
{
    auto option = toolButton(cell);
    option.features = QStyleOptionToolButton::Arrow;
    option.arrowType = Qt::UpArrow;
    option.toolButtonStyle = Qt::ToolButtonIconOnly;
    cell.style.drawComplexControl(QStyle::CC_ToolButton, &option, &cell.painter);
}

void card(const GoldenCell &cell)
{
    const Vireling::CardButton widget(QStringLiteral("USB key"),
                                      QStringLiteral("Save the report to a key"));
    auto option = toolButton(cell);
    option.text = widget.text();
    option.icon = Vireling::makeIcon(QStringLiteral("vireling:/common/icons/usb_key.svg"));
    option.iconSize = QSize(32, 32);
    cell.style.drawComplexControl(QStyle::CC_ToolButton, &option, &cell.painter, &widget);
}

QStyleOptionFrame field(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionFrame>();
    option.lineWidth = 1;
    option.midLineWidth = 0;
    option.state |= QStyle::State_Sunken;
    return option;
}

void drawField(const GoldenCell &cell, const QStyleOptionFrame &option)
{
    cell.style.drawPrimitive(QStyle::PE_PanelLineEdit, &option, &cell.painter);
    const QRect contents = cell.style.subElementRect(QStyle::SE_LineEditContents, &option);
    cell.style.drawItemText(&cell.painter, contents, Qt::AlignVCenter, cell.palette,
                            option.state & QStyle::State_Enabled, QStringLiteral("Text"),
                            QPalette::Text);
}

void lineEdit(const GoldenCell &cell)
{
    drawField(cell, field(cell));
}

void readOnlyLineEdit(const GoldenCell &cell)
{
    auto option = field(cell);
    option.state |= QStyle::State_ReadOnly;
    drawField(cell, option);
}

void spinBox(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionSpinBox>();
    option.frame = true;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled | QAbstractSpinBox::StepDownEnabled;
    option.subControls = QStyle::SC_All;
    if (option.state & (QStyle::State_MouseOver | QStyle::State_Sunken))
        option.activeSubControls = QStyle::SC_SpinBoxUp;
    cell.style.drawComplexControl(QStyle::CC_SpinBox, &option, &cell.painter);
}

void plusMinusSpinBox(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionSpinBox>();
    option.frame = true;
    option.buttonSymbols = QAbstractSpinBox::PlusMinus;
    option.stepEnabled = QAbstractSpinBox::StepUpEnabled;
    option.subControls = QStyle::SC_All;
    cell.style.drawComplexControl(QStyle::CC_SpinBox, &option, &cell.painter);
}

QStyleOptionComboBox combo(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionComboBox>();
    option.currentText = QStringLiteral("USB key");
    option.currentIcon = Vireling::styleIcon(Vireling::StyleIcon::ExpandRight);
    option.iconSize = QSize(16, 16);
    option.subControls = QStyle::SC_All;
    return option;
}

void comboBox(const GoldenCell &cell)
{
    const auto option = combo(cell);
    cell.style.drawComplexControl(QStyle::CC_ComboBox, &option, &cell.painter);
    cell.style.drawControl(QStyle::CE_ComboBoxLabel, &option, &cell.painter);
}

void editableComboBox(const GoldenCell &cell)
{
    auto option = combo(cell);
    option.editable = true;
    cell.style.drawComplexControl(QStyle::CC_ComboBox, &option, &cell.painter);
}

void groupBox(const GoldenCell &cell)
{
    auto option = cell.option<QStyleOptionGroupBox>();
    option.text = QStringLiteral("Report");
    option.lineWidth = 1;
    option.textAlignment = Qt::AlignLeft;
    option.subControls = QStyle::SC_All;
    if (!(option.state & QStyle::State_On))
        option.state |= QStyle::State_Off;
    cell.style.drawComplexControl(QStyle::CC_GroupBox, &option, &cell.painter);
}

} // namespace

std::vector<GoldenControl> goldenFields()
{
    return {
        {"push_button", {80, 25}, pushButton},
        {"push_button_default", {80, 25}, defaultButton},
        {"push_button_flat", {80, 25}, flatButton},
        {"push_button_menu", {80, 25}, menuButton},
        {"check_box", {92, 20}, checkBox},
        {"check_box_partial", {92, 20}, partialCheckBox},
        {"radio_button", {92, 20}, radioButton},
        {"tool_button", {80, 25}, raisedToolButton},
        {"tool_button_auto_raise", {80, 25}, autoRaiseToolButton},
        {"tool_button_menu", {96, 25}, menuToolButton},
        {"tool_button_arrow", {25, 25}, arrowToolButton},
        {"card_button", {220, 64}, card},
        {"line_edit", {96, 25}, lineEdit},
        {"line_edit_read_only", {96, 25}, readOnlyLineEdit},
        {"spin_box", {96, 25}, spinBox},
        {"spin_box_plus_minus", {96, 25}, plusMinusSpinBox},
        {"combo_box", {110, 25}, comboBox},
        {"combo_box_editable", {110, 25}, editableComboBox},
        {"group_box", {110, 60}, groupBox},
    };
}
