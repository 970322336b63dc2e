#include "archive_fixture.h"
#include "tessel_core/io/archive_progress.h"

#include <QDir>
#include <QDirIterator>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>
#include <unistd.h>

using namespace ArchiveFixture;

namespace {

/** Lets a number of entries pass and then asks to stop. */
class Patience : public Tessel::ArchiveProgress
{
public:
    explicit Patience(int entries)
        : left(entries)
    {}
    void advance(quint64 /*payloadBytesDone*/) override { ++steps; }
    bool mayContinue() override
    {
        ++asked;
        return left-- > 0;
    }
    int asked = 0;
    int steps = 0;

private:
    int left;
};

/** One file of 1 MiB that holds "x" at its start and a gap from there to its end. */
QByteArray sparseArchive(const char *name)
{
    QByteArray bytes(1 << 20, '\0');
    size_t used = 0;
    struct archive *handle = archive_write_new();
    archive_write_set_format_pax(handle);
    archive_write_open_memory(handle, bytes.data(), size_t(bytes.size()), &used);
    struct archive_entry *entry = archive_entry_new();
    archive_entry_set_pathname(entry, name);
    archive_entry_set_filetype(entry, AE_IFREG);
    archive_entry_set_perm(entry, 0644);
    archive_entry_set_size(entry, 1 << 20);
    archive_entry_sparse_add_entry(entry, 0, 1);
    archive_write_header(handle, entry);
    archive_write_data(handle, QByteArray("x").append(QByteArray((1 << 20) - 1, '\0')).constData(),
                       1 << 20);
    archive_entry_free(entry);
    archive_write_close(handle);
    archive_write_free(handle);
    return bytes.left(int(used));
}

} // namespace

/** What extraction makes of entries, friendly and hostile. */
class FileArchiveExtractTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { QVERIFY(utf8.valid); }
    void init();
    void makesDirectoriesAndFiles();
    void makesMissingParentsOfFiles();
    void appliesThePermissionBits_data();
    void appliesThePermissionBits();
    void replacesFiles();
    void namesKeepTheirLettersInTheCLocale();
    void aWarningAboutANameDoesNotEndTheExtraction();
    void aNameTheLocaleCannotHoldIsNotGuessed();
    void aRelativeDirectoryIsBelowTheWorkingDirectory();
    void anEmptyDirectoryIsRefused();
    void namesThatStayInsideAreExtracted_data();
    void namesThatStayInsideAreExtracted();
    void namesThatLeadOutsideAreRefused_data();
    void namesThatLeadOutsideAreRefused();
    void directoriesThatLeadOutsideAreRefused();
    void linksDevicesAndPipesAreSkipped();
    void anArchiveCannotWriteThroughALinkOfItsOwn();
    void linksOfTheOwnerAreFollowed();
    void aPipeInTheWayFailsAndDoesNotHang();
    void aDirectoryInTheWayFails();
    void aFileInTheWayOfADirectoryFails();
    void theFirstFailureEndsTheExtraction();
    void aTruncatedArchiveFails();
    void aGapAtTheEndOfAFileIsKept();
    void theReporterIsAskedBeforeEachEntry();
    void theReporterCanStopTheExtraction();

private:
    QString path(const QString &name) const { return scratch->filePath(name); }
    bool extract(QByteArray bytes, const QString &directory, Format format = Format::TarGzip,
                 Tessel::ArchiveProgress *progress = nullptr)
    {
        QBuffer buffer(&bytes);
        FileArchive archive;
        archive.setProgress(progress);
        return buffer.open(QIODevice::ReadOnly) && archive.open(Mode::Read, &buffer, format) &&
               archive.extractAll(directory);
    }
    bool extract(const QByteArray &bytes) { return extract(bytes, out); }
    /** All there is in the scratch directory, relative to it. */
    QStringList everything() const
    {
        QStringList found;
        QDirIterator entries(scratch->path(),
                             QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot,
                             QDirIterator::Subdirectories);
        while (entries.hasNext())
            found.append(QDir(scratch->path()).relativeFilePath(entries.next()));
        found.sort();
        return found;
    }

    const LocaleScope utf8{"C.UTF-8"}; // whatever the tests are started in
    std::unique_ptr<QTemporaryDir> scratch;
    QString out;
};

