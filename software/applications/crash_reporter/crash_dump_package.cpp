#include "crash_reporter/crash_dump_package.h"

#include "crash_reporter/package_progress.h"
#include "tessel_core/io/file_archive.h"
#include "tessel_core/io/file_sync.h"
#include "tessel_core/io/write_behind_file.h"

#include <QFile>
#include <QFileInfo>
#include <QStringList>
#include <QTemporaryFile>

using namespace Tessel;

namespace {

bool writeReport(QTemporaryFile &file, const CrashReportData &report)
{
    if (!file.open())
        return false;
    CrashReportWriter().write(&file, report);
    file.flush();
    file.close();
    return true;
}

/**
 * The results of the additions are not examined: service would rather have a
 * package that lacks an entry than none.
 */
void addEntries(FileArchive &archive, const QString &dumpFilePath, const QString &reportPath,
                const QString &logPath)
{
    const QFileInfo dump(dumpFilePath);
    archive.addFile(dump.absoluteFilePath(), dump.fileName());
    archive.addFile(reportPath, QStringLiteral("report.xml"));
    const QFileInfo log(logPath);
    if (log.exists())
        archive.addFile(log.absoluteFilePath(), log.fileName());
}

/** Of the files as they are now; one that is missing has none. */
quint64 bytesOf(const QStringList &paths)
{
    quint64 sum = 0;
    for (const QString &path : paths)
        sum += quint64(QFileInfo(path).size());
    return sum;
}

} // namespace

bool writeDumpPackage(const QString &path, const QString &dumpFilePath,
                      const CrashReportData &report, PackageProgress *progress)
{
    if (!QFileInfo(dumpFilePath).exists()) {
        qDebug("Error: dump file not found");
        return false;
    }
    QTemporaryFile reportFile;
    if (!writeReport(reportFile, report)) {
        qDebug("Error: cannot create temporary file");
        return false;
    }

    QFile::remove(path);
    WriteBehindFile output(path);
    FileArchive archive;
    if (!output.open(QIODevice::WriteOnly | QIODevice::Unbuffered) ||
        !archive.open(FileArchive::OpenMode::Write, &output, FileArchive::Format::TarGzip)) {
        QFile::remove(path);
        return false;
    }
    const QString logPath = logFilePath(*report.clientInfo);
    if (progress)
        progress->setBytesInAll(bytesOf({dumpFilePath, reportFile.fileName(), logPath}));
    archive.setProgress(progress);
    addEntries(archive, dumpFilePath, reportFile.fileName(), logPath);

    // The reboot that follows does not write back what the kernel still holds.
    const bool complete = archive.close();
    return syncFile(output) && syncDirectory(QFileInfo(path).absolutePath()) && complete;
}
