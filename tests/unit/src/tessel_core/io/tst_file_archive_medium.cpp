#include "archive_fixture.h"
#include "support/package_reader.h"
#include "tessel_core/io/file_archive_io.h"

#include <QDir>
#include <QTest>

#include <csignal>
#include <sys/resource.h>

using namespace ArchiveFixture;

namespace {

qint64 takeNothing(const void * /*buffer*/, std::size_t /*length*/)
{
    return -1;
}

} // namespace

/** Where an archive is written to, and what can be wrong with it. */
class FileArchiveMediumTest : public QObject
{
    Q_OBJECT

private slots:
    void theCallbacksTellOfAFailure();
    void afterAFailureTheLibraryIsKeptRunningIntoTheVoid();
    void aDeviceThatDiesFirstFailsTheClose();
    void aFullMediumShowsAtClose();
    void aFullMediumShowsInTheData();
    void aMediumThatRecoversDoesNotMendTheArchive();
    void aFullMediumBehindAFileBufferShowsAtClose();
    void aWriteFunctionThatFailsShowsAtClose();
    void aDeviceThatTakesLittleGetsEverything_data();
    void aDeviceThatTakesLittleGetsEverything();
    void aFunctionThatTakesLittleGetsEverything();
};

void FileArchiveMediumTest::theCallbacksTellOfAFailure()
{
    struct archive *handle = archive_write_new();
    FullDevice device(5);
    Tessel::ArchiveIo io;
    io.device = &device;
    io.readFunction = [](const void **) { return qint64(-1); };
    io.writeFunction = takeNothing;
    const void *buffer = nullptr;
    QCOMPARE(Tessel::openDevice(handle, &io), ARCHIVE_OK);
    QCOMPARE(Tessel::writeDevice(handle, &io, "bytes", 5), la_ssize_t(5));
    QCOMPARE(Tessel::writeDevice(handle, &io, "bytes", 5), la_ssize_t(-1));
    QCOMPARE(archive_error_string(handle), "IO device write error");
    QCOMPARE(archive_errno(handle), ENOSPC);
    QCOMPARE(Tessel::writeThroughFunction(handle, &io, "bytes", 5), la_ssize_t(ARCHIVE_FATAL));
    QCOMPARE(Tessel::readThroughFunction(handle, &io, &buffer), la_ssize_t(ARCHIVE_FATAL));
    QCOMPARE(Tessel::closeDevice(handle, &io), ARCHIVE_OK);
    archive_write_free(handle);
}

void FileArchiveMediumTest::afterAFailureTheLibraryIsKeptRunningIntoTheVoid()
{
    struct archive *handle = archive_write_new();
    FullDevice device(8);
    Tessel::ArchiveIo io;
    io.device = &device;
    QCOMPARE(Tessel::writeOrDiscard(handle, &io, "bytes", 5), la_ssize_t(5));
    QVERIFY(!io.writeFailed);
    QCOMPARE(Tessel::writeOrDiscard(handle, &io, "bytes", 5), la_ssize_t(5));
    QVERIFY(io.writeFailed);
    device.room = 100;
    QCOMPARE(Tessel::writeOrDiscard(handle, &io, "more", 4), la_ssize_t(4));
    QVERIFY(io.writeFailed);
    QCOMPARE(device.taken, QByteArray("bytesbyt"));
    archive_write_free(handle);
}

void FileArchiveMediumTest::aDeviceThatDiesFirstFailsTheClose()
{
    FileArchive archive;
    {
        QBuffer buffer;
        QVERIFY(buffer.open(QIODevice::WriteOnly));
        QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
        QVERIFY(archive.addData("data", QStringLiteral("name")));
    }
    QVERIFY(!archive.close());
    QCOMPARE(archive.errorString(), QStringLiteral("IO device isn't open"));
}

void FileArchiveMediumTest::aFullMediumShowsAtClose()
{
    // The whole package waits in the compressor: nothing before close() can tell.
    FullDevice device(20);
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &device, Format::TarGzip));
    QVERIFY(archive.addData("data", QStringLiteral("name")));
    QVERIFY(!archive.close());
    QVERIFY(!archive.isOpen());
    QCOMPARE(archive.errorString(), QStringLiteral("IO device write error"));
    QCOMPARE(archive.errorCode(), ENOSPC);
    QVERIFY(archive.close());
}

