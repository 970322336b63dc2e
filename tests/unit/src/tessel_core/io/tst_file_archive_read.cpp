#include "archive_fixture.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace ArchiveFixture;

namespace {

const QStringList threeNames{QStringLiteral("dump.core"), QStringLiteral("report.xml"),
                             QStringLiteral("sub/r4.log")};

QByteArray threeEntries(Format format, Compression compression = Compression::Default)
{
    return archiveOf(
        [](FileArchive &archive) {
            return archive.addData(noise(5000), threeNames.at(0)) &&
                   archive.addEmptyFile(threeNames.at(1)) &&
                   archive.addData("log", threeNames.at(2));
        },
        format, compression);
}

/** More than the library reads ahead when it opens an archive. */
QByteArray longArchive()
{
    return archiveOf([](FileArchive &archive) {
        return archive.addEmptyFile(threeNames.at(0)) &&
               archive.addData(noise(500000), threeNames.at(1)) &&
               archive.addEmptyFile(threeNames.at(2));
    });
}

bool list(QByteArray bytes, Format format, QStringList &names, qint64 base = 0)
{
    QBuffer buffer(&bytes);
    FileArchive archive;
    return buffer.open(QIODevice::ReadOnly) && buffer.seek(base) &&
           archive.open(Mode::Read, &buffer, format) && archive.entryNames(names);
}

/** Gives an archive to a read function in pieces. */
class Pieces
{
public:
    Pieces(QByteArray content, int size)
        : bytes(std::move(content))
        , pieceSize(size)
    {}
    qint64 operator()(const void **buffer)
    {
        const int count = std::min(pieceSize, bytes.size() - at);
        *buffer = bytes.constData() + at;
        at += count;
        return count;
    }

private:
    QByteArray bytes;
    int pieceSize;
    int at = 0;
};

} // namespace

/** Listing archives, whole and damaged. */
class FileArchiveReadTest : public QObject
{
    Q_OBJECT

private slots:
    void listsEveryFormat_data();
    void listsEveryFormat();
    void theListIsReplaced();
    void namesKeepTheirLetters_data();
    void namesKeepTheirLetters();
    void namesThatAreNoUtf8AreStillNames();
    void equalNamesAreListedTwice();
    void plainTarIsNoGzippedTarAndViceVersa();
    void anArchiveMayStartPartWayIntoADevice_data();
    void anArchiveMayStartPartWayIntoADevice();
    void theAbsoluteSeekResultKeepsPlainTarsPartWayInFromSkippingLargeEntries();
    void readsAtMost1024BytesAtOnce();
    void aDeviceThatFailsToBeReadFailsTheListing();
    void aDeviceThatDiesFailsTheListing();
    void readsThroughAFunction_data();
    void readsThroughAFunction();
    void aReadFunctionThatFailsFailsTheListing();
    void listsAFileByItsPath();
    void whatIsNoPackageIsNotListed();
    void aTruncatedPackageIsNeverWhole();
    void aTruncatedTarIsNoticedInItsData();
    void damagedArchivesAreSurvived_data();
    void damagedArchivesAreSurvived();
};

void FileArchiveReadTest::listsEveryFormat_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<Compression>("compression");
    QTest::newRow("gzipped tar") << Format::TarGzip << Compression::Default;
    QTest::newRow("stored tar") << Format::TarGzip << Compression::Stored;
    QTest::newRow("plain tar") << Format::Tar << Compression::Default;
    QTest::newRow("zip") << Format::Zip << Compression::Default;
    QTest::newRow("7-zip") << Format::SevenZip << Compression::Default;
}

void FileArchiveReadTest::listsEveryFormat()
{
    QFETCH(Format, format);
    QFETCH(Compression, compression);
    QStringList names;
    QVERIFY(list(threeEntries(format, compression), format, names));
    names.sort(); // 7-Zip puts empty files last
    QCOMPARE(names, threeNames);
}

void FileArchiveReadTest::theListIsReplaced()
{
    QStringList names{QStringLiteral("stale")};
    QVERIFY(list(archiveOf([](FileArchive &) { return true; }), Format::TarGzip, names));
    QVERIFY(names.isEmpty());
}

void FileArchiveReadTest::namesKeepTheirLetters_data()
{
    QTest::addColumn<QByteArray>("localeName");
    QTest::newRow("C locale") << QByteArray("C");
    QTest::newRow("UTF-8 locale") << QByteArray("C.UTF-8");
}

void FileArchiveReadTest::namesKeepTheirLetters()
{
    QFETCH(QByteArray, localeName);
    const LocaleScope locale(localeName);
    QVERIFY(locale.valid);
    const QStringList expected{QString::fromUtf8("Gerät €"), QString(300, QChar(0x65e5))};
    const QByteArray bytes = archiveOf([&](FileArchive &archive) {
        return archive.addEmptyFile(expected.at(0)) && archive.addEmptyFile(expected.at(1));
    });
    QStringList names;
    QVERIFY(list(bytes, Format::TarGzip, names));
    QCOMPARE(names, expected);
}

