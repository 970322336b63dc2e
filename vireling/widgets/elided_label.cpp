#include "vireling/widgets/elided_label.h"

#include "vireling/widgets/label_accessibility.h"

#include <QAccessible>
#include <QFontMetricsF>
#include <QHelpEvent>
#include <QPainter>
#include <QStyle>
#include <QTextDocument>
#include <QToolTip>

#include <cmath>

namespace Vireling {

namespace {

/** The label shows its text as it is, so its tooltip does not take any of it for markup. */
QString plainToolTip(const QString &text)
{
    return Qt::mightBeRichText(text) ? text.toHtmlEscaped() : text;
}

/** One line in the text's own direction: else an ellipsis would jump before a foreign text. */
int textFlags(const QString &text)
{
    return Qt::TextSingleLine |
           (text.isRightToLeft() ? Qt::TextForceRightToLeft : Qt::TextForceLeftToRight);
}

} // namespace

ElidedLabel::ElidedLabel(QWidget *parent)
    : ElidedLabel(QString(), parent)
{}

ElidedLabel::ElidedLabel(const QString &text, QWidget *parent)
    : QFrame(parent)
    , fullText(text)
{
    registerLabelAccessibility();
}

void ElidedLabel::setText(const QString &text)
{
    if (text == fullText)
        return;
    fullText = text;
    cachedSizeHint = QSize();
    updateGeometry();
    update();
    QAccessibleEvent nameChanged(this, QAccessible::NameChanged);
    QAccessible::updateAccessibility(&nameChanged);
}

QSize ElidedLabel::sizeHint() const
{
    if (!cachedSizeHint.isValid()) {
        const QFontMetricsF metrics(font());
        const QMargins margins = contentsMargins();
        cachedSizeHint = QSize(int(std::ceil(metrics.horizontalAdvance(fullText))) +
                                   margins.left() + margins.right(),
                               int(std::ceil(metrics.height())) + margins.top() + margins.bottom());
    }
    return cachedSizeHint;
}

QSize ElidedLabel::minimumSizeHint() const
{
    return {0, int(std::ceil(QFontMetricsF(font()).height()))};
}

bool ElidedLabel::event(QEvent *event)
{
    switch (event->type()) {
    case QEvent::ToolTip:
        if (!elided)
            break;
        QToolTip::showText(static_cast<QHelpEvent *>(event)->globalPos(), plainToolTip(fullText),
                           this, rect());
        return true;
    case QEvent::FontChange:
    case QEvent::ContentsRectChange:
        cachedSizeHint = QSize();
        break;
    default:
        break;
    }
    return QFrame::event(event);
}

void ElidedLabel::paintEvent(QPaintEvent *event)
{
    QFrame::paintEvent(event);
    const QRect area = contentsRect();
    const QString shown = QFontMetricsF(font()).elidedText(fullText, Qt::ElideRight, area.width());
    elided = shown != fullText;
    QPainter painter(this);
    const int alignment =
        int(QStyle::visualAlignment(layoutDirection(), Qt::AlignLeft | Qt::AlignVCenter));
    style()->drawItemText(&painter, area, alignment | textFlags(fullText), palette(), isEnabled(),
                          shown, foregroundRole());
}

} // namespace Vireling
