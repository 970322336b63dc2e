#include "tessel_core/io/write_behind_file.h"

#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <fcntl.h>
#include <vector>

namespace {

struct Range
{
    qint64 from;
    qint64 length;
    bool waits;

    bool operator==(const Range &other) const
    {
        return from == other.from && length == other.length && waits == other.waits;
    }
};

std::vector<Range> ranges;
/** The errno of the call with that number, counted from 1; 0 for none. */
int failingCall = 0;
int failure = 0;

constexpr auto unbuffered = QIODevice::WriteOnly | QIODevice::Unbuffered;

} // namespace

extern "C" int sync_file_range(int, off64_t from, off64_t length, unsigned int flags)
{
    ranges.push_back({from, length, (flags & SYNC_FILE_RANGE_WAIT_AFTER) != 0});
    if (static_cast<int>(ranges.size()) != failingCall)
        return 0;
    errno = failure;
    return -1;
}

using Tessel::WriteBehindFile;

class WriteBehindFileTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void whatIsWrittenIsInTheFile();
    void lessThanAWindowIsLeftToTheFinalSync();
    void eachWindowIsSentAndTheOneBeforeItWaitedFor();
    void aWindowMayBeLargerThanItsSize();
    void aFailingMediumFailsThisWriteAndAllLaterOnes_data();
    void aFailingMediumFailsThisWriteAndAllLaterOnes();
    void aFileSystemWithoutRangesIsNoFailure();
    void aFailedWriteIsAFailedWrite();

private:
    QTemporaryDir scratch;
    QString path;
};

void WriteBehindFileTest::init()
{
    ranges.clear();
    failingCall = 0;
    path = scratch.filePath(QStringLiteral("file"));
}

void WriteBehindFileTest::whatIsWrittenIsInTheFile()
{
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    QByteArray expected;
    for (int i = 0; i < 25; ++i) {
        const QByteArray part = QByteArray::number(i * i);
        QCOMPARE(file.write(part), qint64(part.size()));
        expected += part;
    }
    file.close();
    QFile reader(path);
    QVERIFY(reader.open(QIODevice::ReadOnly));
    QCOMPARE(reader.readAll(), expected);
}

void WriteBehindFileTest::lessThanAWindowIsLeftToTheFinalSync()
{
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    file.write("123456789");
    QVERIFY(ranges.empty());
}

void WriteBehindFileTest::eachWindowIsSentAndTheOneBeforeItWaitedFor()
{
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    for (int i = 0; i < 6; ++i)
        file.write("12345");
    const std::vector<Range> expected = {
        {0, 10, false}, {10, 10, false}, {0, 10, true}, {20, 10, false}, {10, 10, true}};
    QVERIFY(ranges == expected);
}

void WriteBehindFileTest::aWindowMayBeLargerThanItsSize()
{
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    file.write(QByteArray(25, 'x'));
    file.write(QByteArray(12, 'x'));
    const std::vector<Range> expected = {{0, 25, false}, {25, 12, false}, {0, 25, true}};
    QVERIFY(ranges == expected);
}

void WriteBehindFileTest::aFailingMediumFailsThisWriteAndAllLaterOnes_data()
{
    QTest::addColumn<int>("call");
    QTest::addColumn<int>("error");
    QTest::newRow("when sent, broken") << 2 << EIO;
    QTest::newRow("when waited for, broken") << 3 << EIO;
    QTest::newRow("when waited for, full") << 3 << ENOSPC;
    QTest::newRow("when waited for, over quota") << 3 << EDQUOT;
}

void WriteBehindFileTest::aFailingMediumFailsThisWriteAndAllLaterOnes()
{
    QFETCH(int, call);
    QFETCH(int, error);
    failingCall = call;
    failure = error;
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    QCOMPARE(file.write("1234567890"), qint64(10));
    QCOMPARE(file.write("1234567890"), qint64(-1));
    errno = 0;
    QCOMPARE(file.write("1"), qint64(-1));
    QCOMPARE(errno, error);
}

void WriteBehindFileTest::aFileSystemWithoutRangesIsNoFailure()
{
    failingCall = 1;
    failure = ESPIPE;
    WriteBehindFile file(path, 10);
    QVERIFY(file.open(unbuffered));
    QCOMPARE(file.write("1234567890"), qint64(10));
    QCOMPARE(file.write("1234567890"), qint64(10));
}

void WriteBehindFileTest::aFailedWriteIsAFailedWrite()
{
    WriteBehindFile full(QStringLiteral("/dev/full"), 10);
    QVERIFY(full.open(unbuffered));
    QCOMPARE(full.write("1234567890"), qint64(-1));
    QVERIFY(ranges.empty());
}

QTEST_APPLESS_MAIN(WriteBehindFileTest)
#include "tst_write_behind_file.moc"
