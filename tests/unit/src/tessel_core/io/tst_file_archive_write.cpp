#include "archive_fixture.h"
#include "support/package_reader.h"

#include <QTemporaryDir>
#include <QTest>

#include <ctime>
#include <memory>

using namespace ArchiveFixture;
using namespace TestSupport;

/** Entries made of data and of single files. */
class FileArchiveWriteTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { scratch = std::make_unique<QTemporaryDir>(); }
    void writesEveryFormat_data();
    void writesEveryFormat();
    void storedDoesNotCompress();
    void neitherTarIsPaddedBeyondItsEndBlocks();
    void everyToolReadsThePackage();
    void anEmptyFileIsAHeaderOnly();
    void dataIsDatedNow();
    void aFileGetsFixedPermissionsAndNoDate();
    void sizesAreAccountedInBytesAndBlocks_data();
    void sizesAreAccountedInBytesAndBlocks();
    void emptyFilesAndDirectoriesAreNotPayload();
    void eachChunkIsAStepOfProgress_data();
    void eachChunkIsAStepOfProgress();
    void progressCountsOnFromEarlierEntries();
    void aReporterCanBeDetached();
    void namesAreStoredInUtf8_data();
    void namesAreStoredInUtf8();
    void longNamesAreKept_data();
    void longNamesAreKept();
    void anEmptyNameIsRefused();
    void sevenZipInTheCLocaleOnlyWarns();

private:
    QString path(const QString &name) const { return scratch->filePath(name); }

    std::unique_ptr<QTemporaryDir> scratch;
};

void FileArchiveWriteTest::writesEveryFormat_data()
{
    QTest::addColumn<Format>("format");
    QTest::addColumn<Compression>("compression");
    QTest::addColumn<QByteArray>("start");
    QTest::newRow("gzipped tar") << Format::TarGzip << Compression::Default
                                 << QByteArray("\x1f\x8b\x08");
    QTest::newRow("stored tar") << Format::TarGzip << Compression::Stored
                                << QByteArray("\x1f\x8b\x08");
    QTest::newRow("plain tar") << Format::Tar << Compression::Default << QByteArray("first");
    QTest::newRow("zip") << Format::Zip << Compression::Default << QByteArray("PK\x03\x04");
    QTest::newRow("7-zip") << Format::SevenZip << Compression::Default
                           << QByteArray("7z\xbc\xaf\x27\x1c");
}

void FileArchiveWriteTest::writesEveryFormat()
{
    QFETCH(Format, format);
    QFETCH(Compression, compression);
    QFETCH(QByteArray, start);
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, noise(20000)));
    QByteArray bytes = archiveOf(
        [&](FileArchive &archive) {
            return archive.addData("first data", QStringLiteral("first")) &&
                   archive.addEmptyFile(QStringLiteral("nothing")) &&
                   archive.addFile(source, QStringLiteral("sub/third"));
        },
        format, compression);
    QVERIFY(bytes.startsWith(start));

    QBuffer buffer(&bytes);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &buffer, format));
    QVERIFY(archive.extractAll(path(QStringLiteral("out"))));
    QCOMPARE(readFile(path(QStringLiteral("out/first"))), QByteArray("first data"));
    QVERIFY(QFile::exists(path(QStringLiteral("out/nothing"))));
    QCOMPARE(readFile(path(QStringLiteral("out/sub/third"))), noise(20000));
}

void FileArchiveWriteTest::storedDoesNotCompress()
{
    const auto fill = [](FileArchive &archive) {
        return archive.addData(QByteArray(100000, 'x'), QStringLiteral("name"));
    };
    const QByteArray stored = archiveOf(fill, Format::TarGzip, Compression::Stored);
    QVERIFY(stored.size() > 100000);
    QVERIFY(readPackageBytes(stored).isWellFormed());
    QVERIFY(archiveOf(fill).size() < 1000);
}

void FileArchiveWriteTest::neitherTarIsPaddedBeyondItsEndBlocks()
{
    const auto fill = [](FileArchive &archive) {
        return archive.addData("data", QStringLiteral("name"));
    };
    // A header, a block of data and the two end blocks.
    const QByteArray plain = archiveOf(fill, Format::Tar);
    QCOMPARE(plain.size(), 2048);
    QVERIFY(readTar(plain).isWellFormed());
    const Package package = readPackageBytes(archiveOf(fill));
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.tarSize, qint64(2048));
    QCOMPARE(package.bytesAfterEnd, qint64(0));
    QCOMPARE(package.members.at(0).magic, QByteArray("ustar  \0", 8));
}

