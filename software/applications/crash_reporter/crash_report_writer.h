#pragma once

#include "tessel_core/shared_client_info.h"

#include <QDateTime>
#include <QString>
#include <QStringList>
#include <QXmlStreamWriter>

class QIODevice;

/** What one report document says. Owns neither the block nor the lines. */
struct CrashReportData
{
    QDateTime dateTime;
    /** Null leaves the device and its software out of the document. */
    const Tessel::SharedClientInfo *clientInfo = nullptr;
    /** Null counts as no lines. */
    const QStringList *outputLog = nullptr;
    QString comments;
};

/**
 * Writes the report document "report.xml": UTF-8, indented by 4 spaces. Texts
 * may hold anything; what XML cannot carry becomes U+FFFD.
 *
 * Use a new writer for each document: the prefix of the root element is numbered
 * on from one document of a writer to the next.
 */
class CrashReportWriter
{
public:
    CrashReportWriter();

    /**
     * Writes the whole document. The caller owns `device`, opened it and closes it,
     * and looks at it for failures: this tells of none.
     */
    void write(QIODevice *device, const CrashReportData &report);

private:
    void writeDateAndTime(const QDateTime &dateTime);
    void writeApplicationInfo(const Tessel::SharedClientInfo &info);
    void writeOutputLog(const QStringList &lines);
    void writeComments(const QString &comments);
    void writeText(const QString &element, const QString &text);

    QXmlStreamWriter xml;
};
