#include "tessel_core/io/file_sync.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <deque>

namespace {

/** The errno of each coming fsync, 0 for success. Empty: success. */
std::deque<int> scriptedErrors;
int syncCalls = 0;

} // namespace

extern "C" int fsync(int)
{
    ++syncCalls;
    if (scriptedErrors.empty())
        return 0;
    errno = scriptedErrors.front();
    scriptedErrors.pop_front();
    return errno == 0 ? 0 : -1;
}

using namespace Tessel;

class FileSyncTest : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void anOpenFileIsFlushedAndSynced();
    void aFileThatCannotBeFlushedIsNotSynced();
    void errors_data();
    void errors();
    void aDirectoryIsSyncedOnce();
    void whatIsNoDirectoryIsNotSynced();
};

void FileSyncTest::init()
{
    scriptedErrors.clear();
    syncCalls = 0;
}

void FileSyncTest::anOpenFileIsFlushedAndSynced()
{
    const QTemporaryDir scratch;
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    file.write("text");
    QVERIFY(syncFile(file));
    QCOMPARE(syncCalls, 1);
    QFile reader(file.fileName());
    QVERIFY(reader.open(QIODevice::ReadOnly));
    QCOMPARE(reader.readAll(), QByteArray("text"));
}

void FileSyncTest::aFileThatCannotBeFlushedIsNotSynced()
{
    QFile full(QStringLiteral("/dev/full"));
    QVERIFY(full.open(QIODevice::WriteOnly));
    full.write("text");
    QVERIFY(!syncFile(full));
    QCOMPARE(syncCalls, 0);
}

void FileSyncTest::errors_data()
{
    QTest::addColumn<QList<int>>("errors");
    QTest::addColumn<bool>("synced");
    QTest::addColumn<int>("calls");
    QTest::newRow("success") << QList<int>{0} << true << 1;
    QTest::newRow("interrupted twice") << QList<int>{EINTR, EINTR, 0} << true << 3;
    QTest::newRow("no way to sync there") << QList<int>{EINVAL} << true << 1;
    QTest::newRow("medium broken") << QList<int>{EIO} << false << 1;
    QTest::newRow("medium full") << QList<int>{ENOSPC} << false << 1;
}

void FileSyncTest::errors()
{
    QFETCH(QList<int>, errors);
    const QTemporaryDir scratch;
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));

    scriptedErrors.assign(errors.begin(), errors.end());
    QTEST(syncFile(file), "synced");
    QTEST(syncCalls, "calls");

    scriptedErrors.assign(errors.begin(), errors.end());
    QTEST(syncDirectory(scratch.path()), "synced");
}

void FileSyncTest::aDirectoryIsSyncedOnce()
{
    const QTemporaryDir scratch;
    QVERIFY(syncDirectory(scratch.path()));
    QCOMPARE(syncCalls, 1);
}

void FileSyncTest::whatIsNoDirectoryIsNotSynced()
{
    const QTemporaryDir scratch;
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(file.open(QIODevice::WriteOnly));
    QVERIFY(!syncDirectory(file.fileName()));
    QVERIFY(!syncDirectory(scratch.filePath(QStringLiteral("absent"))));
    QCOMPARE(syncCalls, 0);
}

QTEST_APPLESS_MAIN(FileSyncTest)
#include "tst_file_sync.moc"
