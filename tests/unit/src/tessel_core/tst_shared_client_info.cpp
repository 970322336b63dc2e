#include "tessel_core/shared_client_info.h"

#include <QSharedMemory>
#include <QTest>

#include <dlfcn.h>
#include <sys/shm.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <functional>

using namespace Tessel;

namespace {

/** A block whose last process ended without detaching stays: removes it. */
void removeBlock()
{
    QSharedMemory left{QLatin1String(sharedClientInfoKey)};
    if (left.attach())
        left.detach();
}

/**
 * The block belongs to the process for as long as it lives: each case looks at it
 * from a process of its own, which answers whether all was as it should be.
 */
bool inOwnProcess(const std::function<bool()> &check)
{
    const pid_t child = fork();
    if (child == 0)
        std::_Exit(check() ? 0 : 1);
    int status = -1;
    waitpid(child, &status, 0);
    removeBlock();
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
}

/** The block as the main application makes it. */
class Writer
{
public:
    explicit Writer(int size = sharedClientInfoSize)
        : memory(QLatin1String(sharedClientInfoKey))
    {
        if (memory.create(size))
            std::memset(memory.data(), 0, static_cast<std::size_t>(size));
    }
    quint8 *bytes() { return static_cast<quint8 *>(memory.data()); }

private:
    QSharedMemory memory;
};

bool attachingIsRefused = false;

QByteArray lastMessage;

void rememberMessage(QtMsgType, const QMessageLogContext &, const QString &text)
{
    lastMessage = text.toUtf8();
}

} // namespace

/** Qt's own way into the kernel, refused on demand. */
extern "C" void *shmat(int id, const void *address, int flags)
{
    if (attachingIsRefused) {
        errno = EACCES;
        return reinterpret_cast<void *>(-1);
    }
    using Function = void *(*)(int, const void *, int);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "shmat"));
    return real(id, address, flags);
}

class SharedClientInfoTest : public QObject
{
    Q_OBJECT

private slots:
    void everyFieldIsReadAtItsOffset();
    void aBlockNobodyMadeIsMadeAllZero();
    void itStaysTheSameBlockWhateverKeyIsAskedForLater();
    void whatIsWrittenReachesTheOtherProcess();
    void aBlockThatCannotBeMadeIsNull();
    void aBlockThatCannotBeAttachedIsNull();
    void textsEndAtTheirZeroByte();
    void textsWithoutZeroByteEndWithTheirField();
};

void SharedClientInfoTest::everyFieldIsReadAtItsOffset()
{
    Writer writer;
    quint8 *bytes = writer.bytes();
    QVERIFY(bytes);
    const auto put = [bytes](int offset, const QByteArray &part) {
        std::copy(part.begin(), part.end(), bytes + offset);
    };
    put(0, "SN-1");
    put(64, "\x07");
    put(65, "\x02\x05\x01\x83");
    put(69, "/var/log/\xe4");
    put(328, "\xfb\xff\xff\xff");
    bytes[332] = 1;

    QVERIFY(inOwnProcess([] {
        const SharedClientInfo *info = sharedClientInfo(336, "TovaskZelSMKey");
        return info && serialNumber(*info) == QLatin1String("SN-1") && info->deviceType == 7 &&
               info->version.major == 2 && info->version.minor == 5 && info->version.patch == 1 &&
               info->version.build == 0x83 &&
               logFilePath(*info) == QStringLiteral("/var/log/\u00e4") &&
               info->autoActionSeconds == -5 && info->unattendedRestart == 1;
    }));
}

void SharedClientInfoTest::aBlockNobodyMadeIsMadeAllZero()
{
    QVERIFY(inOwnProcess([] {
        const auto *bytes = reinterpret_cast<const quint8 *>(sharedClientInfo());
        return bytes && std::all_of(bytes, bytes + 336, [](quint8 byte) { return byte == 0; });
    }));
}

void SharedClientInfoTest::itStaysTheSameBlockWhateverKeyIsAskedForLater()
{
    QVERIFY(inOwnProcess([] {
        SharedClientInfo *first = sharedClientInfo(336, "TovaskZelSMKey");
        first->deviceType = 4;
        const SharedClientInfo *again = sharedClientInfo(336, "AnotherKey");
        return again == first && again->deviceType == 4 &&
               !QSharedMemory(QStringLiteral("AnotherKey")).attach();
    }));
}

void SharedClientInfoTest::whatIsWrittenReachesTheOtherProcess()
{
    Writer writer;
    QVERIFY(inOwnProcess([] {
        SharedClientInfo *info = sharedClientInfo();
        info->deviceType = 5;
        return true;
    }));
    QCOMPARE(int(writer.bytes()[64]), 5);
}

void SharedClientInfoTest::aBlockThatCannotBeMadeIsNull()
{
    QVERIFY(inOwnProcess([] {
        // The native key is made from a file in the temporary directory, which is none.
        qputenv("TMPDIR", "/dev/null");
        qInstallMessageHandler(rememberMessage);
        return !sharedClientInfo() &&
               lastMessage == "Failed to create SharedClientInfo shared memory: " +
                                  QByteArray::number(QSharedMemory::KeyError);
    }));
}

void SharedClientInfoTest::aBlockThatCannotBeAttachedIsNull()
{
    Writer writer;
    QVERIFY(inOwnProcess([] {
        attachingIsRefused = true;
        qInstallMessageHandler(rememberMessage);
        return !sharedClientInfo() &&
               lastMessage == "Failed to attach SharedClientInfo shared memory: " +
                                  QByteArray::number(QSharedMemory::PermissionDenied);
    }));
}

void SharedClientInfoTest::textsEndAtTheirZeroByte()
{
    SharedClientInfo info{};
    QCOMPARE(serialNumber(info), QString());
    QCOMPARE(logFilePath(info), QString());
    std::memcpy(info.serialNumber, "AB\0CD", 5);
    QCOMPARE(serialNumber(info), QStringLiteral("AB"));
}

void SharedClientInfoTest::textsWithoutZeroByteEndWithTheirField()
{
    SharedClientInfo info;
    std::memset(&info, 'x', sizeof info);
    QCOMPARE(serialNumber(info), QString(64, QLatin1Char('x')));
    QCOMPARE(logFilePath(info), QString(256, QLatin1Char('x')));
}

QTEST_APPLESS_MAIN(SharedClientInfoTest)
#include "tst_shared_client_info.moc"
