#include "vireling/style/elements/group_box.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/button_label.h"
#include "vireling/style/elements/check_box.h"
#include "vireling/style/paint_utils.h"

#include <QPainter>

#include <algorithm>

namespace Vireling {

namespace {

/** Around the title, where the ring of a checkable box goes. */
constexpr qreal titlePadding = 4;

/** What the contents keep clear of the frame beside what the layout adds. */
constexpr qreal contentsPadding = 1;

bool isCheckable(const QStyleOptionGroupBox &box)
{
    return box.subControls & QStyle::SC_GroupBoxCheckBox;
}

bool isFlat(const QStyleOptionGroupBox &box)
{
    return box.features & QStyleOptionFrame::Flat;
}

int titleHeight(const ElementContext &context, const QStyleOptionGroupBox &box)
{
    if (box.text.isEmpty() && !isCheckable(box))
        return 0;
    const int text = box.text.isEmpty() ? 0 : box.fontMetrics.height();
    const int indicator = isCheckable(box) ? context.metric(QStyle::PM_IndicatorHeight) : 0;
    return std::max(text, indicator) + 2 * context.scaled(titlePadding);
}

struct Title
{
    QRect whole; ///< with room for the ring
    QRect indicator;
    QRect label;
};

int titleLeft(const ElementContext &context, const QStyleOptionGroupBox &box, int width)
{
    const QRect &rect = context.rect();
    const int spare = std::max(0, rect.width() - width);
    if (box.textAlignment & Qt::AlignHCenter)
        return rect.left() + spare / 2;
    return box.textAlignment & Qt::AlignRight ? rect.left() + spare : rect.left();
}

/** Left to right; the alignment is the reading direction's. */
Title layOutTitle(const ElementContext &context, const QStyleOptionGroupBox &box)
{
    const int padding = context.scaled(titlePadding);
    const int indicator = isCheckable(box) ? context.metric(QStyle::PM_IndicatorWidth) : 0;
    const int spacing =
        indicator && !box.text.isEmpty() ? context.metric(QStyle::PM_CheckBoxLabelSpacing) : 0;
    const int text = box.fontMetrics.size(Qt::TextShowMnemonic, box.text).width();
    const int height = titleHeight(context, box);
    const int width = std::min(context.rect().width(), 2 * padding + indicator + spacing + text);
    Title title;
    title.whole = QRect(titleLeft(context, box, width), context.rect().top(), width, height);
    const int indicatorHeight = context.metric(QStyle::PM_IndicatorHeight);
    title.indicator =
        QRect(title.whole.left() + padding, title.whole.top() + (height - indicatorHeight) / 2,
              indicator, indicatorHeight);
    title.label = title.whole.adjusted(padding + indicator + spacing, 0, -padding, 0);
    return title;
}

QRect frameRect(const ElementContext &context, const QStyleOptionGroupBox &box)
{
    return context.rect().adjusted(0, titleHeight(context, box), 0, 0);
}

QRect contentsRect(const ElementContext &context, const QStyleOptionGroupBox &box)
{
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    const int padding = context.scaled(contentsPadding);
    const int side = isFlat(box) ? 0 : frame + padding;
    return frameRect(context, box).adjusted(side, frame + padding, -side, -side);
}

void drawTitle(const ElementContext &context, const QStyleOptionGroupBox &box, const QRect &label)
{
    const QColor own = box.textColor;
    const bool usesOwn = context.state.enabled && own.isValid() && own.alpha() > 0;
    context.painter->setPen(usesOwn ? own : context.colour(QPalette::WindowText));
    const int alignment =
        int(QStyle::visualAlignment(box.direction, Qt::AlignLeft | Qt::AlignVCenter));
    context.style.drawItemText(
        context.painter, label, alignment | mnemonicFlag(context), box.palette,
        context.state.enabled,
        fittingText(box.fontMetrics, box.text, label.width(), Qt::TextShowMnemonic));
}

void drawIndicator(const ElementContext &context, const QStyleOptionGroupBox &box,
                   const QRect &rect)
{
    QStyleOptionButton indicator;
    indicator.QStyleOption::operator=(box);
    indicator.rect = rect;
    paintCheckBoxIndicator(context.with(indicator));
}

} // namespace

bool paintGroupBoxFrame(const ElementContext &context)
{
    const auto *frame = context.as<QStyleOptionFrame>();
    const bool flat = frame && (frame->features & QStyleOptionFrame::Flat);
    const QColor colour = context.colour(ColourRole::Frame);
    const int width = context.metric(QStyle::PM_DefaultFrameWidth);
    if (flat) {
        QRect line = context.rect();
        line.setHeight(width);
        context.painter->fillRect(line, colour);
    } else {
        drawPanel(*context.painter, context.rect(), context.scaledExactly(Design::controlRadius),
                  QColor(), colour, width);
    }
    return true;
}

bool paintGroupBox(const ElementContext &context)
{
    const auto *box = context.as<QStyleOptionGroupBox>();
    if (!box)
        return false;
    if (box->subControls & QStyle::SC_GroupBoxFrame) {
        QStyleOptionFrame frame;
        frame.QStyleOption::operator=(*box);
        frame.features = box->features;
        frame.rect = context.visual(frameRect(context, *box));
        context.style.drawPrimitive(QStyle::PE_FrameGroupBox, &frame, context.painter,
                                    context.widget);
    }
    const Title title = layOutTitle(context, *box);
    if (isCheckable(*box))
        drawIndicator(context, *box, context.visual(title.indicator));
    if ((box->subControls & QStyle::SC_GroupBoxLabel) && !box->text.isEmpty())
        drawTitle(context, *box, context.visual(title.label));
    if (context.state.focused)
        drawFocusRing(context, context.visual(title.whole),
                      context.scaledExactly(Design::controlRadius));
    return true;
}

std::optional<QRect> groupBoxPart(const ElementContext &context, QStyle::SubControl part)
{
    const auto *box = context.as<QStyleOptionGroupBox>();
    if (!box)
        return std::nullopt;
    switch (part) {
    case QStyle::SC_GroupBoxCheckBox:
        return context.visual(layOutTitle(context, *box).indicator);
    case QStyle::SC_GroupBoxLabel:
        return context.visual(layOutTitle(context, *box).label);
    case QStyle::SC_GroupBoxContents:
        return context.visual(contentsRect(context, *box));
    case QStyle::SC_GroupBoxFrame:
        return context.visual(frameRect(context, *box));
    default:
        return std::nullopt;
    }
}

std::optional<QSize> groupBoxSize(const ElementContext &context, const QSize &contents)
{
    const auto *box = context.as<QStyleOptionGroupBox>();
    if (!box)
        return std::nullopt;
    const int frame = context.metric(QStyle::PM_DefaultFrameWidth);
    const int width = contents.width() + 2 * (frame + context.scaled(titlePadding));
    return QSize(width, std::max(contents.height(), titleHeight(context, *box)) + 2 * frame);
}

} // namespace Vireling
