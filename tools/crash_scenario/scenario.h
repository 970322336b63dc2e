#pragma once

#include "tessel_core/shared_client_info.h"

#include <QByteArray>
#include <QDataStream>
#include <QDateTime>
#include <QString>
#include <QStringList>

#include <optional>

/*
 * What one run of crash_scenario is to do, as plain values: the command line is
 * turned into these once and nothing else looks at it.
 */
namespace CrashScenario {

/** The crash data file: three values of a stream, and the ways to spoil them. */
struct CrashData
{
    QString dumpFilePath;
    QDateTime crashTime;
    QStringList outputLog;

    int streamVersion = QDataStream::Qt_5_15;
    QDataStream::ByteOrder byteOrder = QDataStream::BigEndian;
    /** Written in place of the path's true byte count. */
    std::optional<quint32> falsePathLength;
    /** Written in place of the true number of output lines. */
    std::optional<quint32> falseListCount;

    /** The whole file, in place of everything above. */
    std::optional<QByteArray> raw;
    /** How many bytes of the file are kept. */
    std::optional<int> truncateTo;
};

/** The shared block: its named fields, or any bytes at all. */
struct Block
{
    QByteArray serialNumber;
    /** Fills the serial number's field to its last byte: there is no zero byte in it. */
    bool serialUnterminated = false;
    quint8 deviceType = 0;
    Tessel::Version version = {};
    QByteArray logFilePath;
    qint32 autoActionSeconds = 0;
    bool unattendedRestart = false;

    /** Bytes from the start of the block, in place of the fields above. */
    std::optional<QByteArray> raw;
    /** What the bytes after `raw` hold; given alone, it is the whole block. */
    std::optional<quint8> fill;
    int size = Tessel::sharedClientInfoSize;
};

/** The program to start, the reporter mostly. */
struct Command
{
    /** Program and arguments; empty when nothing is to be started. */
    QStringList words;
    bool appendCrashFile = true;
};

struct Scenario
{
    CrashData crashData;
    /** Where to write the crash data; empty: a new file in the temporary folder. */
    QString crashFile;
    /** None: the block is left alone, as by an application that died too early. */
    std::optional<Block> block;
    Command command;
    bool crash = false;
};

} // namespace CrashScenario
