#pragma once

#include "crash_reporter/crash_report_writer.h"

#include <QString>

class PackageProgress;

/**
 * Builds a crash dump package at `path`, replacing any file there: a gzip'd tar
 * of the dump file, the report document as "report.xml" and, when it exists, the
 * log file that `report.clientInfo` (not null) names.
 *
 * True once the archive could be opened and what was written of it is on the
 * medium, synced with its directory. Entries that could not be added do not make
 * it false: a package with what could be had beats none.
 * False with nothing touched when the dump file does not exist or no temporary
 * file can be made (said through qDebug); false with no file left at `path` when
 * it cannot be opened for writing; false with the file left as far as it got
 * when the medium would not take it.
 *
 * `progress`, which may be null, is told of every step, and may turn the event loop.
 */
bool writeDumpPackage(const QString &path, const QString &dumpFilePath,
                      const CrashReportData &report, PackageProgress *progress = nullptr);
