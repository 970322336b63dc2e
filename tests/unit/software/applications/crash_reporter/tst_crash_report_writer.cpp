#include "crash_reporter/crash_report_writer.h"

#include <QBuffer>
#include <QTest>
#include <QXmlStreamReader>

#include <algorithm>
#include <cstring>

using Tessel::SharedClientInfo;

namespace {

SharedClientInfo someBlock()
{
    SharedClientInfo info{};
    std::strcpy(info.serialNumber, "SN-0042");
    info.deviceType = 3;
    info.version = {2, 5, 1, 131};
    return info;
}

QByteArray document(const CrashReportData &report)
{
    QByteArray bytes;
    QBuffer buffer(&bytes);
    buffer.open(QIODevice::WriteOnly);
    CrashReportWriter().write(&buffer, report);
    return bytes;
}

/** The texts of all elements of that name; fails the test when the document is not well-formed. */
QStringList texts(const QByteArray &bytes, const QString &element)
{
    QStringList found;
    QXmlStreamReader reader(bytes);
    while (!reader.atEnd()) {
        if (reader.readNext() == QXmlStreamReader::StartElement && reader.name() == element)
            found.append(reader.readElementText());
    }
    return reader.hasError() ? QStringList{reader.errorString()} : found;
}

} // namespace

class CrashReportWriterTest : public QObject
{
    Q_OBJECT

private slots:
    void writesTheWholeDocument();
    void aNullTimeGivesEmptyDateAndTime();
    void dateAndTimeDoNotSpeakTheSystemsLanguage();
    void withoutABlockThereIsNoApplicationInfo();
    void noLinesGiveAnEmptyOutputLog();
    void anUnknownDeviceTypeIsWrittenAsUnknown();
    void anEmptySerialNumberGivesAnEmptyElement();
    void aSerialNumberWithoutZeroByteEndsWithItsField();
    void aSerialNumberIsLatin1();
    void versionsAreWrittenLong_data();
    void versionsAreWrittenLong();
    void anyTextLeavesTheDocumentWhole_data();
    void anyTextLeavesTheDocumentWhole();
    void twoDocumentsHaveTheSamePrefix();
};

void CrashReportWriterTest::writesTheWholeDocument()
{
    const SharedClientInfo info = someBlock();
    const QStringList lines = {QStringLiteral("started"), QStringLiteral("a < b & c > d \"e\"")};
    const CrashReportData report{QDateTime(QDate(2026, 3, 9), QTime(4, 5, 6)), &info, &lines,
                                 QStringLiteral("first\nsecond")};

    QCOMPARE(document(report),
             QByteArray("<?xml version=\"1.0\" encoding=\"UTF-8\"?>\n"
                        "<n1:CrashReport xmlns:n1=\"tovask.example\">\n"
                        "    <Date>09/03/2026</Date>\n"
                        "    <Time>04:05:06</Time>\n"
                        "    <ApplicationInfo>\n"
                        "        <Device>R4-220</Device>\n"
                        "        <Serial>SN-0042</Serial>\n"
                        "        <Version>2.5.1.BETA3</Version>\n"
                        "        <Platform>Linux</Platform>\n"
                        "    </ApplicationInfo>\n"
                        "    <OutputLog>\n"
                        "        <Entry>started</Entry>\n"
                        "        <Entry>a &lt; b &amp; c &gt; d &quot;e&quot;</Entry>\n"
                        "    </OutputLog>\n"
                        "    <Comments>first\nsecond</Comments>\n"
                        "</n1:CrashReport>\n"));
}

void CrashReportWriterTest::aNullTimeGivesEmptyDateAndTime()
{
    const QByteArray bytes = document({});
    QVERIFY(bytes.contains("<Date></Date>\n    <Time></Time>\n"));
}

void CrashReportWriterTest::dateAndTimeDoNotSpeakTheSystemsLanguage()
{
    const QLocale before;
    QLocale::setDefault(QLocale(QLocale::Arabic, QLocale::Egypt));
    CrashReportData report;
    report.dateTime = QDateTime(QDate(2026, 12, 31), QTime(23, 59, 59));
    const QByteArray bytes = document(report);
    QLocale::setDefault(before);
    QCOMPARE(texts(bytes, QStringLiteral("Date")), QStringList{QStringLiteral("31/12/2026")});
    QCOMPARE(texts(bytes, QStringLiteral("Time")), QStringList{QStringLiteral("23:59:59")});
}

void CrashReportWriterTest::withoutABlockThereIsNoApplicationInfo()
{
    const QByteArray bytes = document({});
    QVERIFY(!bytes.contains("ApplicationInfo"));
    QVERIFY(!bytes.contains("Platform"));
    QCOMPARE(texts(bytes, QStringLiteral("Comments")), QStringList{QString()});
}

