#include "archive_fixture.h"
#include "support/log_capture.h"
#include "support/package_reader.h"

#include <QTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace ArchiveFixture;
using TestSupport::captureStandardError;

namespace {

/** The wait status of a child that opens an archive for writing. */
int statusOfOpeningChild(Format format, Compression compression)
{
    const pid_t child = fork();
    if (child == 0) {
        // QtTest catches the signal to write a report of its own.
        std::signal(SIGABRT, SIG_DFL);
        const rlimit noCoreFile = {0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        QBuffer buffer;
        buffer.open(QIODevice::WriteOnly);
        FileArchive archive;
        archive.open(Mode::Write, &buffer, format, compression);
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

qint64 takeAll(const void * /*buffer*/, std::size_t length)
{
    return qint64(length);
}

} // namespace

/** Opening, closing and what makes either fail. */
class FileArchiveOpenTest : public QObject
{
    Q_OBJECT

private slots:
    void onlyGzippedTarKnowsStored_data();
    void onlyGzippedTarKnowsStored();
    void writingAnUnsupportedCombinationAborts_data();
    void writingAnUnsupportedCombinationAborts();
    void theFunctionVariantRefusesInsteadOfAborting_data();
    void theFunctionVariantRefusesInsteadOfAborting();
    void readingIgnoresTheCompressionMode();
    void anUnknownFormatFailsAndLeavesTheObjectUsable();
    void anUnknownModeFails();
    void openingAnOpenArchiveFailsAndChangesNothing();
    void aClosedDeviceFailsWithCode9_data();
    void aClosedDeviceFailsWithCode9();
    void anEmptyFunctionFails();
    void aClosedArchiveDoesNothing();
    void anArchiveOpenForWritingDoesNotRead();
    void anArchiveOpenForReadingDoesNotWrite();
    void closingTwiceIsHarmless();
    void closingLeavesTheDeviceOpen();
    void anObjectCanBeUsedAgain();
    void theDestructorFinishesTheArchive();
};

void FileArchiveOpenTest::onlyGzippedTarKnowsStored_data()
{
    QTest::addColumn<quint32>("format");
    QTest::addColumn<quint32>("compression");
    QTest::addColumn<bool>("supported");
    for (quint32 format = 0; format < 6; ++format)
        for (quint32 compression = 0; compression < 4; ++compression)
            QTest::addRow("format %u compression %u", format, compression)
                << format << compression << (compression == 0 || (compression == 1 && format == 0));
}

void FileArchiveOpenTest::onlyGzippedTarKnowsStored()
{
    QFETCH(quint32, format);
    QFETCH(quint32, compression);
    QTEST(FileArchive::formatSupportsCompressionMode(Format(format), Compression(compression)),
          "supported");
}

void FileArchiveOpenTest::writingAnUnsupportedCombinationAborts_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<Compression>("compression");
    QTest::newRow("tar stored") << Format::Tar << Compression::Stored;
    QTest::newRow("zip stored") << Format::Zip << Compression::Stored;
    QTest::newRow("7-zip stored") << Format::SevenZip << Compression::Stored;
    QTest::newRow("unknown format stored") << Format(4) << Compression::Stored;
    QTest::newRow("unknown compression") << Format::TarGzip << Compression(2);
}

void FileArchiveOpenTest::writingAnUnsupportedCombinationAborts()
{
    QFETCH(Format, format);
    QFETCH(Compression, compression);
    int status = 0;
    const QByteArray written =
        captureStandardError([&] { status = statusOfOpeningChild(format, compression); });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written,
             QByteArray("Error Assert: 'formatSupportsCompressionMode(format, compression)' is "
                        "FALSE at line 424 in file src/tessel_core/io/file_archive\n"));
}

void FileArchiveOpenTest::theFunctionVariantRefusesInsteadOfAborting_data()
{
    writingAnUnsupportedCombinationAborts_data();
}

void FileArchiveOpenTest::theFunctionVariantRefusesInsteadOfAborting()
{
    QFETCH(Format, format);
    QFETCH(Compression, compression);
    FileArchive archive;
    QVERIFY(!archive.openForWriting(takeAll, format, compression));
    QVERIFY(!archive.isOpen());
    QVERIFY(archive.openForWriting(takeAll, Format::Tar));
}

void FileArchiveOpenTest::readingIgnoresTheCompressionMode()
{
    for (const Format format : {Format::TarGzip, Format::Tar, Format::Zip, Format::SevenZip}) {
        QByteArray bytes = archiveOf(
            [](FileArchive &archive) { return archive.addData("d", QStringLiteral("n")); }, format);
        QBuffer buffer(&bytes);
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        FileArchive archive;
        QVERIFY(archive.open(Mode::Read, &buffer, format, Compression::Stored));
        QStringList names;
        QVERIFY(archive.entryNames(names));
        QCOMPARE(names, QStringList{QStringLiteral("n")});
    }
}

void FileArchiveOpenTest::anUnknownFormatFailsAndLeavesTheObjectUsable()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::ReadWrite));
    FileArchive archive;
    for (const quint32 format : {4u, 5u, 0xffffffffu}) {
        QVERIFY(!archive.open(Mode::Write, &buffer, Format(format)));
        QVERIFY(!archive.open(Mode::Read, &buffer, Format(format)));
        QVERIFY(!archive.openForWriting(takeAll, Format(format)));
        QVERIFY(!archive.isOpen());
    }
    QCOMPARE(buffer.size(), qint64(0));
    QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
}

