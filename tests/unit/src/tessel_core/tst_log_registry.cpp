#include "sink_registration.h"
#include "support/log_capture.h"
#include "tessel_core/log.h"

#include <QtTest>

#include <algorithm>
#include <array>
#include <functional>
#include <stdexcept>
#include <vector>

using namespace Tessel;
using TestSupport::LogCapture;

namespace {

constexpr quint32 watchdogPriority = 130;

struct Delivery
{
    LogSink sink;
    void *context;

    bool operator==(const Delivery &other) const
    {
        return sink == other.sink && context == other.context;
    }
};

std::vector<Delivery> deliveries;

void firstSink(quint32 /*priority*/, std::time_t /*time*/, const char * /*text*/, void *context)
{
    deliveries.push_back({firstSink, context});
}

void secondSink(quint32 /*priority*/, std::time_t /*time*/, const char * /*text*/, void *context)
{
    deliveries.push_back({secondSink, context});
}

void throwingSink(quint32 /*priority*/, std::time_t /*time*/, const char * /*text*/,
                  void * /*context*/)
{
    throw std::runtime_error("sink");
}

} // namespace

class TestLogRegistry : public QObject
{
    Q_OBJECT

private slots:
    void cleanup();
    void aPairRegisteredTwiceGetsEachMessageOnce();
    void aPairRegisteredTwiceIsGoneAfterOneRemoval();
    void pairsThatDifferInOnePartAreDistinct();
    void sinksAreCalledInTheOrderOfTheirPairs();
    void removingAnUnknownPairChangesNothing();
    void theLockIsReleasedWhenASinkThrows();
};

void TestLogRegistry::cleanup()
{
    deliveries.clear();
}

void TestLogRegistry::aPairRegisteredTwiceGetsEachMessageOnce()
{
    int context = 0;
    const SinkRegistration registration(firstSink, &context);
    registerLogSink(firstSink, &context);
    log(watchdogPriority, "x");
    QCOMPARE(deliveries.size(), std::size_t(1));
}

void TestLogRegistry::aPairRegisteredTwiceIsGoneAfterOneRemoval()
{
    int context = 0;
    registerLogSink(firstSink, &context);
    registerLogSink(firstSink, &context);
    unregisterLogSink(firstSink, &context);
    log(watchdogPriority, "x");
    QVERIFY(deliveries.empty());
}

void TestLogRegistry::pairsThatDifferInOnePartAreDistinct()
{
    int context = 0;
    const SinkRegistration one(firstSink, &context);
    const SinkRegistration otherSink(secondSink, &context);
    const SinkRegistration otherContext(firstSink, nullptr);
    log(watchdogPriority, "x");
    QCOMPARE(deliveries.size(), std::size_t(3));
    for (const Delivery &wanted : {Delivery{firstSink, &context}, Delivery{secondSink, &context},
                                   Delivery{firstSink, nullptr}})
        QCOMPARE(std::count(deliveries.begin(), deliveries.end(), wanted), std::ptrdiff_t(1));
}

void TestLogRegistry::sinksAreCalledInTheOrderOfTheirPairs()
{
    std::array<int, 3> contexts = {};
    const bool firstIsLower = std::less<LogSink>()(firstSink, secondSink);
    const LogSink lower = firstIsLower ? firstSink : secondSink;
    const LogSink upper = firstIsLower ? secondSink : firstSink;
    const std::vector<Delivery> inOrder = {{lower, nullptr},      {lower, &contexts[1]},
                                           {lower, &contexts[2]}, {upper, &contexts[0]},
                                           {upper, &contexts[1]}, {upper, &contexts[2]}};
    for (const std::size_t position : {5U, 1U, 3U, 0U, 4U, 2U})
        registerLogSink(inOrder[position].sink, inOrder[position].context);
    log(watchdogPriority, "x");
    for (const Delivery &pair : inOrder)
        unregisterLogSink(pair.sink, pair.context);
    QVERIFY(deliveries == inOrder);
}

void TestLogRegistry::removingAnUnknownPairChangesNothing()
{
    int context = 0;
    const SinkRegistration registration(firstSink, &context);
    unregisterLogSink(firstSink, nullptr);
    unregisterLogSink(secondSink, &context);
    log(watchdogPriority, "x");
    QCOMPARE(deliveries.size(), std::size_t(1));
}

void TestLogRegistry::theLockIsReleasedWhenASinkThrows()
{
    {
        const SinkRegistration registration(throwingSink, nullptr);
        QVERIFY_EXCEPTION_THROWN(log(watchdogPriority, "x"), std::runtime_error);
        // With the lock still held, leaving this scope would wait for ever.
    }
    const LogCapture capture;
    log(watchdogPriority, "after");
    QCOMPARE(capture.texts(), QByteArrayList({"after\n"}));
}

QTEST_APPLESS_MAIN(TestLogRegistry)
#include "tst_log_registry.moc"
