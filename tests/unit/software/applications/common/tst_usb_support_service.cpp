#include "common/usb_support.h"

#include "disk_notification_fakes.h"
#include "libudev_fakes.h"
#include "support/kernel_fakes.h"
#include "support/scratch_machine.h"
#include "usb_support_fixture.h"

#include <QMetaMethod>
#include <QtTest>

#include <thread>

using TestSupport::DiskNotificationFakes;
using TestSupport::KernelFakes;
using TestSupport::LibudevFakes;
using TestSupport::UsbDiary;

namespace {

const QStringList startCalls{"initialise /dev", "add",          "present sda1",
                             "present sda",     "present sdb1", "present sdb"};

DiskNotificationFakes &service()
{
    return DiskNotificationFakes::instance();
}

USBSupport &usb()
{
    return *USBSupport::instance();
}

// The service's own call, from a thread that is not this one.
void tellFromAnotherThread(const QString &device, bool inserted)
{
    const auto listener = service().listener;
    if (listener == nullptr)
        qFatal("nobody listens");
    std::thread([&] { listener(device, inserted, service().context); }).join();
}

// Writes down every event the USB support is about to get.
class EventNotes : public QObject
{
public:
    EventNotes() { usb().installEventFilter(this); }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == DeviceNotificationEvent::eventType()) {
            const auto *told = static_cast<DeviceNotificationEvent *>(event);
            notes << told->deviceName + (told->inserted ? " came" : " went");
        } else if (event->type() >= QEvent::User) {
            notes << QString::number(event->type() - QEvent::User);
        }
        return QObject::eventFilter(watched, event);
    }

    QStringList notes;
};

} // namespace

/** What the USB support and the disk notification have to do with each other. */
class TestUsbSupportService : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY2(TestSupport::onScratchMachine(), "only in the sandbox"); }
    void init();
    void cleanup() { USBSupport::destroyInstance(); }

    void theEventTypeIsTakenBeforeMain(); // first: nobody else has taken a number yet
    void theSignalsHaveTheirOrderAndNothingElseIsDeclared();
    void theServiceIsStartedAndListenedToBeforeItIsAsked();
    void aCandidatePresentAtTheStartCounts_data();
    void aCandidatePresentAtTheStartCounts();
    void thereIsOneObject();
    void theEndStopsTheServiceAndUnmountsNothing();
    void withoutAnObjectTheEndDoesNothing();
    void afterTheEndThereIsANewObject();
    void eventsOnTheirWayEndWithTheObject();

    void aNotificationIsOnlyPosted();
    void aNotificationWaitsItsTurn();
    void otherEventsAreLeftToTheBaseClass();
    void aForeignEventOfTheSameTypeDoesNothing();

    void onlyTheFirstTwoDisksAreAnnounced_data();
    void onlyTheFirstTwoDisksAreAnnounced();
    void anAbsentDeviceIsNotAskedAbout();
    void onlyTheExcludedVendorIsRefused_data();
    void onlyTheExcludedVendorIsRefused();
};

void TestUsbSupportService::init()
{
    KernelFakes::instance().reset();
    LibudevFakes::instance().reset();
    TestSupport::removeAllDisks();
    service() = {};
}

// Numbers are handed out downwards from the top of the range.
void TestUsbSupportService::theEventTypeIsTakenBeforeMain()
{
    const int laterType = QEvent::registerEventType();

    QVERIFY(DeviceNotificationEvent::eventType() > laterType);
    QVERIFY(DeviceNotificationEvent::eventType() <= QEvent::MaxUser);
    const DeviceNotificationEvent event("sdb1", true);
    QCOMPARE(event.type(), DeviceNotificationEvent::eventType());
    QCOMPARE(event.deviceName, QString("sdb1"));
    QVERIFY(event.inserted);
    QVERIFY(!DeviceNotificationEvent("sdb1", false).inserted);
}

void TestUsbSupportService::theSignalsHaveTheirOrderAndNothingElseIsDeclared()
{
    const QMetaObject &meta = USBSupport::staticMetaObject;
    QByteArrayList signatures;
    for (int index = meta.methodOffset(); index < meta.methodCount(); ++index)
        signatures << meta.method(index).methodSignature();

    QCOMPARE(signatures, QByteArrayList({"usbKeyInserted()", "usbKeyRemoved()", "usbKeyMounted()",
                                         "usbKeyUnmounted()"}));
    QCOMPARE(meta.method(meta.methodOffset()).methodType(), QMetaMethod::Signal);
    QCOMPARE(meta.propertyCount(), QObject::staticMetaObject.propertyCount());
}

