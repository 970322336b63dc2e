#include "fuzz/report_document_check.h"

#include "crash_reporter/xml_text.h"
#include "fuzz/require.h"

#include <QRegularExpression>
#include <QTextCodec>
#include <QXmlStreamReader>

namespace {

/** XML 1.0's production "Char". */
bool isXmlCharacter(uint c)
{
    return c == 0x9 || c == 0xA || c == 0xD || (c >= 0x20 && c <= 0xD7FF) ||
           (c >= 0xE000 && c <= 0xFFFD) || (c >= 0x10000 && c <= 0x10FFFF);
}

void checkCharacters(const QByteArray &document)
{
    QTextCodec::ConverterState state(QTextCodec::IgnoreHeader);
    const QString text =
        QTextCodec::codecForName("UTF-8")->toUnicode(document.constData(), document.size(), &state);
    require(state.invalidChars == 0 && state.remainingChars == 0, "the document is UTF-8");
    for (const uint c : text.toUcs4())
        require(isXmlCharacter(c), "every character is one of XML 1.0");
}

/** What a parser makes of a text's line ends. */
QString normalised(QString text)
{
    text.replace(QStringLiteral("\r\n"), QStringLiteral("\n"));
    return text.replace(QLatin1Char('\r'), QLatin1Char('\n'));
}

/** Walks through a document; the first thing that is not as expected ends the process. */
class Walk
{
public:
    explicit Walk(const QByteArray &document)
        : xml(document)
    {
        require(next() == QXmlStreamReader::StartDocument, "the declaration comes first");
        require(xml.documentVersion() == QLatin1String("1.0"), "the declaration says 1.0");
        require(xml.documentEncoding() == QLatin1String("UTF-8"), "the declaration says UTF-8");
    }

    void enter(const char *name, const QString &namespaceUri = QString())
    {
        require(next() == QXmlStreamReader::StartElement, "an element starts here");
        require(xml.name() == QLatin1String(name), name);
        require(xml.namespaceUri() == namespaceUri, "the element is in its namespace");
        require(xml.attributes().isEmpty(), "no element has attributes");
    }

    void leave() { require(next() == QXmlStreamReader::EndElement, "the element ends here"); }

    QString text(const char *name)
    {
        enter(name);
        QString text = xml.readElementText(QXmlStreamReader::ErrorOnUnexpectedElement);
        require(!xml.hasError(), "the element holds nothing but text");
        return text;
    }

    void text(const char *name, const QString &expected)
    {
        require(text(name) == normalised(xmlText(expected)), name);
    }

    void end() { require(next() == QXmlStreamReader::EndDocument, "the document ends here"); }

private:
    QXmlStreamReader::TokenType next()
    {
        do {
            xml.readNext();
        } while (xml.isWhitespace());
        require(!xml.hasError(), "the document is well-formed");
        return xml.tokenType();
    }

    QXmlStreamReader xml;
};

void checkDateAndTime(Walk &walk, const QDateTime &time)
{
    static const QRegularExpression date(QStringLiteral("^(\\d\\d/\\d\\d/-?\\d{4,})?$"));
    static const QRegularExpression clock(QStringLiteral("^(\\d\\d:\\d\\d:\\d\\d)?$"));
    const QString writtenDate = walk.text("Date");
    const QString writtenTime = walk.text("Time");
    require(date.match(writtenDate).hasMatch(), "the date is one or empty");
    require(clock.match(writtenTime).hasMatch(), "the time is one or empty");
    require(writtenDate.isEmpty() != time.isValid(), "a date is written if there is one");
    require(writtenTime.isEmpty() != time.isValid(), "a time is written if there is one");
}

void checkApplicationInfo(Walk &walk, const Tessel::SharedClientInfo &info)
{
    walk.enter("ApplicationInfo");
    require(!walk.text("Device").isEmpty(), "every device type has a name");
    walk.text("Serial", serialNumber(info));
    walk.text("Version", toQString(info.version, true));
    walk.text("Platform", QStringLiteral("Linux"));
    walk.leave();
}

} // namespace

void checkReportDocument(const QByteArray &document, const CrashReportData &report)
{
    checkCharacters(document);
    Walk walk(document);
    walk.enter("CrashReport", QStringLiteral("tovask.example"));
    checkDateAndTime(walk, report.dateTime);
    if (report.clientInfo != nullptr)
        checkApplicationInfo(walk, *report.clientInfo);
    walk.enter("OutputLog");
    for (const QString &line : *report.outputLog)
        walk.text("Entry", line);
    walk.leave();
    walk.text("Comments", report.comments);
    walk.leave();
    walk.end();
}
