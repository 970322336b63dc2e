#include "common/usb_support.h"

#include "libudev_fakes.h"
#include "support/kernel_fakes.h"
#include "support/scratch_machine.h"
#include "tessel_core/disk_notification.h"
#include "usb_support_fixture.h"

#include <QSignalSpy>
#include <QThread>
#include <QtTest>

#include <cerrno>

using Tessel::DiskNotification;
using TestSupport::addNode;
using TestSupport::failNext;
using TestSupport::KernelFakes;
using TestSupport::KernelFunction;
using TestSupport::LibudevFakes;
using TestSupport::notify;
using TestSupport::removeNode;
using TestSupport::unmounts;
using TestSupport::UsbDiary;
using TestSupport::waitWithoutEvents;

namespace {

const QByteArrayList insertedLines{"USB key inserted\n"};
const QByteArrayList removedLines{"USB key removed\n"};

USBSupport &usb()
{
    return *USBSupport::instance();
}

// What reaches the USB support from the watcher thread.
class NotificationCounter : public QObject
{
public:
    NotificationCounter() { usb().installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == DeviceNotificationEvent::eventType())
            ++count;
        return QObject::eventFilter(watched, event);
    }

    int count = 0;
};

} // namespace

/** Keys coming and going on the scratch machine, heard of from the real service. */
class TestUsbSupportEvents : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(TestSupport::onScratchMachine(), "only in the sandbox"); }
    void init();
    void cleanup();

    void aKeyPluggedInIsAnnounced_data();
    void aKeyPluggedInIsAnnounced();
    void aKeyWithoutPartitionsIsAnnounced();
    void otherDisksAreIgnored_data();
    void otherDisksAreIgnored();
    void aDiskOfTheExcludedVendorIsNeverAnnounced();
    void aKeyThatIsGoneBeforeItsEventIsIgnored();
    void aKeyThereAtTheStartIsKnownInSilence();
    void aDiskOfTheExcludedVendorDoesNotCountAtTheStart();
    void nothingHappensOnTheWatcherThread();

    void aRemovalIsNormallyIgnored_data();
    void aRemovalIsNormallyIgnored();
    void aRemovalOfANameThatIsThereAgainIsAnnounced();
    void theFlagChangesAfterTheSignal();
    void aKeyRemovedWhileMountedIsUnmounted();
    void aKeyRemovedWhileMountedIsForgottenEvenIfUnmountingFails();
    void aKeyRemovedUnderTwoUsersIsForgottenWithoutUnmounting();
};

void TestUsbSupportEvents::init()
{
    TestSupport::removeAllDisks();
    KernelFakes::instance().reset();
    LibudevFakes::instance().reset();
}

void TestUsbSupportEvents::cleanup()
{
    USBSupport::destroyInstance();
    TestSupport::removeAllDisks();
}

void TestUsbSupportEvents::aKeyPluggedInIsAnnounced_data()
{
    QTest::addColumn<QString>("node");
    QTest::newRow("first partition of the first disk") << "sda1";
    QTest::newRow("first partition of the second disk") << "sdb1";
    QTest::newRow("a partition that is never mounted") << "sda5";
}

void TestUsbSupportEvents::aKeyPluggedInIsAnnounced()
{
    QFETCH(const QString, node);
    UsbDiary diary;
    QVERIFY(!usb().isUsbKeyPresent());

    addNode(node);

    QTRY_COMPARE(diary.announced(), QStringList{"inserted"});
    QVERIFY(usb().isUsbKeyPresent());
    QCOMPARE(diary.lines(), insertedLines);
    QCOMPARE(diary.presenceDuring(), std::vector<bool>{false});
    QCOMPARE(diary.linesBefore(), std::vector<int>{1});
    QVERIFY(!usb().isUsbKeyMounted());
    QVERIFY(KernelFakes::instance().calls().empty());
}

void TestUsbSupportEvents::aKeyWithoutPartitionsIsAnnounced()
{
    UsbDiary diary;

    addNode("sdb");

    QTRY_COMPARE(diary.announced(), QStringList{"inserted"});
    QVERIFY(usb().isUsbKeyPresent());
}

void TestUsbSupportEvents::otherDisksAreIgnored_data()
{
    QTest::addColumn<QString>("node");
    QTest::newRow("third disk") << "sdc1";
    QTest::newRow("other controller") << "hda1";
}

