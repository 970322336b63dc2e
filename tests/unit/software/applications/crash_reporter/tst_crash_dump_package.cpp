#include "crash_reporter/crash_dump_package.h"
#include "support/package_reader.h"

#include <QDir>
#include <QFile>
#include <QRandomGenerator>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <csignal>
#include <sys/resource.h>

using namespace TestSupport;
using Tessel::SharedClientInfo;

namespace {

QByteArray reportText(const QByteArray &comments)
{
    return "<Comments>" + comments + "</Comments>";
}

/** What was synced, in order, and the errno to fail with; 0 for success. */
QStringList synced;
int syncError = 0;

} // namespace

extern "C" int fsync(int descriptor)
{
    synced.append(QFile::symLinkTarget(QStringLiteral("/proc/self/fd/%1").arg(descriptor)));
    errno = syncError;
    return syncError == 0 ? 0 : -1;
}

class CrashDumpPackageTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void holdsDumpReportAndLogInThisOrder();
    void anEmptyLogPathAddsNothing();
    void aLogThatIsNotThereIsLeftOut();
    void withoutADumpFileNothingIsTouched();
    void aPackageThatCannotBeOpenedIsFalseAndLeavesNothing();
    void withoutTemporaryDirectoryNothingIsTouched();
    void aSecondPackageReplacesTheFirst();
    void equalNamesMakeTwoEntries();
    void anEntryThatCannotBeAddedStillMakesAPackage();
    void aRelativeDumpPathIsPackedUnderItsName();
    void aLinkAtItsPathIsReplacedNotFollowed();
    void itIsOnTheMediumWithItsFolderBeforeItCountsAsMade();
    void aPackageThatCannotBeSyncedIsNotReportedAsMade();
    void aMediumThatTakesNoMoreIsNotReportedAsMade();
    void noTemporaryFileIsLeft();

private:
    QString write(const QString &name, const QByteArray &bytes);
    bool pack(const QString &dump);
    bool packsWell(const QString &dump);
    QStringList names() const;

    std::unique_ptr<QTemporaryDir> scratch;
    SharedClientInfo info{};
    QString package;
};

void CrashDumpPackageTest::init()
{
    scratch = std::make_unique<QTemporaryDir>();
    info = {};
    synced.clear();
    syncError = 0;
    package = scratch->filePath(QStringLiteral("out.cdp"));
}

QString CrashDumpPackageTest::write(const QString &name, const QByteArray &bytes)
{
    QString path = scratch->filePath(name);
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly) || file.write(bytes) != bytes.size())
        return {};
    return path;
}

bool CrashDumpPackageTest::pack(const QString &dump)
{
    CrashReportData report;
    report.clientInfo = &info;
    report.comments = QStringLiteral("as it happened");
    return writeDumpPackage(package, dump, report);
}

/** Packs, and has GNU tar, bsdtar, 7-Zip and our own reader look at the package. */
bool CrashDumpPackageTest::packsWell(const QString &dump)
{
    QString why;
    if (!pack(dump))
        why = QStringLiteral("no package was made");
    else if (sameWithEveryTool(package, &why))
        return true;
    qWarning("%s", qPrintable(why));
    return false;
}

QStringList CrashDumpPackageTest::names() const
{
    QStringList found;
    for (const PackageMember &member : readPackage(package).members)
        found.append(member.name);
    return found;
}

void CrashDumpPackageTest::holdsDumpReportAndLogInThisOrder()
{
    const QByteArray dumpBytes = QByteArray("core\0bytes", 10).repeated(5000);
    const QString dump = write(QStringLiteral("r4.core"), dumpBytes);
    const QString log = write(QStringLiteral("r4.log"), "line 1\nline 2\n");
    qstrncpy(info.logFilePath, log.toLatin1().constData(), sizeof info.logFilePath);

    QVERIFY(packsWell(dump));
    const Package found = readPackage(package);
    QCOMPARE(names(), QStringList({QStringLiteral("r4.core"), QStringLiteral("report.xml"),
                                   QStringLiteral("r4.log")}));
    QCOMPARE(found.members.at(0).bytes, dumpBytes);
    QVERIFY(found.members.at(1).bytes.contains(reportText("as it happened")));
    QVERIFY(found.members.at(1).bytes.endsWith("</n1:CrashReport>\n"));
    QCOMPARE(found.members.at(2).bytes, QByteArray("line 1\nline 2\n"));
    for (const PackageMember &member : found.members) {
        QCOMPARE(member.mode, 0644u);
        QCOMPARE(member.typeFlag, '0');
        QCOMPARE(member.magic, QByteArray("ustar  \0", 8)); // GNU's, not POSIX's
    }
}

void CrashDumpPackageTest::anEmptyLogPathAddsNothing()
{
    QVERIFY(packsWell(write(QStringLiteral("dump"), "d")));
    QCOMPARE(names(), QStringList({QStringLiteral("dump"), QStringLiteral("report.xml")}));
}

void CrashDumpPackageTest::aLogThatIsNotThereIsLeftOut()
{
    qstrncpy(info.logFilePath, "/nowhere/r4.log", sizeof info.logFilePath);
    QVERIFY(packsWell(write(QStringLiteral("dump"), "d")));
    QCOMPARE(names(), QStringList({QStringLiteral("dump"), QStringLiteral("report.xml")}));
}