void FileArchiveExtractTest::init()
{
    scratch = std::make_unique<QTemporaryDir>();
    out = path(QStringLiteral("out"));
}

void FileArchiveExtractTest::makesDirectoriesAndFiles()
{
    QVERIFY(extract(rawArchive({directoryEntry("empty"), directoryEntry("a/b/"),
                                fileEntry("a/b/file", noise(100000)), fileEntry("nothing")})));
    QCOMPARE(everything(),
             QStringList({QStringLiteral("out"), QStringLiteral("out/a"), QStringLiteral("out/a/b"),
                          QStringLiteral("out/a/b/file"), QStringLiteral("out/empty"),
                          QStringLiteral("out/nothing")}));
    QCOMPARE(readFile(out + QStringLiteral("/a/b/file")), noise(100000));
    QCOMPARE(QFileInfo(out + QStringLiteral("/nothing")).size(), qint64(0));
}

void FileArchiveExtractTest::makesMissingParentsOfFiles()
{
    QVERIFY(extract(rawArchive({fileEntry("a/b/c/file", "data")}),
                    out + QStringLiteral("/not/there/yet")));
    QCOMPARE(readFile(out + QStringLiteral("/not/there/yet/a/b/c/file")), QByteArray("data"));
}

void FileArchiveExtractTest::appliesThePermissionBits_data()
{
    QTest::addColumn<uint>("inArchive");
    QTest::addColumn<uint>("onDisk");
    for (const uint mode : {0644u, 0755u, 0000u, 0777u, 0400u, 0200u, 0100u, 0040u, 0020u, 0010u,
                            0004u, 0002u, 0001u, 0640u})
        QTest::addRow("%04o", mode) << mode << mode;
    QTest::newRow("set user id") << 04755u << 0755u;
    QTest::newRow("set group id") << 02755u << 0755u;
    QTest::newRow("sticky") << 01644u << 0644u;
}

void FileArchiveExtractTest::appliesThePermissionBits()
{
    QFETCH(uint, inArchive);
    QFETCH(uint, onDisk);
    QVERIFY(extract(rawArchive({fileEntry("file", "data", inArchive)})));
    struct stat status = {};
    QCOMPARE(stat((out + QStringLiteral("/file")).toLocal8Bit().constData(), &status), 0);
    QCOMPARE(uint(status.st_mode) & 07777u, onDisk);
    QCOMPARE(status.st_size, off_t(4));
}

void FileArchiveExtractTest::replacesFiles()
{
    QVERIFY(QDir().mkdir(out));
    QVERIFY(writeFile(out + QStringLiteral("/file"), QByteArray(10000, 'o')));
    QVERIFY(extract(rawArchive({fileEntry("file", "new")})));
    QCOMPARE(readFile(out + QStringLiteral("/file")), QByteArray("new"));
}

void FileArchiveExtractTest::namesKeepTheirLettersInTheCLocale()
{
    const QString name = QString::fromUtf8("Gerät");
    const QByteArray bytes =
        archiveOf([&](FileArchive &archive) { return archive.addData("data", name); });
    {
        const LocaleScope locale("C");
        QVERIFY(extract(bytes));
    }
    QCOMPARE(readFile(out + QLatin1Char('/') + name), QByteArray("data"));
}

void FileArchiveExtractTest::aWarningAboutANameDoesNotEndTheExtraction()
{
    QByteArray pax = sparseArchive("Gerät");
    const LocaleScope locale("C");
    QVERIFY(extract(pax, out, Format::Tar));

    QStringList names;
    QBuffer buffer(&pax);
    QVERIFY(buffer.open(QIODevice::ReadOnly));
    FileArchive archive;
    QVERIFY(archive.open(Mode::Read, &buffer, Format::Tar));
    QVERIFY2(!archive.entryNames(names), "a listing takes no warning");
    QCOMPARE(QDir(out).entryList(QDir::Files).size(), 1);
}

void FileArchiveExtractTest::aNameTheLocaleCannotHoldIsNotGuessed()
{
    const QString name = QString::fromUtf8("Gerät");
    for (const Format format : {Format::Zip, Format::SevenZip}) {
        const QByteArray bytes =
            archiveOf([&](FileArchive &archive) { return archive.addData("data", name); }, format);
        const LocaleScope locale("C");
        QVERIFY(!extract(bytes, out, format));
        QVERIFY(everything().isEmpty());
    }
}

