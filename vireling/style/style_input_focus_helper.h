#pragma once

#include <QObject>
#include <QPointer>

class QFocusEvent;
class QFocusFrame;
class QWidget;

namespace Vireling {

/**
 * Keeps the keyboard focus visible where Qt alone would not. Owned by the style.
 *
 * Qt repaints only the part that has the focus: the line edit within a spin box or
 * an editable combo box, the viewport of a view. Their rings are drawn by the widget
 * around them, which this helper repaints when the focus comes or goes.
 *
 * A scroll area without a frame has nothing to draw a ring on; reached with the
 * keyboard, it gets a focus frame laid over it until the focus leaves. A view whose
 * current item is marked needs none.
 */
class StyleInputFocusHelper : public QObject
{
    Q_OBJECT

public:
    explicit StyleInputFocusHelper(QObject *parent = nullptr);
    ~StyleInputFocusHelper() override;

    /** Starts and stops caring for `widget`; for widgets without a ring of their own nothing. */
    void watch(QWidget *widget);
    void unwatch(QWidget *widget);

    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    void layFrameOver(QWidget *widget, const QFocusEvent &event);
    void takeFrameFrom(const QWidget *widget);

    QPointer<QFocusFrame> frame; // shared by all; Qt makes it a sibling of the widget it is on
};

} // namespace Vireling