void TestUsbSupportEvents::otherDisksAreIgnored()
{
    QFETCH(const QString, node);
    UsbDiary diary;
    NotificationCounter notifications;

    addNode(node);
    QTRY_COMPARE(notifications.count, 1);

    QCOMPARE(diary.announced(), QStringList());
    QCOMPARE(diary.lines(), QByteArrayList());
    QVERIFY(!usb().isUsbKeyPresent());
    QVERIFY(notify(node, false));
    QCOMPARE(diary.announced(), QStringList());
}

void TestUsbSupportEvents::aDiskOfTheExcludedVendorIsNeverAnnounced()
{
    LibudevFakes::instance().hangOnUsb(TestSupport::addDiskFolder("sdb"), {"064f"});
    UsbDiary diary;
    NotificationCounter notifications;

    addNode("sdb1");
    QTRY_COMPARE(notifications.count, 1);

    QVERIFY(!USBSupport::isUsbDevice("sdb1"));
    QCOMPARE(diary.announced(), QStringList());
    QCOMPARE(diary.lines(), QByteArrayList());
    QVERIFY(!usb().isUsbKeyPresent());
}

// The acceptance is decided when the event is handled, not when it is posted.
void TestUsbSupportEvents::aKeyThatIsGoneBeforeItsEventIsIgnored()
{
    UsbDiary diary;
    NotificationCounter notifications;

    addNode("sdb1");
    QVERIFY(waitWithoutEvents([] { return DiskNotification::isPresent("sdb1"); }));
    removeNode("sdb1");
    QVERIFY(waitWithoutEvents([] { return !DiskNotification::isPresent("sdb1"); }));
    QCoreApplication::sendPostedEvents();

    QCOMPARE(notifications.count, 2);
    QCOMPARE(diary.announced(), QStringList());
    QVERIFY(!usb().isUsbKeyPresent());
}

void TestUsbSupportEvents::aKeyThereAtTheStartIsKnownInSilence()
{
    addNode("sdb");
    addNode("sdb1");

    UsbDiary diary;
    NotificationCounter notifications;
    QCoreApplication::sendPostedEvents();

    QVERIFY(usb().isUsbKeyPresent());
    QCOMPARE(notifications.count, 0);
    QCOMPARE(diary.announced(), QStringList());
    QCOMPARE(diary.lines(), QByteArrayList());
}

void TestUsbSupportEvents::aDiskOfTheExcludedVendorDoesNotCountAtTheStart()
{
    LibudevFakes::instance().hangOnUsb(TestSupport::addDiskFolder("sda"), {"064F"});
    addNode("sda1");

    QVERIFY(!usb().isUsbKeyPresent());
    QVERIFY(DiskNotification::isPresent("sda1"));
}

void TestUsbSupportEvents::nothingHappensOnTheWatcherThread()
{
    UsbDiary diary;
    QThread *announcedOn = nullptr;
    connect(
        &usb(), &USBSupport::usbKeyInserted, &usb(),
        [&announcedOn] { announcedOn = QThread::currentThread(); }, Qt::DirectConnection);

    addNode("sdb1");
    // The service has told its listeners when it lets anybody else ask.
    QVERIFY(waitWithoutEvents([] { return DiskNotification::isPresent("sdb1"); }));

    QCOMPARE(diary.lines(), QByteArrayList());
    QVERIFY(!usb().isUsbKeyPresent());
    QCoreApplication::sendPostedEvents();
    QCOMPARE(diary.lines(), insertedLines);
    QCOMPARE(announcedOn, usb().thread());
    QCOMPARE(announcedOn, QThread::currentThread());
}

void TestUsbSupportEvents::aRemovalIsNormallyIgnored_data()
{
    QTest::addColumn<bool>("eventsWait");
    QTest::newRow("heard of at once") << false;
    QTest::newRow("heard of late") << true;
}