void FileArchiveMediumTest::aFullMediumShowsInTheData()
{
    FullDevice device(100000);
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &device, Format::Tar));
    QVERIFY(archive.addData("data", QStringLiteral("fits")));
    QVERIFY(!archive.addData(noise(200000), QStringLiteral("does not fit")));
    QCOMPARE(archive.errorString(), QStringLiteral("IO device write error"));
    QCOMPARE(archive.errorCode(), ENOSPC);
    QCOMPARE(archive.payloadBytes(), quint64(4));
    QVERIFY(!archive.addEmptyFile(QStringLiteral("too late")));
    QVERIFY(!archive.close());
    QCOMPARE(archive.errorString(), QStringLiteral("IO device write error"));
}

void FileArchiveMediumTest::aMediumThatRecoversDoesNotMendTheArchive()
{
    for (const Format format : {Format::Tar, Format::TarGzip, Format::Zip}) {
        FullDevice device(100000);
        FileArchive archive;
        QVERIFY(archive.open(Mode::Write, &device, format));
        QVERIFY(!archive.addData(noise(300000), QStringLiteral("name")));
        device.room = 1 << 20;
        QVERIFY(!archive.addEmptyFile(QStringLiteral("next")));
        QVERIFY(!archive.close());
        QCOMPARE(archive.errorCode(), ENOSPC);
    }
}

void FileArchiveMediumTest::aFullMediumBehindAFileBufferShowsAtClose()
{
    const QString path = QDir::temp().filePath(
        QStringLiteral("tst_file_archive_open.%1").arg(QCoreApplication::applicationPid()));
    QFile file(path);
    QVERIFY(file.open(QIODevice::WriteOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &file, Format::TarGzip));
    QVERIFY(archive.addData("data", QStringLiteral("name")));

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit none{0, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &none);
    const bool closed = archive.close();
    setrlimit(RLIMIT_FSIZE, &before);
    file.close();
    QVERIFY(file.remove());
    QVERIFY(!closed);
}

void FileArchiveMediumTest::aWriteFunctionThatFailsShowsAtClose()
{
    FileArchive archive;
    QVERIFY(archive.openForWriting(takeNothing, Format::TarGzip));
    QVERIFY(archive.addData("data", QStringLiteral("name")));
    QVERIFY(!archive.close());

    QVERIFY(archive.openForWriting(takeNothing, Format::Tar));
    QVERIFY(!archive.addData(noise(100000), QStringLiteral("name")));
    QVERIFY(!archive.close());
}

void FileArchiveMediumTest::aDeviceThatTakesLittleGetsEverything_data()
{
    QTest::addColumn<qint64>("gulp");
    for (const qint64 gulp : {1, 7, 511, 10240})
        QTest::addRow("%lld bytes at once", gulp) << gulp;
}

void FileArchiveMediumTest::aDeviceThatTakesLittleGetsEverything()
{
    QFETCH(qint64, gulp);
    FullDevice device(1 << 20, gulp);
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &device, Format::TarGzip));
    const QByteArray data = noise(100000);
    QVERIFY(archive.addData(data, QStringLiteral("name")));
    QVERIFY(archive.close());
    const TestSupport::Package package = TestSupport::readPackageBytes(device.taken);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.at(0).bytes, data);
}

void FileArchiveMediumTest::aFunctionThatTakesLittleGetsEverything()
{
    QByteArray taken;
    FileArchive archive;
    const auto takeFew = [&taken](const void *buffer, std::size_t length) {
        const int count = int(std::min<std::size_t>(length, 100));
        taken.append(static_cast<const char *>(buffer), count);
        return qint64(count);
    };
    QVERIFY(archive.openForWriting(takeFew, Format::TarGzip, Compression::Stored));
    QVERIFY(archive.addData(noise(10000), QStringLiteral("name")));
    QVERIFY(archive.close());
    QVERIFY(TestSupport::readPackageBytes(taken).isWellFormed());
}

QTEST_GUILESS_MAIN(FileArchiveMediumTest)
#include "tst_file_archive_medium.moc"
