// A key plugged in, a report saved and the key pulled out, over and over: descriptors,
// threads and memory stay what they were. R4_SAVE_CYCLES sets how often; the figures are
// printed.

#include "application_fixture.h"
#include "common/file_dialog.h"
#include "common/usb_support.h"
#include "support/scratch_machine.h"
#include "tessel_core/disk_notification.h"

#include <QDir>
#include <QFile>
#include <QLineEdit>

#include <malloc.h>

using namespace TestSupport;

namespace {

const QString keyNode = QStringLiteral("sdb1");
const QString packageOnKey = QStringLiteral("/usbkey/report.cdp");

/** What is built once and kept, such as glyphs and icons, is there after these. */
constexpr int cyclesToWarmUp = 150;

/** Allocators and caches breathe by more than that from one cycle to the next. */
constexpr qint64 bytesOfNoise = 64 * 1024;

struct Usage
{
    int descriptors = QDir("/proc/self/fd").entryList(QDir::AllEntries | QDir::System).size();
    int threads = QDir("/proc/self/task").entryList(QDir::Dirs | QDir::NoDotAndDotDot).size();
    /** Nothing of the address sanitiser's heap, whose leak detector looks for itself. */
    qint64 heap = qint64(mallinfo2().uordblks);
};

/** Names the package and saves it, then says that it has been read that this went well. */
class Operator : public QObject
{
public:
    Operator()
    {
        connect(&timer, &QTimer::timeout, this, &Operator::look);
        timer.start(0);
    }

    int saved = 0;

private:
    void look()
    {
        QWidget *window = QApplication::activeModalWidget();
        if (qobject_cast<FileDialog *>(window)) {
            window->findChild<QLineEdit *>("configurationNameLineEdit")->setText("report");
            window->findChild<QPushButton *>("okButton")->click();
        } else if (auto *box = qobject_cast<QMessageBox *>(window)) {
            if (box->windowTitle() == QLatin1String("Success"))
                ++saved;
            box->button(QMessageBox::Ok)->click();
        }
    }

    QTimer timer;
};

} // namespace

class SaveCyclesTest : public ApplicationFixture
{
    Q_OBJECT

private slots:
    void nothingGrows();

private:
    void cycle(R4CrashReporterApplication *app);
};

void SaveCyclesTest::cycle(R4CrashReporterApplication *app)
{
    addNode(keyNode);
    QVERIFY(waitWithoutEvents([] { return Tessel::DiskNotification::isPresent(keyNode); }));
    QTRY_VERIFY(USBSupport::instance()->isUsbKeyPresent());
    Operator hands;
    QVERIFY(app->saveCrashReport());
    QCOMPARE(hands.saved, 1);
    QVERIFY(QFile::remove(packageOnKey));
    removeNode(keyNode);
    QVERIFY(waitWithoutEvents([] { return !Tessel::DiskNotification::isPresent(keyNode); }));
    QCoreApplication::processEvents();
    KernelFakes::instance().reset(); // what it remembers grows with every call
}

void SaveCyclesTest::nothingGrows()
{
    removeAllDisks();
    log.reset(); // likewise
    const int cycles = qEnvironmentVariableIsSet("R4_SAVE_CYCLES")
                           ? qEnvironmentVariableIntValue("R4_SAVE_CYCLES")
                           : 100;
    QVERIFY(cycles > 0);
    Tessel::sharedClientInfo()->autoActionSeconds = -1;
    RunningReporter reporter({crashFile()});
    reporter.launch();
    QVERIFY(reporter.crashScreen());
    USBSupport::instance();

    for (int number = 0; number < cyclesToWarmUp; ++number)
        cycle(reporter.get());
    const Usage before;
    for (int number = 0; number < cycles; ++number)
        cycle(reporter.get());
    const Usage after;

    qInfo("%d cycles: %d descriptors (%d before), %d threads (%d before), %lld bytes of heap more",
          cycles, after.descriptors, before.descriptors, after.threads, before.threads,
          after.heap - before.heap);
    QCOMPARE(after.descriptors, before.descriptors);
    QCOMPARE(after.threads, before.threads);
    QVERIFY(after.heap - before.heap < bytesOfNoise);
}

APPLICATION_TEST_MAIN(SaveCyclesTest)
#include "tst_save_cycles.moc"
