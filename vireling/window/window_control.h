#pragma once

#include "vireling/palette/enums.h"

#include <QString>

#include <array>

namespace Vireling {

/** All controls in the order of their values, the order of menus. */
constexpr std::array<WindowControl, 4> windowControls{
    WindowControl::Close, WindowControl::Maximise, WindowControl::Minimise, WindowControl::Restore};

/** The text of a control in the current language. */
QString windowControlText(WindowControl control);

} // namespace Vireling