void FileArchiveOpenTest::anUnknownModeFails()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::ReadWrite));
    FileArchive archive;
    QVERIFY(!archive.open(Mode(2), &buffer, Format::TarGzip));
    QVERIFY(!archive.open(Mode(0xffffffff), &buffer, Format::TarGzip, Compression(7)));
    QVERIFY(!archive.isOpen());
}

void FileArchiveOpenTest::openingAnOpenArchiveFailsAndChangesNothing()
{
    QBuffer first;
    QBuffer second;
    QVERIFY(first.open(QIODevice::ReadWrite));
    QVERIFY(second.open(QIODevice::ReadWrite));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &first, Format::TarGzip));
    QVERIFY(archive.addData("data", QStringLiteral("name")));
    QVERIFY(!archive.open(Mode::Write, &second, Format::TarGzip));
    QVERIFY(!archive.open(Mode::Read, &second, Format::TarGzip));
    // Not even the assertion: an open archive refuses first.
    QVERIFY(!archive.open(Mode::Write, &second, Format::Tar, Compression::Stored));
    QVERIFY(!archive.openForWriting(takeAll, Format::Tar));
    QVERIFY(!archive.openForReading([](const void **) { return qint64(0); }, Format::Tar));
    QCOMPARE(archive.payloadBytes(), quint64(4));
    QVERIFY(archive.close());
    QVERIFY(TestSupport::readPackageBytes(first.data()).isWellFormed());
    QCOMPARE(second.size(), qint64(0));
}

void FileArchiveOpenTest::aClosedDeviceFailsWithCode9_data()
{
    QTest::addColumn<bool>("isThere");
    QTest::addColumn<quint32>("mode");
    QTest::newRow("closed, reading") << true << 0u;
    QTest::newRow("closed, writing") << true << 1u;
    QTest::newRow("null, reading") << false << 0u;
    QTest::newRow("null, writing") << false << 1u;
}

void FileArchiveOpenTest::aClosedDeviceFailsWithCode9()
{
    QFETCH(bool, isThere);
    QFETCH(quint32, mode);
    for (const Format format : {Format::TarGzip, Format::Tar, Format::Zip, Format::SevenZip}) {
        QBuffer buffer;
        FileArchive archive;
        QVERIFY(!archive.open(Mode(mode), isThere ? &buffer : nullptr, format));
        QCOMPARE(archive.errorString(), QStringLiteral("IO device isn't open"));
        QCOMPARE(archive.errorCode(), 9);
        QVERIFY(!archive.isOpen());
        QVERIFY(buffer.open(QIODevice::ReadWrite));
        QVERIFY(archive.open(Mode::Write, &buffer, format));
        QVERIFY(archive.errorString().isNull());
    }
}