void FileArchiveWriteTest::everyToolReadsThePackage()
{
    const QString package = path(QStringLiteral("out.cdp"));
    const QString longName = QString(150, QLatin1Char('l'));
    QVERIFY(QDir(scratch->path()).mkdir(QStringLiteral("tree")));
    QVERIFY(writeFile(path(QStringLiteral("tree/leaf")), noise(70000)));
    QVERIFY(writeFile(package, archiveOf([&](FileArchive &archive) {
                          return archive.addData("one", QStringLiteral("a name with spaces")) &&
                                 archive.addEmptyFile(QStringLiteral("nothing")) &&
                                 archive.addData("two", QString::fromUtf8("Gerät €")) &&
                                 archive.addData("three", longName) &&
                                 archive.addData("again", QStringLiteral("nothing")) &&
                                 archive.add(path(QStringLiteral("tree")));
                      })));
    QString why;
    QVERIFY2(sameWithEveryTool(package, &why), qPrintable(why));
    QCOMPARE(readPackage(package).members.size(), 7);
}

void FileArchiveWriteTest::anEmptyFileIsAHeaderOnly()
{
    const Package package = readPackageBytes(archiveOf(
        [](FileArchive &archive) { return archive.addEmptyFile(QStringLiteral("nothing")); }));
    QVERIFY(package.isWellFormed());
    QCOMPARE(package.tarSize, qint64(3 * 512));
    const PackageMember &member = package.members.at(0);
    QCOMPARE(member.name, QStringLiteral("nothing"));
    QCOMPARE(member.size, quint64(0));
    QCOMPARE(member.mode, 0644u);
    QCOMPARE(member.typeFlag, '0');
}

void FileArchiveWriteTest::dataIsDatedNow()
{
    // The archive's own clock: time() may be some milliseconds behind finer ones, which
    // tells at the turn of a second.
    const std::time_t before = std::time(nullptr);
    const Package package = readPackageBytes(archiveOf([](FileArchive &archive) {
        return archive.addData("data", QStringLiteral("name")) &&
               archive.addData(QByteArray(), QStringLiteral("none"));
    }));
    const std::time_t after = std::time(nullptr);
    QVERIFY(package.isWellFormed());
    for (const PackageMember &member : package.members) {
        QVERIFY(member.mtime >= before && member.mtime <= after);
        QCOMPARE(member.mode, 0644u);
        QCOMPARE(member.typeFlag, '0');
    }
    QCOMPARE(package.members.at(0).bytes, QByteArray("data"));
    QCOMPARE(package.members.at(1).size, quint64(0));
}

void FileArchiveWriteTest::aFileGetsFixedPermissionsAndNoDate()
{
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, "content"));
    QVERIFY(QFile::setPermissions(source, QFile::ReadOwner | QFile::ExeOwner));
    const Package package = readPackageBytes(archiveOf(
        [&](FileArchive &archive) { return archive.addFile(source, QStringLiteral("copy")); }));
    QVERIFY(package.isWellFormed());
    const PackageMember &member = package.members.at(0);
    QCOMPARE(member.name, QStringLiteral("copy"));
    QCOMPARE(member.mode, 0644u);
    QCOMPARE(member.mtime, qint64(0));
    QCOMPARE(member.uid, 0u);
    QCOMPARE(member.gid, 0u);
    QCOMPARE(member.bytes, QByteArray("content"));
}

void FileArchiveWriteTest::sizesAreAccountedInBytesAndBlocks_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<quint64>("blockBytes");
    QTest::newRow("nothing") << 0 << quint64(0);
    QTest::newRow("one byte") << 1 << quint64(4096);
    QTest::newRow("just below a block") << 4095 << quint64(4096);
    QTest::newRow("a block") << 4096 << quint64(4096);
    QTest::newRow("just above a block") << 4097 << quint64(8192);
    QTest::newRow("a chunk") << 8192 << quint64(8192);
    QTest::newRow("just above a chunk") << 8193 << quint64(12288);
}

void FileArchiveWriteTest::sizesAreAccountedInBytesAndBlocks()
{
    QFETCH(int, size);
    QFETCH(quint64, blockBytes);
    const QByteArray content = noise(size);
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, content));
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
    QVERIFY(archive.addData(content, QStringLiteral("data")));
    QCOMPARE(archive.payloadBytes(), quint64(size));
    QCOMPARE(archive.blockBytes(), blockBytes);
    QVERIFY(archive.addFile(source, QStringLiteral("file")));
    QCOMPARE(archive.payloadBytes(), quint64(2 * size));
    QCOMPARE(archive.blockBytes(), 2 * blockBytes);
    QVERIFY(archive.close());
    const Package package = readPackageBytes(buffer.data());
    QVERIFY(package.isWellFormed());
    QCOMPARE(package.members.at(0).bytes, content);
    QCOMPARE(package.members.at(1).bytes, content);
}

void FileArchiveWriteTest::emptyFilesAndDirectoriesAreNotPayload()
{
    QBuffer buffer;
    QVERIFY(buffer.open(QIODevice::WriteOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &buffer, Format::TarGzip));
    QVERIFY(archive.addEmptyFile(QStringLiteral("nothing")));
    QVERIFY(archive.addDirectory(scratch->path(), QStringLiteral("directory")));
    QCOMPARE(archive.payloadBytes(), quint64(0));
    QCOMPARE(archive.blockBytes(), quint64(0));
}

