#include "vireling/window/screen_changes.h"

#include <QApplication>
#include <QEvent>
#include <QPointer>
#include <QScreen>
#include <QStyle>
#include <QVariant>
#include <QVector>
#include <QWidget>
#include <QWindow>

namespace Vireling {

namespace {

QWidget *widgetOf(const QWindow &window)
{
    const QWidgetList widgets = QApplication::allWidgets();
    for (QWidget *const widget : widgets)
        if (widget->windowHandle() == &window)
            return widget;
    return nullptr;
}

void polishAnew(QWidget &widget)
{
    if (!widget.testAttribute(Qt::WA_WState_Polished))
        return; // will be, with the new sizes, when it is first shown
    widget.style()->unpolish(&widget);
    widget.style()->polish(&widget);
    QEvent styleChange(QEvent::StyleChange);
    QCoreApplication::sendEvent(&widget, &styleChange);
    widget.updateGeometry();
    widget.update();
}

/** From the outside in, as Qt announces styles: parents set what children inherit. */
void polishTreeAnew(QWidget &widget)
{
    polishAnew(widget);
    const QList<QWidget *> found =
        widget.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    // Guarded: a widget may throw its children away when it hears of a style.
    const QVector<QPointer<QWidget>> children(found.begin(), found.end());
    for (const QPointer<QWidget> &child : children)
        if (child && !child->windowHandle() && !child->isWindow())
            polishTreeAnew(*child);
}

/** What grew does not fit the old window any more; what shrank may keep it. */
void growToContents(QWidget &window)
{
    if (window.isWindow() && !window.isMaximized() && !window.isFullScreen())
        window.resize(window.size().expandedTo(window.minimumSizeHint()));
}

} // namespace

void watchScreen(QScreen *screen)
{
    if (!screen || screen->property(screenChangeHandlerProperty).toBool())
        return;
    screen->setProperty(screenChangeHandlerProperty, true);
    // Queued: the platform may still be changing other things of the same screen.
    QObject::connect(
        screen, &QScreen::logicalDotsPerInchChanged, screen,
        [screen] { refreshWindowsOn(*screen); }, Qt::QueuedConnection);
}

void refreshMetrics(QWindow &window)
{
    if (QWidget *const widget = widgetOf(window)) {
        polishTreeAnew(*widget);
        growToContents(*widget);
    }
    const QList<QWindow *> children =
        window.findChildren<QWindow *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWindow *const child : children)
        refreshMetrics(*child);
}

void refreshWindowsOn(const QScreen &screen)
{
    const QWidgetList widgets = QApplication::topLevelWidgets();
    for (const QWidget *const widget : widgets)
        if (widget->windowHandle() && widget->windowHandle()->screen() == &screen)
            refreshMetrics(*widget->windowHandle());
}

void forwardScreenChange(QWindow &window, QScreen *screen)
{
    watchScreen(screen);
    refreshMetrics(window);
}

} // namespace Vireling