// Callers rely on it: a key that is gone shows by mount() failing, never by a count that
// changes under them.
void TestUsbSupportEvents::aRemovalIsNormallyIgnored()
{
    QFETCH(const bool, eventsWait);
    addNode("sdb1");
    UsbDiary diary;
    QVERIFY(usb().mount());
    QVERIFY(usb().mount());
    diary.clear();
    NotificationCounter notifications;

    removeNode("sdb1");
    if (eventsWait)
        QVERIFY(waitWithoutEvents([] { return !DiskNotification::isPresent("sdb1"); }));
    QTRY_COMPARE(notifications.count, 1);

    QCOMPARE(diary.lines(), QByteArrayList());
    QCOMPARE(diary.announced(), QStringList());
    QVERIFY(usb().isUsbKeyPresent());
    QCOMPARE(unmounts(), 0);
    QVERIFY(usb().unmount()); // both references are still there
    QVERIFY(usb().isUsbKeyMounted());
    QVERIFY(usb().unmount());
    QCOMPARE(unmounts(), 1);
}

void TestUsbSupportEvents::aRemovalOfANameThatIsThereAgainIsAnnounced()
{
    addNode("sdb1");
    UsbDiary diary;
    QVERIFY(usb().isUsbKeyPresent());

    QVERIFY(notify("sdb1", false));

    QCOMPARE(diary.lines(), removedLines);
    QCOMPARE(diary.announced(), QStringList{"removed"});
    QVERIFY(!usb().isUsbKeyPresent());
    QCOMPARE(unmounts(), 0);
}

// Kept: slots connected directly read what was.
void TestUsbSupportEvents::theFlagChangesAfterTheSignal()
{
    addNode("sdb1");
    UsbDiary diary;

    QVERIFY(notify("sdb1", false));
    QVERIFY(!usb().isUsbKeyPresent());
    QVERIFY(notify("sdb1", true));
    QVERIFY(usb().isUsbKeyPresent());
    QVERIFY(notify("sdb1", true));
    QVERIFY(usb().isUsbKeyPresent());

    QCOMPARE(diary.announced(), QStringList({"removed", "inserted", "inserted"}));
    QCOMPARE(diary.presenceDuring(), std::vector<bool>({true, false, true}));
}

void TestUsbSupportEvents::aKeyRemovedWhileMountedIsUnmounted()
{
    addNode("sdb1");
    UsbDiary diary;
    QVERIFY(usb().mount());
    diary.clear();

    QVERIFY(notify("sdb1", false));

    QCOMPARE(diary.lines(),
             QByteArrayList({"USB key removed\n", "USB key removed without unmounting\n",
                             "Try to unmount USB key\n", "Unmounted USB key\n"}));
    QCOMPARE(diary.announced(), QStringList({"unmounted", "removed"}));
    QCOMPARE(diary.presenceDuring(), std::vector<bool>({true, true}));
    QCOMPARE(diary.linesBefore(), std::vector<int>({4, 4}));
    QCOMPARE(unmounts(), 1);
    QVERIFY(!usb().isUsbKeyMounted());
    QVERIFY(!usb().isUsbKeyPresent());
}

void TestUsbSupportEvents::aKeyRemovedWhileMountedIsForgottenEvenIfUnmountingFails()
{
    addNode("sdb1");
    UsbDiary diary;
    QVERIFY(usb().mount());
    diary.clear();
    failNext(KernelFunction::Unmount, EBUSY);

    QVERIFY(notify("sdb1", false));

    QCOMPARE(diary.lines(),
             QByteArrayList({"USB key removed\n", "USB key removed without unmounting\n",
                             "Try to unmount USB key\n", "Failed to unmount USB Key\n"}));
    QCOMPARE(diary.announced(), QStringList{"removed"});
    QCOMPARE(diary.mountedDuring(), std::vector<bool>{false});
    QVERIFY(!usb().isUsbKeyMounted());
    QVERIFY(usb().unmount()); // nothing owed any more
    QCOMPARE(unmounts(), 1);
}

// One reference is given back, which is not the last: the kernel is not asked.
void TestUsbSupportEvents::aKeyRemovedUnderTwoUsersIsForgottenWithoutUnmounting()
{
    addNode("sdb1");
    UsbDiary diary;
    QVERIFY(usb().mount());
    QVERIFY(usb().mount());
    diary.clear();

    QVERIFY(notify("sdb1", false));

    QCOMPARE(diary.lines(),
             QByteArrayList({"USB key removed\n", "USB key removed without unmounting\n"}));
    QCOMPARE(diary.announced(), QStringList{"removed"});
    QCOMPARE(unmounts(), 0);
    QVERIFY(!usb().isUsbKeyMounted());
}

QTEST_GUILESS_MAIN(TestUsbSupportEvents)
#include "tst_usb_support_events.moc"
