#pragma once

#include <QStyle>
#include <QStyleOption>

#include <memory>

namespace TestSupport {

/** Qt's classes of style options, as makeOption() fills them. */
enum class OptionKind
{
    Plain,
    FocusRect,
    Frame,
    TabWidgetFrame,
    TabBarBase,
    Header,
    Button,
    Tab,
    ToolBar,
    ProgressBar,
    MenuItem,
    DockWidget,
    ViewItem,
    ToolBox,
    RubberBand,
    // those of complex controls follow
    Complex,
    Slider,
    SpinBox,
    ToolButton,
    ComboBox,
    TitleBar,
    GroupBox,
    SizeGrip,
    NOptionKinds ///< how many there are; not a kind
};

/** Shared, because options have no virtual destructor and this keeps the right one. */
using OptionPointer = std::shared_ptr<QStyleOption>;
using ComplexOptionPointer = std::shared_ptr<QStyleOptionComplex>;

/**
 * An option as a widget with something to show would fill it: with texts, an icon,
 * values and features, enabled in an active window, 160 by 32 pixels at the origin, in the
 * application's palette and font. The caller changes what it is after.
 */
OptionPointer makeOption(OptionKind kind);
/** Null for the kinds before OptionKind::Complex. */
ComplexOptionPointer makeComplexOption(OptionKind kind);

/** The kind of option that Qt documents for an element. */
OptionKind optionKind(QStyle::PrimitiveElement element);
OptionKind optionKind(QStyle::ControlElement element);
OptionKind optionKind(QStyle::ComplexControl control);
OptionKind optionKind(QStyle::SubElement element);
OptionKind optionKind(QStyle::ContentsType type);

template <typename Element>
OptionPointer makeOption(Element element)
{
    return makeOption(optionKind(element));
}

inline ComplexOptionPointer makeOption(QStyle::ComplexControl control)
{
    return makeComplexOption(optionKind(control));
}

} // namespace TestSupport