void FileArchiveExtractTest::aRelativeDirectoryIsBelowTheWorkingDirectory()
{
    const QString before = QDir::currentPath();
    QVERIFY(QDir().mkdir(out));
    QVERIFY(QDir::setCurrent(out));
    const bool extracted =
        extract(rawArchive({fileEntry("file", "data")}), QStringLiteral("../relative"));
    const bool escaped = extract(rawArchive({fileEntry("../file", "data")}), QStringLiteral(".."));
    QVERIFY(QDir::setCurrent(before));
    QVERIFY(extracted);
    QVERIFY(!escaped);
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("relative"),
                                        QStringLiteral("relative/file")}));
}

void FileArchiveExtractTest::anEmptyDirectoryIsRefused()
{
    QVERIFY(!extract(rawArchive({fileEntry("r4-stray")}), QString()));
    QVERIFY(!QFile::exists(QStringLiteral("/r4-stray")));
    QVERIFY(!QFile::exists(QStringLiteral("r4-stray")));
}

void FileArchiveExtractTest::namesThatStayInsideAreExtracted_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::addColumn<QString>("file");
    QTest::newRow("dot") << QByteArray("./file") << QStringLiteral("file");
    QTest::newRow("down and up") << QByteArray("a/../file") << QStringLiteral("file");
    QTest::newRow("dots in names") << QByteArray("..a/b../...") << QStringLiteral("..a/b../...");
    QTest::newRow("doubled slash") << QByteArray("a//file") << QStringLiteral("a/file");
    QTest::newRow("backslashes") << QByteArray("..\\file") << QStringLiteral("..\\file");
}

void FileArchiveExtractTest::namesThatStayInsideAreExtracted()
{
    QFETCH(QByteArray, name);
    QFETCH(QString, file);
    QVERIFY(extract(rawArchive({fileEntry(name, "data")})));
    QCOMPARE(readFile(out + QLatin1Char('/') + file), QByteArray("data"));
}

void FileArchiveExtractTest::namesThatLeadOutsideAreRefused_data()
{
    QTest::addColumn<QByteArray>("name");
    QTest::newRow("up") << QByteArray("../evil");
    QTest::newRow("far up") << QByteArray("../../../../../../../../../../evil");
    QTest::newRow("down and up") << QByteArray("a/../../evil");
    QTest::newRow("dot and up") << QByteArray("./../evil");
    QTest::newRow("to a neighbour of similar name") << QByteArray("../out-evil/evil");
    QTest::newRow("up and back in") << QByteArray("../out/../evil");
    QTest::newRow("absolute") << QByteArray("/tmp/r4-evil");
    QTest::newRow("absolute twice") << QByteArray("//tmp/r4-evil");
    QTest::newRow("the directory itself") << QByteArray(".");
    QTest::newRow("the parent") << QByteArray("..");
}

void FileArchiveExtractTest::namesThatLeadOutsideAreRefused()
{
    QFETCH(QByteArray, name);
    QVERIFY(!extract(rawArchive(
        {fileEntry("good", "data"), fileEntry(name, "evil"), fileEntry("never", "data")})));
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("out/good")}));
    QVERIFY(!QFile::exists(QStringLiteral("/tmp/r4-evil")));
    QVERIFY(!QFile::exists(QStringLiteral("/evil")));
}

void FileArchiveExtractTest::directoriesThatLeadOutsideAreRefused()
{
    for (const char *name : {"../evil", "a/../../evil", "/tmp/r4-evil"}) {
        QVERIFY(!extract(rawArchive({directoryEntry(name)})));
        QVERIFY(everything().isEmpty());
        QVERIFY(!QFile::exists(QStringLiteral("/tmp/r4-evil")));
    }
}

void FileArchiveExtractTest::linksDevicesAndPipesAreSkipped()
{
    QVERIFY(extract(rawArchive({linkEntry("link", "/etc/passwd"),
                                linkEntry("../link", "/etc/passwd"), nodeEntry("pipe", AE_IFIFO),
                                nodeEntry("characters", AE_IFCHR), nodeEntry("blocks", AE_IFBLK),
                                hardLinkEntry("hard", "/etc/passwd"), fileEntry("file", "data")})));
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("out/file")}));
}

