#include "support/log_capture.h"
#include "tessel_core/message_handler.h"

#include <QTextCodec>
#include <QtTest>

#include <memory>

using namespace Tessel;
using TestSupport::LogCapture;

namespace {

const QString eWithAcute = QString(QChar(0xE9));

/** The encoding of the locale, for the length of a scope. */
class LocaleEncoding
{
public:
    explicit LocaleEncoding(const char *name)
        : previous(QTextCodec::codecForLocale())
    {
        QTextCodec::setCodecForLocale(QTextCodec::codecForName(name));
    }
    ~LocaleEncoding() { QTextCodec::setCodecForLocale(previous); }
    Q_DISABLE_COPY(LocaleEncoding)

private:
    QTextCodec *previous;
};

} // namespace

class TestMessageHandler : public QObject
{
    Q_OBJECT

private slots:
    void messagesAreLoggedAtThePriorityOfTheHandler();
    void aMessageIsItsOwnFormat();
    void aLabelledMessageHasItsLabelInBrackets();
    void perCentSignsOfALabelledMessageAreOrdinary();
    void messagesAreInTheLocalEightBitEncoding_data();
    void messagesAreInTheLocalEightBitEncoding();
    void theTraceChannelAddsNoLineEnd();
    void emptyTextsAreLogged();
};

void TestMessageHandler::messagesAreLoggedAtThePriorityOfTheHandler()
{
    const LogCapture capture;
    const std::unique_ptr<MessageHandler> critical = std::make_unique<LoggingMessageHandler>(130);
    const std::unique_ptr<MessageHandler> debug = std::make_unique<LoggingMessageHandler>(7);
    critical->message("one");
    critical->message("label", "two");
    debug->message("three");
    const auto entries = capture.entries();
    QCOMPARE(entries.size(), std::size_t(3));
    QCOMPARE(entries[0].priority, quint32(130));
    QCOMPARE(entries[1].priority, quint32(130));
    QCOMPARE(entries[2].priority, quint32(7));
    QCOMPARE(capture.texts(), QByteArrayList({"one\n", "[label] two\n", "three\n"}));
}

void TestMessageHandler::aMessageIsItsOwnFormat()
{
    const LogCapture capture;
    LoggingMessageHandler handler(130);
    handler.message("100%% done\n");
    QCOMPARE(capture.texts(), QByteArrayList({"100% done\n"}));
}

void TestMessageHandler::aLabelledMessageHasItsLabelInBrackets()
{
    const LogCapture capture;
    LoggingMessageHandler handler(130);
    handler.message("report.cdp", "cannot be written\n");
    QCOMPARE(capture.texts(), QByteArrayList({"[report.cdp] cannot be written\n"}));
}

void TestMessageHandler::perCentSignsOfALabelledMessageAreOrdinary()
{
    const LogCapture capture;
    LoggingMessageHandler handler(130);
    handler.message("5%d", "100%% of %s\n");
    QCOMPARE(capture.texts(), QByteArrayList({"[5%d] 100%% of %s\n"}));
}

void TestMessageHandler::messagesAreInTheLocalEightBitEncoding_data()
{
    QTest::addColumn<QByteArray>("encoding");
    QTest::addColumn<QByteArray>("letter");
    QTest::newRow("UTF-8") << QByteArray("UTF-8") << QByteArray("\xC3\xA9");
    QTest::newRow("Latin-1") << QByteArray("ISO-8859-1") << QByteArray("\xE9");
}

void TestMessageHandler::messagesAreInTheLocalEightBitEncoding()
{
    QFETCH(QByteArray, encoding);
    QFETCH(QByteArray, letter);
    const LocaleEncoding locale(encoding.constData());
    const LogCapture capture;
    LoggingMessageHandler handler(130);
    handler.message(eWithAcute);
    handler.message(eWithAcute, eWithAcute);
    QCOMPARE(capture.texts(), QByteArrayList({letter + "\n", "[" + letter + "] " + letter + "\n"}));
}

void TestMessageHandler::theTraceChannelAddsNoLineEnd()
{
    const LogCapture capture;
    LoggingMessageHandler handler(104);
    handler.message("one");
    handler.message("label", "two");
    QCOMPARE(capture.texts(), QByteArrayList({"one", "[label] two"}));
}

void TestMessageHandler::emptyTextsAreLogged()
{
    const LogCapture capture;
    LoggingMessageHandler handler(130);
    handler.message(QString());
    handler.message(QString(), QString());
    QCOMPARE(capture.texts(), QByteArrayList({"", "[] \n"}));
}

QTEST_APPLESS_MAIN(TestMessageHandler)
#include "tst_message_handler.moc"
