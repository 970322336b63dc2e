#include "vireling/style/elements/button_label.h"

#include "vireling/style/design.h"
#include "vireling/style/elements/field.h"

#include <QPainter>
#include <QWidget>
#include <QWindow>

#include <algorithm>

namespace Vireling {

namespace {

QWindow *windowOf(const QWidget *widget)
{
    return widget ? widget->window()->windowHandle() : nullptr;
}

QIcon::Mode iconMode(const ControlState &state)
{
    if (!state.enabled)
        return QIcon::Disabled;
    return state.hovered ? QIcon::Active : QIcon::Normal;
}

void recolour(QPixmap &pixmap, const QColor &colour)
{
    QPainter painter(&pixmap);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(pixmap.rect(), colour);
}

QSize glyphSize(const ElementContext &context, const ButtonLabel &label)
{
    if (label.arrow != Qt::NoArrow)
        return QSize(1, 1) * context.metric(QStyle::PM_SmallIconSize);
    return label.icon.isNull() ? QSize() : label.iconSize;
}

void drawGlyph(const ElementContext &context, const QRect &rect, const ButtonLabel &label)
{
    if (label.arrow == Qt::NoArrow)
        drawIcon(context, rect, label.icon, label.iconSize);
    else
        drawFieldChevron(context, rect, label.arrow, label.colour);
}

} // namespace

void drawIcon(const ElementContext &context, const QRect &rect, const QIcon &icon,
              const QSize &size, const std::optional<QColor> &tint)
{
    if (icon.isNull() || size.isEmpty() || rect.isEmpty())
        return;
    const QIcon::State state = context.state.checked ? QIcon::On : QIcon::Off;
    QPixmap pixmap = icon.pixmap(windowOf(context.widget), size, iconMode(context.state), state);
    if (tint)
        recolour(pixmap, *tint);
    context.style.drawItemPixmap(context.painter, rect, Qt::AlignCenter, pixmap);
}

int mnemonicFlag(const ElementContext &context)
{
    const bool underlined =
        context.style.styleHint(QStyle::SH_UnderlineShortcut, &context.option, context.widget);
    return underlined ? Qt::TextShowMnemonic : Qt::TextHideMnemonic;
}

void drawButtonLabel(const ElementContext &context, const QRect &rect, const ButtonLabel &label)
{
    if (label.text.isEmpty()) {
        drawGlyph(context, rect, label);
        return;
    }
    const QSize glyph = glyphSize(context, label);
    const int glyphSpace =
        glyph.isEmpty() ? 0 : glyph.width() + context.scaled(Design::iconTextSpacing);
    const int textWidth = context.option.fontMetrics.size(Qt::TextShowMnemonic, label.text).width();
    const int width = std::min(rect.width(), glyphSpace + textWidth);
    QRect group = rect;
    group.setLeft(rect.left() + (rect.width() - width) / 2);
    group.setWidth(width);
    const auto placed = [&](const QRect &part) {
        return QStyle::visualRect(context.option.direction, rect, part);
    };
    QRect glyphPlace = group;
    glyphPlace.setWidth(glyph.width());
    drawGlyph(context, placed(glyphPlace), label);
    group.setLeft(group.left() + glyphSpace);
    context.painter->setPen(label.colour);
    const QRect text = placed(group);
    const Qt::Alignment across = textWidth <= text.width() ? Qt::AlignHCenter : Qt::AlignLeft;
    const int alignment =
        int(QStyle::visualAlignment(context.option.direction, across | Qt::AlignVCenter));
    context.style.drawItemText(context.painter, text, alignment | mnemonicFlag(context),
                               context.option.palette, context.state.enabled, label.text);
}

} // namespace Vireling
