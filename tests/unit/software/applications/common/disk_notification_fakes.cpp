#include "disk_notification_fakes.h"

namespace TestSupport {

DiskNotificationFakes &DiskNotificationFakes::instance()
{
    static DiskNotificationFakes fakes;
    return fakes;
}

} // namespace TestSupport

// Every function of the service is here: one left out would bring the real ones along.
namespace Tessel {

namespace {

TestSupport::DiskNotificationFakes &fakes()
{
    return TestSupport::DiskNotificationFakes::instance();
}

} // namespace

void DiskNotification::initialise(const QString &directory)
{
    fakes().calls << QStringLiteral("initialise ") + directory;
}

void DiskNotification::shutdown()
{
    fakes().calls << QStringLiteral("shutdown");
}

void DiskNotification::addListener(Listener listener, void *context)
{
    fakes().calls << QStringLiteral("add");
    fakes().listener = listener;
    fakes().context = context;
}

void DiskNotification::removeListener(Listener listener)
{
    fakes().calls << (listener == fakes().listener ? QStringLiteral("remove")
                                                   : QStringLiteral("remove another"));
    fakes().listener = nullptr;
    fakes().context = nullptr;
}

bool DiskNotification::isPresent(const QString &name)
{
    fakes().calls << QStringLiteral("present ") + name;
    return fakes().present.contains(name);
}

int DiskNotification::deviceCount()
{
    return fakes().present.size();
}

QString DiskNotification::deviceAt(int index)
{
    return fakes().present.values().value(index);
}

} // namespace Tessel
