#pragma once

#include "common/usb_support.h"

#include "support/kernel_fakes.h"
#include "support/log_capture.h"

#include <QByteArrayList>
#include <QObject>
#include <QStringList>

#include <memory>
#include <vector>

namespace TestSupport {

/** Everything the USB support tells, in one list in the order of its happening. */
class UsbDiary
{
public:
    /** Starts listening to the one USBSupport, which it makes when there is none. */
    UsbDiary();

    /** The names of the signals so far. */
    QStringList announced() const { return signalNames; }
    /** isUsbKeyPresent() as a slot of each signal read it. */
    std::vector<bool> presenceDuring() const { return presence; }
    /** isUsbKeyMounted() as a slot of each signal read it. */
    std::vector<bool> mountedDuring() const { return mounted; }
    /** How many lines were logged when a slot of each signal ran. */
    std::vector<int> linesBefore() const { return lineCounts; }
    /** What was logged; every line of it must be a trace of severity 0. */
    QByteArrayList lines() const;

    void clear();

private:
    void note(const char *signalName);

    LogCapture log;
    QStringList signalNames;
    std::vector<bool> presence;
    std::vector<bool> mounted;
    std::vector<int> lineCounts;
    std::unique_ptr<QObject> receiver = std::make_unique<QObject>();
};

/** Hands the event to the USB support on this thread, as if its time had come. */
bool notify(const QString &device, bool inserted);

/** The devices that were to be mounted, in order; how often something was unmounted. */
QByteArrayList mountedSources();
int unmounts();

/** `function` fails with `error` the next time. */
void failNext(KernelFunction function, int error);

} // namespace TestSupport
