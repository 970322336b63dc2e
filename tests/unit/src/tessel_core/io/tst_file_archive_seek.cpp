#include "archive_fixture.h"
#include "tessel_core/io/file_archive_io.h"

#include <QTest>

#include <cstdio>
#include <limits>

using namespace ArchiveFixture;

namespace {

constexpr qint64 farthest = std::numeric_limits<qint64>::max();

/** Has every size but cannot be positioned. */
class StubbornDevice : public QBuffer
{
public:
    bool seek(qint64 /*position*/) override
    {
        errno = ESPIPE;
        return false;
    }
};

} // namespace

/** The seek rules of the device callbacks, asked directly as libarchive asks them. */
class FileArchiveSeekTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();
    void seeksByOriginAndOffset_data();
    void seeksByOriginAndOffset();
    void returnsTheAbsolutePositionAlthoughSeekSetCountsFromTheBase();
    void refusesTargetsOffTheDevice_data();
    void refusesTargetsOffTheDevice();
    void fromTheEndOfAnEmptyDeviceFails();
    void anUnknownOriginFails();
    void aDeviceThatCannotSeekFails();
    void aDeviceThatDiedFails();

private:
    la_int64_t seek(qint64 offset, int whence)
    {
        return Tessel::seekDevice(handle, io.get(), offset, whence);
    }
    QByteArray errorText() const { return archive_error_string(handle); }

    QBuffer device;
    std::unique_ptr<Tessel::ArchiveIo> io;
    struct archive *handle = nullptr;
};

void FileArchiveSeekTest::init()
{
    handle = archive_read_new();
    device.close();
    device.setData(QByteArray(1000, 'x'));
    QVERIFY(device.open(QIODevice::ReadOnly));
    io = std::make_unique<Tessel::ArchiveIo>();
    io->device = &device;
}

void FileArchiveSeekTest::cleanup()
{
    archive_read_free(handle);
}

void FileArchiveSeekTest::seeksByOriginAndOffset_data()
{
    QTest::addColumn<qint64>("base");
    QTest::addColumn<qint64>("before");
    QTest::addColumn<int>("whence");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<qint64>("after");
    QTest::newRow("set to start") << qint64(0) << qint64(500) << SEEK_SET << qint64(0) << qint64(0);
    QTest::newRow("set to end") << qint64(0) << qint64(5) << SEEK_SET << qint64(1000)
                                << qint64(1000);
    QTest::newRow("set with base")
        << qint64(100) << qint64(500) << SEEK_SET << qint64(7) << qint64(107);
    QTest::newRow("set to base") << qint64(100) << qint64(500) << SEEK_SET << qint64(0)
                                 << qint64(100);
    QTest::newRow("onwards") << qint64(0) << qint64(500) << SEEK_CUR << qint64(20) << qint64(520);
    QTest::newRow("back") << qint64(0) << qint64(500) << SEEK_CUR << qint64(-500) << qint64(0);
    QTest::newRow("nowhere") << qint64(0) << qint64(500) << SEEK_CUR << qint64(0) << qint64(500);
    QTest::newRow("back to base") << qint64(100) << qint64(500) << SEEK_CUR << qint64(-400)
                                  << qint64(100);
    QTest::newRow("end") << qint64(0) << qint64(5) << SEEK_END << qint64(0) << qint64(1000);
    QTest::newRow("end with base")
        << qint64(100) << qint64(500) << SEEK_END << qint64(-1) << qint64(999);
    QTest::newRow("from end to base")
        << qint64(100) << qint64(500) << SEEK_END << qint64(-900) << qint64(100);
}

void FileArchiveSeekTest::seeksByOriginAndOffset()
{
    QFETCH(qint64, base);
    QFETCH(qint64, before);
    QFETCH(int, whence);
    QFETCH(qint64, offset);
    QFETCH(qint64, after);
    io->baseOffset = base;
    QVERIFY(device.seek(before));
    QCOMPARE(qint64(seek(offset, whence)), after);
    QCOMPARE(device.pos(), after);
}

