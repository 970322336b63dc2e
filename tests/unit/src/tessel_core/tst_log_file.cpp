#include "tessel_core/log.h"
#include "tessel_core/log_file.h"

#include <QTemporaryDir>
#include <QTextCodec>
#include <QtTest>

#include <clocale>
#include <csignal>
#include <functional>
#include <limits>
#include <new>
#include <sys/mman.h>
#include <sys/wait.h>
#include <unistd.h>

using namespace Tessel;

namespace {

constexpr quint32 watchdogPriority = 130;

/** What the locale's date and time look like; null for the real locale. */
const char *localeStampFormat = nullptr;
QByteArray askedFormat;
std::size_t askedSize = 0;

} // namespace

/**
 * The real function behind a spy, so that a locale with a longer date can be
 * played on a machine that has only "C".
 */
extern "C" std::size_t strftime(char *text, std::size_t size, const char *format,
                                const std::tm *time) noexcept
{
    static const locale_t plainLocale = newlocale(LC_ALL_MASK, "C", nullptr);
    askedFormat = format;
    askedSize = size;
    return strftime_l(text, size, localeStampFormat != nullptr ? localeStampFormat : format, time,
                      plainLocale);
}

namespace {

void setTimeZone(const char *zone)
{
    qputenv("TZ", zone);
    tzset();
}

QByteArray contentOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("unreadable");
}

/** A log file that keeps the owner's side of the contract. */
class OwnedLogFile
{
public:
    OwnedLogFile(const QString &path, bool append)
        : file(path, append)
    {}
    ~OwnedLogFile() { unregisterLogSink(LogFile::sink, &file); }
    Q_DISABLE_COPY(OwnedLogFile)

    LogFile file;
};

constexpr int untouched = 0;
constexpr int touched = 42;

/**
 * Whether a message goes to a log file that is no more: a child constructs and
 * destroys one in memory that it then locks, and logs. The answer is its exit
 * status, `touched` or `untouched`.
 */
int messageReachesDestroyedLogFile(const QString &path)
{
    const pid_t child = fork();
    if (child == 0) {
        void *memory = mmap(nullptr, sizeof(LogFile), PROT_READ | PROT_WRITE,
                            MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (memory == MAP_FAILED)
            _exit(1);
        auto *file = new (memory) LogFile(path, false);
        file->~LogFile();
        mprotect(memory, sizeof(LogFile), PROT_NONE);
        std::signal(SIGSEGV, [](int) { _exit(touched); });
        log(watchdogPriority, "x");
        _exit(untouched);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return WIFEXITED(status) ? WEXITSTATUS(status) : -1;
}

} // namespace

class TestLogFile : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void loggedMessagesAreWrittenOneALine();
    void withoutAppendTheFileIsEmptied();
    void withAppendTheFileGrows();
    void aLineIsInTheFileAtOnce();
    void theStampIsTheLocalTime();
    void theStampIsTheLocalesDateAndTimeInTwentyBytes();
    void aStampThatDoesNotFitCountsAsEmpty_data();
    void aStampThatDoesNotFitCountsAsEmpty();
    void aTimeWithoutLocalFormHasAnEmptyStamp();
    void theTextIsWrittenAsItIs_data();
    void theTextIsWrittenAsItIs();
    void latin1TextsAreWrittenInTheLocalesEncoding();
    void afterTheOwnerUnregistersNothingMoreIsWritten();
    void everyOpenLogFileGetsTheMessage();
    void aFileThatCannotBeOpenedIsNotRegistered_data();
    void aFileThatCannotBeOpenedIsNotRegistered();
    void aFileThatCannotBeOpenedLogsNothing();
    void theDestructorDoesNotUnregister();

private:
    QString path() const { return directory.filePath("main.log"); }

    QTemporaryDir directory;
};

void TestLogFile::init()
{
    QVERIFY(directory.isValid());
    QFile::remove(path());
    setTimeZone("UTC");
    QTextCodec::setCodecForLocale(QTextCodec::codecForName("UTF-8"));
    localeStampFormat = nullptr;
}

void TestLogFile::loggedMessagesAreWrittenOneALine()
{
    localeStampFormat = "stamp";
    const OwnedLogFile owned(path(), false);
    log(watchdogPriority, "first");
    trace(0, "second\n");
    QCOMPARE(contentOf(path()), QByteArray("stamp - first\nstamp - second\n"));
}

void TestLogFile::withoutAppendTheFileIsEmptied()
{
    {
        OwnedLogFile owned(path(), false);
        owned.file.write(0, "old\n");
    }
    const OwnedLogFile owned(path(), false);
    QCOMPARE(contentOf(path()), QByteArray());
}

void TestLogFile::withAppendTheFileGrows()
{
    {
        OwnedLogFile owned(path(), true);
        owned.file.write(0, "old\n");
    }
    {
        OwnedLogFile owned(path(), true);
        owned.file.write(1, "new\n");
    }
    QCOMPARE(contentOf(path()), QByteArray("01/01/70 00:00:00 - old\n01/01/70 00:00:01 - new\n"));
}

