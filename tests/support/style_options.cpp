#include "support/style_options.h"

#include <QApplication>
#include <QPixmap>
#include <QRubberBand>

namespace TestSupport {

namespace {

QIcon testIcon()
{
    QPixmap pixmap(16, 16);
    pixmap.fill(Qt::darkGreen);
    return pixmap;
}

template <typename Option>
std::shared_ptr<Option> filled(std::shared_ptr<Option> option)
{
    option->rect = QRect(0, 0, 160, 32);
    option->state = QStyle::State_Enabled | QStyle::State_Active | QStyle::State_Horizontal;
    option->direction = Qt::LeftToRight;
    option->palette = QApplication::palette();
    option->fontMetrics = QFontMetrics(QApplication::font());
    return option;
}

template <typename Option>
std::shared_ptr<Option> filled()
{
    return filled(std::make_shared<Option>());
}

OptionPointer frame()
{
    const auto option = filled<QStyleOptionFrame>();
    option->lineWidth = 1;
    option->frameShape = QFrame::StyledPanel;
    return option;
}

OptionPointer tabWidgetFrame()
{
    const auto option = filled<QStyleOptionTabWidgetFrame>();
    option->lineWidth = 1;
    option->tabBarSize = QSize(100, 20);
    option->tabBarRect = QRect(0, 0, 100, 20);
    option->selectedTabRect = QRect(0, 0, 50, 20);
    return option;
}

OptionPointer tabBarBase()
{
    const auto option = filled<QStyleOptionTabBarBase>();
    option->tabBarRect = QRect(0, 0, 160, 20);
    option->selectedTabRect = QRect(0, 0, 50, 20);
    return option;
}

OptionPointer header()
{
    const auto option = filled<QStyleOptionHeader>();
    option->text = QStringLiteral("Size");
    option->icon = testIcon();
    option->sortIndicator = QStyleOptionHeader::SortDown;
    option->position = QStyleOptionHeader::Middle;
    return option;
}

OptionPointer button()
{
    const auto option = filled<QStyleOptionButton>();
    option->text = QStringLiteral("&Save");
    option->icon = testIcon();
    option->iconSize = QSize(16, 16);
    return option;
}

OptionPointer tab()
{
    const auto option = filled<QStyleOptionTab>();
    option->text = QStringLiteral("&Tab");
    option->icon = testIcon();
    option->iconSize = QSize(16, 16);
    option->position = QStyleOptionTab::Middle;
    return option;
}

OptionPointer toolBar()
{
    const auto option = filled<QStyleOptionToolBar>();
    option->features = QStyleOptionToolBar::Movable;
    option->toolBarArea = Qt::TopToolBarArea;
    option->lineWidth = 1;
    return option;
}

OptionPointer progressBar()
{
    const auto option = filled<QStyleOptionProgressBar>();
    option->maximum = 100;
    option->progress = 40;
    option->text = QStringLiteral("40%");
    option->textVisible = true;
    option->textAlignment = Qt::AlignCenter;
    return option;
}

OptionPointer menuItem()
{
    const auto option = filled<QStyleOptionMenuItem>();
    option->menuItemType = QStyleOptionMenuItem::Normal;
    option->text = QStringLiteral("&Copy\tCtrl+C");
    option->icon = testIcon();
    option->maxIconWidth = 20;
    option->tabWidth = 50;
    option->menuRect = option->rect;
    option->font = QApplication::font();
    return option;
}

OptionPointer dockWidget()
{
    const auto option = filled<QStyleOptionDockWidget>();
    option->title = QStringLiteral("Tools");
    option->closable = true;
    option->movable = true;
    option->floatable = true;
    return option;
}

OptionPointer viewItem()
{
    const auto option = filled<QStyleOptionViewItem>();
    option->features = QStyleOptionViewItem::HasDisplay | QStyleOptionViewItem::HasDecoration |
                       QStyleOptionViewItem::HasCheckIndicator;
    option->checkState = Qt::Checked;
    option->text = QStringLiteral("Item");
    option->icon = testIcon();
    option->decorationSize = QSize(16, 16);
    option->displayAlignment = Qt::AlignLeft | Qt::AlignVCenter;
    option->viewItemPosition = QStyleOptionViewItem::OnlyOne;
    option->showDecorationSelected = true;
    option->font = QApplication::font();
    return option;
}

OptionPointer toolBox()
{
    const auto option = filled<QStyleOptionToolBox>();
    option->text = QStringLiteral("&Page");
    option->icon = testIcon();
    return option;
}

OptionPointer rubberBand()
{
    const auto option = filled<QStyleOptionRubberBand>();
    option->shape = QRubberBand::Rectangle;
    option->opaque = false;
    return option;
}

ComplexOptionPointer slider()
{
    const auto option = filled<QStyleOptionSlider>();
    option->orientation = Qt::Horizontal;
    option->maximum = 100;
    option->pageStep = 10;
    option->singleStep = 1;
    option->sliderPosition = 40;
    option->sliderValue = 40;
    option->tickPosition = QSlider::TicksBelow;
    option->tickInterval = 20;
    option->notchTarget = 4;
    return option;
}

ComplexOptionPointer spinBox()
{
    const auto option = filled<QStyleOptionSpinBox>();
    option->stepEnabled = QAbstractSpinBox::StepUpEnabled;
    option->frame = true;
    return option;
}

ComplexOptionPointer toolButton()
{
    const auto option = filled<QStyleOptionToolButton>();
    option->text = QStringLiteral("Tool");
    option->icon = testIcon();
    option->iconSize = QSize(16, 16);
    option->toolButtonStyle = Qt::ToolButtonTextBesideIcon;
    option->features = QStyleOptionToolButton::MenuButtonPopup | QStyleOptionToolButton::HasMenu;
    option->font = QApplication::font();
    return option;
}

ComplexOptionPointer comboBox()
{
    const auto option = filled<QStyleOptionComboBox>();
    option->currentText = QStringLiteral("Choice");
    option->currentIcon = testIcon();
    option->iconSize = QSize(16, 16);
    option->frame = true;
    return option;
}

ComplexOptionPointer titleBar()
{
    const auto option = filled<QStyleOptionTitleBar>();
    option->text = QStringLiteral("Window");
    option->icon = testIcon();
    option->titleBarState = int(QStyle::State_Active);
    option->titleBarFlags =
        Qt::WindowTitleHint | Qt::WindowSystemMenuHint | Qt::WindowMinMaxButtonsHint;
    return option;
}

ComplexOptionPointer groupBox()
{
    const auto option = filled<QStyleOptionGroupBox>();
    option->text = QStringLiteral("&Group");
    option->lineWidth = 1;
    option->textAlignment = Qt::AlignLeft;
    return option;
}

ComplexOptionPointer sizeGrip()
{
    const auto option = filled<QStyleOptionSizeGrip>();
    option->corner = Qt::BottomRightCorner;
    return option;
}

ComplexOptionPointer complexOption(OptionKind kind)
{
    switch (kind) {
    case OptionKind::Complex:
        return filled<QStyleOptionComplex>();
    case OptionKind::Slider:
        return slider();
    case OptionKind::SpinBox:
        return spinBox();
    case OptionKind::ToolButton:
        return toolButton();
    case OptionKind::ComboBox:
        return comboBox();
    case OptionKind::TitleBar:
        return titleBar();
    case OptionKind::GroupBox:
        return groupBox();
    case OptionKind::SizeGrip:
        return sizeGrip();
    default:
        return nullptr;
    }
}

} // namespace

ComplexOptionPointer makeComplexOption(OptionKind kind)
{
    const ComplexOptionPointer option = complexOption(kind);
    if (option) {
        option->subControls = QStyle::SC_All;
        if (kind == OptionKind::Complex) // every bit would be any control's
            option->subControls =
                QStyle::SC_MdiMinButton | QStyle::SC_MdiNormalButton | QStyle::SC_MdiCloseButton;
        option->activeSubControls = QStyle::SC_None;
    }
    return option;
}

OptionPointer makeOption(OptionKind kind)
{
    switch (kind) {
    case OptionKind::FocusRect:
        return filled<QStyleOptionFocusRect>();
    case OptionKind::Frame:
        return frame();
    case OptionKind::TabWidgetFrame:
        return tabWidgetFrame();
    case OptionKind::TabBarBase:
        return tabBarBase();
    case OptionKind::Header:
        return header();
    case OptionKind::Button:
        return button();
    case OptionKind::Tab:
        return tab();
    case OptionKind::ToolBar:
        return toolBar();
    case OptionKind::ProgressBar:
        return progressBar();
    case OptionKind::MenuItem:
        return menuItem();
    case OptionKind::DockWidget:
        return dockWidget();
    case OptionKind::ViewItem:
        return viewItem();
    case OptionKind::ToolBox:
        return toolBox();
    case OptionKind::RubberBand:
        return rubberBand();
    case OptionKind::Plain:
        return filled(std::make_shared<QStyleOption>());
    default:
        return makeComplexOption(kind);
    }
}

} // namespace TestSupport