void TestUsbSupportService::theServiceIsStartedAndListenedToBeforeItIsAsked()
{
    USBSupport *const support = USBSupport::instance();

    QCOMPARE(service().calls, startCalls);
    QCOMPARE(service().context, static_cast<void *>(support));
    QCOMPARE(support->parent(), nullptr);
    QVERIFY(!support->isUsbKeyPresent());
    QVERIFY(!support->isUsbKeyMounted());
}

void TestUsbSupportService::aCandidatePresentAtTheStartCounts_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("counts");
    QTest::newRow("first partition, first disk") << "sda1" << true;
    QTest::newRow("first disk") << "sda" << true;
    QTest::newRow("first partition, second disk") << "sdb1" << true;
    QTest::newRow("second disk") << "sdb" << true;
    QTest::newRow("second partition") << "sda2" << false;
    QTest::newRow("third disk") << "sdc1" << false;
    QTest::newRow("other controller") << "hda" << false;
}

void TestUsbSupportService::aCandidatePresentAtTheStartCounts()
{
    QFETCH(const QString, device);
    service().present = {device};

    QTEST(usb().isUsbKeyPresent(), "counts");

    QCOMPARE(service().calls, startCalls); // the later ones are asked about all the same
}

void TestUsbSupportService::thereIsOneObject()
{
    USBSupport *const first = USBSupport::instance();

    QCOMPARE(USBSupport::instance(), first);
    QCOMPARE(service().calls, startCalls);
}

// Whoever mounted the key may still be writing.
void TestUsbSupportService::theEndStopsTheServiceAndUnmountsNothing()
{
    service().present = {"sda1"};
    QVERIFY(usb().mount());
    bool announced = false;
    connect(&usb(), &USBSupport::usbKeyUnmounted, [&announced] { announced = true; });
    service().calls.clear();

    USBSupport::destroyInstance();

    QCOMPARE(service().calls, QStringList({"remove", "shutdown"}));
    QCOMPARE(TestSupport::unmounts(), 0);
    QVERIFY(!announced);
}

void TestUsbSupportService::withoutAnObjectTheEndDoesNothing()
{
    USBSupport::destroyInstance();
    QCOMPARE(service().calls, QStringList());

    USBSupport::instance();
    USBSupport::destroyInstance();
    service().calls.clear();
    USBSupport::destroyInstance();
    QCOMPARE(service().calls, QStringList());
}

void TestUsbSupportService::afterTheEndThereIsANewObject()
{
    service().present = {"sda1"};
    QVERIFY(usb().mount());
    USBSupport::destroyInstance();
    service() = {};

    USBSupport *const support = USBSupport::instance();

    QCOMPARE(service().calls, startCalls);
    QCOMPARE(service().context, static_cast<void *>(support));
    QVERIFY(!support->isUsbKeyPresent());
    QVERIFY(!support->isUsbKeyMounted());
}

void TestUsbSupportService::eventsOnTheirWayEndWithTheObject()
{
    usb();
    tellFromAnotherThread("sdb1", true);
    USBSupport::destroyInstance();
    service().present = {"sdb1"};

    UsbDiary diary;
    QCoreApplication::sendPostedEvents();

    QCOMPARE(diary.announced(), QStringList());
}

void TestUsbSupportService::aNotificationIsOnlyPosted()
{
    UsbDiary diary;
    EventNotes events;
    service().present = {"sdb1"};
    service().calls.clear();

    tellFromAnotherThread("sdb1", true);

    QCOMPARE(events.notes, QStringList());
    QCOMPARE(service().calls, QStringList());
    QCOMPARE(diary.announced(), QStringList());
    QVERIFY(!usb().isUsbKeyPresent());

    QCoreApplication::sendPostedEvents();

    QCOMPARE(events.notes, QStringList{"sdb1 came"});
    QCOMPARE(service().calls, QStringList{"present sdb1"});
    QCOMPARE(diary.announced(), QStringList{"inserted"});
    QVERIFY(usb().isUsbKeyPresent());
}

