#include "common/usb_support.h"

#include "libudev_fakes.h"
#include "support/kernel_fakes.h"
#include "support/scratch_machine.h"
#include "tessel_core/disk_notification.h"
#include "usb_support_fixture.h"

#include <QtTest>

#include <cerrno>

#include <sys/mount.h>

using Tessel::DiskNotification;
using TestSupport::addNode;
using TestSupport::failNext;
using TestSupport::KernelCall;
using TestSupport::KernelFakes;
using TestSupport::KernelFunction;
using TestSupport::LibudevFakes;
using TestSupport::mountedSources;
using TestSupport::unmounts;
using TestSupport::UsbDiary;

namespace {

const QByteArrayList mountLines{"Try to mount USB key\n", "Mounted USB key\n"};
const QByteArrayList failedMountLines{"Try to mount USB key\n", "Failed to mount USB Key\n"};
const QByteArrayList unmountLines{"Try to unmount USB key\n", "Unmounted USB key\n"};
const QByteArrayList failedUnmountLines{"Try to unmount USB key\n", "Failed to unmount USB Key\n"};

USBSupport &usb()
{
    return *USBSupport::instance();
}

// Whole disks are listed only without partitions: those come afterwards.
void plugEveryCandidate()
{
    addNode("sda");
    addNode("sdb");
    USBSupport::instance();
    addNode("sda1");
    addNode("sdb1");
    QTRY_COMPARE(DiskNotification::deviceCount(), 4);
    QCoreApplication::sendPostedEvents();
}

} // namespace

Q_DECLARE_METATYPE(QByteArrayList)

/** Mounting and unmounting, with the kernel's answers scripted. */
class TestUsbSupportMount : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(TestSupport::onScratchMachine(), "only in the sandbox"); }
    void init();
    void cleanup();

    void theMountPointIsFixed();
    void theKeyIsMountedAsVfatWithoutAccessTimes();
    void aMountIsTracedAndAnnounced();
    void theAttemptsAreTracedBeforeTheKernelIsAsked();
    void theFirstPartitionOfTheFirstDiskIsTriedFirst();
    void candidatesThatDoNotCountAreSkipped_data();
    void candidatesThatDoNotCountAreSkipped();
    void otherPartitionsAreNeverMounted();
    void aDiskOfTheExcludedVendorIsNeverMounted();
    void afterAFailureTheNextCandidateIsTriedInSilence_data();
    void afterAFailureTheNextCandidateIsTriedInSilence();
    void aBusyMountPointCountsAsMounted();
    void aBusyMountPointCountsForALaterCandidateToo();
    void anOldErrorDoesNotCountAsBusy();
    void whenEveryCandidateFailsNothingIsMounted();
    void withoutAnyDeviceNothingIsTried();
    void aKeyThatIsGoneShowsByAFailedMount();

    void twoUsersShareOneMount();
    void unmountingNothingIsASuccess();
    void aFailedUnmountIsStillOwed_data();
    void aFailedUnmountIsStillOwed();
    void aKeyCanBeMountedAgain();
};

void TestUsbSupportMount::init()
{
    TestSupport::removeAllDisks();
    KernelFakes::instance().reset();
    LibudevFakes::instance().reset();
}

void TestUsbSupportMount::cleanup()
{
    USBSupport::destroyInstance();
    TestSupport::removeAllDisks();
}

void TestUsbSupportMount::theMountPointIsFixed()
{
    QCOMPARE(usb().mountPoint(), QString("/usbkey"));
}

void TestUsbSupportMount::theKeyIsMountedAsVfatWithoutAccessTimes()
{
    addNode("sdb1");

    QVERIFY(usb().mount());

    const auto calls = KernelFakes::instance().calls();
    QCOMPARE(calls.size(), std::size_t(1));
    const KernelCall &call = calls.front();
    QCOMPARE(call.function, KernelFunction::Mount);
    QCOMPARE(call.source, QByteArray("/dev/sdb1"));
    QCOMPARE(call.path, QByteArray("/usbkey"));
    QCOMPARE(call.fileSystem, QByteArray("vfat"));
    QCOMPARE(call.code, static_cast<unsigned long>(MS_NOATIME));
    QVERIFY(call.options.has_value());
    QCOMPARE(*call.options, QByteArray(""));
}

void TestUsbSupportMount::aMountIsTracedAndAnnounced()
{
    addNode("sda1");
    UsbDiary diary;

    QVERIFY(!usb().isUsbKeyMounted());
    QVERIFY(usb().mount());

    QVERIFY(usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), mountLines);
    QCOMPARE(diary.announced(), QStringList{"mounted"});
    QCOMPARE(diary.mountedDuring(), std::vector<bool>{true});
    QCOMPARE(diary.linesBefore(), std::vector<int>{2});
}

