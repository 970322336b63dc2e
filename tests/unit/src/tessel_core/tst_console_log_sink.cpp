#include "support/log_capture.h"
#include "tessel_core/log.h"

#include <QtTest>

#include <array>

using namespace Tessel;
using TestSupport::captureStandardError;

namespace {

constexpr quint32 watchdogPriority = 130;

} // namespace

class TestConsoleLogSink : public QObject
{
    Q_OBJECT

private slots:
    void theSeverityIsInTheHeading_data();
    void theSeverityIsInTheHeading();
    void headingAndTextAreCutAt511Characters();
    void onceRegisteredItPrintsWhatIsLogged();
};

void TestConsoleLogSink::theSeverityIsInTheHeading_data()
{
    QTest::addColumn<quint32>("priority");
    QTest::addColumn<QByteArray>("printed");
    const std::array<const char *, 8> names = {"emergency", "alert",  "critical", "error",
                                               "warning",   "notice", "info",     "debug"};
    for (quint32 severity = 0; severity < 8; ++severity) {
        const QByteArray heading = QByteArray("Log[") + names[severity] + "] 5% text";
        QTest::addRow("category 0, %s", names[severity]) << severity << heading;
        QTest::addRow("category 12, %s", names[severity]) << 96 + severity << heading;
        QTest::addRow("category 14, %s", names[severity]) << 112 + severity << heading;
        QTest::addRow("trace, severity %u", severity)
            << 104 + severity << QByteArray(severity == 0 ? "TRACE 5% text" : "5% text");
    }
    QTest::newRow("the watchdog") << watchdogPriority << QByteArray("Log[critical] 5% text");
    QTest::newRow("the highest priority value")
        << quint32(0xFFFFFFFF) << QByteArray("Log[debug] 5% text");
}

void TestConsoleLogSink::theSeverityIsInTheHeading()
{
    QFETCH(quint32, priority);
    QFETCH(QByteArray, printed);
    QCOMPARE(captureStandardError([&] { consoleLogSink(priority, 0, "5% text", nullptr); }),
             printed);
}

void TestConsoleLogSink::headingAndTextAreCutAt511Characters()
{
    const QByteArray text(511, 'x');
    QCOMPARE(captureStandardError([&] { consoleLogSink(130, 0, text.constData(), nullptr); }),
             "Log[critical] " + QByteArray(497, 'x'));
}

void TestConsoleLogSink::onceRegisteredItPrintsWhatIsLogged()
{
    registerLogSink(consoleLogSink, nullptr);
    const QByteArray printed = captureStandardError([] {
        log(watchdogPriority, "%d", 5);
        trace(0, "Crash reported\n");
    });
    unregisterLogSink(consoleLogSink, nullptr);
    QCOMPARE(printed, QByteArray("Log[critical] 5\nTRACE Crash reported\n"));
}

QTEST_APPLESS_MAIN(TestConsoleLogSink)
#include "tst_console_log_sink.moc"
