#include "archive_fixture.h"
#include "support/package_reader.h"

#include <QTemporaryDir>
#include <QTest>

#include <sys/resource.h>
#include <sys/stat.h>

using namespace ArchiveFixture;
using namespace TestSupport;

namespace {

/** Only the descriptors that are open now exist for the process while this lives. */
class NoMoreDescriptors
{
public:
    NoMoreDescriptors()
    {
        getrlimit(RLIMIT_NOFILE, &before);
        const rlimit none{0, before.rlim_max};
        setrlimit(RLIMIT_NOFILE, &none);
    }
    ~NoMoreDescriptors() { setrlimit(RLIMIT_NOFILE, &before); }
    NoMoreDescriptors(const NoMoreDescriptors &) = delete;
    NoMoreDescriptors &operator=(const NoMoreDescriptors &) = delete;

private:
    rlimit before{};
};

} // namespace

/** The files an archive copies, and what can be wrong with them. */
class FileArchiveSourceTest : public QObject
{
    Q_OBJECT

private slots:
    void init() { scratch = std::make_unique<QTemporaryDir>(); }
    void aSourceThatIsNoReadableFileLeavesNoTrace();
    void aSourceThatGrowsIsCut();
    void aSourceThatShrinksIsPaddedWithZeros();
    void aSourceWithoutDeclaredSizeIsEmpty();
    void aSourceThatFailsToBeReadAnswersFalse();
    void aMediumThatFillsUpFailsTheFile();

private:
    Package packedWhileChanging(const QString &source, Steps &steps);
    QString path(const QString &name) const { return scratch->filePath(name); }

    std::unique_ptr<QTemporaryDir> scratch;
    quint64 payload = 0; // of the archive packed last
};

void FileArchiveSourceTest::aSourceThatIsNoReadableFileLeavesNoTrace()
{
    const QString pipe = path(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(pipe.toLocal8Bit().constData(), 0600), 0);
    const QString dangling = path(QStringLiteral("dangling"));
    QVERIFY(QFile::link(path(QStringLiteral("absent")), dangling));
    const QString readable = path(QStringLiteral("readable"));
    QVERIFY(writeFile(readable, "content"));
    const QString name = QStringLiteral("name");

    const QByteArray bytes = archiveOf([&](FileArchive &archive) {
        bool refused = !archive.addFile(path(QStringLiteral("absent")), name) &&
                       !archive.addFile(QString(), name) &&
                       !archive.addFile(scratch->path(), name) && !archive.addFile(pipe, name) &&
                       !archive.addFile(dangling, name);
        {
            const NoMoreDescriptors scope;
            refused = refused && !archive.addFile(readable, name);
        }
        return refused && archive.errorString().isNull() && archive.payloadBytes() == 0 &&
               archive.addFile(readable, QStringLiteral("last"));
    });
    const Package package = readPackageBytes(bytes);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.size(), 1);
    QCOMPARE(package.members.at(0).name, QStringLiteral("last"));
}

/** Packs `source` and one entry more; `steps` changes the source after the first chunk. */
Package FileArchiveSourceTest::packedWhileChanging(const QString &source, Steps &steps)
{
    QBuffer buffer;
    buffer.open(QIODevice::WriteOnly);
    FileArchive archive;
    archive.setProgress(&steps);
    const bool packed = archive.open(Mode::Write, &buffer, Format::TarGzip) &&
                        archive.addFile(source, QStringLiteral("log")) &&
                        archive.addData("next", QStringLiteral("next")) && archive.close();
    payload = archive.payloadBytes();
    Package package = readPackageBytes(buffer.data());
    if (!packed)
        package.problem = QStringLiteral("could not be packed");
    return package;
}

void FileArchiveSourceTest::aSourceThatGrowsIsCut()
{
    const QString source = path(QStringLiteral("log"));
    QVERIFY(writeFile(source, noise(10000)));
    QFile log(source);
    QVERIFY(log.open(QIODevice::Append));
    Steps steps;
    steps.onFirstStep = [&log] {
        log.write(QByteArray(100000, 'g'));
        log.flush();
    };
    const Package package = packedWhileChanging(source, steps);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(payload, quint64(10004));
    QVERIFY2(steps.done == QVector<quint64>({8192, 10000}), "counts no more than the entry takes");
    QCOMPARE(package.members.at(0).bytes, noise(10000));
    QCOMPARE(package.members.at(1).bytes, QByteArray("next"));
}

void FileArchiveSourceTest::aSourceThatShrinksIsPaddedWithZeros()
{
    const QString source = path(QStringLiteral("log"));
    QVERIFY(writeFile(source, QByteArray(200000, 'x')));
    Steps steps;
    steps.onFirstStep = [&source] { QFile::resize(source, 90000); };
    const Package package = packedWhileChanging(source, steps);
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.at(0).bytes, QByteArray(90000, 'x') + QByteArray(110000, '\0'));
    QCOMPARE(package.members.at(1).bytes, QByteArray("next"));
}

void FileArchiveSourceTest::aSourceWithoutDeclaredSizeIsEmpty()
{
    const Package package = readPackageBytes(archiveOf([](FileArchive &archive) {
        return archive.addFile(QStringLiteral("/proc/version"), QStringLiteral("version")) &&
               archive.payloadBytes() == 0;
    }));
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.at(0).size, quint64(0));
}

void FileArchiveSourceTest::aSourceThatFailsToBeReadAnswersFalse()
{
    // Nothing is mapped at address 0 of a process: reading there is an I/O error.
    const Package package = readPackageBytes(archiveOf([](FileArchive &archive) {
        return !archive.addFile(QStringLiteral("/proc/self/mem"), QStringLiteral("memory")) &&
               archive.payloadBytes() == 0 && archive.addData("next", QStringLiteral("next"));
    }));
    QVERIFY2(package.isWellFormed(), qPrintable(package.problem));
    QCOMPARE(package.members.last().bytes, QByteArray("next"));
}

void FileArchiveSourceTest::aMediumThatFillsUpFailsTheFile()
{
    const QString source = path(QStringLiteral("source"));
    QVERIFY(writeFile(source, noise(300000)));
    FullDevice device(50000);
    FileArchive archive;
    QVERIFY(archive.open(Mode::Write, &device, Format::TarGzip));
    QVERIFY(!archive.addFile(source, QStringLiteral("source")));
    QCOMPARE(archive.errorString(), QStringLiteral("IO device write error"));
    QCOMPARE(archive.payloadBytes(), quint64(0));
    QVERIFY2(!archive.addFile(source, QStringLiteral("again")), "the header fails too");
    QVERIFY(!archive.close());
}

QTEST_GUILESS_MAIN(FileArchiveSourceTest)
#include "tst_file_archive_source.moc"
