#pragma once

class QWidget;

namespace Vireling {

/** The states a control is shown in side by side, which a user brings about one at a time. */
enum class Pose
{
    Default,
    Focused,
    Hovered,
    Pressed,
    ReadOnly,
    Disabled
};

/** The state's name as a caption, untranslated. */
const char *poseName(Pose pose);

/**
 * Puts `control` into a state for as long as it is left alone. Focus needs
 * `focusAnchor`: the control that really has the focus of the page.
 */
void pose(QWidget *control, Pose pose, QWidget *focusAnchor);

/**
 * Sends `control` the pointer, hovering at the given fraction of its size, each time
 * it is shown (from the other side where text runs right to left): for controls that light up only
 * the part under the pointer.
 */
void poseHovered(QWidget *control, double fractionX, double fractionY);
/** The same with the button held down. */
void posePressed(QWidget *control, double fractionX, double fractionY);

} // namespace Vireling
