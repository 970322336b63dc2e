#include "archive_fixture.h"
#include "support/package_reader.h"

#include <QTemporaryDir>
#include <QTest>

using namespace ArchiveFixture;
using namespace TestSupport;

/** The reader other tests trust must itself find what is wrong with a package. */
class PackageReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void acceptsAWholePackage();
    void noticesEveryMissingByte();
    void noticesBytesBehindThePackage();
    void noticesFlippedBytes();
    void noticesMissingEndBlocks();
    void noticesPaddingBehindTheEndBlocks();
    void noticesAWrongHeader_data();
    void noticesAWrongHeader();
    void noticesAMissingFile();
    void noticesWhatToolsSeeDifferently();

private:
    QByteArray gzip;
    QByteArray tar;
};

void PackageReaderTest::init()
{
    const auto fill = [](FileArchive &archive) {
        return archive.addData("data", QStringLiteral("name"));
    };
    gzip = archiveOf(fill);
    tar = archiveOf(fill, Format::Tar);
}

void PackageReaderTest::acceptsAWholePackage()
{
    const Package package = readPackageBytes(gzip);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QVERIFY(package.endBlocks);
    QCOMPARE(package.members.size(), 1);
    QCOMPARE(package.members.at(0).name, QStringLiteral("name"));
    QCOMPARE(package.members.at(0).bytes, QByteArray("data"));
}

void PackageReaderTest::noticesEveryMissingByte()
{
    for (int length = 0; length < gzip.size(); ++length)
        QVERIFY(!readPackageBytes(gzip.left(length)).isWellFormed());
    for (int length = 0; length < tar.size(); length += 8)
        QVERIFY(!readTar(tar.left(length)).isWellFormed());
}

void PackageReaderTest::noticesBytesBehindThePackage()
{
    QVERIFY(!readPackageBytes(gzip + '\0').isWellFormed());
    QVERIFY(!readPackageBytes(gzip + gzip).isWellFormed());
    QVERIFY(!readTar(tar + '\0').isWellFormed());
}

void PackageReaderTest::noticesFlippedBytes()
{
    // The ten bytes of the gzip header hold a date and hints that nothing checks.
    for (int at = 10; at < gzip.size(); ++at) {
        QByteArray damaged = gzip;
        damaged[at] = char(damaged.at(at) ^ 0xff);
        QVERIFY2(!readPackageBytes(damaged).isWellFormed(), qPrintable(QString::number(at)));
    }
}

void PackageReaderTest::noticesMissingEndBlocks()
{
    const Package none = readTar(tar.left(1024));
    QVERIFY(!none.isWellFormed());
    QVERIFY(!none.endBlocks);
    QCOMPARE(none.members.size(), 1);
    QVERIFY(!readTar(tar.left(1024 + 512)).isWellFormed());
}

void PackageReaderTest::noticesPaddingBehindTheEndBlocks()
{
    const Package padded = readTar(tar + QByteArray(10240 - tar.size(), '\0'));
    QVERIFY(!padded.isWellFormed());
    QVERIFY(padded.endBlocks);
    QCOMPARE(padded.bytesAfterEnd, qint64(10240 - tar.size()));
}

void PackageReaderTest::noticesAWrongHeader_data()
{
    QTest::addColumn<int>("at");
    QTest::newRow("name") << 0;
    QTest::newRow("mode") << 100;
    QTest::newRow("size") << 130;
    QTest::newRow("checksum") << 148;
    QTest::newRow("magic") << 257;
    QTest::newRow("unused end") << 511;
    QTest::newRow("padding of the data") << 512 + 4;
}

void PackageReaderTest::noticesAWrongHeader()
{
    QFETCH(int, at);
    tar[at] = char(tar.at(at) ^ 1);
    QVERIFY(!readTar(tar).isWellFormed());
}

void PackageReaderTest::noticesAMissingFile()
{
    const QTemporaryDir scratch;
    QVERIFY(!readPackage(scratch.filePath(QStringLiteral("absent"))).isWellFormed());
}

void PackageReaderTest::noticesWhatToolsSeeDifferently()
{
    const QTemporaryDir scratch;
    const QString path = scratch.filePath(QStringLiteral("out.cdp"));
    QVERIFY(writeFile(path, gzip));
    const QVector<PackageMember> members = readPackage(path).members;
    QString why;
    QVERIFY2(sameWithEveryTool(path, members, &why), qPrintable(why));

    QVector<PackageMember> wrong = members;
    wrong[0].name = QStringLiteral("other");
    QVERIFY(!sameWithEveryTool(path, wrong, &why));
    QVERIFY(why.contains(QLatin1String("names")));
    wrong = members;
    wrong[0].mode = 0600;
    QVERIFY(!sameWithEveryTool(path, wrong, &why));
    QVERIFY(why.contains(QLatin1String("permissions")));
    wrong = members;
    wrong[0].bytes = "atad";
    QVERIFY(!sameWithEveryTool(path, wrong, &why));
    QVERIFY(why.contains(QLatin1String("bytes")));
    QVERIFY(!sameWithEveryTool(path, members + members, &why));

    const QByteArray tools = qgetenv("PATH");
    qputenv("PATH", scratch.path().toLocal8Bit());
    const bool same = sameWithEveryTool(path, members, &why);
    qputenv("PATH", tools);
    QVERIFY2(!same, "a missing tool is a failure");
    QVERIFY(why.contains(QLatin1String("not installed")));
}

QTEST_GUILESS_MAIN(PackageReaderTest)
#include "tst_package_reader.moc"
