#include "common/usb_support.h"

#include "common/usb_vendor.h"
#include "tessel_core/disk_notification.h"
#include "tessel_core/log.h"

#include <QCoreApplication>

#include <array>
#include <cerrno>

#include <sys/mount.h>

using Tessel::DiskNotification;

namespace {

const int deviceNotificationEventType = QEvent::registerEventType();

// In the order of trying: a key's first partition before a key without partitions. Other
// partitions are announced but never mounted.
const std::array<QString, 4> usbCandidateDevices{QStringLiteral("sda1"), QStringLiteral("sda"),
                                                 QStringLiteral("sdb1"), QStringLiteral("sdb")};

constexpr char mountPointPath[] = "/usbkey";
constexpr char fileSystemType[] = "vfat";
constexpr quint32 traceSeverity = 0;

USBSupport *theInstance = nullptr;

void trace(const char *text)
{
    Tessel::trace(traceSeverity, "%s", text);
}

// Runs on the watcher thread under the disk notification's lock: it only passes on.
void onDiskNotification(const QString &name, bool inserted, void *context)
{
    QCoreApplication::postEvent(static_cast<USBSupport *>(context),
                                new DeviceNotificationEvent(name, inserted));
}

// A mount point that is busy already holds the key, left there by an earlier run.
bool mountDevice(const QString &name)
{
    const QByteArray source = QStringLiteral("/dev/%1").arg(name).toLocal8Bit();
    const int result = ::mount(source.constData(), mountPointPath, fileSystemType, MS_NOATIME, "");
    return result == 0 || errno == EBUSY;
}

bool mountFirstCandidate()
{
    for (const QString &name : usbCandidateDevices)
        if (USBSupport::isUsbDevice(name) && mountDevice(name))
            return true;
    return false;
}

} // namespace

DeviceNotificationEvent::DeviceNotificationEvent(const QString &name, bool isInserted)
    : QEvent(eventType())
    , deviceName(name)
    , inserted(isInserted)
{}

DeviceNotificationEvent::~DeviceNotificationEvent() = default;

QEvent::Type DeviceNotificationEvent::eventType()
{
    return static_cast<QEvent::Type>(deviceNotificationEventType);
}

USBSupport *USBSupport::instance()
{
    if (theInstance == nullptr)
        theInstance = new USBSupport;
    return theInstance;
}

void USBSupport::destroyInstance()
{
    delete theInstance;
    theInstance = nullptr;
}

USBSupport::USBSupport()
{
    DiskNotification::initialise();
    DiskNotification::addListener(onDiskNotification, this);
    for (const QString &name : usbCandidateDevices)
        usbKeyPresent |= isUsbDevice(name);
}

// A mounted key stays mounted: its user may still be writing.
USBSupport::~USBSupport()
{
    DiskNotification::removeListener(onDiskNotification);
    DiskNotification::shutdown();
}

bool USBSupport::mount()
{
    const qint32 users = mountCount++;
    if (users != 0)
        return true;
    trace("Try to mount USB key\n");
    if (mountFirstCandidate()) {
        trace("Mounted USB key\n");
        emit usbKeyMounted();
        return true;
    }
    trace("Failed to mount USB Key\n");
    mountCount--;
    return mountCount != 0;
}

bool USBSupport::unmount()
{
    if (mountCount < 1)
        return true;
    mountCount--;
    if (mountCount > 0)
        return true;
    trace("Try to unmount USB key\n");
    if (umount(mountPointPath) != 0) {
        trace("Failed to unmount USB Key\n");
        mountCount++;
        return false;
    }
    trace("Unmounted USB key\n");
    emit usbKeyUnmounted();
    return true;
}

QString USBSupport::mountPoint() const
{
    return QString::fromLatin1(mountPointPath);
}

bool USBSupport::isUsbKeyPresent() const
{
    return usbKeyPresent;
}

bool USBSupport::isUsbKeyMounted() const
{
    return mountCount != 0;
}

bool USBSupport::event(QEvent *event)
{
    if (event->type() != deviceNotificationEventType)
        return QObject::event(event);
    if (const auto *notification = dynamic_cast<DeviceNotificationEvent *>(event))
        handleDeviceNotification(notification->deviceName, notification->inserted);
    return true;
}

// Everything present counts but the one vendor, also what has no USB device above it, as a
// key in some card readers: an internal disk that is named "sda" counts as well.
bool USBSupport::isUsbDevice(const QString &deviceName)
{
    return DiskNotification::isPresent(deviceName) && !isExcludedVendor(usbVendorOf(deviceName));
}

/*
 * A removal normally ends at isUsbDevice(): the disk notification has dropped the name by
 * the time it gets here. The panel and the save rely on that: a key that is gone shows by
 * mount() failing, and no count changes under them. What follows is for a name that is
 * there again.
 */
void USBSupport::handleDeviceNotification(const QString &deviceName, bool inserted)
{
    if (!deviceName.startsWith(QLatin1String("sda")) &&
        !deviceName.startsWith(QLatin1String("sdb")))
        return;
    if (!isUsbDevice(deviceName))
        return;
    if (inserted) {
        Tessel::trace(traceSeverity, "USB key %s\n", "inserted");
        emit usbKeyInserted();
    } else {
        Tessel::trace(traceSeverity, "USB key %s\n", "removed");
        abandonMount();
        emit usbKeyRemoved();
    }
    // After the signal: its slots still read what was.
    usbKeyPresent = inserted;
}

void USBSupport::abandonMount()
{
    if (mountCount <= 0)
        return;
    trace("USB key removed without unmounting\n");
    unmount();
    mountCount = 0;
}
