#include "crash_reporter/crash_report_writer.h"

#include "crash_reporter/device_type.h"
#include "crash_reporter/organisation.h"
#include "crash_reporter/xml_text.h"

using namespace Tessel;

CrashReportWriter::CrashReportWriter()
{
    xml.setAutoFormatting(true);
    xml.setAutoFormattingIndent(4);
}

void CrashReportWriter::write(QIODevice *device, const CrashReportData &report)
{
    xml.setDevice(device);
    xml.writeStartDocument();
    xml.writeStartElement(organisationDomain, QStringLiteral("CrashReport"));
    writeDateAndTime(report.dateTime);
    if (report.clientInfo)
        writeApplicationInfo(*report.clientInfo);
    writeOutputLog(report.outputLog ? *report.outputLog : QStringList());
    writeComments(report.comments);
    xml.writeEndElement();
    xml.writeEndDocument();
}

void CrashReportWriter::writeDateAndTime(const QDateTime &dateTime)
{
    writeText(QStringLiteral("Date"), dateTime.toString(QStringLiteral("dd/MM/yyyy")));
    writeText(QStringLiteral("Time"), dateTime.toString(QStringLiteral("hh:mm:ss")));
}

void CrashReportWriter::writeApplicationInfo(const SharedClientInfo &info)
{
    xml.writeStartElement(QStringLiteral("ApplicationInfo"));
    writeText(QStringLiteral("Device"), deviceTypeName(info.deviceType));
    writeText(QStringLiteral("Serial"), serialNumber(info));
    writeText(QStringLiteral("Version"), toQString(info.version, true));
    writeText(QStringLiteral("Platform"), QStringLiteral("Linux"));
    xml.writeEndElement();
}

void CrashReportWriter::writeOutputLog(const QStringList &lines)
{
    xml.writeStartElement(QStringLiteral("OutputLog"));
    for (const QString &line : lines)
        writeText(QStringLiteral("Entry"), line);
    xml.writeEndElement();
}

void CrashReportWriter::writeComments(const QString &comments)
{
    writeText(QStringLiteral("Comments"), comments);
}

void CrashReportWriter::writeText(const QString &element, const QString &text)
{
    xml.writeTextElement(element, xmlText(text));
}
