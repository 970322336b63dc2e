#include "support/layout_check.h"

#include "support/text_fit.h"

#include <QAbstractScrollArea>
#include <QDockWidget>
#include <QLayout>
#include <QMainWindow>
#include <QSplitter>
#include <QStackedLayout>
#include <QTabBar>
#include <QVector>
#include <QWidget>

namespace {

QString nameOf(const QWidget &widget)
{
    return QStringLiteral("%1 \"%2\"")
        .arg(QLatin1String(widget.metaObject()->className()), textOf(widget));
}

QString asText(const QRect &rect)
{
    return QStringLiteral("%1,%2 %3x%4")
        .arg(rect.x())
        .arg(rect.y())
        .arg(rect.width())
        .arg(rect.height());
}

/** What Qt lays over the border of a main window and its docks, invisible, to be hit more easily.
 */
constexpr char wideSplitterHandle[] = "qt_qmainwindow_extended_splitter";

/** The docks under a common tab bar that are not in front; Qt moves them far away. */
bool isBehindATab(const QWidget &widget)
{
    auto *dock = const_cast<QDockWidget *>(qobject_cast<const QDockWidget *>(&widget));
    const auto *window = qobject_cast<const QMainWindow *>(widget.parentWidget());
    return dock && window && !window->tabifiedDockWidgets(dock).isEmpty() &&
           dock->visibleRegion().isEmpty();
}

/** What a scroll area scrolls and the tabs that scroll out of a bar lie outside by design. */
bool mayReachOutside(const QWidget &widget)
{
    const QWidget *parent = widget.parentWidget();
    if (isBehindATab(widget) || widget.objectName() == QLatin1String(wideSplitterHandle))
        return true;
    const auto *area = qobject_cast<const QAbstractScrollArea *>(parent->parentWidget());
    const auto *tabs = qobject_cast<const QTabBar *>(parent);
    return (area && area->viewport() == parent) || (tabs && tabs->usesScrollButtons());
}

/** Running right to left, Qt's splitter lays out its parts one pixel too far to the right. */
QRect roomOf(const QWidget &parent)
{
    const bool shifted = qobject_cast<const QSplitter *>(&parent) && parent.isRightToLeft();
    return parent.rect().adjusted(0, 0, shifted ? 1 : 0, 0);
}

void checkWithinParent(const QWidget &widget, QStringList &problems)
{
    const QRect room = roomOf(*widget.parentWidget());
    if (mayReachOutside(widget) || widget.size().isEmpty() || room.contains(widget.geometry()))
        return;
    problems << QStringLiteral("%1 at %2 reaches out of its parent of %3")
                    .arg(nameOf(widget), asText(widget.geometry()), asText(room));
}

/** The visible widgets that a layout places, those of its inner layouts too. */
void collectPlaced(QLayout &layout, QVector<QWidget *> &placed)
{
    if (qobject_cast<QStackedLayout *>(&layout))
        return; // on top of each other, one visible
    for (int index = 0; index < layout.count(); ++index) {
        QLayoutItem *item = layout.itemAt(index);
        if (item->layout())
            collectPlaced(*item->layout(), placed);
        else if (item->widget() && item->widget()->isVisible())
            placed << item->widget();
    }
}

/** A main window's own layout cannot be asked what it places. */
QVector<QWidget *> placedInMainWindow(const QMainWindow &window)
{
    QVector<QWidget *> placed;
    const auto children = window.findChildren<QWidget *>(QString(), Qt::FindDirectChildrenOnly);
    for (QWidget *child : children)
        if (child->isVisible() && !isBehindATab(*child) &&
            child->objectName() != QLatin1String(wideSplitterHandle))
            placed << child;
    return placed;
}

QVector<QWidget *> placedIn(const QWidget &widget)
{
    if (const auto *window = qobject_cast<const QMainWindow *>(&widget))
        return placedInMainWindow(*window);
    QVector<QWidget *> placed;
    if (widget.layout())
        collectPlaced(*widget.layout(), placed);
    return placed;
}

void checkOverlaps(const QWidget &widget, QStringList &problems)
{
    const QVector<QWidget *> placed = placedIn(widget);
    for (int first = 0; first < placed.size(); ++first)
        for (int second = first + 1; second < placed.size(); ++second)
            if (placed[first]->geometry().intersects(placed[second]->geometry()))
                problems << QStringLiteral("%1 at %2 overlaps %3 at %4")
                                .arg(nameOf(*placed[first]), asText(placed[first]->geometry()),
                                     nameOf(*placed[second]), asText(placed[second]->geometry()));
}

} // namespace

QStringList layoutProblems(const QWidget &window)
{
    QStringList problems;
    checkOverlaps(window, problems);
    const auto widgets = window.findChildren<QWidget *>();
    for (const QWidget *widget : widgets) {
        if (widget->isWindow() || !widget->isVisible())
            continue;
        checkWithinParent(*widget, problems);
        checkOverlaps(*widget, problems);
        const QString misfit = textMisfit(*widget);
        if (!misfit.isEmpty())
            problems << nameOf(*widget) + QLatin1String(": ") + misfit;
    }
    return problems;
}
