#pragma once

#include <QImage>
#include <QString>

namespace TestSupport {

/** Where reference images are and where the files about a mismatch go. */
struct GoldenFolders
{
    QString references;
    QString failures;
};

/** tests/golden, and "golden" in the build folder. */
GoldenFolders goldenFolders();

/**
 * Compares `actual` with the reference "<name>.png"; `name` may hold folders. An
 * empty text means alike, any other says what is wrong: no reference, another size,
 * or pixels of which a channel is off by more than the rounding of another machine's
 * arithmetic. Then "<name>_actual.png", "<name>_expected.png" and
 * "<name>_difference.png" (differing pixels white on black) are left in the folder
 * for failures.
 *
 * With R4_RENEW_GOLDEN set in the environment the reference is written instead, and
 * the text says so: a run that renews never passes.
 */
QString compareWithGolden(const QString &name, const QImage &actual,
                          const GoldenFolders &folders = goldenFolders());

} // namespace TestSupport
