#pragma once

#include <QPointer>
#include <QWidget>

namespace Vireling {

/**
 * Stands in a layout for a widget that belongs to the window and not to the layout:
 * it asks for the room that the content asks for, and the content lies exactly over
 * it, shown and hidden with it. For contents that stay while the layout around them
 * is made anew.
 *
 * The layout must be one of the content's parent. The content is neither reparented
 * nor deleted.
 */
class NonOwningProxyWidget : public QWidget
{
    Q_OBJECT

public:
    explicit NonOwningProxyWidget(QWidget *content, QWidget *parent = nullptr);

    /** Null once the content is gone. */
    QWidget *content() const { return ownContent; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;
    bool eventFilter(QObject *watched, QEvent *event) override;

protected:
    bool event(QEvent *event) override;

private:
    void placeContent();

    QPointer<QWidget> ownContent;
};

} // namespace Vireling
