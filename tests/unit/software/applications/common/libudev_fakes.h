#pragma once

#include <QByteArray>
#include <QByteArrayList>

#include <optional>

namespace TestSupport {

/*
 * libudev as a test sees it: a program that has libudev_fakes.cpp among its sources calls
 * these definitions and none of the library's. Every folder is a device; nothing hangs
 * on USB but what a test says. One thread.
 */

/** What hangs above a device. */
struct UsbAncestor
{
    /** The text of "idVendor"; nothing for a device without that attribute. */
    std::optional<QByteArray> idVendor;
};

class LibudevFakes
{
public:
    static LibudevFakes &instance();

    /** Forgets calls and devices. What was handed out before is no longer valid. */
    void reset();

    /** Puts a USB device above the device of that folder. */
    void hangOnUsb(const QByteArray &folder, const UsbAncestor &ancestor);

    /**
     * The calls since reset(), in order: "new", "device FOLDER",
     * "parent SUBSYSTEM TYPE", "attribute NAME", "release device", "release parent",
     * "release nothing", "release context".
     */
    QByteArrayList calls() const;

    /** Forgets the calls alone. */
    void clearCalls();
};

} // namespace TestSupport
