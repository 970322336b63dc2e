#include "common/usb_vendor.h"

#include <QDir>
#include <QRegularExpression>

#include <libudev.h>

#include <memory>

namespace {

// The one vendor whose disks are never offered to the operator.
constexpr int excludedVendor = 0x064F;

struct ContextRelease
{
    void operator()(udev *context) const { udev_unref(context); }
};
using UdevContext = std::unique_ptr<udev, ContextRelease>;

/*
 * The USB device above `device`; null when there is none.
 *
 * libudev only lends it: the one reference belongs to `device`. It is given back here all
 * the same, which frees the parent and leaves `device` with a pointer to nothing. That is
 * sound only because `device` is never released or asked again: releasing it as well
 * would free the parent twice. Change neither of the two without the other.
 */
class UsbParent
{
public:
    explicit UsbParent(udev_device *device)
        : parent(udev_device_get_parent_with_subsystem_devtype(device, "usb", "usb_device"))
    {}
    ~UsbParent() { udev_device_unref(parent); }
    Q_DISABLE_COPY(UsbParent)

    // The text belongs to the parent: it is copied while there is one.
    QString idVendor() const
    {
        if (parent == nullptr)
            return {};
        return QString::fromLatin1(udev_device_get_sysattr_value(parent, "idVendor"));
    }

private:
    udev_device *parent;
};

QByteArray deviceFolderOf(const QString &deviceName)
{
    const QDir folder(QStringLiteral("/sys/block/%1/device").arg(diskNameOf(deviceName)));
    return folder.canonicalPath().toLocal8Bit();
}

} // namespace

int usbVendorOf(const QString &deviceName)
{
    const QByteArray folder = deviceFolderOf(deviceName);
    const UdevContext context(udev_new());
    // Never released: see UsbParent, which takes its parent apart. Each look at a device costs
    // 2 to 3 KB that way.
    udev_device *const device = udev_device_new_from_syspath(context.get(), folder.constData());
    const UsbParent parent(device);
    return vendorNumber(parent.idVendor());
}

QString diskNameOf(const QString &deviceName)
{
    static const QRegularExpression digits(QStringLiteral("\\d+"));
    return QString(deviceName).replace(digits, QString());
}

int vendorNumber(const QString &idVendor)
{
    constexpr int hexadecimal = 16;
    return idVendor.toInt(nullptr, hexadecimal);
}

bool isExcludedVendor(int vendor)
{
    return vendor == excludedVendor;
}
