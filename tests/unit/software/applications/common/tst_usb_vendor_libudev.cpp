#include "common/usb_vendor.h"

#include "support/scratch_machine.h"

#include <QDir>
#include <QFile>
#include <QtTest>

namespace {

// The kernel's tree for one key, from its USB port up to its disk.
constexpr char usbDevice[] = "/sys/devices/usb1/1-1";
constexpr char usbInterface[] = "/sys/devices/usb1/1-1/1-1:1.0";
constexpr char scsiDevice[] = "/sys/devices/usb1/1-1/1-1:1.0/host0/0:0:0:0";
constexpr char disk[] = "/sys/devices/usb1/1-1/1-1:1.0/host0/0:0:0:0/block/sda";

void writeFile(const QString &path, const QByteArray &content)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(content) != content.size())
        qFatal("cannot write %s", qPrintable(path));
}

void makeLink(const QString &target, const QString &path)
{
    if (!QFile::link(target, path))
        qFatal("cannot link %s", qPrintable(path));
}

void addDevice(const QString &folder, const QByteArray &event, const QString &subsystem)
{
    const QString subsystemFolder = QStringLiteral("/sys/bus/") + subsystem;
    if (!QDir().mkpath(folder) || !QDir().mkpath(subsystemFolder))
        qFatal("cannot make %s", qPrintable(folder));
    writeFile(folder + QStringLiteral("/uevent"), event);
    makeLink(subsystemFolder, folder + QStringLiteral("/subsystem"));
}

void addKey(const QByteArray &idVendor)
{
    addDevice(usbDevice, "DEVTYPE=usb_device\n", "usb");
    addDevice(usbInterface, "DEVTYPE=usb_interface\n", "usb");
    addDevice(scsiDevice, "DEVTYPE=scsi_device\n", "scsi");
    addDevice(disk, "DEVTYPE=disk\n", "block");
    if (!QDir().mkpath("/sys/block"))
        qFatal("cannot make /sys/block");
    makeLink(disk, "/sys/block/sda");
    makeLink(scsiDevice, QLatin1String(disk) + QStringLiteral("/device"));
    if (!idVendor.isNull())
        writeFile(QLatin1String(usbDevice) + QStringLiteral("/idVendor"), idVendor);
}

} // namespace

/** What the real libudev makes of a tree like the kernel's. */
class TestUsbVendorLibudev : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init() { TestSupport::removeAllDisks(); }
    void cleanup();
    void cleanupTestCase() { TestSupport::removeAllDisks(); }

    void theVendorIsThatOfTheUsbDevice_data();
    void theVendorIsThatOfTheUsbDevice();
    void aDiskOnNoUsbDeviceHasNoVendor();
    void aDiskUnknownToTheKernelHasNoVendor();
    void aDeviceThatCannotBeOpenedHasNoVendor();
    void manyLooksLeaveTheLibraryWhole();
};

void TestUsbVendorLibudev::initTestCase()
{
    QVERIFY2(TestSupport::onScratchMachine(), "only in the sandbox");
    // libudev believes nothing that is not the kernel's own file system, unless told to.
    qputenv("SYSTEMD_DEVICE_VERIFY_SYSFS", "0");
}

void TestUsbVendorLibudev::cleanup()
{
    qputenv("SYSTEMD_DEVICE_VERIFY_SYSFS", "0");
}

void TestUsbVendorLibudev::theVendorIsThatOfTheUsbDevice_data()
{
    QTest::addColumn<QByteArray>("idVendor");
    QTest::addColumn<int>("vendor");
    QTest::newRow("excluded") << QByteArray("064f\n") << 0x064F;
    QTest::newRow("a key's") << QByteArray("0781\n") << 0x0781;
    QTest::newRow("not told") << QByteArray() << 0;
}

void TestUsbVendorLibudev::theVendorIsThatOfTheUsbDevice()
{
    QFETCH(const QByteArray, idVendor);
    addKey(idVendor);

    QTEST(usbVendorOf("sda"), "vendor");
    QTEST(usbVendorOf("sda1"), "vendor");
}

void TestUsbVendorLibudev::aDiskOnNoUsbDeviceHasNoVendor()
{
    addDevice("/sys/devices/ata1/0:0:0:0", "DEVTYPE=scsi_device\n", "scsi");
    QVERIFY(QDir().mkpath("/sys/block/sda"));
    makeLink("/sys/devices/ata1/0:0:0:0", "/sys/block/sda/device");

    QCOMPARE(usbVendorOf("sda"), 0);
}

void TestUsbVendorLibudev::aDiskUnknownToTheKernelHasNoVendor()
{
    addKey("064f\n");

    QCOMPARE(usbVendorOf("sdb1"), 0);
}

void TestUsbVendorLibudev::aDeviceThatCannotBeOpenedHasNoVendor()
{
    addKey("064f\n");
    qunsetenv("SYSTEMD_DEVICE_VERIFY_SYSFS");

    QCOMPARE(usbVendorOf("sda"), 0);
}

// The parent is given back although it is only lent, the device is kept: nothing may be
// used or freed twice. The address sanitiser and valgrind look at this one.
void TestUsbVendorLibudev::manyLooksLeaveTheLibraryWhole()
{
    addKey("064f\n");

    for (int look = 0; look < 500; ++look)
        QCOMPARE(usbVendorOf("sda1"), 0x064F);
}

QTEST_GUILESS_MAIN(TestUsbVendorLibudev)
#include "tst_usb_vendor_libudev.moc"
