#include "crash_reporter/device_type.h"

#include <QCoreApplication>
#include <QTest>
#include <QTranslator>

namespace {

/** Marks every text it is asked for with the context it was asked in. */
class MarkingTranslator : public QTranslator
{
public:
    bool isEmpty() const override { return false; }
    QString translate(const char *context, const char *text, const char *, int) const override
    {
        return QStringLiteral("%1/%2").arg(QLatin1String(context), QLatin1String(text));
    }
};

} // namespace

class DeviceTypeTest : public QObject
{
    Q_OBJECT

private slots:
    void everyCodeHasItsName();
    void onlyUnknownIsTranslated();
    void lookups_data();
    void lookups();
    void theCurrentTypeIsSetOnce();
};

void DeviceTypeTest::everyCodeHasItsName()
{
    const QMap<int, QString> models = {
        {2, QStringLiteral("R4-PC")},  {3, QStringLiteral("R4-220")},
        {4, QStringLiteral("R4-120")}, {5, QStringLiteral("R4-010")},
        {6, QStringLiteral("R4-210")}, {7, QStringLiteral("R4-110")}};
    for (int code = 0; code <= 255; ++code)
        QCOMPARE(deviceTypeName(static_cast<quint8>(code)),
                 models.value(code, QStringLiteral("Unknown")));
}

void DeviceTypeTest::onlyUnknownIsTranslated()
{
    MarkingTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QCOMPARE(deviceTypeName(0), QStringLiteral("DeviceType/Unknown"));
    QCOMPARE(deviceTypeName(255), QStringLiteral("DeviceType/Unknown"));
    for (quint8 code = 2; code <= 7; ++code)
        QVERIFY(deviceTypeName(code).startsWith(QLatin1String("R4-")));
    QCoreApplication::removeTranslator(&translator);
}

void DeviceTypeTest::lookups_data()
{
    QTest::addColumn<int>("code");
    QTest::addColumn<int>("a");
    QTest::addColumn<int>("b");
    QTest::addColumn<int>("c");
    QTest::addColumn<int>("d");
    QTest::newRow("not set") << -1 << 1 << 2000 << 520000 << 0;
    QTest::newRow("0") << 0 << 1 << 2000 << 520000 << 0;
    QTest::newRow("1") << 1 << 1 << 2000 << 520000 << 0;
    QTest::newRow("2") << 2 << 1 << 2000 << 520000 << 256;
    QTest::newRow("3") << 3 << 4 << 2000 << 520000 << 64;
    QTest::newRow("4") << 4 << 1 << 2000 << 520000 << 128;
    QTest::newRow("5") << 5 << 1 << 2000 << 100000 << 128;
    QTest::newRow("6") << 6 << 2 << 4000 << 520000 << 1024;
    QTest::newRow("7") << 7 << 1 << 2000 << 520000 << 256;
    QTest::newRow("8") << 8 << 1 << 2000 << 520000 << 0;
    QTest::newRow("255") << 255 << 1 << 2000 << 520000 << 0;
}

void DeviceTypeTest::lookups()
{
    QFETCH(int, code);
    QTEST(deviceLookupA(code), "a");
    QTEST(deviceLookupB(code), "b");
    QTEST(deviceLookupC(code), "c");
    QTEST(deviceLookupD(code), "d");
}

void DeviceTypeTest::theCurrentTypeIsSetOnce()
{
    QCOMPARE(currentDeviceType(), -1);
    QCOMPARE(currentDeviceTypeName(), QStringLiteral("Unknown"));
    QCOMPARE(deviceLookupD(), 0);

    setCurrentDeviceType(6);
    setCurrentDeviceType(3);
    QCOMPARE(currentDeviceType(), 6);
    QCOMPARE(currentDeviceTypeName(), QStringLiteral("R4-210"));
    QCOMPARE(deviceLookupA(), 2);
    QCOMPARE(deviceLookupB(), 4000);
    QCOMPARE(deviceLookupC(), 520000);
    QCOMPARE(deviceLookupD(), 1024);
}

QTEST_GUILESS_MAIN(DeviceTypeTest)
#include "tst_device_type.moc"
