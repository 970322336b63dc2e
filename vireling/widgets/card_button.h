#pragma once

#include <QFont>
#include <QRect>
#include <QString>
#include <QStringList>
#include <QToolButton>

namespace Vireling {

/**
 * A large button that the style draws as a card: an icon on the leading side, beside
 * it the title (the button's text) above a description of at most two lines.
 */
class CardButton : public QToolButton
{
    Q_OBJECT
    Q_PROPERTY(QString description READ description WRITE setDescription)

public:
    explicit CardButton(QWidget *parent = nullptr);
    CardButton(const QString &title, const QString &description, QWidget *parent = nullptr);

    QString description() const { return shownDescription; }
    /** Also becomes the accessible description. */
    void setDescription(const QString &description);

    /**
     * Room for the title in one line and the description in two, also when it needs
     * but one: so cards beside each other are equally high.
     */
    QSize sizeHint() const override;

private:
    QString shownDescription;
};

/** Where the parts of a card lie; the rectangle of a part that is missing is empty. */
struct CardLayout
{
    QRect icon;
    QRect title;
    QRect description;
    /** As cardDescriptionLines() breaks them for that width. */
    QStringList descriptionLines;
};

/** The parts of `card` within `rect`, mirrored where the card's text runs right to left. */
CardLayout cardLayout(const CardButton &card, const QRect &rect);

/** Of the icon, in logical pixels; square. */
int cardIconSize(const CardButton &card);

/** Style fonts: a card's look does not depend on the font of what it stands in. */
const QFont &cardTitleFont();
const QFont &cardDescriptionFont();

/**
 * The description broken into at most two lines of `width`, the last one cut short
 * with an ellipsis where there would be more. No lines for an empty text.
 */
QStringList cardDescriptionLines(const QString &description, int width);

} // namespace Vireling