void TestUsbSupportMount::theAttemptsAreTracedBeforeTheKernelIsAsked()
{
    addNode("sda1");
    UsbDiary diary;
    QByteArrayList atMount;
    QByteArrayList atUnmount;
    KernelFakes::instance().observe(KernelFunction::Mount,
                                    [&](const KernelCall &) { atMount = diary.lines(); });
    KernelFakes::instance().observe(KernelFunction::Unmount,
                                    [&](const KernelCall &) { atUnmount = diary.lines(); });

    QVERIFY(usb().mount());
    QVERIFY(usb().unmount());

    QCOMPARE(atMount, mountLines.mid(0, 1));
    QCOMPARE(atUnmount, mountLines + unmountLines.mid(0, 1));
    KernelFakes::instance().reset();
}

void TestUsbSupportMount::theFirstPartitionOfTheFirstDiskIsTriedFirst()
{
    plugEveryCandidate();
    for (int candidate = 0; candidate < 4; ++candidate)
        failNext(KernelFunction::Mount, EINVAL);

    QVERIFY(!usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList({"/dev/sda1", "/dev/sda", "/dev/sdb1", "/dev/sdb"}));
}

void TestUsbSupportMount::candidatesThatDoNotCountAreSkipped_data()
{
    QTest::addColumn<QStringList>("nodes");
    QTest::addColumn<QByteArrayList>("tried");
    QTest::newRow("partitioned disks")
        << QStringList{"sdb", "sdb1", "sda1", "sda"} << QByteArrayList{"/dev/sda1", "/dev/sdb1"};
    QTest::newRow("disks without partitions")
        << QStringList{"sdb", "sda"} << QByteArrayList{"/dev/sda", "/dev/sdb"};
    QTest::newRow("mixed") << QStringList{"sdb1", "sda"} << QByteArrayList{"/dev/sda", "/dev/sdb1"};
    QTest::newRow("second disk alone") << QStringList{"sdb"} << QByteArrayList{"/dev/sdb"};
    QTest::newRow("further disks")
        << QStringList{"sdc1", "sdd", "hda1", "sda1"} << QByteArrayList{"/dev/sda1"};
}

void TestUsbSupportMount::candidatesThatDoNotCountAreSkipped()
{
    QFETCH(const QStringList, nodes);
    QFETCH(const QByteArrayList, tried);
    for (const QString &node : nodes)
        addNode(node);
    for (int candidate = 0; candidate < 4; ++candidate)
        failNext(KernelFunction::Mount, EINVAL);

    QVERIFY(!usb().mount());

    QCOMPARE(mountedSources(), tried);
}

void TestUsbSupportMount::otherPartitionsAreNeverMounted()
{
    addNode("sda5");
    addNode("sdb2");

    QVERIFY(!usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList());
}

void TestUsbSupportMount::aDiskOfTheExcludedVendorIsNeverMounted()
{
    LibudevFakes::instance().hangOnUsb(TestSupport::addDiskFolder("sda"), {"064f"});
    LibudevFakes::instance().hangOnUsb(TestSupport::addDiskFolder("sdb"), {"0781"});
    addNode("sda1");
    addNode("sdb1");

    QVERIFY(usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList{"/dev/sdb1"});
}

void TestUsbSupportMount::afterAFailureTheNextCandidateIsTriedInSilence_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EACCES") << EACCES;
    QTest::newRow("EFAULT") << EFAULT;
    QTest::newRow("EINVAL") << EINVAL;
    QTest::newRow("EIO") << EIO;
    QTest::newRow("ELOOP") << ELOOP;
    QTest::newRow("EMFILE") << EMFILE;
    QTest::newRow("ENAMETOOLONG") << ENAMETOOLONG;
    QTest::newRow("ENODEV") << ENODEV;
    QTest::newRow("ENOENT") << ENOENT;
    QTest::newRow("ENOMEDIUM") << ENOMEDIUM;
    QTest::newRow("ENOMEM") << ENOMEM;
    QTest::newRow("ENOTBLK") << ENOTBLK;
    QTest::newRow("ENOTDIR") << ENOTDIR;
    QTest::newRow("ENXIO") << ENXIO;
    QTest::newRow("EPERM") << EPERM;
    QTest::newRow("EROFS") << EROFS;
}

void TestUsbSupportMount::afterAFailureTheNextCandidateIsTriedInSilence()
{
    QFETCH(const int, error);
    addNode("sda1");
    addNode("sdb1");
    UsbDiary diary;
    failNext(KernelFunction::Mount, error);

    QVERIFY(usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList({"/dev/sda1", "/dev/sdb1"}));
    QCOMPARE(diary.lines(), mountLines);
    QCOMPARE(diary.announced(), QStringList{"mounted"});
}

void TestUsbSupportMount::aBusyMountPointCountsAsMounted()
{
    addNode("sda1");
    addNode("sdb1");
    UsbDiary diary;
    failNext(KernelFunction::Mount, EBUSY);

    QVERIFY(usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList{"/dev/sda1"});
    QVERIFY(usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), mountLines);
    QCOMPARE(diary.announced(), QStringList{"mounted"});
}

void TestUsbSupportMount::aBusyMountPointCountsForALaterCandidateToo()
{
    addNode("sda1");
    addNode("sdb1");
    failNext(KernelFunction::Mount, ENXIO);
    failNext(KernelFunction::Mount, EBUSY);

    QVERIFY(usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList({"/dev/sda1", "/dev/sdb1"}));
}

