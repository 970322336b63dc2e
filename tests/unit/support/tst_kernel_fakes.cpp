#include "support/kernel_fakes.h"

#include <QTemporaryFile>
#include <QtTest>

#include <cerrno>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <linux/watchdog.h>
#include <sys/ioctl.h>
#include <sys/mount.h>
#include <sys/reboot.h>
#include <unistd.h>

using TestSupport::KernelCall;
using TestSupport::KernelFakes;
using TestSupport::KernelFunction;

namespace {

KernelFakes &kernel()
{
    return KernelFakes::instance();
}

} // namespace

class TestKernelFakes : public QObject
{
    Q_OBJECT

private slots:
    void init() { kernel().reset(); }
    void cleanup() { kernel().reset(); }

    void callsAreRecordedInOrderWithTheirArguments();
    void scriptedOutcomesAreUsedUpInOrder();
    void anObserverSeesTheWorldDuringTheCall();
    void resetForgetsEverything();
    void aWatchdogDeviceIsNeverOpenedForReal();
    void aScriptedPathIsNeverOpenedForReal();
    void aProvidedDeviceIsAHarmlessDescriptor();
    void otherPathsAreOpenedForReal();
    void watchdogRequestsAreAnsweredWithoutTheKernel();
    void otherRequestsReachTheKernel();
    void callsMayComeFromManyThreads();
};

void TestKernelFakes::callsAreRecordedInOrderWithTheirArguments()
{
    QCOMPARE(mount("/dev/sdx1", "/usbkey", "vfat", MS_NOSUID, nullptr), 0);
    QCOMPARE(umount("/user_data/"), 0);
    QCOMPARE(reboot(RB_AUTOBOOT), 0);
    const std::vector<KernelCall> calls = kernel().calls();
    QCOMPARE(calls.size(), std::size_t(3));
    QCOMPARE(calls[0].function, KernelFunction::Mount);
    QCOMPARE(calls[0].source, QByteArray("/dev/sdx1"));
    QCOMPARE(calls[0].path, QByteArray("/usbkey"));
    QCOMPARE(calls[0].fileSystem, QByteArray("vfat"));
    QCOMPARE(calls[0].code, static_cast<unsigned long>(MS_NOSUID));
    QCOMPARE(calls[1].function, KernelFunction::Unmount);
    QCOMPARE(calls[1].path, QByteArray("/user_data/"));
    QCOMPARE(calls[2].function, KernelFunction::Reboot);
    QCOMPARE(calls[2].code, 0x01234567UL);
}

void TestKernelFakes::scriptedOutcomesAreUsedUpInOrder()
{
    kernel().script(KernelFunction::Unmount, {-1, EBUSY, {}});
    kernel().script(KernelFunction::Unmount, {-1, EINVAL, {}});
    QCOMPARE(umount("/usbkey"), -1);
    QCOMPARE(errno, EBUSY);
    QCOMPARE(umount("/usbkey"), -1);
    QCOMPARE(errno, EINVAL);
    QCOMPARE(umount("/usbkey"), 0);
}

void TestKernelFakes::anObserverSeesTheWorldDuringTheCall()
{
    std::vector<std::size_t> unmountsAtReboot;
    kernel().observe(KernelFunction::Reboot, [&unmountsAtReboot](const KernelCall &call) {
        QCOMPARE(call.code, static_cast<unsigned long>(RB_AUTOBOOT));
        unmountsAtReboot.push_back(kernel().calls(KernelFunction::Unmount).size());
    });
    umount("/user_data/");
    reboot(RB_AUTOBOOT);
    umount("/user_data/");
    QCOMPARE(unmountsAtReboot, std::vector<std::size_t>{1});
}

void TestKernelFakes::resetForgetsEverything()
{
    bool observed = false;
    kernel().observe(KernelFunction::Unmount, [&observed](const KernelCall &) { observed = true; });
    kernel().script(KernelFunction::Unmount, {-1, EBUSY, {}});
    reboot(RB_AUTOBOOT);
    kernel().reset();
    QVERIFY(kernel().calls().empty());
    QCOMPARE(umount("/usbkey"), 0);
    QVERIFY(!observed);
}

