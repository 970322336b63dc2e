#include "crash_reporter/crash_data.h"

#include <QBuffer>
#include <QDataStream>
#include <QFile>
#include <QTemporaryDir>
#include <QTest>
#include <QTimeZone>

#include <sys/stat.h>

namespace {

const QString dumpPath = QStringLiteral("/var/crash/r4.dump");
const QDateTime crashTime(QDate(2026, 11, 21), QTime(14, 30, 5, 250));
const QStringList outputLog = {QStringLiteral("first"), QString(), QStringLiteral("l\u00e4st")};

QByteArray written(const QString &path, const QDateTime &time, const QStringList &lines,
                   int version = QDataStream::Qt_5_15,
                   QDataStream::ByteOrder order = QDataStream::BigEndian)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream.setVersion(version);
    stream.setByteOrder(order);
    stream << path << time << lines;
    return bytes;
}

QByteArray wellFormed()
{
    return written(dumpPath, crashTime, outputLog);
}

CrashData read(QByteArray bytes)
{
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::ReadOnly);
    return readCrashData(buffer);
}

int pathSize()
{
    return 4 + 2 * dumpPath.size();
}

/** Bytes of a local time: Julian day, milliseconds, time spec. */
constexpr int timeSize = 8 + 4 + 1;

} // namespace

class CrashDataTest : public QObject
{
    Q_OBJECT

private slots:
    void readsTheThreeFieldsInOrder();
    void readsTheBytesOfTheFormatLiterally();
    void keepsEveryTimeSpec_data();
    void keepsEveryTimeSpec();
    void aFileCutAnywhereKeepsWhatWasReadBefore_data();
    void aFileCutAnywhereKeepsWhatWasReadBefore();
    void aNullPathIsNull();
    void hostileBytes_data();
    void hostileBytes();
    void aZoneOutsideTheDatabaseIsNeverOpened_data();
    void aZoneOutsideTheDatabaseIsNeverOpened();
    void anOversizedCountKeepsTheFieldsBeforeIt();
    void aForeignVersionOrByteOrderReadsAsGarbage();
    void aClosedDeviceGivesNullFields();
};

void CrashDataTest::readsTheThreeFieldsInOrder()
{
    const CrashData data = read(wellFormed());
    QCOMPARE(data.dumpFilePath, dumpPath);
    QCOMPARE(data.crashTime, crashTime);
    QCOMPARE(data.outputLog, outputLog);
}

void CrashDataTest::readsTheBytesOfTheFormatLiterally()
{
    const CrashData data = read(QByteArray::fromHex("00000004"
                                                    "002f0061"
                                                    "00000000002586d9"
                                                    "00000fa0"
                                                    "01"
                                                    "00000001"
                                                    "00000002"
                                                    "0062"));
    QCOMPARE(data.dumpFilePath, QStringLiteral("/a"));
    QCOMPARE(data.crashTime.date().toJulianDay(), qint64(0x2586d9));
    QCOMPARE(data.crashTime.time(), QTime(0, 0, 4));
    QCOMPARE(data.crashTime.timeSpec(), Qt::UTC);
    QCOMPARE(data.outputLog, QStringList{QStringLiteral("b")});
}

void CrashDataTest::keepsEveryTimeSpec_data()
{
    QTest::addColumn<QDateTime>("time");
    const QDate date(2024, 2, 29);
    const QTime time(23, 59, 58);
    QTest::newRow("local") << QDateTime(date, time, Qt::LocalTime);
    QTest::newRow("UTC") << QDateTime(date, time, Qt::UTC);
    QTest::newRow("offset") << QDateTime(date, time, Qt::OffsetFromUTC, -5400);
    QTest::newRow("zone") << QDateTime(date, time, QTimeZone("Europe/Zurich"));
    QTest::newRow("null") << QDateTime();
}

void CrashDataTest::keepsEveryTimeSpec()
{
    QFETCH(QDateTime, time);
    const CrashData data = read(written(dumpPath, time, outputLog));
    QCOMPARE(data.crashTime, time);
    QCOMPARE(data.crashTime.isNull(), time.isNull());
    QCOMPARE(data.crashTime.timeSpec(), time.timeSpec());
    QCOMPARE(data.outputLog, outputLog);
}

void CrashDataTest::aFileCutAnywhereKeepsWhatWasReadBefore_data()
{
    QTest::addColumn<int>("size");
    for (int size = 0; size < wellFormed().size(); ++size)
        QTest::addRow("%d bytes", size) << size;
}

void CrashDataTest::aFileCutAnywhereKeepsWhatWasReadBefore()
{
    QFETCH(int, size);
    const CrashData data = read(wellFormed().left(size));

    if (size < pathSize())
        QVERIFY(data.dumpFilePath.isNull());
    else
        QCOMPARE(data.dumpFilePath, dumpPath);

    if (size < pathSize() + timeSize)
        QVERIFY(data.crashTime.isNull());
    else
        QCOMPARE(data.crashTime, crashTime);

    QVERIFY2(data.outputLog.isEmpty(), "a list that breaks off must not be kept in part");
}

void CrashDataTest::aNullPathIsNull()
{
    const CrashData data = read(written(QString(), crashTime, outputLog));
    QVERIFY(data.dumpFilePath.isNull());
    QCOMPARE(data.crashTime, crashTime);
}