// EBUSY of the device before, or of something else, says nothing about this mount.
void TestUsbSupportMount::anOldErrorDoesNotCountAsBusy()
{
    addNode("sda1");
    usb();
    failNext(KernelFunction::Mount, EINVAL);
    errno = EBUSY;

    QVERIFY(!usb().mount());
    QVERIFY(!usb().isUsbKeyMounted());
}

void TestUsbSupportMount::whenEveryCandidateFailsNothingIsMounted()
{
    addNode("sda1");
    addNode("sdb1");
    UsbDiary diary;
    failNext(KernelFunction::Mount, EINVAL);
    failNext(KernelFunction::Mount, ENXIO);

    QVERIFY(!usb().mount());

    QVERIFY(!usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), failedMountLines);
    QCOMPARE(diary.announced(), QStringList());
    QVERIFY(usb().unmount()); // no reference was left: nothing to undo
    QCOMPARE(unmounts(), 0);
}

void TestUsbSupportMount::withoutAnyDeviceNothingIsTried()
{
    UsbDiary diary;

    QVERIFY(!usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList());
    QCOMPARE(diary.lines(), failedMountLines);
    QVERIFY(!usb().isUsbKeyMounted());
    QCOMPARE(LibudevFakes::instance().calls(), QByteArrayList()); // what is absent is not asked
}

void TestUsbSupportMount::aKeyThatIsGoneShowsByAFailedMount()
{
    addNode("sdb1");
    QVERIFY(usb().isUsbKeyPresent());

    TestSupport::removeNode("sdb1");
    QTRY_VERIFY(!DiskNotification::isPresent("sdb1"));

    QVERIFY(!usb().mount());
    QVERIFY(usb().isUsbKeyPresent()); // nobody heard of the removal
}

void TestUsbSupportMount::twoUsersShareOneMount()
{
    addNode("sda1");
    UsbDiary diary;

    QVERIFY(usb().mount());
    QVERIFY(usb().mount());
    QCOMPARE(mountedSources().size(), 1);
    QCOMPARE(diary.lines(), mountLines);

    QVERIFY(usb().unmount());
    QVERIFY(usb().isUsbKeyMounted());
    QCOMPARE(unmounts(), 0);
    QCOMPARE(diary.lines(), mountLines);

    QVERIFY(usb().unmount());
    QVERIFY(!usb().isUsbKeyMounted());
    QCOMPARE(unmounts(), 1);
    QCOMPARE(KernelFakes::instance().calls().back().path, QByteArray("/usbkey"));
    QCOMPARE(diary.lines(), mountLines + unmountLines);
    QCOMPARE(diary.announced(), QStringList({"mounted", "unmounted"}));
    QCOMPARE(diary.mountedDuring(), std::vector<bool>({true, false}));
    QCOMPARE(diary.linesBefore(), std::vector<int>({2, 4}));
}

void TestUsbSupportMount::unmountingNothingIsASuccess()
{
    UsbDiary diary;

    QVERIFY(usb().unmount());
    QVERIFY(usb().unmount());

    QCOMPARE(unmounts(), 0);
    QVERIFY(!usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), QByteArrayList());
    QCOMPARE(diary.announced(), QStringList());
}

void TestUsbSupportMount::aFailedUnmountIsStillOwed_data()
{
    QTest::addColumn<int>("error");
    QTest::newRow("EBUSY") << EBUSY;
    QTest::newRow("EAGAIN") << EAGAIN;
    QTest::newRow("EINVAL") << EINVAL;
    QTest::newRow("EIO") << EIO;
    QTest::newRow("ENOENT") << ENOENT;
    QTest::newRow("ENOMEM") << ENOMEM;
    QTest::newRow("EPERM") << EPERM;
}

void TestUsbSupportMount::aFailedUnmountIsStillOwed()
{
    QFETCH(const int, error);
    addNode("sda1");
    UsbDiary diary;
    QVERIFY(usb().mount());
    diary.clear();
    failNext(KernelFunction::Unmount, error);

    QVERIFY(!usb().unmount());

    QVERIFY(usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), failedUnmountLines);
    QCOMPARE(diary.announced(), QStringList());

    diary.clear();
    QVERIFY(usb().unmount()); // tries again, as the count is one
    QCOMPARE(unmounts(), 2);
    QVERIFY(!usb().isUsbKeyMounted());
    QCOMPARE(diary.lines(), unmountLines);
    QCOMPARE(diary.announced(), QStringList{"unmounted"});
}

void TestUsbSupportMount::aKeyCanBeMountedAgain()
{
    addNode("sda1");

    QVERIFY(usb().mount());
    QVERIFY(usb().unmount());
    QVERIFY(usb().mount());

    QCOMPARE(mountedSources(), QByteArrayList({"/dev/sda1", "/dev/sda1"}));
    QCOMPARE(unmounts(), 1);
    QVERIFY(usb().isUsbKeyMounted());
}

QTEST_GUILESS_MAIN(TestUsbSupportMount)
#include "tst_usb_support_mount.moc"
