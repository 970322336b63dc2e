#pragma once

#include <QEvent>
#include <QObject>
#include <QString>

/** A block device came or went: the way from the notification thread to the GUI thread. */
class DeviceNotificationEvent : public QEvent
{
public:
    DeviceNotificationEvent(const QString &deviceName, bool inserted);
    ~DeviceNotificationEvent() override;

    /** The type of every such event, registered before main. */
    static QEvent::Type eventType();

    /** Name of the node without "/dev/". */
    const QString deviceName;
    /** True for a device that appeared. */
    const bool inserted;
};

/**
 * Knows whether a USB key is plugged in, and mounts it at mountPoint() for as long as
 * somebody needs it: mounts are counted, so that nested users share one.
 *
 * One object a process. It belongs to the GUI thread, which makes it by the first call of
 * instance(); everything here is called there, and every signal is sent there.
 */
class USBSupport : public QObject
{
    Q_OBJECT

public:
    /** Made on the first call; never null. Starts the disk notification. */
    static USBSupport *instance();
    /** Ends it and stops the disk notification. Unmounts nothing. Nothing when there is none. */
    static void destroyInstance();

    /**
     * Takes a reference on the mounted key, mounting it for the first. False, and no
     * reference, when no key could be mounted. The folder mountPoint() must exist.
     */
    bool mount();
    /** Gives a reference back; the last unmounts. False only when the kernel refused that. */
    bool unmount();

    QString mountPoint() const;
    /** By the last insertion or removal heard of: a key may be gone all the same. */
    bool isUsbKeyPresent() const;
    /** Whether an unmount() is owed. */
    bool isUsbKeyMounted() const;

    bool event(QEvent *event) override;

    /**
     * Whether that block device counts as a USB key: it is present, and not of the one
     * excluded vendor. Waits for the disk notification's lock; any thread.
     */
    static bool isUsbDevice(const QString &deviceName);

signals:
    void usbKeyInserted();
    void usbKeyRemoved();
    void usbKeyMounted();
    void usbKeyUnmounted();

private:
    USBSupport();
    ~USBSupport() override;

    void handleDeviceNotification(const QString &deviceName, bool inserted);
    void abandonMount();

    bool usbKeyPresent = false;
    qint32 mountCount = 0;
};