void CrashDataTest::hostileBytes_data()
{
    QTest::addColumn<QByteArray>("bytes");
    QTest::addColumn<bool>("pathIsNull");
    QTest::addColumn<bool>("timeIsNull");

    const QByteArray path = QByteArray::fromHex("00000002"
                                                "002f");
    const QByteArray utcTime = QByteArray::fromHex("00000000002586d9"
                                                   "00000fa0"
                                                   "01");

    QTest::newRow("nothing") << QByteArray() << true << true;
    QTest::newRow("one byte") << QByteArray(1, '\0') << true << true;
    QTest::newRow("all ones") << QByteArray(64, '\xff') << true << false;
    QTest::newRow("path of 2 GiB") << QByteArray::fromHex("7ffffffe"
                                                          "002f")
                                   << true << true;
    QTest::newRow("path of 4 GiB less 2") << QByteArray::fromHex("fffffffe"
                                                                 "002f")
                                          << true << true;
    QTest::newRow("odd path length") << QByteArray::fromHex("00000003"
                                                            "002f00")
                                     << true << true;
    QTest::newRow("count of 2^31-1")
        << path + utcTime + QByteArray::fromHex("7fffffff") << false << false;
    QTest::newRow("count of 2^32-1")
        << path + utcTime + QByteArray::fromHex("ffffffff") << false << false;
    QTest::newRow("count of 2^31")
        << path + utcTime + QByteArray::fromHex("80000000") << false << false;
    QTest::newRow("line of 2 GiB") << path + utcTime +
                                          QByteArray::fromHex("00000001"
                                                              "7ffffffe")
                                   << false << false;
    QTest::newRow("odd line length") << path + utcTime +
                                            QByteArray::fromHex("00000001"
                                                                "00000001"
                                                                "00")
                                     << false << false;
    QTest::newRow("breaks off after good lines") << path + utcTime +
                                                        QByteArray::fromHex("00000003"
                                                                            "00000002"
                                                                            "0061"
                                                                            "00000002"
                                                                            "0062")
                                                 << false << false;
    QTest::newRow("zone without name") << path + QByteArray::fromHex("00000000002586d9"
                                                                     "00000fa0"
                                                                     "03")
                                       << false << true;
    QTest::newRow("offset missing") << path + QByteArray::fromHex("00000000002586d9"
                                                                  "00000fa0"
                                                                  "02"
                                                                  "0000")
                                    << false << true;
}

void CrashDataTest::hostileBytes()
{
    QFETCH(QByteArray, bytes);
    const CrashData data = read(bytes);
    QTEST(data.dumpFilePath.isNull(), "pathIsNull");
    QTEST(data.crashTime.isNull(), "timeIsNull");
    QCOMPARE(data.outputLog, QStringList());
}

void CrashDataTest::aZoneOutsideTheDatabaseIsNeverOpened_data()
{
    QTest::addColumn<QStringList>("zone");
    const QString outside = QStringLiteral("../../..%1");
    QTest::newRow("by name") << QStringList{outside};
    QTest::newRow("behind an offset") << QStringList{QStringLiteral("OffsetFromUtc"), outside};
}

void CrashDataTest::aZoneOutsideTheDatabaseIsNeverOpened()
{
    // Whoever opens this pipe waits for ever.
    const QTemporaryDir scratch;
    const QString pipe = scratch.filePath(QStringLiteral("pipe"));
    QCOMPARE(mkfifo(QFile::encodeName(pipe).constData(), 0600), 0);

    QFETCH(QStringList, zone);
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << dumpPath << crashTime.date() << crashTime.time() << qint8(Qt::TimeZone);
    for (const QString &name : qAsConst(zone))
        stream << (name.contains(QLatin1Char('%')) ? name.arg(pipe) : name);
    stream << qint32(0) << QString() << QString() << qint32(0) << QString() << outputLog;

    const CrashData data = read(bytes);
    QCOMPARE(data.dumpFilePath, dumpPath);
    QVERIFY(data.crashTime.isNull());
    QCOMPARE(data.outputLog, QStringList());
}

void CrashDataTest::anOversizedCountKeepsTheFieldsBeforeIt()
{
    QByteArray bytes = wellFormed();
    bytes.replace(pathSize() + timeSize, 4, QByteArray::fromHex("7fffffff"));
    const CrashData data = read(bytes);
    QCOMPARE(data.dumpFilePath, dumpPath);
    QCOMPARE(data.crashTime, crashTime);
    QCOMPARE(data.outputLog, QStringList());
}

void CrashDataTest::aForeignVersionOrByteOrderReadsAsGarbage()
{
    const CrashData littleEndian = read(
        written(dumpPath, crashTime, outputLog, QDataStream::Qt_5_15, QDataStream::LittleEndian));
    QVERIFY(littleEndian.dumpFilePath != dumpPath);
    QCOMPARE(littleEndian.outputLog, QStringList());

    const CrashData oldVersion = read(written(dumpPath, crashTime, outputLog, QDataStream::Qt_3_3));
    QCOMPARE(oldVersion.dumpFilePath, dumpPath);
    QVERIFY(oldVersion.crashTime != crashTime);
}

void CrashDataTest::aClosedDeviceGivesNullFields()
{
    QBuffer closed;
    QTest::ignoreMessage(QtWarningMsg, "QIODevice::read (QBuffer): device not open");
    const CrashData data = readCrashData(closed);
    QVERIFY(data.dumpFilePath.isNull());
    QVERIFY(data.crashTime.isNull());
    QVERIFY(data.outputLog.isEmpty());
}

QTEST_APPLESS_MAIN(CrashDataTest)
#include "tst_crash_data.moc"
