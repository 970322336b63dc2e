#pragma once

#include <QDateTime>
#include <QString>
#include <QStringList>

class QIODevice;

/** What the crashed main application says about its crash. */
struct CrashData
{
    /** Absolute path of the crash dump file. */
    QString dumpFilePath;
    QDateTime crashTime;
    /** The main application's last output lines, oldest first. */
    QStringList outputLog;
};

/**
 * Reads the crash data file's three values from an open device, in the stream
 * version and byte order of Qt 5.15's defaults. Never fails: a field that cannot
 * be read stays null, those before it keep their values, and a list that breaks
 * off is empty as a whole. Takes no more memory than a small multiple of what
 * the device really holds, whatever sizes the bytes claim.
 */
CrashData readCrashData(QIODevice &device);
