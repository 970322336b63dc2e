#include "common/usb_vendor.h"

#include "libudev_fakes.h"
#include "support/scratch_machine.h"

#include <QtTest>

using TestSupport::addDiskFolder;
using TestSupport::LibudevFakes;

namespace {

LibudevFakes &libudev()
{
    return LibudevFakes::instance();
}

} // namespace

/** What is made of a device's name, and of what libudev says about it. */
class TestUsbVendor : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(TestSupport::onScratchMachine(), "only in the sandbox"); }
    void init();
    void cleanupTestCase() { TestSupport::removeAllDisks(); }

    void aPartitionBelongsToTheDiskWithoutItsDigits_data();
    void aPartitionBelongsToTheDiskWithoutItsDigits();
    void theAttributeIsHexadecimal_data();
    void theAttributeIsHexadecimal();
    void oneVendorIsExcluded_data();
    void oneVendorIsExcluded();

    void libudevIsAskedAboutTheFolderTheLinkLeadsTo();
    void aPartitionAsksAboutItsDisk();
    void aDiskUnknownToTheKernelHasNoVendor();
    void aDiskOnNoUsbDeviceHasNoVendor();
    void aUsbDeviceThatDoesNotTellHasNoVendor();
    void theTextIsReadBeforeTheParentIsReleased();
    void theDeviceIsNeverReleased();
};

void TestUsbVendor::init()
{
    TestSupport::removeAllDisks();
    libudev().reset();
}

void TestUsbVendor::aPartitionBelongsToTheDiskWithoutItsDigits_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<QString>("disk");
    QTest::newRow("disk") << "sda"
                          << "sda";
    QTest::newRow("partition") << "sda1"
                               << "sda";
    QTest::newRow("two digits") << "sdb15"
                                << "sdb";
    QTest::newRow("every run of digits") << "sd1a2"
                                         << "sda";
    QTest::newRow("digits only") << "42"
                                 << "";
    QTest::newRow("no name") << ""
                             << "";
}

void TestUsbVendor::aPartitionBelongsToTheDiskWithoutItsDigits()
{
    QFETCH(const QString, device);
    QTEST(diskNameOf(device), "disk");
}

void TestUsbVendor::theAttributeIsHexadecimal_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<int>("number");
    QTest::newRow("as the kernel writes it") << "064f" << 0x064F;
    QTest::newRow("capital") << "064F" << 0x064F;
    QTest::newRow("short") << "64f" << 0x064F;
    QTest::newRow("with its base") << "0x064f" << 0x064F;
    QTest::newRow("with its line end") << "064f\n" << 0x064F;
    QTest::newRow("digits only") << "1615" << 0x1615;
    QTest::newRow("largest") << "ffff" << 0xFFFF;
    QTest::newRow("missing") << QString() << 0;
    QTest::newRow("empty") << "" << 0;
    QTest::newRow("no number") << "064g" << 0;
    QTest::newRow("too large for a number") << "fffffffff" << 0;
}

void TestUsbVendor::theAttributeIsHexadecimal()
{
    QFETCH(const QString, text);
    QTEST(vendorNumber(text), "number");
}

void TestUsbVendor::oneVendorIsExcluded_data()
{
    QTest::addColumn<int>("vendor");
    QTest::addColumn<bool>("excluded");
    QTest::newRow("the one") << 0x064F << true;
    QTest::newRow("the one in decimal") << 1615 << true;
    QTest::newRow("one below") << 0x064E << false;
    QTest::newRow("one above") << 0x0650 << false;
    QTest::newRow("its digits in decimal") << 64 << false;
    QTest::newRow("none") << 0 << false;
    QTest::newRow("a key's") << 0x0781 << false;
}

void TestUsbVendor::oneVendorIsExcluded()
{
    QFETCH(const int, vendor);
    QTEST(isExcludedVendor(vendor), "excluded");
}

void TestUsbVendor::libudevIsAskedAboutTheFolderTheLinkLeadsTo()
{
    const QByteArray folder = addDiskFolder("sda");
    libudev().hangOnUsb(folder, {"0781"});

    QCOMPARE(usbVendorOf("sda"), 0x0781);

    QCOMPARE(libudev().calls(),
             QByteArrayList({"new", "device " + folder, "parent usb usb_device",
                             "attribute idVendor", "release parent", "release context"}));
}

void TestUsbVendor::aPartitionAsksAboutItsDisk()
{
    libudev().hangOnUsb(addDiskFolder("sda"), {"1111"});
    libudev().hangOnUsb(addDiskFolder("sdb"), {"2222"});

    QCOMPARE(usbVendorOf("sda5"), 0x1111);
    QCOMPARE(usbVendorOf("sdb12"), 0x2222);
}

void TestUsbVendor::aDiskUnknownToTheKernelHasNoVendor()
{
    QCOMPARE(usbVendorOf("sda"), 0);

    QCOMPARE(libudev().calls(), QByteArrayList({"new", "device ", "parent usb usb_device",
                                                "release nothing", "release context"}));
}

void TestUsbVendor::aDiskOnNoUsbDeviceHasNoVendor()
{
    const QByteArray folder = addDiskFolder("sda");

    QCOMPARE(usbVendorOf("sda"), 0);

    QCOMPARE(libudev().calls(), QByteArrayList({"new", "device " + folder, "parent usb usb_device",
                                                "release nothing", "release context"}));
}

void TestUsbVendor::aUsbDeviceThatDoesNotTellHasNoVendor()
{
    libudev().hangOnUsb(addDiskFolder("sda"), {});

    QCOMPARE(usbVendorOf("sda"), 0);

    QVERIFY(libudev().calls().contains("attribute idVendor"));
    QVERIFY(libudev().calls().contains("release parent"));
}

// The fake parent spoils its text when it is released, as the library frees it.
void TestUsbVendor::theTextIsReadBeforeTheParentIsReleased()
{
    libudev().hangOnUsb(addDiskFolder("sdb"), {"064f"});

    QCOMPARE(usbVendorOf("sdb"), 0x064F);
    QCOMPARE(usbVendorOf("sdb1"), 0x064F);
}

// It would release the parent, which is released already, once more.
void TestUsbVendor::theDeviceIsNeverReleased()
{
    libudev().hangOnUsb(addDiskFolder("sda"), {"0781"});
    addDiskFolder("sdb");

    usbVendorOf("sda1");
    usbVendorOf("sdb1");

    QCOMPARE(libudev().calls().count("release context"), 2);
    QVERIFY(!libudev().calls().contains("release device"));
}

QTEST_GUILESS_MAIN(TestUsbVendor)
#include "tst_usb_vendor.moc"