void FileArchiveExtractTest::anArchiveCannotWriteThroughALinkOfItsOwn()
{
    QVERIFY(extract(rawArchive({linkEntry("door", ".."), fileEntry("door/file", "data")})));
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("out/door"),
                                        QStringLiteral("out/door/file")}));
    QVERIFY(!QFileInfo(out + QStringLiteral("/door")).isSymLink());
}

void FileArchiveExtractTest::linksOfTheOwnerAreFollowed()
{
    const QString elsewhere = path(QStringLiteral("elsewhere"));
    QVERIFY(QDir().mkdir(out) && QDir().mkdir(elsewhere));
    QVERIFY(QFile::link(elsewhere, out + QStringLiteral("/logs")));
    QVERIFY(extract(rawArchive({fileEntry("logs/file", "data")})));
    QCOMPARE(readFile(elsewhere + QStringLiteral("/file")), QByteArray("data"));
}

void FileArchiveExtractTest::aPipeInTheWayFailsAndDoesNotHang()
{
    QVERIFY(QDir().mkdir(out));
    QCOMPARE(mkfifo((out + QStringLiteral("/file")).toLocal8Bit().constData(), 0600), 0);
    QVERIFY(!extract(rawArchive({fileEntry("file", "data")})));
}

void FileArchiveExtractTest::aDirectoryInTheWayFails()
{
    QVERIFY(QDir().mkpath(out + QStringLiteral("/file")));
    QVERIFY(!extract(rawArchive({fileEntry("file", "data")})));
}

void FileArchiveExtractTest::aFileInTheWayOfADirectoryFails()
{
    QVERIFY(QDir().mkdir(out));
    QVERIFY(writeFile(out + QStringLiteral("/name"), "content"));
    QVERIFY(!extract(rawArchive({directoryEntry("name")})));
    QVERIFY(!extract(rawArchive({fileEntry("name/file", "data")})));
    QCOMPARE(readFile(out + QStringLiteral("/name")), QByteArray("content"));
}

void FileArchiveExtractTest::theFirstFailureEndsTheExtraction()
{
    QVERIFY(QDir().mkpath(out + QStringLiteral("/second")));
    QVERIFY(!extract(rawArchive({fileEntry("first"), fileEntry("second"), fileEntry("third")})));
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("out/first"),
                                        QStringLiteral("out/second")}));
}

void FileArchiveExtractTest::aTruncatedArchiveFails()
{
    const QByteArray whole = rawArchive({fileEntry("file", noise(50000))});
    for (int length = 0; length < whole.size() - 200; length += 501)
        QVERIFY2(!extract(whole.left(length)), qPrintable(QString::number(length)));
}

void FileArchiveExtractTest::aGapAtTheEndOfAFileIsKept()
{
    QVERIFY(extract(sparseArchive("sparse"), out, Format::Tar));
    const QByteArray content = readFile(out + QStringLiteral("/sparse"));
    QCOMPARE(content.size(), 1 << 20);
    QCOMPARE(content, QByteArray("x").append(QByteArray((1 << 20) - 1, '\0')));
}

void FileArchiveExtractTest::theReporterIsAskedBeforeEachEntry()
{
    Patience patience(100);
    QVERIFY(extract(
        rawArchive({fileEntry("one"), linkEntry("link", "one"), fileEntry("two", noise(20000))}),
        out, Format::TarGzip, &patience));
    QCOMPARE(patience.asked, 3);
    QCOMPARE(patience.steps, 0);
}

void FileArchiveExtractTest::theReporterCanStopTheExtraction()
{
    Patience patience(1);
    QVERIFY(!extract(rawArchive({fileEntry("one"), fileEntry("two"), fileEntry("three")}), out,
                     Format::TarGzip, &patience));
    QCOMPARE(everything(), QStringList({QStringLiteral("out"), QStringLiteral("out/one")}));
}

QTEST_GUILESS_MAIN(FileArchiveExtractTest)
#include "tst_file_archive_extract.moc"
