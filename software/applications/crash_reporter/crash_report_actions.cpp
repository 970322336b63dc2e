// What R4CrashReporterApplication does with a report: save it, ask about it, pack it for mailing.

#include "common/file_dialog.h"
#include "common/file_widget.h"
#include "common/usb_support.h"
#include "crash_reporter/crash_dump_package.h"
#include "crash_reporter/crash_report_widget.h"
#include "crash_reporter/package_progress.h"
#include "crash_reporter/r4_crash_reporter_application.h"
#include "tessel_core/io/file_sync.h"
#include "tessel_core/log.h"
#include "tessel_core/shared_client_info.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>
#include <QMessageBox>
#include <QScopedValueRollback>

#include <cerrno>
#include <unistd.h>

using namespace Tessel;

namespace {

const QString crashDumpDirectory = QStringLiteral("/user_data/crash_dumps/");

const QString packageExtension = QStringLiteral(".cdp");

void makeCrashDumpDirectory()
{
    const QDir directory(crashDumpDirectory);
    if (directory.exists())
        return;
    directory.mkpath(QStringLiteral("."));
    syncDirectory(QFileInfo(directory.absolutePath()).absolutePath());
}

enum class Existence
{
    No,
    Yes,
    Unknown
};

/** QFileInfo answers no also when the medium would not say, and a package would be lost. */
Existence existenceOf(const QString &path)
{
    if (access(QFile::encodeName(path).constData(), F_OK) == 0)
        return Existence::Yes;
    return errno == ENOENT || errno == ENOTDIR ? Existence::No : Existence::Unknown;
}

/**
 * The first free number from 0: gaps are filled, nothing is overwritten. Where nothing
 * can be learnt of any number, saving is tried all the same, and will tell.
 */
QString nextPackagePath()
{
    constexpr int patience = 10;
    for (int n = 0, unknown = 0;; ++n) {
        QString path = crashDumpDirectory +
                       QStringLiteral("Crash Report %1").arg(QString::number(n)) + packageExtension;
        const Existence existence = existenceOf(path);
        if (existence == Existence::No)
            return path;
        if (existence == Existence::Unknown && ++unknown == patience)
            return path;
    }
}

} // namespace

void R4CrashReporterApplication::showFailure(const QString &text) const
{
    QMessageBox::critical(activeWindow(), tr("Error"), text, QMessageBox::Ok);
}

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
    const QScopedValueRollback<bool> guard(busy, true);
    PackageProgress progress(crashReportWidget);
    if (!writeDumpPackage(path, dumpFilePath, report, &progress))
        return false;
    reportUnsaved = false;
    return true;
}

bool R4CrashReporterApplication::saveCrashReport()
{
    if (busy)
        return false;
    trace(0, "Saving crash report\n");
    USBSupport *usb = USBSupport::instance();
    if (!usb->isUsbKeyPresent()) {
        showFailure(tr("Failed to detect a USB disk.  Please ensure your USB disk is "
                       "correctly inserted."));
        return false;
    }
    if (!usb->mount()) {
        showFailure(tr("Failed to mount USB disk.  Please ensure your USB disk is "
                       "correctly inserted."));
        return false;
    }
    const QString path = askForPackagePath();
    if (path.isEmpty())
        return false;
    const bool saved = createDumpPackage(path);
    usb->unmount();
    if (!saved) {
        showFailure(tr("There was a problem saving the crash report."));
        return false;
    }
    QMessageBox::information(activeWindow(), tr("Success"), tr("Crash report successfully saved."),
                             QMessageBox::Ok);
    return true;
}

/**
 * Lets the operator name a package on the mounted key; empty when the operator would not.
 * The panel's Cancel gives the mount back that saving took. A dialog that is closed any
 * other way keeps it, and the next save then finds the key mounted.
 */
QString R4CrashReporterApplication::askForPackagePath() const
{
    FileDialog dialog(activeWindow());
    dialog.setWindowTitle(tr("Save crash report"));
    FileWidget *files = dialog.fileWidget();
    files->setInternalStorageDisabled(true);
    files->setMode(FileWidget::BackupMode);
    files->setDirectory(USBSupport::instance()->mountPoint());
    files->setNameFilters(QLatin1Char('*') + packageExtension);
    if (dialog.exec() != QDialog::Accepted)
        return {};
    const QString path = files->selectedFilePath();
    return path.endsWith(packageExtension) ? path : path + packageExtension;
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
    if (busy)
        return false;
    trace(0, "Sending crash report\n");
    static const QString path = QDir::toNativeSeparators(QDir::tempPath()) + QDir::separator() +
                                QStringLiteral("crash_log.cdp");
    if (createDumpPackage(path))
        QFile::remove(path);
    else
        showFailure(
            tr("There was a problem creating a crash report package to attach to the email."));
    return false;
}
