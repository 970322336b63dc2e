#pragma once

#include "vireling/window/window_operation.h"

#include <QMargins>
#include <QPoint>
#include <QWidget>

#include <optional>

namespace Vireling {

/**
 * The invisible rim of a window: lies over all of it, but only its margins are
 * there for the pointer. Shows the cursors of resizing and asks for it when dragged.
 */
class WindowResizeArea : public QWidget
{
    Q_OBJECT

public:
    explicit WindowResizeArea(QWidget *parent = nullptr);

    QMargins margins() const { return ownMargins; }
    /** In pixels. With all at 0 the area is hidden. */
    void setMargins(int left, int top, int right, int bottom);

signals:
    void operationRequested(Vireling::WindowOperation operation);

protected:
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void resizeEvent(QResizeEvent *event) override;

private:
    struct Press
    {
        WindowOperation operation;
        QPoint point;
    };

    std::optional<WindowOperation> operationAt(const QPoint &point) const;
    void showCursorAt(const QPoint &point);
    void updateMask();

    QMargins ownMargins;
    std::optional<Press> press; // set while the button is held on an edge
    std::optional<Qt::CursorShape> shownCursor;
};

} // namespace Vireling
