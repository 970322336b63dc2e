#pragma once

#include "vireling/palette/palette.h"
#include "vireling/style/style.h"
#include "vireling/style/style_state.h"

#include <QStyleOption>

class QPainter;

namespace Vireling {

/**
 * What a function of style/elements works with: one call of a QStyle virtual. It
 * lives on the stack of that call and owns nothing.
 *
 * Such a function answers "handled" (or a rectangle, or a size) or not; not handled
 * means QCommonStyle. It answers not handled for an option of the wrong type.
 */
class ElementContext
{
public:
    /** `painter` is null where nothing is painted; `widget` may be null. */
    ElementContext(const Style &callingStyle, const QStyleOption &callOption,
                   const QWidget *callWidget, QPainter *callPainter = nullptr)
        : style(callingStyle)
        , option(callOption)
        , widget(callWidget)
        , painter(callPainter)
        , state(callOption)
    {}

    const Style &style;
    const QStyleOption &option;
    const QWidget *const widget;
    QPainter *const painter;
    const ControlState state;

    const QRect &rect() const { return option.rect; }

    /** The option as one of Qt's option classes; null when it is of another. */
    template <typename Option>
    const Option *as() const
    {
        return qstyleoption_cast<const Option *>(&option);
    }

    /** The same call for another option: for parts painted with changed rectangle or state. */
    ElementContext with(const QStyleOption &otherOption) const
    {
        return {style, otherOption, widget, painter};
    }

    int scaled(qreal designPixels) const { return style.scaled(designPixels, &option, widget); }
    qreal scaledExactly(qreal designPixels) const
    {
        return style.scaledExactly(designPixels, &option, widget);
    }
    int metric(QStyle::PixelMetric metric) const
    {
        return style.pixelMetric(metric, &option, widget);
    }
    qreal lineWidth(LineWidth kind) const { return style.lineWidth(kind, &option, widget); }

    /** A Qt role of the option's palette in the group of the state, unless one is given. */
    QColor colour(QPalette::ColorRole role) const { return colour(role, state.colourGroup()); }
    QColor colour(QPalette::ColorRole role, QPalette::ColorGroup group) const
    {
        return option.palette.color(group, role);
    }

    /** A toolkit role of the widget's user palette, else of the style's palette. */
    QColor colour(ColourRole role) const { return colour(role, state.colourGroup()); }
    QColor colour(ColourRole role, QPalette::ColorGroup group) const;

    /** Left-to-right rectangle within rect(), mirrored where the text runs right to left. */
    QRect visual(const QRect &logical) const
    {
        return QStyle::visualRect(option.direction, option.rect, logical);
    }
};

} // namespace Vireling
