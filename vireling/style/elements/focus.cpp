#include "vireling/style/elements/focus.h"

#include "vireling/style/design.h"
#include "vireling/style/paint_utils.h"

namespace Vireling {

namespace {

/** Within an item the text's own colour is the one that is sure to stand out. */
void drawItemOutline(const ElementContext &context)
{
    const QPalette::ColorRole role =
        context.state.selected ? QPalette::HighlightedText : QPalette::Text;
    drawPanel(*context.painter, context.rect(), 0, QColor(), context.colour(role),
              context.metric(QStyle::PM_DefaultFrameWidth));
}

} // namespace

bool paintFocusRect(const ElementContext &context)
{
    if (context.option.state & QStyle::State_Item)
        drawItemOutline(context);
    else
        drawFocusRing(context, context.rect(), context.scaledExactly(Design::controlRadius));
    return true;
}

bool paintFocusFrame(const ElementContext &context)
{
    drawFocusRing(context, context.rect(), context.scaledExactly(Design::controlRadius));
    return true;
}

} // namespace Vireling
