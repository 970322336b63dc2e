// What R4CrashReporterApplication does with a report: save it, ask about it, pack it for mailing.

#include "crash_reporter/crash_dump_package.h"
#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/r4_crash_reporter_application.h"
#include "tessel_core/io/file_sync.h"
#include "tessel_core/log.h"
#include "tessel_core/shared_client_info.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>

using namespace Tessel;

namespace {

const QString crashDumpDirectory = QStringLiteral("/user_data/crash_dumps/");

void makeCrashDumpDirectory()
{
    const QDir directory(crashDumpDirectory);
    if (directory.exists())
        return;
    directory.mkpath(QStringLiteral("."));
    syncDirectory(QFileInfo(directory.absolutePath()).absolutePath());
}

/** The first free number from 0: gaps are filled, nothing is overwritten. */
QString nextPackagePath()
{
    for (int n = 0;; ++n) {
        QString path =
            crashDumpDirectory + QStringLiteral("Crash Report %1.cdp").arg(QString::number(n));
        if (!QFileInfo::exists(path))
            return path;
    }
}

} // namespace

bool R4CrashReporterApplication::createDumpPackage(const QString &path)
{
    trace(0, "Creating dump package\n");
    CrashReportData report;
    report.dateTime = crashTime;
    report.clientInfo = sharedClientInfo();
    report.outputLog = &outputLog;
    if (crashReportWidget)
        report.comments = crashReportWidget->comments();
    if (!report.clientInfo) {
        qDebug("Error: cannot access shared memory segment");
        return false;
    }
    if (!writeDumpPackage(path, dumpFilePath, report))
        return false;
    reportUnsaved = false;
    return true;
}

bool R4CrashReporterApplication::saveCrashReport()
{
    trace(0, "Saving crash report\n");
    // Keys cannot be reached yet: none is ever found.
    QMessageBox::critical(activeWindow(), tr("Error"),
                          tr("Failed to detect a USB disk.  Please ensure your USB disk is "
                             "correctly inserted."),
                          QMessageBox::Ok);
    return false;
}

bool R4CrashReporterApplication::autoSaveCrashReport()
{
    trace(0, "Auto-saving crash report\n");
    makeCrashDumpDirectory();
    const QString path = nextPackagePath();
    if (!createDumpPackage(path))
        qDebug("There was a problem auto-saving the crash report to %s",
               path.toLocal8Bit().constData());
    // An automatic attempt counts as handled even when it failed: nobody is
    // there to answer the question that would otherwise hold up the reboot.
    reportUnsaved = false;
    return true;
}

void R4CrashReporterApplication::askToSaveCrashReport()
{
    if (!reportUnsaved)
        return;
    const auto answer =
        QMessageBox::question(activeWindow(), tr("Crash report is not saved"),
                              tr("Do you want to save the crash report on the processor?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::NoButton);
    if (answer == QMessageBox::Yes)
        autoSaveCrashReport();
}

bool R4CrashReporterApplication::sendCrashReport()
{
    trace(0, "Sending crash report\n");
    static const QString path = QDir::toNativeSeparators(QDir::tempPath()) + QDir::separator() +
                                QStringLiteral("crash_log.cdp");
    if (createDumpPackage(path))
        QFile::remove(path);
    else
        QMessageBox::critical(
            activeWindow(), tr("Error"),
            tr("There was a problem creating a crash report package to attach to the email."),
            QMessageBox::Ok);
    return false;
}