void FileArchiveReadTest::namesThatAreNoUtf8AreStillNames()
{
    QByteArray bytes = rawArchive({fileEntry("caf\xe9"), fileEntry("plain")});
    for (const char *localeName : {"C", "C.UTF-8"}) {
        const LocaleScope locale(localeName);
        QStringList names;
        QVERIFY(list(bytes, Format::TarGzip, names));
        QCOMPARE(names.size(), 2);
        QVERIFY(names.at(0).startsWith(QLatin1String("caf")));
        QCOMPARE(names.at(1), QStringLiteral("plain"));
    }
}

void FileArchiveReadTest::equalNamesAreListedTwice()
{
    QStringList names;
    QVERIFY(list(rawArchive({fileEntry("r4"), fileEntry("r4")}), Format::TarGzip, names));
    QCOMPARE(names, QStringList({QStringLiteral("r4"), QStringLiteral("r4")}));
}

void FileArchiveReadTest::plainTarIsNoGzippedTarAndViceVersa()
{
    QStringList names;
    QVERIFY(!list(threeEntries(Format::TarGzip), Format::Tar, names));
    QVERIFY(!list(threeEntries(Format::Zip), Format::TarGzip, names));
    QVERIFY(!list(threeEntries(Format::TarGzip), Format::Zip, names));
    QVERIFY(!list(threeEntries(Format::TarGzip), Format::SevenZip, names));
    // The gzip filter is an offer: a tar without it is read all the same.
    QVERIFY(list(threeEntries(Format::Tar), Format::TarGzip, names));
}

void FileArchiveReadTest::anArchiveMayStartPartWayIntoADevice_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<qint64>("base");
    for (const qint64 base : {1, 512, 5000}) {
        QTest::addRow("gzipped tar at %lld", base) << Format::TarGzip << base;
        QTest::addRow("plain tar at %lld", base) << Format::Tar << base;
    }
}

void FileArchiveReadTest::anArchiveMayStartPartWayIntoADevice()
{
    QFETCH(Format, format);
    QFETCH(qint64, base);
    QStringList names;
    QVERIFY(list(QByteArray(int(base), '\xee') + threeEntries(format), format, names, base));
    QCOMPARE(names, threeNames);
}

void FileArchiveReadTest::theAbsoluteSeekResultKeepsPlainTarsPartWayInFromSkippingLargeEntries()
{
    const auto fill = [](FileArchive &archive) {
        return archive.addData(noise(200000), QStringLiteral("large")) &&
               archive.addEmptyFile(QStringLiteral("next"));
    };
    const QByteArray before(512, 'x');
    QStringList names;
    QVERIFY(list(archiveOf(fill, Format::Tar), Format::Tar, names));
    QVERIFY(list(before + archiveOf(fill), Format::TarGzip, names, before.size()));
    // Skipping 64 KiB or more is a seek, whose result the library compares with its own count.
    QVERIFY(!list(before + archiveOf(fill, Format::Tar), Format::Tar, names, before.size()));
    QCOMPARE(names, QStringList{QStringLiteral("large")});

    QByteArray bytes = before + archiveOf(fill, Format::Tar);
    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::ReadOnly) && buffer.seek(before.size()));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &buffer, Format::Tar));
    const QTemporaryDir scratch;
    QVERIFY2(archive.extractAll(scratch.path()), "what is read needs no seek");
    QCOMPARE(readFile(scratch.filePath(QStringLiteral("large"))), noise(200000));
}

void FileArchiveReadTest::readsAtMost1024BytesAtOnce()
{
    FailingSource source(threeEntries(Format::TarGzip));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &source, Format::TarGzip));
    QStringList names;
    QVERIFY(archive.entryNames(names));
    QCOMPARE(source.longestRead, qint64(1024));
}

void FileArchiveReadTest::aDeviceThatFailsToBeReadFailsTheListing()
{
    FailingSource source(longArchive().left(400000));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &source, Format::TarGzip));
    QStringList names;
    QVERIFY(!archive.entryNames(names));
    QCOMPARE(names, threeNames.mid(0, 2));
    QCOMPARE(archive.errorString(), QStringLiteral("IO device read error"));
    QCOMPARE(archive.errorCode(), EIO);

    FailingSource dead{QByteArray()};
    FileArchive second;
    QVERIFY(!second.open(Mode::Read, &dead, Format::TarGzip));
    QCOMPARE(second.errorString(), QStringLiteral("IO device read error"));
    QVERIFY(!second.isOpen());
}

void FileArchiveReadTest::aDeviceThatDiesFailsTheListing()
{
    FileArchive archive;
    {
        QBuffer buffer;
        buffer.setData(longArchive());
        QVERIFY(buffer.open(QIODevice::ReadOnly));
        QVERIFY(archive.open(Mode::Read, &buffer, Format::TarGzip));
    }
    QStringList names;
    QVERIFY(!archive.entryNames(names));
    QVERIFY(archive.close());
}