void CrashReportWriterTest::noLinesGiveAnEmptyOutputLog()
{
    const QStringList none;
    CrashReportData report;
    report.outputLog = &none;
    QVERIFY(document(report).contains("    <OutputLog/>\n"));
    report.outputLog = nullptr;
    QVERIFY(document(report).contains("    <OutputLog/>\n"));
}

void CrashReportWriterTest::anUnknownDeviceTypeIsWrittenAsUnknown()
{
    SharedClientInfo info = someBlock();
    for (const int code : {0, 1, 8, 255}) {
        info.deviceType = static_cast<quint8>(code);
        CrashReportData report;
        report.clientInfo = &info;
        QVERIFY(document(report).contains("<Device>Unknown</Device>"));
    }
}

void CrashReportWriterTest::anEmptySerialNumberGivesAnEmptyElement()
{
    SharedClientInfo info{};
    CrashReportData report;
    report.clientInfo = &info;
    QVERIFY(document(report).contains("<Serial></Serial>"));
    QVERIFY(document(report).contains("<Version>0.0.0</Version>"));
}

void CrashReportWriterTest::aSerialNumberWithoutZeroByteEndsWithItsField()
{
    SharedClientInfo info{};
    std::fill(std::begin(info.serialNumber), std::end(info.serialNumber), 'S');
    info.deviceType = 'X';
    CrashReportData report;
    report.clientInfo = &info;
    QCOMPARE(texts(document(report), QStringLiteral("Serial")),
             QStringList{QString(64, QLatin1Char('S'))});
}

void CrashReportWriterTest::aSerialNumberIsLatin1()
{
    SharedClientInfo info{};
    std::strcpy(info.serialNumber, "\xc4\xff\x85");
    CrashReportData report;
    report.clientInfo = &info;
    QCOMPARE(texts(document(report), QStringLiteral("Serial")),
             QStringList{QStringLiteral("\u00c4\u00ff\u0085")});
}

void CrashReportWriterTest::versionsAreWrittenLong_data()
{
    QTest::addColumn<int>("build");
    QTest::addColumn<QString>("text");
    QTest::newRow("release") << 0 << "2.5.0";
    QTest::newRow("release candidate 0") << 64 << "2.5.0.RC0";
    QTest::newRow("debug 63") << 255 << "2.5.0.DEBUG63";
}

void CrashReportWriterTest::versionsAreWrittenLong()
{
    QFETCH(int, build);
    SharedClientInfo info{};
    info.version = {2, 5, 0, static_cast<quint8>(build)};
    CrashReportData report;
    report.clientInfo = &info;
    QFETCH(QString, text);
    QCOMPARE(texts(document(report), QStringLiteral("Version")), QStringList{text});
}

void CrashReportWriterTest::anyTextLeavesTheDocumentWhole_data()
{
    QTest::addColumn<QString>("text");
    QTest::addColumn<QString>("read");
    const QString replaced(QChar(0xFFFD));
    QTest::newRow("cdata end") << "a]]>b"
                               << "a]]>b";
    QTest::newRow("markup") << "<Entry>&amp;</CrashReport>"
                            << "<Entry>&amp;</CrashReport>";
    QTest::newRow("emoji") << QStringLiteral("\U0001F600 ok") << QStringLiteral("\U0001F600 ok");
    QTest::newRow("zero") << QString(QChar(0)) << replaced;
    QTest::newRow("escape sequence")
        << QStringLiteral("\x1b[31m") << replaced + QStringLiteral("[31m");
    QTest::newRow("lone high") << QString(QChar(0xD800)) << replaced;
    QTest::newRow("lone low") << QString(QChar(0xDFFF)) << replaced;
    QTest::newRow("U+FFFE") << QString(QChar(0xFFFE)) << replaced;
    QTest::newRow("U+FFFF") << QString(QChar(0xFFFF)) << replaced;
    QTest::newRow("tab and line feed") << "a\tb\nc"
                                       << "a\tb\nc";
    QTest::newRow("right to left")
        << QStringLiteral("\u05d0\u202eabc") << QStringLiteral("\u05d0\u202eabc");
}

void CrashReportWriterTest::anyTextLeavesTheDocumentWhole()
{
    QFETCH(QString, text);
    QFETCH(QString, read);
    const SharedClientInfo info = someBlock();
    const QStringList lines = {text, QStringLiteral("after")};
    const CrashReportData report{QDateTime(QDate(2026, 1, 2), QTime(3, 4)), &info, &lines, text};
    const QByteArray bytes = document(report);
    QCOMPARE(texts(bytes, QStringLiteral("Entry")), QStringList({read, QStringLiteral("after")}));
    QCOMPARE(texts(bytes, QStringLiteral("Comments")), QStringList{read});
}

void CrashReportWriterTest::twoDocumentsHaveTheSamePrefix()
{
    QCOMPARE(document({}), document({}));
}

QTEST_GUILESS_MAIN(CrashReportWriterTest)
#include "tst_crash_report_writer.moc"