void CrashDumpPackageTest::withoutADumpFileNothingIsTouched()
{
    write(QStringLiteral("out.cdp"), "an earlier package");
    QTest::ignoreMessage(QtDebugMsg, "Error: dump file not found");
    QVERIFY(!pack(scratch->filePath(QStringLiteral("absent"))));
    QTest::ignoreMessage(QtDebugMsg, "Error: dump file not found");
    QVERIFY(!pack(QString()));
    QFile earlier(package);
    QVERIFY(earlier.open(QIODevice::ReadOnly));
    QCOMPARE(earlier.readAll(), QByteArray("an earlier package"));
}

void CrashDumpPackageTest::aPackageThatCannotBeOpenedIsFalseAndLeavesNothing()
{
    const QString dump = write(QStringLiteral("dump"), "d");
    package = scratch->filePath(QStringLiteral("absent/out.cdp"));
    QVERIFY(!pack(dump));
    QCOMPARE(QDir(scratch->path()).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList{QStringLiteral("dump")});
}

void CrashDumpPackageTest::withoutTemporaryDirectoryNothingIsTouched()
{
    const QString dump = write(QStringLiteral("dump"), "d");
    const QByteArray before = qgetenv("TMPDIR");
    qputenv("TMPDIR", "/dev/null");
    QTest::ignoreMessage(QtDebugMsg, "Error: cannot create temporary file");
    const bool made = pack(dump);
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QVERIFY(!made);
    QVERIFY(!QFile::exists(package));
}

void CrashDumpPackageTest::aSecondPackageReplacesTheFirst()
{
    QVERIFY(packsWell(write(QStringLiteral("first"), QByteArray(100000, 'f'))));
    QVERIFY(packsWell(write(QStringLiteral("second"), "s")));
    QCOMPARE(names(), QStringList({QStringLiteral("second"), QStringLiteral("report.xml")}));
}

void CrashDumpPackageTest::equalNamesMakeTwoEntries()
{
    QVERIFY(QDir(scratch->path()).mkdir(QStringLiteral("logs")));
    const QString dump = write(QStringLiteral("r4"), "dump");
    const QString log = write(QStringLiteral("logs/r4"), "log");
    qstrncpy(info.logFilePath, log.toLatin1().constData(), sizeof info.logFilePath);
    QVERIFY(packsWell(dump));
    QCOMPARE(names(), QStringList({QStringLiteral("r4"), QStringLiteral("report.xml"),
                                   QStringLiteral("r4")}));
}

void CrashDumpPackageTest::anEntryThatCannotBeAddedStillMakesAPackage()
{
    // A directory exists, but is no file that could be packed.
    QVERIFY(QDir(scratch->path()).mkdir(QStringLiteral("directory")));
    QVERIFY(packsWell(scratch->filePath(QStringLiteral("directory"))));
    QCOMPARE(names(), QStringList{QStringLiteral("report.xml")});
}

void CrashDumpPackageTest::aRelativeDumpPathIsPackedUnderItsName()
{
    const QString dump = write(QStringLiteral("dump"), "d");
    const QString relative = QDir::current().relativeFilePath(dump);
    QVERIFY(QDir::isRelativePath(relative));
    QVERIFY(packsWell(relative));
    QCOMPARE(names().first(), QStringLiteral("dump"));
}

void CrashDumpPackageTest::aLinkAtItsPathIsReplacedNotFollowed()
{
    const QString other = write(QStringLiteral("other"), "not a package");
    QVERIFY(QFile::link(other, package));
    QVERIFY(packsWell(write(QStringLiteral("dump"), "d")));
    QVERIFY(!QFileInfo(package).isSymLink());
    QFile untouched(other);
    QVERIFY(untouched.open(QIODevice::ReadOnly));
    QCOMPARE(untouched.readAll(), QByteArray("not a package"));
}

void CrashDumpPackageTest::itIsOnTheMediumWithItsFolderBeforeItCountsAsMade()
{
    QVERIFY(packsWell(write(QStringLiteral("dump"), "d")));
    QCOMPARE(synced, QStringList({package, scratch->path()}));
}

void CrashDumpPackageTest::aPackageThatCannotBeSyncedIsNotReportedAsMade()
{
    syncError = EIO;
    QVERIFY(!pack(write(QStringLiteral("dump"), "d")));
    QVERIFY2(QFile::exists(package), "what may be readable is kept");
}

void CrashDumpPackageTest::aMediumThatTakesNoMoreIsNotReportedAsMade()
{
    QByteArray noise(200000, '\0');
    QRandomGenerator(1).generate(reinterpret_cast<quint32 *>(noise.data()),
                                 reinterpret_cast<quint32 *>(noise.data() + noise.size()));
    const QString dump = write(QStringLiteral("dump"), noise);

    std::signal(SIGXFSZ, SIG_IGN);
    rlimit before{};
    getrlimit(RLIMIT_FSIZE, &before);
    const rlimit small{65536, before.rlim_max};
    setrlimit(RLIMIT_FSIZE, &small);
    const bool made = pack(dump);
    setrlimit(RLIMIT_FSIZE, &before);

    QVERIFY(!made);
    QVERIFY2(QFile::exists(package), "what could be saved is kept");
    QVERIFY(!readPackage(package).isWellFormed());
}

void CrashDumpPackageTest::noTemporaryFileIsLeft()
{
    const QByteArray before = qgetenv("TMPDIR");
    const QTemporaryDir temporary;
    qputenv("TMPDIR", temporary.path().toLocal8Bit());
    const bool made = pack(write(QStringLiteral("dump"), "d"));
    before.isNull() ? qunsetenv("TMPDIR") : qputenv("TMPDIR", before);
    QVERIFY(made);
    QVERIFY(QDir(temporary.path()).isEmpty());
}

QTEST_GUILESS_MAIN(CrashDumpPackageTest)
#include "tst_crash_dump_package.moc"
