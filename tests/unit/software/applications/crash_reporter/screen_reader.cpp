#include "screen_reader.h"

#include <QAccessible>
#include <QList>
#include <QWidget>

#include <private/qguiapplication_p.h>
#include <qpa/qplatformaccessibility.h>
#include <qpa/qplatformintegration.h>

namespace TestSupport {

namespace {

struct Heard
{
    QAccessible::Event type;
    const QObject *object;
    QString name;
};

QList<Heard> heard;

void hear(QAccessibleEvent *event)
{
    const QAccessibleInterface *source = event->accessibleInterface();
    heard << Heard{event->type(), event->object(),
                   source ? source->text(QAccessible::Name) : QString()};
}

/** The platform tests run on tells nobody anything unless somebody is said to listen. */
void listen(bool active)
{
    QGuiApplicationPrivate::platformIntegration()->accessibility()->setActive(active);
}

} // namespace

ScreenReader::ScreenReader()
{
    heard.clear();
    QAccessible::installUpdateHandler(hear);
    listen(true);
}

ScreenReader::~ScreenReader()
{
    listen(false);
    QAccessible::installUpdateHandler(nullptr);
}

QStringList ScreenReader::namesOf(const QWidget &widget) const
{
    QStringList names;
    for (const Heard &event : qAsConst(heard))
        if (event.object == &widget && event.type == QAccessible::NameChanged)
            names << event.name;
    return names;
}

bool ScreenReader::heardHiding(const QWidget &widget) const
{
    for (const Heard &event : qAsConst(heard))
        if (event.object == &widget && event.type == QAccessible::ObjectHide)
            return true;
    return false;
}

} // namespace TestSupport