void TestUsbSupportService::aNotificationWaitsItsTurn()
{
    EventNotes events;
    const auto post = [](int number, int priority) {
        QCoreApplication::postEvent(&usb(), new QEvent(QEvent::Type(QEvent::User + number)),
                                    priority);
    };
    post(1, Qt::LowEventPriority);
    post(2, Qt::NormalEventPriority);
    tellFromAnotherThread("sdb1", true);
    tellFromAnotherThread("sdb1", false);
    post(3, Qt::NormalEventPriority);
    post(4, Qt::HighEventPriority);

    QCoreApplication::sendPostedEvents();

    QCOMPARE(events.notes, QStringList({"4", "2", "sdb1 came", "sdb1 went", "3", "1"}));
}

void TestUsbSupportService::otherEventsAreLeftToTheBaseClass()
{
    QEvent ofNoInterest(QEvent::Show);
    QVERIFY(!QCoreApplication::sendEvent(&usb(), &ofNoInterest));
    QEvent ofItsUser(QEvent::User);
    QVERIFY(QCoreApplication::sendEvent(&usb(), &ofItsUser));

    bool called = false;
    QMetaObject::invokeMethod(
        &usb(), [&called] { called = true; }, Qt::QueuedConnection);
    QCoreApplication::sendPostedEvents();
    QVERIFY(called);

    QVERIFY(TestSupport::notify("sdc1", true)); // handled, though of no interest
}

void TestUsbSupportService::aForeignEventOfTheSameTypeDoesNothing()
{
    UsbDiary diary;
    QEvent foreign(DeviceNotificationEvent::eventType());

    QVERIFY(QCoreApplication::sendEvent(&usb(), &foreign));

    QCOMPARE(diary.announced(), QStringList());
    QCOMPARE(diary.lines(), QByteArrayList());
}

void TestUsbSupportService::onlyTheFirstTwoDisksAreAnnounced_data()
{
    QTest::addColumn<QString>("device");
    QTest::addColumn<bool>("announced");
    for (const char *device : {"sda", "sda1", "sda5", "sda15", "sdb", "sdb1", "sdaa", "sdb-x"})
        QTest::newRow(device) << device << true;
    for (const char *device : {"sdc", "sdc1", "hda", "hda1", "SDA1", "Sdb1", "sd", "xsda1", ""})
        QTest::newRow(device) << device << false;
}

void TestUsbSupportService::onlyTheFirstTwoDisksAreAnnounced()
{
    QFETCH(const QString, device);
    QFETCH(const bool, announced);
    UsbDiary diary;
    service().present = {device};
    service().calls.clear();

    QVERIFY(TestSupport::notify(device, true));
    QCOMPARE(usb().isUsbKeyPresent(), announced);
    QVERIFY(TestSupport::notify(device, false));

    QCOMPARE(diary.announced(), announced ? QStringList({"inserted", "removed"}) : QStringList());
    QCOMPARE(diary.lines(), announced ? QByteArrayList({"USB key inserted\n", "USB key removed\n"})
                                      : QByteArrayList());
    QVERIFY(!usb().isUsbKeyPresent());
    QCOMPARE(service().calls.isEmpty(), !announced); // the name decides before the service
}

void TestUsbSupportService::anAbsentDeviceIsNotAskedAbout()
{
    QVERIFY(!USBSupport::isUsbDevice("sda1"));

    QCOMPARE(service().calls, QStringList{"present sda1"});
    QCOMPARE(LibudevFakes::instance().calls(), QByteArrayList());
}

void TestUsbSupportService::onlyTheExcludedVendorIsRefused_data()
{
    QTest::addColumn<QByteArray>("idVendor");
    QTest::addColumn<bool>("counts");
    QTest::newRow("a key's") << QByteArray("0781") << true;
    QTest::newRow("none told") << QByteArray() << true;
    QTest::newRow("no number") << QByteArray("vendor") << true;
    QTest::newRow("the one") << QByteArray("064f") << false;
    QTest::newRow("the one in capitals") << QByteArray("064F") << false;
    QTest::newRow("the one, short") << QByteArray("64f") << false;
    QTest::newRow("the one's decimal digits") << QByteArray("1615") << true;
}

void TestUsbSupportService::onlyTheExcludedVendorIsRefused()
{
    QFETCH(const QByteArray, idVendor);
    TestSupport::UsbAncestor ancestor;
    if (!idVendor.isNull())
        ancestor.idVendor = idVendor;
    LibudevFakes::instance().hangOnUsb(TestSupport::addDiskFolder("sda"), ancestor);
    service().present = {"sda1"};

    QTEST(USBSupport::isUsbDevice("sda1"), "counts");
}

QTEST_GUILESS_MAIN(TestUsbSupportService)
#include "tst_usb_support_service.moc"
