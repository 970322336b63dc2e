#include "vireling/style/elements/arrow.h"

#include "vireling/style/paint_utils.h"

namespace Vireling {

namespace {

Qt::ArrowType direction(QStyle::PrimitiveElement element)
{
    switch (element) {
    case QStyle::PE_IndicatorArrowUp:
        return Qt::UpArrow;
    case QStyle::PE_IndicatorArrowLeft:
        return Qt::LeftArrow;
    case QStyle::PE_IndicatorArrowRight:
        return Qt::RightArrow;
    default:
        return Qt::DownArrow;
    }
}

} // namespace

bool paintArrow(const ElementContext &context, QStyle::PrimitiveElement element)
{
    const bool lit = context.state.hovered || context.state.pressed || context.state.checked;
    drawChevron(*context.painter, context.rect(), direction(element),
                lit ? buttonForeground(context) : context.colour(ColourRole::ArrowIconBase),
                context.lineWidth(LineWidth::Glyph));
    return true;
}

} // namespace Vireling
