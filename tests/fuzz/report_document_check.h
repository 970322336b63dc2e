#pragma once

#include "crash_reporter/crash_report_writer.h"

#include <QByteArray>

/**
 * Requires that `document` is well-formed XML 1.0 to a reader that is not ours,
 * has exactly the elements a report document has, in their order, and says what
 * `report` says, as far as XML can carry it.
 */
void checkReportDocument(const QByteArray &document, const CrashReportData &report);