void FileArchiveWriteTest::eachChunkIsAStepOfProgress_data()
{
    QTest::addColumn<int>("size");
    QTest::addColumn<QVector<quint64>>("steps");
    QTest::newRow("nothing") << 0 << QVector<quint64>{};
    QTest::newRow("one byte") << 1 << QVector<quint64>{1};
    QTest::newRow("half a chunk") << 4096 << QVector<quint64>{4096};
    QTest::newRow("a chunk") << 8192 << QVector<quint64>{8192};
    QTest::newRow("just above a chunk") << 8193 << QVector<quint64>{8192, 8193};
    QTest::newRow("three chunks") << 24576 << QVector<quint64>{8192, 16384, 24576};
}

void FileArchiveWriteTest::eachChunkIsAStepOfProgress()
{
    QFETCH(int, size);
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, noise(size)));
    Steps steps;
    QVERIFY(!archiveOf([&](FileArchive &archive) {
                 archive.setProgress(&steps);
                 return archive.addFile(source, QStringLiteral("name"));
             }).isEmpty());
    QTEST(steps.done, "steps");
}

void FileArchiveWriteTest::progressCountsOnFromEarlierEntries()
{
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, noise(8193)));
    Steps steps;
    QVERIFY(!archiveOf([&](FileArchive &archive) {
                 archive.setProgress(&steps);
                 return archive.addData(QByteArray(100, 'x'), QStringLiteral("data")) &&
                        archive.addFile(source, QStringLiteral("one")) &&
                        archive.addFile(source, QStringLiteral("two"));
             }).isEmpty());
    QCOMPARE(steps.done, QVector<quint64>({8292, 8293, 16485, 16486}));
}

void FileArchiveWriteTest::aReporterCanBeDetached()
{
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, "content"));
    Steps steps;
    QVERIFY(!archiveOf([&](FileArchive &archive) {
                 archive.setProgress(&steps);
                 archive.setProgress(nullptr);
                 return archive.addFile(source, QStringLiteral("name"));
             }).isEmpty());
    QVERIFY(steps.done.isEmpty());
}

void FileArchiveWriteTest::namesAreStoredInUtf8_data()
{
    QTest::addColumn<QByteArray>("localeName");
    QTest::newRow("C locale") << QByteArray("C");
    QTest::newRow("UTF-8 locale") << QByteArray("C.UTF-8");
}

void FileArchiveWriteTest::namesAreStoredInUtf8()
{
    QFETCH(QByteArray, localeName);
    const LocaleScope locale(localeName);
    QVERIFY(locale.valid);
    const QString name = QString::fromUtf8("Gerät/日本語 – €.log");
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, "content"));
    const QByteArray bytes = archiveOf([&](FileArchive &archive) {
        return archive.addFile(source, name) && archive.addEmptyFile(name) &&
               archive.addData("data", name);
    });
    QString problem;
    QVERIFY(gunzip(bytes, &problem).startsWith(name.toUtf8() + '\0'));
    const Package package = readPackageBytes(bytes);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    for (const PackageMember &member : package.members)
        QCOMPARE(member.name, name);
}

void FileArchiveWriteTest::longNamesAreKept_data()
{
    QTest::addColumn<QString>("name");
    for (const int length : {99, 100, 101, 255, 1000})
        QTest::addRow("%d characters", length) << QString(length, QLatin1Char('n'));
    QTest::newRow("200 umlauts") << QString(200, QChar(0xe4));
}

void FileArchiveWriteTest::longNamesAreKept()
{
    QFETCH(QString, name);
    const Package package = readPackageBytes(
        archiveOf([&](FileArchive &archive) { return archive.addData("data", name); }));
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.size(), 1);
    QCOMPARE(package.members.at(0).name, name);
    QCOMPARE(package.members.at(0).bytes, QByteArray("data"));
}

void FileArchiveWriteTest::anEmptyNameIsRefused()
{
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, "content"));
    const QByteArray bytes = archiveOf([&](FileArchive &archive) {
        return !archive.addData("data", QString()) && !archive.addEmptyFile(QString()) &&
               !archive.addFile(source, QString()) &&
               !archive.addDirectory(scratch->path(), QString());
    });
    const Package package = readPackageBytes(bytes);
    QVERIFY(package.isWellFormed());
    QVERIFY(package.members.isEmpty());
}

void FileArchiveWriteTest::sevenZipInTheCLocaleOnlyWarns()
{
    const LocaleScope locale("C");
    const QByteArray bytes = archiveOf(
        [](FileArchive &archive) {
            return archive.addEmptyFile(QString::fromUtf8("Gerät")) &&
                   archive.addData("more", QStringLiteral("plain"));
        },
        Format::SevenZip);
    QVERIFY(!bytes.isEmpty());
}

QTEST_GUILESS_MAIN(FileArchiveWriteTest)
#include "tst_file_archive_write.moc"
