#include "vireling/widgets/card_button.h"

#include "vireling/palette/fonts.h"

#include <QCache>
#include <QFontMetrics>
#include <QPair>
#include <QStyle>
#include <QTextLayout>

#include <algorithm>

namespace Vireling {

namespace {

// In design pixels at 96 dots per inch.
constexpr qreal designDpi = 96;
constexpr qreal horizontalPadding = 16;
constexpr qreal verticalPadding = 12;
constexpr qreal iconSpacing = 12;
constexpr qreal lineSpacing = 2; ///< between title and description
/** Descriptions are wrapped at this width unless they need a wider one for two lines. */
constexpr qreal comfortableTextWidth = 260;

constexpr int maximumLines = 2;

/** More cards than a screen has room for. */
constexpr int keptDescriptions = 64;

int scaled(const CardButton &card, qreal designPixels)
{
    return qRound(designPixels * card.logicalDpiX() / designDpi);
}

int titleHeight(const CardButton &card)
{
    return card.text().isEmpty() ? 0 : QFontMetrics(cardTitleFont()).height();
}

int descriptionHeight(int lineCount)
{
    return lineCount * QFontMetrics(cardDescriptionFont()).lineSpacing();
}

/** Of title and description with as many lines; 0 without either. */
int textHeight(const CardButton &card, int lineCount)
{
    const int title = titleHeight(card);
    const int description = descriptionHeight(lineCount);
    const int gap = title > 0 && description > 0 ? scaled(card, lineSpacing) : 0;
    return title + gap + description;
}

/** How far from the card's edge its text begins. */
int textIndent(const CardButton &card)
{
    const int padding = scaled(card, horizontalPadding);
    return card.icon().isNull() ? padding
                                : padding + cardIconSize(card) + scaled(card, iconSpacing);
}

/** Breaks the text of `layout` into lines of `width`; returns how many. */
int breakLines(QTextLayout &layout, int width)
{
    QTextOption option;
    option.setWrapMode(QTextOption::WrapAtWordBoundaryOrAnywhere);
    layout.setTextOption(option);
    layout.beginLayout();
    for (QTextLine line = layout.createLine(); line.isValid(); line = layout.createLine())
        line.setLineWidth(width);
    layout.endLayout();
    return layout.lineCount();
}

bool needsMoreLines(const QString &description, int width)
{
    QTextLayout layout(description, cardDescriptionFont());
    return breakLines(layout, width) > maximumLines;
}

/** Comfortable, or as much more as keeps the description to its two lines. */
int preferredDescriptionWidth(const CardButton &card)
{
    const QString description = card.description().simplified();
    const int whole = QFontMetrics(cardDescriptionFont()).horizontalAdvance(description);
    int width = std::min(whole, scaled(card, comfortableTextWidth));
    while (width < whole && needsMoreLines(description, width))
        width += scaled(card, iconSpacing);
    return width;
}

/** cardDescriptionLines(), worked out anew. */
QStringList brokenDescription(const QString &description, int width)
{
    const QFont &font = cardDescriptionFont();
    const QString text = description.simplified();
    if (text.isEmpty() || width <= 0)
        return {};
    QStringList lines;
    QTextLayout layout(text, font);
    const int lineCount = breakLines(layout, width);
    for (int number = 0; number < std::min(lineCount, maximumLines); ++number) {
        const QTextLine line = layout.lineAt(number);
        lines += text.mid(line.textStart(), line.textLength()).trimmed();
    }
    if (lineCount > maximumLines) {
        const QString rest = text.mid(layout.lineAt(maximumLines - 1).textStart());
        lines.last() = QFontMetrics(font).elidedText(rest, Qt::ElideRight, width);
    }
    return lines;
}

} // namespace

CardButton::CardButton(QWidget *parent)
    : CardButton(QString(), QString(), parent)
{}

CardButton::CardButton(const QString &title, const QString &description, QWidget *parent)
    : QToolButton(parent)
{
    setText(title);
    setDescription(description);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
}

void CardButton::setDescription(const QString &description)
{
    shownDescription = description;
    setAccessibleDescription(description);
    updateGeometry();
    update();
}

QSize CardButton::sizeHint() const
{
    ensurePolished();
    const int titleWidth = QFontMetrics(cardTitleFont())
                               .size(Qt::TextShowMnemonic | Qt::TextSingleLine, text())
                               .width();
    const int textWidth = std::max(titleWidth, preferredDescriptionWidth(*this));
    const int height = std::max(textHeight(*this, shownDescription.isEmpty() ? 0 : maximumLines),
                                icon().isNull() ? 0 : cardIconSize(*this));
    return {textIndent(*this) + textWidth + scaled(*this, horizontalPadding),
            height + 2 * scaled(*this, verticalPadding)};
}

CardLayout cardLayout(const CardButton &card, const QRect &rect)
{
    CardLayout layout;
    const int padding = scaled(card, horizontalPadding);
    const int iconSide = cardIconSize(card);
    if (!card.icon().isNull())
        layout.icon = QRect(rect.left() + padding, rect.top() + (rect.height() - iconSide) / 2,
                            iconSide, iconSide);

    const int left = rect.left() + textIndent(card);
    const int width = std::max(0, rect.right() + 1 - padding - left);
    layout.descriptionLines = cardDescriptionLines(card.description(), width);
    const int lineCount = int(layout.descriptionLines.size());
    const int title = titleHeight(card);
    const int top = rect.top() + (rect.height() - textHeight(card, lineCount)) / 2;
    const int bottom = top + textHeight(card, lineCount);
    layout.title = QRect(left, top, width, title);
    layout.description =
        QRect(left, bottom - descriptionHeight(lineCount), width, descriptionHeight(lineCount));

    for (QRect *part : {&layout.icon, &layout.title, &layout.description})
        if (!part->isEmpty())
            *part = QStyle::visualRect(card.layoutDirection(), rect, *part);
    return layout;
}

int cardIconSize(const CardButton &card)
{
    return card.style()->pixelMetric(QStyle::PM_LargeIconSize, nullptr, &card);
}

const QFont &cardTitleFont()
{
    static const QFont font = styleFont(FontWeight::SemiBold, FontSize::Large);
    return font;
}

const QFont &cardDescriptionFont()
{
    static const QFont font = styleFont(FontWeight::Regular, FontSize::Small);
    return font;
}

QStringList cardDescriptionLines(const QString &description, int width)
{
    // Every painting asks again, and breaking lines would be an eighth of its work.
    static QCache<QPair<QString, int>, QStringList> broken(keptDescriptions);
    const QPair<QString, int> key(description, width);
    if (!broken.contains(key))
        broken.insert(key, new QStringList(brokenDescription(description, width)));
    return *broken.object(key);
}

} // namespace Vireling
