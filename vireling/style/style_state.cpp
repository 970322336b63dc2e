#include "vireling/style/style_state.h"

namespace Vireling {

ControlState::ControlState(const QStyleOption &option)
    : enabled(option.state & QStyle::State_Enabled)
    , inActiveWindow(option.state & QStyle::State_Active)
    , hovered(enabled && (option.state & QStyle::State_MouseOver))
    , pressed(enabled && (option.state & QStyle::State_Sunken))
    , focused(enabled && (option.state & QStyle::State_HasFocus))
    , checked(option.state & QStyle::State_On)
    , partiallyChecked(option.state & QStyle::State_NoChange)
    , selected(option.state & QStyle::State_Selected)
    , readOnly(option.state & QStyle::State_ReadOnly)
    , horizontal(option.state & QStyle::State_Horizontal)
    , open(option.state & QStyle::State_Open)
    , autoRaise(option.state & QStyle::State_AutoRaise)
    , rightToLeft(option.direction == Qt::RightToLeft)
{}

QPalette::ColorGroup ControlState::colourGroup() const
{
    if (!enabled)
        return QPalette::Disabled;
    return inActiveWindow ? QPalette::Active : QPalette::Inactive;
}

} // namespace Vireling
