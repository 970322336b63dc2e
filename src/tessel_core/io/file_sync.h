#pragma once

class QFile;
class QString;

namespace Tessel {

/**
 * Writes an open file through to its medium. False when its buffer or the kernel
 * could not (errno says why); a file system that cannot sync at all (EINVAL)
 * counts as synced.
 */
bool syncFile(QFile &file);

/**
 * Does the same for a directory's entries, so that a file just made in it is
 * found after a power cut. Follows the same rule; false also when the directory
 * cannot be opened.
 */
bool syncDirectory(const QString &path);

} // namespace Tessel