void TestKernelFakes::aWatchdogDeviceIsNeverOpenedForReal()
{
    QCOMPARE(open("/dev/watchdog", O_RDWR), -1);
    QCOMPARE(errno, ENOENT);
    QCOMPARE(open("/dev/watchdog0", O_RDWR), -1);
    QCOMPARE(errno, ENOENT);
    QCOMPARE(kernel().calls(KernelFunction::Open).size(), std::size_t(2));
}

void TestKernelFakes::aScriptedPathIsNeverOpenedForReal()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const QByteArray path = QFile::encodeName(file.fileName());
    kernel().scriptOpen(path, {-1, EACCES, {}});
    QCOMPARE(open(path.constData(), O_RDONLY), -1);
    QCOMPARE(errno, EACCES);
    QCOMPARE(open(path.constData(), O_RDONLY), -1);
    QCOMPARE(errno, ENOENT);
}

void TestKernelFakes::aProvidedDeviceIsAHarmlessDescriptor()
{
    kernel().provideDevice("/dev/watchdog");
    const int descriptor = open("/dev/watchdog", O_RDWR);
    QVERIFY(descriptor >= 0);
    QCOMPARE(kernel().calls(KernelFunction::Open).at(0).descriptor, descriptor);
    QCOMPARE(write(descriptor, "V", 1), ssize_t(1));
    QCOMPARE(close(descriptor), 0);
}

void TestKernelFakes::otherPathsAreOpenedForReal()
{
    QTemporaryFile file;
    QVERIFY(file.open());
    const QByteArray path = QFile::encodeName(file.fileName()) + ".new";
    const int descriptor = open(path.constData(), O_RDWR | O_CREAT | O_EXCL, 0640);
    QVERIFY(descriptor >= 0);
    close(descriptor);
    QCOMPARE(QFile::permissions(path) & QFile::WriteOwner, QFile::WriteOwner);
    QVERIFY(QFile::remove(path));
    QVERIFY(kernel().calls().empty());
}

void TestKernelFakes::watchdogRequestsAreAnsweredWithoutTheKernel()
{
    kernel().script(KernelFunction::Ioctl, {0, 0, 60});
    int seconds = 240;
    QCOMPARE(ioctl(77, WDIOC_SETTIMEOUT, &seconds), 0);
    QCOMPARE(seconds, 60);
    QCOMPARE(ioctl(77, WDIOC_KEEPALIVE, 0), 0);
    const std::vector<KernelCall> calls = kernel().calls();
    QCOMPARE(calls.size(), std::size_t(2));
    QCOMPARE(calls[0].descriptor, 77);
    QCOMPARE(calls[0].code, static_cast<unsigned long>(WDIOC_SETTIMEOUT));
    QCOMPARE(calls[0].value.value_or(-1), 240);
    QCOMPARE(calls[1].code, static_cast<unsigned long>(WDIOC_KEEPALIVE));
    QCOMPARE(calls[1].value.value_or(-1), 0);
}

void TestKernelFakes::otherRequestsReachTheKernel()
{
    int ends[2] = {-1, -1};
    QCOMPARE(pipe(ends), 0);
    QCOMPARE(write(ends[1], "abc", 3), ssize_t(3));
    int waiting = 0;
    QCOMPARE(ioctl(ends[0], FIONREAD, &waiting), 0);
    QCOMPARE(waiting, 3);
    close(ends[0]);
    close(ends[1]);
    QVERIFY(kernel().calls().empty());
}

void TestKernelFakes::callsMayComeFromManyThreads()
{
    constexpr int rounds = 200;
    std::vector<std::thread> threads;
    threads.reserve(4);
    for (int i = 0; i < 4; ++i) {
        threads.emplace_back([] {
            for (int round = 0; round < rounds; ++round)
                umount("/usbkey");
        });
    }
    for (std::thread &thread : threads)
        thread.join();
    QCOMPARE(kernel().calls().size(), std::size_t(4 * rounds));
}

QTEST_APPLESS_MAIN(TestKernelFakes)
#include "tst_kernel_fakes.moc"
