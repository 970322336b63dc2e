#pragma once

#include "tessel_core/version.h"

#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <type_traits>

namespace Tessel {

/**
 * The block of shared memory through which the appliance's main application
 * leaves facts about itself. A wire format between two processes: every offset
 * is fixed, integers are little-endian, texts are Latin-1 up to their zero byte.
 */
struct SharedClientInfo
{
    char serialNumber[64];
    quint8 deviceType;
    Version version;
    char logFilePath[256];
    quint8 reserved[3];
    /** Above 0: count down, then save and restart. 0: see below. Below 0: no countdown. */
    qint32 autoActionSeconds;
    /** Looked at only while autoActionSeconds is 0: non-zero means nobody is watching. */
    quint8 unattendedRestart;
    quint8 reservedTail[3];
};

static_assert(std::is_standard_layout_v<SharedClientInfo>);
static_assert(offsetof(SharedClientInfo, deviceType) == 64);
static_assert(offsetof(SharedClientInfo, version) == 65);
static_assert(offsetof(SharedClientInfo, logFilePath) == 69);
static_assert(offsetof(SharedClientInfo, autoActionSeconds) == 328);
static_assert(offsetof(SharedClientInfo, unattendedRestart) == 332);
static_assert(sizeof(SharedClientInfo) == 336);
static_assert(Q_BYTE_ORDER == Q_LITTLE_ENDIAN, "the appliance's block is little-endian");

constexpr int sharedClientInfoSize = sizeof(SharedClientInfo);

/** Key of the block, as QSharedMemory takes it; Qt derives the native key from it. */
constexpr char sharedClientInfoKey[] = "TovaskZelSMKey";

/**
 * The block, or null when it can be neither made nor attached (said through
 * qDebug). The first call decides the key for the whole process; a block that
 * nobody has made yet is made, all zero. It stays attached until the process
 * ends and is read without a lock: the writer has finished before it starts us.
 * GUI thread.
 */
SharedClientInfo *sharedClientInfo(int size = sharedClientInfoSize,
                                   const char *key = sharedClientInfoKey);

/** The serial number; the whole field when the writer left no zero byte in it. */
QString serialNumber(const SharedClientInfo &info);

/** The log file's path, bounded likewise; empty when there is none. */
QString logFilePath(const SharedClientInfo &info);

} // namespace Tessel
