#include "usb_support_fixture.h"

#include <QCoreApplication>

namespace TestSupport {

UsbDiary::UsbDiary()
{
    USBSupport *const usb = USBSupport::instance();
    QObject *const context = receiver.get();
    QObject::connect(usb, &USBSupport::usbKeyInserted, context, [this] { note("inserted"); });
    QObject::connect(usb, &USBSupport::usbKeyRemoved, context, [this] { note("removed"); });
    QObject::connect(usb, &USBSupport::usbKeyMounted, context, [this] { note("mounted"); });
    QObject::connect(usb, &USBSupport::usbKeyUnmounted, context, [this] { note("unmounted"); });
}

QByteArrayList UsbDiary::lines() const
{
    constexpr quint32 tracePriority = 104;
    QByteArrayList texts;
    for (const LogCapture::Entry &entry : log.entries())
        texts << (entry.priority == tracePriority ? entry.text : "not a trace: " + entry.text);
    return texts;
}

void UsbDiary::clear()
{
    log.clear();
    signalNames.clear();
    presence.clear();
    mounted.clear();
    lineCounts.clear();
}

void UsbDiary::note(const char *signalName)
{
    signalNames << QString::fromLatin1(signalName);
    presence.push_back(USBSupport::instance()->isUsbKeyPresent());
    mounted.push_back(USBSupport::instance()->isUsbKeyMounted());
    lineCounts.push_back(static_cast<int>(log.entries().size()));
}

bool notify(const QString &device, bool inserted)
{
    DeviceNotificationEvent event(device, inserted);
    return QCoreApplication::sendEvent(USBSupport::instance(), &event);
}

QByteArrayList mountedSources()
{
    QByteArrayList sources;
    for (const KernelCall &call : KernelFakes::instance().calls(KernelFunction::Mount))
        sources << call.source;
    return sources;
}

int unmounts()
{
    return static_cast<int>(KernelFakes::instance().calls(KernelFunction::Unmount).size());
}

void failNext(KernelFunction function, int error)
{
    KernelFakes::instance().script(function, {-1, error, {}});
}

} // namespace TestSupport
