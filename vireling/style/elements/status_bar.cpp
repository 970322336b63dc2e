#include "vireling/style/elements/status_bar.h"

#include "vireling/style/paint_utils.h"

#include <QPainter>

namespace Vireling {

bool paintStatusBar(const ElementContext &context)
{
    QRect line = context.rect();
    line.setHeight(1);
    context.painter->fillRect(context.rect(), context.colour(QPalette::Window));
    context.painter->fillRect(line, context.colour(ColourRole::Frame));
    return true;
}

bool paintStatusBarItem(const ElementContext &)
{
    return true; // items stand on the bar's own ground; boxes around them only add noise
}

} // namespace Vireling
