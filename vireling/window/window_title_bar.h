#pragma once

#include "vireling/palette/enums.h"
#include "vireling/widgets/translatable_widget.h"
#include "vireling/window/window_control_button.h"
#include "vireling/window/window_operation.h"

#include <QIcon>
#include <QMenu>
#include <QWidget>

#include <array>
#include <optional>

class QAction;
class QHBoxLayout;

namespace Vireling {

class ElidedLabel;
class IconLabel;

/**
 * The bar at the top of a window: icon, title, control buttons. It decides nothing
 * about the window, it asks by signals. Whoever places it calls updateStyle() once:
 * a new widget is told of no style.
 */
class WindowTitleBar : public TranslatableWidget<QWidget, Ui::NoForm>
{
    Q_OBJECT

public:
    explicit WindowTitleBar(QWidget *parent = nullptr);
    ~WindowTitleBar() override;

    QString title() const;
    void setTitle(const QString &title);

    QIcon icon() const;
    /** A null icon takes no room. */
    void setIcon(const QIcon &icon);

    /** The action behind a button; enabled and visible as its owner sets it. */
    QAction *controlAction(WindowControl control) const;
    WindowControlButton *controlButton(WindowControl control) const;

    /** The menu of the window, as it was last opened. */
    const QMenu *windowMenu() const { return &menu; }

    /** Takes sizes and icons from the style. */
    void updateStyle();

    /** To be called when the window was maximised, restored or shown. */
    void refreshMaximisedState();

    /** As high as the style wants title bars, whatever the contents. */
    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

signals:
    void controlTriggered(Vireling::WindowControl control);
    void operationRequested(Vireling::WindowOperation operation);

protected:
    void retranslate() override;
    void changeEvent(QEvent *event) override;
    void paintEvent(QPaintEvent *event) override;
    void mousePressEvent(QMouseEvent *event) override;
    void mouseMoveEvent(QMouseEvent *event) override;
    void mouseReleaseEvent(QMouseEvent *event) override;
    void mouseDoubleClickEvent(QMouseEvent *event) override;
    void contextMenuEvent(QContextMenuEvent *event) override;

private:
    int styleHeight() const;
    void createControl(WindowControl control);
    void layOut();
    void spaceTitle();
    bool isOnIcon(const QPoint &point) const;
    bool isOnButton(const QPoint &point) const;
    void openWindowMenu(const QPoint &globalPosition);

    IconLabel *const iconLabel;
    ElidedLabel *const titleLabel;
    std::array<QAction *, 4> actions{};             // by WindowControl
    std::array<WindowControlButton *, 4> buttons{}; // by WindowControl
    QHBoxLayout *const row;
    QMenu menu;
    std::optional<QPoint> pressPoint; // set while a drag may begin
};

} // namespace Vireling
