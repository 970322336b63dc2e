#pragma once

#include <QtGlobal>

namespace Tessel {

/**
 * What an archive tells, and asks, whoever shows its progress.
 *
 * Called on the thread that works on the archive, in the middle of its work: an
 * implementation may repaint a window, but must not touch the archive itself,
 * and must not throw.
 */
class ArchiveProgress
{
public:
    virtual ~ArchiveProgress() = default;

    /**
     * One step: another chunk of a file, of at most 8192 bytes, is in the archive.
     * `payloadBytesDone` counts the file bytes put into the archive since it was
     * opened, this chunk included; it never goes back, so against the summed
     * sizes of the files to come it is "bytes done of bytes in all".
     */
    virtual void advance(quint64 payloadBytesDone) = 0;

    /** Asked once before each entry is extracted; false ends the extraction as a failure. */
    virtual bool mayContinue() { return true; }
};

} // namespace Tessel
