#include "vireling/style/elements/card_button.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/paint_utils.h"
#include "vireling/widgets/card_button.h"

#include <QPainter>

namespace Vireling {

namespace {

/** The bar of a checked button, along the round lower corners inside frame or focus ring. */
void paintCheckedEdge(const ElementContext &context, qreal radius)
{
    const int height = emphasisWidth(context);
    const int inset = context.state.focused ? height + context.scaled(1)
                                            : context.metric(QStyle::PM_DefaultFrameWidth);
    const QRectF inside = QRectF(context.rect()).adjusted(inset, inset, -inset, -inset);
    const QRectF edge(inside.left(), inside.bottom() - height, inside.width(), height);
    fillPart(*context.painter, inside, radius - inset, edge, context.colour(QPalette::Highlight));
}

void paintCardSurface(const ElementContext &context)
{
    const QRectF rect = context.rect();
    const qreal radius = context.scaledExactly(Design::cardRadius);
    drawPanel(*context.painter, rect, radius, buttonSurface(context), frameColour(context),
              context.lineWidth(LineWidth::ButtonFrame));
    if (context.state.checked)
        paintCheckedEdge(context, radius);
    if (context.state.focused)
        drawFocusRing(context, rect, radius);
}

/** One line at the leading edge of `rect`, in the text's own direction. */
void paintLine(const ElementContext &context, const QRect &rect, const QString &text, int flags)
{
    const auto alignment =
        QStyle::visualAlignment(context.option.direction, Qt::AlignLeft | Qt::AlignVCenter);
    const int direction =
        text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight;
    context.style.drawItemText(context.painter, rect,
                               int(alignment) | direction | Qt::TextSingleLine | flags,
                               context.option.palette, context.state.enabled, text);
}

void paintCardTexts(const ElementContext &context, const CardButton &card, const CardLayout &layout)
{
    context.painter->setFont(cardTitleFont());
    context.painter->setPen(buttonForeground(context));
    paintLine(context, layout.title,
              fittingText(context.painter->fontMetrics(), card.text(), layout.title.width(),
                          Qt::TextShowMnemonic),
              mnemonicFlag(context));

    context.painter->setFont(cardDescriptionFont());
    context.painter->setPen(buttonSecondaryForeground(context));
    const int lineHeight = context.painter->fontMetrics().lineSpacing();
    QRect line(layout.description.topLeft(), QSize(layout.description.width(), lineHeight));
    for (const QString &text : layout.descriptionLines) {
        paintLine(context, line, text, 0);
        line.translate(0, lineHeight);
    }
}

} // namespace

bool paintCard(const ElementContext &context)
{
    const auto *card = qobject_cast<const CardButton *>(context.widget);
    if (!card || !context.painter)
        return false;
    const CardLayout layout = cardLayout(*card, context.rect());
    paintCardSurface(context);
    drawIcon(context, layout.icon, card->icon(), layout.icon.size());
    paintCardTexts(context, *card, layout);
    return true;
}

} // namespace Vireling
