#include "sink_registration.h"
#include "support/log_capture.h"
#include "tessel_core/log.h"

#include <QtTest>

#include <algorithm>
#include <atomic>
#include <thread>
#include <vector>

using namespace Tessel;
using TestSupport::captureStandardError;
using TestSupport::LogCapture;

namespace {

constexpr quint32 watchdogPriority = 130;

std::atomic<std::time_t> clockReading{1000};
std::atomic<int> clockReads{0};

} // namespace

/** The clock of this program: what it reads is the test's to say, and it is counted. */
extern "C" std::time_t time(std::time_t *result) noexcept
{
    ++clockReads;
    const std::time_t reading = clockReading;
    if (result != nullptr)
        *result = reading;
    return reading;
}

namespace {

__attribute__((format(printf, 2, 3))) void logThroughArgumentList(quint32 priority,
                                                                  const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    vlog(priority, format, arguments);
    va_end(arguments);
}

/** Notices when two threads are in it at once. */
struct OverlapDetector
{
    std::atomic<int> inside{0};
    std::atomic<bool> overlapped{false};
    // Deliberately not atomic: the thread sanitiser watches it.
    int messages = 0;

    static void sink(quint32 /*priority*/, std::time_t /*time*/, const char * /*text*/,
                     void *context)
    {
        auto *detector = static_cast<OverlapDetector *>(context);
        if (++detector->inside > 1)
            detector->overlapped = true;
        ++detector->messages;
        std::this_thread::yield();
        --detector->inside;
    }
};

/** Keeps the first thread that logs inside the sink, until it is told to go on. */
struct Gate
{
    std::atomic<bool> entered{false};
    std::atomic<bool> open{false};

    static void sink(quint32 /*priority*/, std::time_t /*time*/, const char * /*text*/,
                     void *context)
    {
        auto *gate = static_cast<Gate *>(context);
        gate->entered = true;
        while (!gate->open)
            std::this_thread::yield();
    }
};

} // namespace

class TestLog : public QObject
{
    Q_OBJECT

private slots:
    void aMessageIsFormattedAndReachesASinkWithItsPriority();
    void vlogTakesAnArgumentList();
    void aMissingLineEndIsAddedWhereThereIsRoom_data();
    void aMissingLineEndIsAddedWhereThereIsRoom();
    void traceTextsStayAsTheyAre_data();
    void traceTextsStayAsTheyAre();
    void onlyCategory13IsTheTraceChannel();
    void traceAdds104ToTheSeverity();
    void theTimeIsTakenOnceForAllSinks();
    void theTimeIsTakenBeforeTheMessageWaitsForItsTurn();
    void withoutASinkNothingIsVisible();
    void logStringTakesItsTextAsTheFormat();
    void logStringConvertsToLatin1_data();
    void logStringConvertsToLatin1();
    void logStringAddsTheLineEndByTheSameRule();
    void sinksRunOneAtATime();
    void aRemovedSinkIsNotCalledAgainByAnyThread();
};

void TestLog::aMessageIsFormattedAndReachesASinkWithItsPriority()
{
    const LogCapture capture;
    log(16 * 8 + 2, "%s failed: %d\n", "ioctl", 5);
    const auto entries = capture.entries();
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(entries[0].priority, watchdogPriority);
    QCOMPARE(entries[0].text, QByteArray("ioctl failed: 5\n"));
}

void TestLog::vlogTakesAnArgumentList()
{
    const LogCapture capture;
    logThroughArgumentList(7, "%s:%d\n", "a", 1);
    const auto entries = capture.entries();
    QCOMPARE(entries.size(), std::size_t(1));
    QCOMPARE(entries[0].priority, quint32(7));
    QCOMPARE(entries[0].text, QByteArray("a:1\n"));
}

