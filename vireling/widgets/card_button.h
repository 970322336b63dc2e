#pragma once

#include <QString>
#include <QToolButton>

namespace Vireling {

/** A large button that the style draws as a card: icon, title (the button's text), description. */
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

    QSize sizeHint() const override;

private:
    QString shownDescription;
};

} // namespace Vireling