void TestLogFile::aLineIsInTheFileAtOnce()
{
    OwnedLogFile owned(path(), false);
    owned.file.write(0, "one\n");
    QCOMPARE(contentOf(path()), QByteArray("01/01/70 00:00:00 - one\n"));
    owned.file.write(0, "two\n");
    QCOMPARE(contentOf(path()), QByteArray("01/01/70 00:00:00 - one\n01/01/70 00:00:00 - two\n"));
}

void TestLogFile::theStampIsTheLocalTime()
{
    setTimeZone("XYZ-03:30");
    OwnedLogFile owned(path(), false);
    owned.file.write(1759403096, "x\n");
    QCOMPARE(contentOf(path()), QByteArray("10/02/25 14:34:56 - x\n"));
}

void TestLogFile::theStampIsTheLocalesDateAndTimeInTwentyBytes()
{
    OwnedLogFile owned(path(), false);
    owned.file.write(0, "x\n");
    QCOMPARE(askedFormat, QByteArray("%x %X"));
    QCOMPARE(askedSize, std::size_t(20));
}

void TestLogFile::aStampThatDoesNotFitCountsAsEmpty_data()
{
    QTest::addColumn<QByteArray>("localeFormat");
    QTest::addColumn<QByteArray>("line");
    QTest::newRow("19 characters fit")
        << QByteArray("%d.%m.%Y %H:%M:%S") << QByteArray("01.01.1970 00:00:00 - x\n");
    QTest::newRow("20 characters do not")
        << QByteArray("%d. %m.%Y %H:%M:%S") << QByteArray(" - x\n");
    QTest::newRow("a twelve-hour clock")
        << QByteArray("%m/%d/%Y %I:%M:%S %p") << QByteArray(" - x\n");
}

void TestLogFile::aStampThatDoesNotFitCountsAsEmpty()
{
    QFETCH(QByteArray, localeFormat);
    QFETCH(QByteArray, line);
    localeStampFormat = localeFormat.constData();
    OwnedLogFile owned(path(), false);
    owned.file.write(0, "x\n");
    QCOMPARE(contentOf(path()), line);
}

void TestLogFile::aTimeWithoutLocalFormHasAnEmptyStamp()
{
    OwnedLogFile owned(path(), false);
    owned.file.write(std::numeric_limits<std::time_t>::max(), "x\n");
    QCOMPARE(contentOf(path()), QByteArray(" - x\n"));
}

void TestLogFile::theTextIsWrittenAsItIs_data()
{
    QTest::addColumn<QByteArray>("text");
    QTest::newRow("empty") << QByteArray("");
    QTest::newRow("without a line end") << QByteArray("text");
    QTest::newRow("several lines") << QByteArray("one\ntwo\n");
    QTest::newRow("per-cent signs") << QByteArray("5% of %s\n");
    QTest::newRow("511 characters") << QByteArray(511, 'x');
}

void TestLogFile::theTextIsWrittenAsItIs()
{
    QFETCH(QByteArray, text);
    OwnedLogFile owned(path(), false);
    owned.file.write(0, text.constData());
    QCOMPARE(contentOf(path()), "01/01/70 00:00:00 - " + text);
}

void TestLogFile::latin1TextsAreWrittenInTheLocalesEncoding()
{
    localeStampFormat = "stamp";
    const OwnedLogFile owned(path(), false);
    logString(watchdogPriority, QString(QChar(0xE9)));
    QCOMPARE(contentOf(path()), QByteArray("stamp - \xC3\xA9\n"));
}

void TestLogFile::afterTheOwnerUnregistersNothingMoreIsWritten()
{
    localeStampFormat = "stamp";
    LogFile file(path(), false);
    log(watchdogPriority, "before");
    unregisterLogSink(LogFile::sink, &file);
    log(watchdogPriority, "after");
    QCOMPARE(contentOf(path()), QByteArray("stamp - before\n"));
}

void TestLogFile::everyOpenLogFileGetsTheMessage()
{
    localeStampFormat = "stamp";
    const QString otherPath = directory.filePath("other.log");
    const OwnedLogFile one(path(), false);
    const OwnedLogFile two(otherPath, false);
    log(watchdogPriority, "x");
    QCOMPARE(contentOf(path()), QByteArray("stamp - x\n"));
    QCOMPARE(contentOf(otherPath), QByteArray("stamp - x\n"));
}

void TestLogFile::aFileThatCannotBeOpenedIsNotRegistered_data()
{
    QTest::addColumn<QString>("unopenable");
    QTest::newRow("in a directory that is not there") << directory.filePath("missing/main.log");
    QTest::newRow("a directory") << directory.path();
}

void TestLogFile::aFileThatCannotBeOpenedIsNotRegistered()
{
    QFETCH(QString, unopenable);
    QCOMPARE(messageReachesDestroyedLogFile(unopenable), untouched);
}

void TestLogFile::aFileThatCannotBeOpenedLogsNothing()
{
    const QString missing = directory.filePath("missing/main.log");
    LogFile file(missing, false);
    log(watchdogPriority, "x");
    file.write(0, "x\n");
    QVERIFY(!QFile::exists(missing));
}

void TestLogFile::theDestructorDoesNotUnregister()
{
    QCOMPARE(messageReachesDestroyedLogFile(path()), touched);
}

QTEST_APPLESS_MAIN(TestLogFile)
#include "tst_log_file.moc"