void TestLog::aMissingLineEndIsAddedWhereThereIsRoom_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("delivered");
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &delivered) {
        QTest::newRow(name) << text << delivered;
    };
    row("an empty text stays empty", "", "");
    row("one character", "x", "x\n");
    row("a line end alone", "\n", "\n");
    row("a text with its line end", "text\n", "text\n");
    row("a line end inside", "one\ntwo", "one\ntwo\n");
    row("a carriage return is no line end", "text\r", "text\r\n");
    row("509 characters", QByteArray(509, 'x'), QByteArray(509, 'x') + "\n");
    row("510 characters, the last with room", QByteArray(510, 'x'), QByteArray(510, 'x') + "\n");
    row("509 characters and a line end", QByteArray(509, 'x') + "\n", QByteArray(509, 'x') + "\n");
    row("511 characters have no room", QByteArray(511, 'x'), QByteArray(511, 'x'));
    row("510 characters and a line end", QByteArray(510, 'x') + "\n", QByteArray(510, 'x') + "\n");
    row("512 characters are cut", QByteArray(512, 'x'), QByteArray(511, 'x'));
    row("600 characters are cut", QByteArray(600, 'x'), QByteArray(511, 'x'));
    row("a line end past the cut is lost", QByteArray(511, 'x') + "\n", QByteArray(511, 'x'));
}

void TestLog::aMissingLineEndIsAddedWhereThereIsRoom()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, delivered);
    const LogCapture capture;
    log(watchdogPriority, "%s", text.constData());
    QCOMPARE(capture.texts(), QByteArrayList({delivered}));
}

void TestLog::traceTextsStayAsTheyAre_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::addColumn<QByteArray>("delivered");
    const auto row = [](const char *name, const QByteArray &text, const QByteArray &delivered) {
        QTest::newRow(name) << text << delivered;
    };
    row("empty", "", "");
    row("without a line end", "Crash", "Crash");
    row("with a line end", "Crash reported\n", "Crash reported\n");
    row("510 characters", QByteArray(510, 'x'), QByteArray(510, 'x'));
    row("600 characters", QByteArray(600, 'x'), QByteArray(511, 'x'));
}

void TestLog::traceTextsStayAsTheyAre()
{
    QFETCH(QByteArray, text);
    QFETCH(QByteArray, delivered);
    const LogCapture capture;
    trace(0, "%s", text.constData());
    log(traceCategory * 8 + 7, "%s", text.constData());
    QCOMPARE(capture.texts(), QByteArrayList({delivered, delivered}));
}

void TestLog::onlyCategory13IsTheTraceChannel()
{
    const LogCapture capture;
    for (const quint32 priority : {0U, 103U, 104U, 111U, 112U, 0xFFFFFFFFU})
        log(priority, "x");
    QCOMPARE(capture.texts(), QByteArrayList({"x\n", "x\n", "x", "x", "x\n", "x\n"}));
}

void TestLog::traceAdds104ToTheSeverity()
{
    const LogCapture capture;
    for (quint32 severity = 0; severity < 8; ++severity)
        trace(severity, "%d", 1);
    const auto entries = capture.entries();
    QCOMPARE(entries.size(), std::size_t(8));
    for (quint32 severity = 0; severity < 8; ++severity)
        QCOMPARE(entries[severity].priority, 104 + severity);
}

void TestLog::theTimeIsTakenOnceForAllSinks()
{
    const LogCapture one;
    const LogCapture two;
    clockReading = 1234567890;
    const int readsBefore = clockReads;
    log(watchdogPriority, "x");
    QCOMPARE(clockReads - readsBefore, 1);
    QCOMPARE(one.entries().at(0).time, std::time_t(1234567890));
    QCOMPARE(two.entries().at(0).time, std::time_t(1234567890));
}

void TestLog::theTimeIsTakenBeforeTheMessageWaitsForItsTurn()
{
    const LogCapture capture;
    Gate gate;
    const SinkRegistration registration(Gate::sink, &gate);
    clockReading = 1;
    std::thread holder([] { log(watchdogPriority, "first"); });
    while (!gate.entered)
        std::this_thread::yield();

    clockReading = 2;
    const int readsBefore = clockReads;
    std::thread waiter([] { log(watchdogPriority, "second"); });
    // The first message holds the lock: a clock read under it would never come.
    while (clockReads == readsBefore)
        std::this_thread::yield();
    clockReading = 3;
    gate.open = true;
    holder.join();
    waiter.join();

    const auto entries = capture.entries();
    QCOMPARE(entries.size(), std::size_t(2));
    QCOMPARE(entries[1].text, QByteArray("second\n"));
    QCOMPARE(entries[1].time, std::time_t(2));
}

