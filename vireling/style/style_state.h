#pragma once

#include <QPalette>
#include <QStyleOption>

namespace Vireling {

/**
 * The state of a control in words, read from the flags of a style option once.
 * A disabled control is neither hovered nor pressed nor focused.
 */
struct ControlState
{
    explicit ControlState(const QStyleOption &option);

    bool enabled;
    bool inActiveWindow;
    bool hovered;
    bool pressed;
    bool focused;
    bool checked;
    bool partiallyChecked;
    bool selected;
    bool readOnly;
    bool horizontal;
    bool open;
    /** Draws no surface of its own until it is pointed at, as in a tool bar. */
    bool autoRaise;
    bool rightToLeft;

    /** The colour group to paint in. */
    QPalette::ColorGroup colourGroup() const;
};

} // namespace Vireling