void FileArchiveSeekTest::returnsTheAbsolutePositionAlthoughSeekSetCountsFromTheBase()
{
    io->baseOffset = 100;
    const la_int64_t position = seek(0, SEEK_SET);
    QCOMPARE(qint64(position), qint64(100));
    QCOMPARE(qint64(seek(position, SEEK_SET)), qint64(200));
}

void FileArchiveSeekTest::refusesTargetsOffTheDevice_data()
{
    const QByteArray start("Tried to seek off start of file");
    const QByteArray end("Tried to seek off end of file");
    QTest::addColumn<int>("whence");
    QTest::addColumn<qint64>("offset");
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("set before base") << SEEK_SET << qint64(-1) << start;
    QTest::newRow("current before base") << SEEK_CUR << qint64(-401) << start;
    QTest::newRow("current before the device") << SEEK_CUR << qint64(-501) << start;
    QTest::newRow("end before base") << SEEK_END << qint64(-901) << start;
    QTest::newRow("set past end") << SEEK_SET << qint64(901) << end;
    QTest::newRow("current past end") << SEEK_CUR << qint64(501) << end;
    QTest::newRow("end past end") << SEEK_END << qint64(1) << end;
    QTest::newRow("set past all numbers") << SEEK_SET << farthest << end;
    QTest::newRow("current past all numbers") << SEEK_CUR << farthest << end;
    QTest::newRow("end past all numbers") << SEEK_END << farthest << end;
    QTest::newRow("set far before") << SEEK_SET << -farthest << start;
}

void FileArchiveSeekTest::refusesTargetsOffTheDevice()
{
    QFETCH(int, whence);
    QFETCH(qint64, offset);
    QFETCH(QByteArray, text);
    io->baseOffset = 100;
    QVERIFY(device.seek(500));
    QCOMPARE(qint64(seek(offset, whence)), qint64(ARCHIVE_FATAL));
    QCOMPARE(errorText(), text);
    QCOMPARE(archive_errno(handle), -30);
    QCOMPARE(device.pos(), qint64(500));
}

void FileArchiveSeekTest::fromTheEndOfAnEmptyDeviceFails()
{
    QBuffer empty;
    QVERIFY(empty.open(QIODevice::ReadOnly));
    io->device = &empty;
    QCOMPARE(qint64(seek(0, SEEK_END)), qint64(ARCHIVE_FATAL));
    QCOMPARE(errorText(), QByteArray("File device reported zero or negative size"));
    QCOMPARE(archive_errno(handle), -30);
    QCOMPARE(qint64(seek(0, SEEK_SET)), qint64(0));
}

void FileArchiveSeekTest::anUnknownOriginFails()
{
    for (const int whence : {-1, 3, 17})
        QCOMPARE(qint64(seek(0, whence)), qint64(ARCHIVE_FATAL));
    QCOMPARE(archive_error_string(handle), nullptr);
}

void FileArchiveSeekTest::aDeviceThatCannotSeekFails()
{
    StubbornDevice stubborn;
    stubborn.setData(QByteArray(1000, 'x'));
    QVERIFY(stubborn.open(QIODevice::ReadOnly));
    io->device = &stubborn;
    QCOMPARE(qint64(seek(10, SEEK_SET)), qint64(ARCHIVE_FATAL));
    QCOMPARE(errorText(), QByteArray("File seek failed"));
    QCOMPARE(archive_errno(handle), ESPIPE);
}

void FileArchiveSeekTest::aDeviceThatDiedFails()
{
    io->device.clear();
    QCOMPARE(qint64(seek(10, SEEK_SET)), qint64(ARCHIVE_FATAL));
    QCOMPARE(errorText(), QByteArray("IO device isn't open"));
}

QTEST_GUILESS_MAIN(FileArchiveSeekTest)
#include "tst_file_archive_seek.moc"
