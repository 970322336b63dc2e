#pragma once

#include "support/sandbox_run.h"

#include <QByteArray>
#include <QList>
#include <QString>
#include <QStringList>
#include <QTemporaryDir>

/*
 * The folder behind the sandbox's "--keys", and hands that plug keys in and pull them
 * out. Needs no event loop. One thread.
 */
namespace TestSupport {

class KeyFolder
{
public:
    KeyFolder();

    QString path() const;

    /** What a SandboxRun is to be made with. */
    QStringList sandboxOptions() const;

    /** Makes these nodes be there from the start; only before it. */
    void plugBeforehand(const QStringList &nodes);

    /** Puts an empty file system on that node, whether or not it is there; its folder. */
    QString format(const QString &node);

    /** Lets mounting that node fail, or unmounting the key when it is "umount". */
    void letFail(const QString &node, int error);
    void letSucceed(const QString &node);

    /** Plugs, or pulls, these nodes one after the other, and waits until it is done. */
    bool plug(SandboxRun &run, const QStringList &nodes) const;
    bool pull(SandboxRun &run, const QStringList &nodes) const;

    /** The nodes that are there, in the order in which they came. */
    QList<QByteArray> plugged() const;

    /** Every call about a key so far, as the stand-in for vfat tells it. */
    QList<QByteArray> calls() const;

    /** What is on the key with that node: sorted paths, as in SandboxResult. */
    QStringList filesOn(const QString &node) const;

private:
    bool tell(SandboxRun &run, const QByteArray &line) const;

    QTemporaryDir folder;
};

/** Words in front of a command that make it see folders where it mounts keys. */
QStringList withKeyStandIn();

} // namespace TestSupport
