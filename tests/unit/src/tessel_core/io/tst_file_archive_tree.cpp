#include "archive_fixture.h"
#include "support/package_reader.h"

#include <QDir>
#include <QTemporaryDir>
#include <QTest>

#include <sys/stat.h>

using namespace ArchiveFixture;
using namespace TestSupport;

/** Entries made of whole directory trees. */
class FileArchiveTreeTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void holdsAllOfATree();
    void anEmptyDirectoryIsOneEntry();
    void linksBackDoNotLoop();
    void linksToFilesAreAddedAsFiles();
    void whatIsNeitherFileNorDirectoryIsLeftOut();
    void whatIsNoDirectoryIsRefused();
    void aFileThatCannotBeAddedEndsTheDirectory();
    void addChoosesByKind();
    void addNamesAfterTheLastPartOfThePath_data();
    void addNamesAfterTheLastPartOfThePath();

private:
    QString path(const QString &name) const { return root + QLatin1Char('/') + name; }
    Package packed(const std::function<bool(FileArchive &)> &fill) const
    {
        return readPackageBytes(archiveOf(fill));
    }
    Package packedTree() const
    {
        return packed([this](FileArchive &archive) {
            return archive.addDirectory(root, QStringLiteral("top"));
        });
    }
    static QStringList sortedNames(const Package &package)
    {
        QStringList names;
        for (const PackageMember &member : package.members)
            names.append(member.name);
        names.sort();
        return names;
    }

    std::unique_ptr<QTemporaryDir> scratch;
    QString root;
};

void FileArchiveTreeTest::init()
{
    scratch = std::make_unique<QTemporaryDir>();
    root = scratch->filePath(QStringLiteral("tree"));
    QVERIFY(QDir().mkdir(root));
}

void FileArchiveTreeTest::holdsAllOfATree()
{
    QVERIFY(QDir(root).mkpath(QStringLiteral("sub/deep/.hidden directory")));
    QVERIFY(writeFile(path(QStringLiteral("file")), "1"));
    QVERIFY(writeFile(path(QStringLiteral(".hidden")), "2"));
    QVERIFY(writeFile(path(QStringLiteral("sub/file")), "3"));
    QVERIFY(writeFile(path(QStringLiteral("sub/deep/.hidden directory/leaf")), "4"));
    const Package package = packedTree();
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(sortedNames(package),
             QStringList({QStringLiteral("top/"), QStringLiteral("top/.hidden"),
                          QStringLiteral("top/file"), QStringLiteral("top/sub/"),
                          QStringLiteral("top/sub/deep/"),
                          QStringLiteral("top/sub/deep/.hidden directory/"),
                          QStringLiteral("top/sub/deep/.hidden directory/leaf"),
                          QStringLiteral("top/sub/file")}));
    QCOMPARE(package.members.first().name, QStringLiteral("top/"));
    for (const PackageMember &member : package.members) {
        const bool isDirectory = member.name.endsWith(QLatin1Char('/'));
        QCOMPARE(member.typeFlag, isDirectory ? '5' : '0');
        QCOMPARE(member.mode, isDirectory ? 0755u : 0644u);
        QCOMPARE(member.size, quint64(isDirectory ? 0 : 1));
    }
}

void FileArchiveTreeTest::anEmptyDirectoryIsOneEntry()
{
    QCOMPARE(sortedNames(packedTree()), QStringList{QStringLiteral("top/")});
}

void FileArchiveTreeTest::linksBackDoNotLoop()
{
    QVERIFY(QDir(root).mkdir(QStringLiteral("sub")));
    QVERIFY(QFile::link(root, path(QStringLiteral("sub/back"))));
    QVERIFY(QFile::link(QStringLiteral("."), path(QStringLiteral("here"))));
    QVERIFY(QFile::link(QStringLiteral("self"), path(QStringLiteral("self"))));
    QCOMPARE(sortedNames(packedTree()),
             QStringList({QStringLiteral("top/"), QStringLiteral("top/sub/")}));
}

void FileArchiveTreeTest::linksToFilesAreAddedAsFiles()
{
    const QString outside = scratch->filePath(QStringLiteral("outside"));
    QVERIFY(writeFile(outside, "content"));
    QVERIFY(QFile::link(outside, path(QStringLiteral("link"))));
    const Package package = packedTree();
    QCOMPARE(package.members.size(), 2);
    QCOMPARE(package.members.at(1).typeFlag, '0');
    QCOMPARE(package.members.at(1).bytes, QByteArray("content"));
}

void FileArchiveTreeTest::whatIsNeitherFileNorDirectoryIsLeftOut()
{
    QCOMPARE(mkfifo(path(QStringLiteral("pipe")).toLocal8Bit().constData(), 0600), 0);
    QVERIFY(QFile::link(QStringLiteral("absent"), path(QStringLiteral("dangling"))));
    QVERIFY(writeFile(path(QStringLiteral("file")), "1"));
    QCOMPARE(sortedNames(packedTree()),
             QStringList({QStringLiteral("top/"), QStringLiteral("top/file")}));
}

void FileArchiveTreeTest::whatIsNoDirectoryIsRefused()
{
    QVERIFY(writeFile(path(QStringLiteral("file")), "1"));
    const Package package = packed([this](FileArchive &archive) {
        return !archive.addDirectory(path(QStringLiteral("file")), QStringLiteral("name")) &&
               !archive.addDirectory(path(QStringLiteral("absent")), QStringLiteral("name"));
    });
    QVERIFY(package.isWellFormed());
    QVERIFY(package.members.isEmpty());
}

void FileArchiveTreeTest::aFileThatCannotBeAddedEndsTheDirectory()
{
    QVERIFY(writeFile(path(QStringLiteral("file")), noise(200000)));
    FullDevice device(10000);
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &device, Format::Tar));
    QVERIFY(!archive.addDirectory(root, QStringLiteral("top")));
    QVERIFY(!archive.close());
}

void FileArchiveTreeTest::addChoosesByKind()
{
    QVERIFY(writeFile(path(QStringLiteral("file")), "1"));
    const QString pipe = path(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const Package package = packed([&](FileArchive &archive) {
        return archive.add(root) && archive.add(path(QStringLiteral("file"))) &&
               !archive.add(pipe) && !archive.add(path(QStringLiteral("absent"))) &&
               !archive.add(QStringLiteral("/dev/null"));
    });
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(sortedNames(package), QStringList({QStringLiteral("file"), QStringLiteral("tree/"),
                                                QStringLiteral("tree/file")}));
}

void FileArchiveTreeTest::addNamesAfterTheLastPartOfThePath_data()
{
    QTest::addColumn<QString>("suffix");
    QTest::newRow("plain") << QString();
    QTest::newRow("trailing slash") << QStringLiteral("/");
    QTest::newRow("trailing dot") << QStringLiteral("/.");
    QTest::newRow("up and down") << QStringLiteral("/../tree");
}

void FileArchiveTreeTest::addNamesAfterTheLastPartOfThePath()
{
    QFETCH(QString, suffix);
    const Package package =
        packed([&](FileArchive &archive) { return archive.add(root + suffix); });
    QCOMPARE(sortedNames(package), QStringList{QStringLiteral("tree/")});
}

QTEST_GUILESS_MAIN(FileArchiveTreeTest)
#include "tst_file_archive_tree.moc"
