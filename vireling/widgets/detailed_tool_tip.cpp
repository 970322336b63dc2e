#include "vireling/widgets/detailed_tool_tip.h"

#include "vireling/palette/fonts.h"

#include <QFontMetrics>
#include <QLabel>
#include <QTextDocument>
#include <QToolTip>

namespace Vireling {

namespace {

/** By this the style recognises the label that shows such a tooltip. */
constexpr char marker[] = "vr-detailed-tooltip";

constexpr qreal marginInPixels = 8;
constexpr int cssUnitsPerQtWeight = 8;

QString asHtml(const QString &text)
{
    return Qt::mightBeRichText(text) ? text : text.toHtmlEscaped();
}

} // namespace

QString detailedToolTip(const QString &title, const QString &text)
{
    const QFont textFont = QToolTip::font();
    const qreal marginInEm = marginInPixels / QFontMetrics(textFont).height();
    // All at once: a title may itself hold something like "%6".
    return QStringLiteral(
               "<head><meta name=\"description\" content=\"%1\"><style>table { border-style: none; "
               "border-collapse: collapse; margin: %2em; }th { text-align: left; font: %3; }td { "
               "font: %4; white-space: pre-line; }</style></head><body><table><tr><th>%5</th></tr>"
               "<tr><td>%6</td></tr></table></body>")
        .arg(QString::fromLatin1(marker), QString::number(marginInEm),
             cssFontShorthand(styleFont(FontWeight::Light, FontSize::Medium)),
             cssFontShorthand(textFont), asHtml(title), asHtml(text));
}

bool isDetailedToolTip(const QWidget *widget)
{
    const auto *label = qobject_cast<const QLabel *>(widget);
    return label && label->text().contains(QLatin1String(marker));
}

QString cssFontShorthand(const QFont &font)
{
    const QString size = font.pixelSize() > 0
                             ? QString::number(font.pixelSize()) + QStringLiteral("px")
                             : QString::number(font.pointSizeF(), 'f', 2) + QStringLiteral("pt");
    return QStringLiteral("%1 %2 %3")
        .arg(QString::number(font.weight() * cssUnitsPerQtWeight), size, font.family());
}

} // namespace Vireling
