#include "shown_texts.h"

#include <QAbstractItemView>
#include <QAction>
#include <QComboBox>
#include <QTabBar>
#include <QWidget>

namespace {

/** The properties of widgets and actions that hold texts for people. */
constexpr const char *textProperties[]{"text",           "title",       "subTitle",
                                       "description",    "windowTitle", "toolTip",
                                       "accessibleName", "plainText",   "placeholderText",
                                       "prefix",         "suffix",      "informativeText"};

class Collector
{
public:
    void addObject(const QObject &object)
    {
        const QString path = pathOf(object);
        for (const char *property : textProperties)
            add(path, QLatin1String(property), object.property(property).toString());
    }

    void addItems(const QObject &object, const QAbstractItemModel *model,
                  const QModelIndex &parent = QModelIndex())
    {
        if (!model)
            return;
        const QString path = pathOf(object);
        for (int row = 0; row < model->rowCount(parent); ++row) {
            for (int column = 0; column < model->columnCount(parent); ++column) {
                const QModelIndex index = model->index(row, column, parent);
                add(path, QStringLiteral("item %1").arg(texts.size()), index.data().toString());
            }
            addItems(object, model, model->index(row, 0, parent));
        }
    }

    void add(const QString &path, const QString &what, const QString &text)
    {
        if (!text.isEmpty())
            texts.insert(path + QLatin1Char(' ') + what, text);
    }

    QMap<QString, QString> texts;

    static QString pathOf(const QObject &object)
    {
        QString path;
        for (const QObject *step = &object; step; step = step->parent()) {
            const int place = step->parent()
                                  ? step->parent()->children().indexOf(const_cast<QObject *>(step))
                                  : 0;
            path.prepend(QStringLiteral("/%1[%2]").arg(
                QLatin1String(step->metaObject()->className()), QString::number(place)));
        }
        return path;
    }
};

} // namespace

QMap<QString, QString> shownTexts(const QWidget &window)
{
    Collector collector;
    collector.addObject(window);
    for (const QObject *object : window.findChildren<QObject *>()) {
        if (object->isWidgetType() || qobject_cast<const QAction *>(object))
            collector.addObject(*object);
        if (const auto *view = qobject_cast<const QAbstractItemView *>(object))
            collector.addItems(*view, view->model());
        if (const auto *box = qobject_cast<const QComboBox *>(object))
            collector.addItems(*box, box->model());
        if (const auto *bar = qobject_cast<const QTabBar *>(object))
            for (int tab = 0; tab < bar->count(); ++tab)
                collector.add(Collector::pathOf(*bar), QStringLiteral("tab %1").arg(tab),
                              bar->tabText(tab));
    }
    return collector.texts;
}
