#include "support/log_capture.h"
#include "tessel_core/error_report.h"

#include <QtTest>

#include <csignal>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Tessel;
using TestSupport::captureStandardError;
using TestSupport::LogCapture;

namespace {

__attribute__((format(printf, 1, 2))) void printThroughArgumentList(const char *format, ...)
{
    std::va_list arguments;
    va_start(arguments, format);
    vprintError(format, arguments);
    va_end(arguments);
}

/** The wait status of a child that calls reportFatal(). */
int statusOfFatalChild(const std::string &message, int line, const char *file)
{
    const pid_t child = fork();
    if (child == 0) {
        // QtTest catches the signal to write a report of its own.
        std::signal(SIGABRT, SIG_DFL);
        const rlimit noCoreFile = {0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        reportFatal(message, line, file);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

} // namespace

class TestErrorReport : public QObject
{
    Q_OBJECT

private slots:
    void printErrorFormatsAndAddsNothing();
    void vprintErrorTakesAnArgumentList();
    void textsAreCutAt511Characters_data();
    void textsAreCutAt511Characters();
    void logSinksSeeNoErrorReport();
    void reportErrorPrintsItsLineAndReturns();
    void perCentSignsOfAMessageAreOrdinary();
    void aMessageTooLongTakesTheRestOfTheLineWithIt();
    void reportFatalPrintsTheLineOfReportErrorAndAborts();
    void theTwoReportsHaveTheirTitles();
};

void TestErrorReport::printErrorFormatsAndAddsNothing()
{
    const QByteArray written = captureStandardError([] { printError("%s of %d", "two", 3); });
    QCOMPARE(written, QByteArray("two of 3"));
}

void TestErrorReport::vprintErrorTakesAnArgumentList()
{
    const QByteArray written =
        captureStandardError([] { printThroughArgumentList("%d-%s\n", 7, "b"); });
    QCOMPARE(written, QByteArray("7-b\n"));
}

void TestErrorReport::textsAreCutAt511Characters_data()
{
    QTest::addColumn<int>("length");
    QTest::addColumn<int>("written");
    QTest::newRow("nothing") << 0 << 0;
    QTest::newRow("one") << 1 << 1;
    QTest::newRow("one below the limit") << 510 << 510;
    QTest::newRow("the limit") << 511 << 511;
    QTest::newRow("one above the limit") << 512 << 511;
    QTest::newRow("far above the limit") << 2000 << 511;
}

void TestErrorReport::textsAreCutAt511Characters()
{
    QFETCH(int, length);
    QFETCH(int, written);
    const QByteArray text(length, 'x');
    QCOMPARE(captureStandardError([&] { printError("%s", text.constData()); }),
             QByteArray(written, 'x'));
}

void TestErrorReport::logSinksSeeNoErrorReport()
{
    const LogCapture capture;
    captureStandardError([] {
        printError("text\n");
        reportError("text", 1, "file");
    });
    QVERIFY(capture.entries().empty());
}

void TestErrorReport::reportErrorPrintsItsLineAndReturns()
{
    bool returned = false;
    const QByteArray written = captureStandardError([&] {
        reportError("Assert: 'a == b' is FALSE", 424, "src/some/unit");
        returned = true;
    });
    QCOMPARE(written,
             QByteArray("Error Assert: 'a == b' is FALSE at line 424 in file src/some/unit\n"));
    QVERIFY(returned);
}

void TestErrorReport::perCentSignsOfAMessageAreOrdinary()
{
    QCOMPARE(captureStandardError([] { reportError("100% of %s", 1, "a%d"); }),
             QByteArray("Error 100% of %s at line 1 in file a%d\n"));
}

void TestErrorReport::aMessageTooLongTakesTheRestOfTheLineWithIt()
{
    QCOMPARE(captureStandardError([] { reportError(std::string(600, 'x'), 1, "file"); }),
             "Error " + QByteArray(505, 'x'));
}

void TestErrorReport::reportFatalPrintsTheLineOfReportErrorAndAborts()
{
    int status = 0;
    const QByteArray written = captureStandardError(
        [&] { status = statusOfFatalChild("Assert: 'open' is FALSE", 682, "some/panel"); });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written, QByteArray("Error Assert: 'open' is FALSE at line 682 in file some/panel\n"));
}

void TestErrorReport::theTwoReportsHaveTheirTitles()
{
    QCOMPARE(internalErrorTitle, "Internal Error");
    QCOMPARE(fatalErrorTitle, "Fatal Error");
}

QTEST_APPLESS_MAIN(TestErrorReport)
#include "tst_error_report.moc"