void FileArchiveReadTest::readsThroughAFunction_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<int>("pieceSize");
    QTest::addColumn<bool>("readable");
    for (const int size : {1, 1000, 1 << 20}) {
        QTest::addRow("gzipped tar by %d", size) << Format::TarGzip << size << true;
        QTest::addRow("plain tar by %d", size) << Format::Tar << size << true;
        QTest::addRow("zip by %d", size) << Format::Zip << size << true;
    }
    QTest::newRow("7-zip must seek") << Format::SevenZip << 1000 << false;
}

void FileArchiveReadTest::readsThroughAFunction()
{
    QFETCH(Format, format);
    QFETCH(int, pieceSize);
    QFETCH(bool, readable);
    FileArchive archive;
    QStringList names;
    const bool listed = archive.openForReading(Pieces(threeEntries(format), pieceSize), format) &&
                        archive.entryNames(names);
    QCOMPARE(listed, readable);
    if (readable)
        QCOMPARE(names, threeNames);
}

void FileArchiveReadTest::aReadFunctionThatFailsFailsTheListing()
{
    FileArchive archive;
    QVERIFY(!archive.openForReading([](const void **) { return qint64(-1); }, Format::TarGzip));
    QVERIFY(!archive.isOpen());

    Pieces pieces(longArchive().left(400000), 1000);
    const auto thenFail = [pieces](const void **buffer) mutable {
        const qint64 count = pieces(buffer);
        return count == 0 ? -1 : count;
    };
    QVERIFY(archive.openForReading(thenFail, Format::TarGzip));
    QStringList names;
    QVERIFY(!archive.entryNames(names));
}

void FileArchiveReadTest::listsAFileByItsPath()
{
    const QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("out.cdp"));
    QVERIFY(writeFile(path, threeEntries(Format::TarGzip)));
    QStringList names{QStringLiteral("stale")};
    QVERIFY(FileArchive::entryNames(path, names));
    QCOMPARE(names, threeNames);
}

void FileArchiveReadTest::whatIsNoPackageIsNotListed()
{
    const QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("out.cdp"));
    const QString pipe = scratch.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    QStringList names{QStringLiteral("stale")};
    for (const QString &wrong : {path, pipe, scratch.path(), QString()}) {
        QVERIFY(!FileArchive::entryNames(wrong, names));
        QVERIFY(names.isEmpty());
    }
    for (const QByteArray &bytes : {QByteArray(), QByteArray("text"), noise(5000)}) {
        QVERIFY(writeFile(path, bytes));
        QVERIFY(!FileArchive::entryNames(path, names));
        QVERIFY(names.isEmpty());
    }
}

void FileArchiveReadTest::aTruncatedPackageIsNeverWhole()
{
    const QByteArray whole = threeEntries(Format::TarGzip);
    // The last bytes hold the end blocks and the gzip trailer, which the library forgives.
    for (int length = 0; length < whole.size() - 200; length += 7) {
        QStringList names;
        QVERIFY2(!list(whole.left(length), Format::TarGzip, names),
                 qPrintable(QString::number(length)));
    }
}

void FileArchiveReadTest::aTruncatedTarIsNoticedInItsData()
{
    const QByteArray whole = threeEntries(Format::Tar);
    QStringList names;
    QVERIFY(!list(whole.left(512 + 1024), Format::Tar, names));
    QCOMPARE(names, QStringList{threeNames.at(0)});
}

void FileArchiveReadTest::damagedArchivesAreSurvived_data()
{
    listsEveryFormat_data();
}

void FileArchiveReadTest::damagedArchivesAreSurvived()
{
    QFETCH(Format, format);
    QFETCH(Compression, compression);
    const QByteArray whole = threeEntries(format, compression);
    const QTemporaryDir scratch;
    const QString out = scratch.filePath(QStringLiteral("a/b/out"));
    int unlisted = 0;
    for (int at = 0; at < whole.size(); at += 1 + std::min(at, whole.size() - at) / 10) {
        for (const char flip : {'\x01', '\x80', '\xff'}) {
            QByteArray damaged = whole;
            damaged[at] = char(damaged.at(at) ^ flip);
            QStringList names;
            unlisted += list(damaged, format, names) ? 0 : 1;
            QBuffer buffer(&damaged);
            QVERIFY(buffer.open(QIODevice::ReadOnly));
            FileArchive archive;
            if (archive.open(Mode::Read, &buffer, format))
                archive.extractAll(out);
            QVERIFY(QDir(out).removeRecursively());
        }
    }
    QVERIFY(unlisted > 0);
    // Whatever the damage made of the names, nothing landed beside the destination.
    const auto everything = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    QCOMPARE(QDir(scratch.path()).entryList(everything), QStringList{QStringLiteral("a")});
    QCOMPARE(QDir(scratch.filePath(QStringLiteral("a"))).entryList(everything),
             QStringList{QStringLiteral("b")});
    QVERIFY(QDir(scratch.filePath(QStringLiteral("a/b"))).entryList(everything).isEmpty());
}

QTEST_GUILESS_MAIN(FileArchiveReadTest)
#include "tst_file_archive_read.moc"
