#include "vireling/window/frame_line.h"

#include "vireling/style/element_context.h"

#include <QStyleOption>
#include <QWidget>

namespace Vireling {

QColor frameLineColour(const QWidget &widget)
{
    const auto *const style = qobject_cast<const Style *>(widget.style());
    if (!style) // some other style: it has no roles of ours
        return widget.palette().color(QPalette::Mid);
    QStyleOption option;
    option.initFrom(&widget);
    return ElementContext(*style, option, &widget).colour(ColourRole::Frame);
}

} // namespace Vireling
