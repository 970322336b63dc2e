#include "libudev_fakes.h"

#include <libudev.h>

#include <algorithm>
#include <map>
#include <memory>
#include <vector>

// The library's names for them; what is behind is nobody else's business.
struct udev
{};

struct udev_device
{
    QByteArray folder;
    std::optional<QByteArray> idVendor;
    std::unique_ptr<udev_device> parent;
};

namespace TestSupport {

namespace {

struct Library
{
    QByteArrayList calls;
    std::map<QByteArray, UsbAncestor> ancestors;
    std::vector<std::unique_ptr<udev_device>> devices;
    udev context;
};

Library &library()
{
    static Library library;
    return library;
}

bool isDevice(const udev_device *device)
{
    const auto &devices = library().devices;
    return std::any_of(devices.begin(), devices.end(),
                       [device](const auto &known) { return known.get() == device; });
}

} // namespace

LibudevFakes &LibudevFakes::instance()
{
    static LibudevFakes fakes;
    return fakes;
}

void LibudevFakes::reset()
{
    library() = {};
}

void LibudevFakes::hangOnUsb(const QByteArray &folder, const UsbAncestor &ancestor)
{
    library().ancestors[folder] = ancestor;
}

QByteArrayList LibudevFakes::calls() const
{
    return library().calls;
}

void LibudevFakes::clearCalls()
{
    library().calls.clear();
}

} // namespace TestSupport

using TestSupport::library;

extern "C" {

udev *udev_new()
{
    library().calls << "new";
    return &library().context;
}

udev *udev_unref(udev *context)
{
    library().calls << (context == &library().context ? "release context" : "release unknown");
    return nullptr;
}

// As the library: a folder that is none makes no device.
udev_device *udev_device_new_from_syspath(udev * /*context*/, const char *folder)
{
    library().calls << QByteArray("device ") + folder;
    if (*folder == '\0')
        return nullptr;
    auto device = std::make_unique<udev_device>();
    device->folder = folder;
    library().devices.push_back(std::move(device));
    return library().devices.back().get();
}

udev_device *udev_device_get_parent_with_subsystem_devtype(udev_device *device,
                                                           const char *subsystem, const char *type)
{
    library().calls << QByteArray("parent ") + subsystem + ' ' + type;
    if (device == nullptr)
        return nullptr;
    const auto found = library().ancestors.find(device->folder);
    if (found == library().ancestors.end())
        return nullptr;
    device->parent = std::make_unique<udev_device>();
    device->parent->idVendor = found->second.idVendor;
    if (device->parent->idVendor)
        device->parent->idVendor->detach();
    return device->parent.get();
}

const char *udev_device_get_sysattr_value(udev_device *device, const char *name)
{
    library().calls << QByteArray("attribute ") + name;
    return device->idVendor ? device->idVendor->constData() : nullptr;
}

// A parent's text goes with it: who still reads it afterwards reads something else.
udev_device *udev_device_unref(udev_device *device)
{
    if (device == nullptr) {
        library().calls << "release nothing";
        return nullptr;
    }
    library().calls << (TestSupport::isDevice(device) ? "release device" : "release parent");
    if (device->idVendor)
        device->idVendor->fill('?');
    return nullptr;
}
}
