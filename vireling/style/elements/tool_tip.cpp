#include "vireling/style/elements/tool_tip.h"

#include "vireling/style/paint_utils.h"
#include "vireling/widgets/detailed_tool_tip.h"

#include <QPainter>

namespace Vireling {

namespace {

constexpr qreal accentWidth = 3;

} // namespace

bool paintToolTipPanel(const ElementContext &context)
{
    // Square corners: the window of a tooltip has no mask, rounded ones would show its ground.
    drawPanel(*context.painter, context.rect(), 0, context.colour(QPalette::ToolTipBase),
              context.colour(ColourRole::Frame), context.metric(QStyle::PM_DefaultFrameWidth));
    if (!isDetailedToolTip(context.widget))
        return true;
    QRect accent = context.rect();
    accent.setWidth(context.scaled(accentWidth));
    context.painter->fillRect(context.visual(accent), focusColour(context));
    return true;
}

} // namespace Vireling
