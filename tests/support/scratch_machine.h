#pragma once

#include <QByteArray>
#include <QString>

#include <functional>

namespace TestSupport {

/*
 * The disks of the sandbox's machine: its "/dev" and "/sys" are folders of a scratch root.
 * Nothing here works, or may, on a machine that is somebody's.
 */

/** Whether this is the sandbox; check it before anything else. */
bool onScratchMachine();

/** No disk: no node of one in "/dev", nothing in "/sys". */
void removeAllDisks();

/** A node appears in "/dev", or goes. */
void addNode(const QString &name);
void removeNode(const QString &name);

/**
 * The kernel's folder of a disk: "/sys/block/DISK/device" links to it. Gives its
 * canonical path.
 */
QByteArray addDiskFolder(const QString &disk);

/** A key with a partition: sdb and sdb1, and the kernel's folder. */
void addKeyWithPartition();

/** Removes all that is in a folder, hidden files and dead links too; a link's target stays. */
void emptyFolder(const QString &folder);

/**
 * Waits until `condition` holds, with the event loop standing still; false when it does
 * not come true within five seconds.
 */
bool waitWithoutEvents(const std::function<bool()> &condition);

} // namespace TestSupport