void FileArchiveOpenTest::anEmptyFunctionFails()
{
    FileArchive archive;
    QVERIFY(!archive.openForReading(nullptr, Format::Tar));
    QVERIFY(!archive.openForWriting(nullptr, Format::Tar));
    QVERIFY(!archive.isOpen());
}

void FileArchiveOpenTest::aClosedArchiveDoesNothing()
{
    FileArchive archive;
    QStringList names{QStringLiteral("stale")};
    QVERIFY(!archive.entryNames(names));
    QVERIFY(names.isEmpty());
    QVERIFY(!archive.extractAll(QStringLiteral("/nowhere")));
    QVERIFY(!archive.addEmptyFile(QStringLiteral("n")));
    QVERIFY(!archive.addData("d", QStringLiteral("n")));
    QVERIFY(!archive.addFile(QCoreApplication::applicationFilePath(), QStringLiteral("n")));
    QVERIFY(!archive.addDirectory(QStringLiteral("/"), QStringLiteral("n")));
    QVERIFY(!archive.add(QCoreApplication::applicationFilePath()));
    QCOMPARE(archive.payloadBytes(), quint64(0));
    QCOMPARE(archive.blockBytes(), quint64(0));
}

void FileArchiveOpenTest::anArchiveOpenForWritingDoesNotRead()
{
    FileArchive archive;
    QVERIFY(archive.openForWriting(takeAll, Format::TarGzip));
    QStringList names{QStringLiteral("stale")};
    QVERIFY(!archive.entryNames(names));
    QVERIFY(names.isEmpty());
    QVERIFY(!archive.extractAll(QStringLiteral("/nowhere")));
    QVERIFY(archive.close());
}

void FileArchiveOpenTest::anArchiveOpenForReadingDoesNotWrite()
{
    QByteArray bytes = archiveOf([](FileArchive &) { return true; });
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::ReadWrite));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &buffer, Format::TarGzip));
    QVERIFY(!archive.addEmptyFile(QStringLiteral("n")));
    QVERIFY(!archive.addData("d", QStringLiteral("n")));
    QVERIFY(!archive.addFile(QCoreApplication::applicationFilePath(), QStringLiteral("n")));
    QVERIFY(!archive.addDirectory(QStringLiteral("/"), QStringLiteral("n")));
    QVERIFY(archive.close());
}

void FileArchiveOpenTest::closingTwiceIsHarmless()
{
    FileArchive archive;
    QVERIFY(archive.close());
    QVERIFY(archive.openForWriting(takeAll, Format::TarGzip));
    QVERIFY(archive.close());
    QVERIFY(archive.close());
    QVERIFY(!archive.isOpen());
}

void FileArchiveOpenTest::closingLeavesTheDeviceOpen()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
    QVERIFY(archive.close());
    QVERIFY(buffer.isOpen());
}

void FileArchiveOpenTest::anObjectCanBeUsedAgain()
{
    FileArchive archive;
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::ReadWrite));
    QVERIFY(archive.open(Mode::Write, &buffer, Format::Tar));
    QVERIFY(archive.addData(QByteArray(5000, 'x'), QStringLiteral("one")));
    QVERIFY(archive.close());
    QCOMPARE(archive.payloadBytes(), quint64(5000));
    QCOMPARE(archive.blockBytes(), quint64(8192));

    QVERIFY(buffer.seek(0));
    QVERIFY(archive.open(Mode::Read, &buffer, Format::Tar));
    QCOMPARE(archive.payloadBytes(), quint64(0));
    QCOMPARE(archive.blockBytes(), quint64(0));
    QStringList names;
    QVERIFY(archive.entryNames(names));
    QCOMPARE(names, QStringList{QStringLiteral("one")});
}

void FileArchiveOpenTest::theDestructorFinishesTheArchive()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    {
        FileArchive archive;
        QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
        QVERIFY(archive.addData("data", QStringLiteral("name")));
    }
    QVERIFY(TestSupport::readPackageBytes(buffer.data()).isWellFormed());
}

QTEST_GUILESS_MAIN(FileArchiveOpenTest)
#include "tst_file_archive_open.moc"
