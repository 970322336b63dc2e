#pragma once

#include <QFrame>
#include <QSize>
#include <QString>

namespace Vireling {

/**
 * One line of text that is cut short with an ellipsis where it does not fit, and
 * then shows itself whole in a tooltip. May shrink to no width at all.
 */
class ElidedLabel : public QFrame
{
    Q_OBJECT
    Q_PROPERTY(QString text READ text WRITE setText)

public:
    explicit ElidedLabel(QWidget *parent = nullptr);
    explicit ElidedLabel(const QString &text, QWidget *parent = nullptr);

    QString text() const { return fullText; }
    /** Also what assistive programs read, unless an accessible name is set. */
    void setText(const QString &text);

    /** Whether the last painting had to cut the text short. */
    bool isElided() const { return elided; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    bool event(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;

private:
    QString fullText;
    bool elided = false;
    mutable QSize cachedSizeHint; // invalid until asked for
};

} // namespace Vireling