void TestLog::withoutASinkNothingIsVisible()
{
    QCOMPARE(captureStandardError([] {
                 log(watchdogPriority, "x");
                 trace(0, "x\n");
                 logString(0, "x");
             }),
             QByteArray());
}

void TestLog::logStringTakesItsTextAsTheFormat()
{
    const LogCapture capture;
    logString(watchdogPriority, "100%% done\n");
    QCOMPARE(capture.entries().at(0).priority, watchdogPriority);
    QCOMPARE(capture.texts(), QByteArrayList({"100% done\n"}));
}

void TestLog::logStringConvertsToLatin1_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QByteArray>("delivered");
    QTest::newRow("ASCII") << QString("text\n") << QByteArray("text\n");
    QTest::newRow("e with acute accent") << QString(QChar(0xE9)) + "\n" << QByteArray("\xE9\n");
    QTest::newRow("omega, not in Latin-1") << QString(QChar(0x3A9)) + "\n" << QByteArray("?\n");
}

void TestLog::logStringConvertsToLatin1()
{
    QFETCH(QString, text);
    QFETCH(QByteArray, delivered);
    const LogCapture capture;
    logString(watchdogPriority, text);
    QCOMPARE(capture.texts(), QByteArrayList({delivered}));
}

void TestLog::logStringAddsTheLineEndByTheSameRule()
{
    const LogCapture capture;
    logString(watchdogPriority, "x");
    logString(104, "x");
    logString(watchdogPriority, QString());
    logString(watchdogPriority, QString(600, 'x'));
    QCOMPARE(capture.texts(), QByteArrayList({"x\n", "x", "", QByteArray(511, 'x')}));
}

void TestLog::sinksRunOneAtATime()
{
    constexpr int threadCount = 4;
    constexpr int messagesPerThread = 250;
    OverlapDetector detector;
    const LogCapture capture;
    {
        const SinkRegistration registration(OverlapDetector::sink, &detector);
        std::vector<std::thread> threads;
        threads.reserve(threadCount);
        for (int thread = 0; thread < threadCount; ++thread)
            threads.emplace_back([thread] {
                for (int message = 0; message < messagesPerThread; ++message)
                    log(watchdogPriority, "thread %d message %d", thread, message);
            });
        for (std::thread &thread : threads)
            thread.join();
    }
    QVERIFY(!detector.overlapped);
    QCOMPARE(detector.messages, threadCount * messagesPerThread);

    // Every message arrived whole, once.
    QByteArrayList delivered = capture.texts();
    QByteArrayList expected;
    for (int thread = 0; thread < threadCount; ++thread)
        for (int message = 0; message < messagesPerThread; ++message)
            expected << QByteArray("thread ") + QByteArray::number(thread) + " message " +
                            QByteArray::number(message) + "\n";
    std::sort(delivered.begin(), delivered.end());
    std::sort(expected.begin(), expected.end());
    QCOMPARE(delivered, expected);
}

void TestLog::aRemovedSinkIsNotCalledAgainByAnyThread()
{
    std::atomic<bool> stop{false};
    std::thread logger([&stop] {
        while (!stop)
            log(watchdogPriority, "x");
    });
    bool calledAfterRemoval = false;
    for (int round = 0; round < 20; ++round) {
        OverlapDetector detector;
        registerLogSink(OverlapDetector::sink, &detector);
        unregisterLogSink(OverlapDetector::sink, &detector);
        const int messages = detector.messages;
        std::this_thread::yield();
        calledAfterRemoval |= detector.messages != messages;
    }
    stop = true;
    logger.join();
    QVERIFY(!calledAfterRemoval);
}

QTEST_APPLESS_MAIN(TestLog)
#include "tst_log.moc"
