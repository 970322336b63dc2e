#pragma once

#include <QByteArray>
#include <QMap>
#include <QString>
#include <QTemporaryDir>

#include <sys/stat.h>

/** What a folder holds, by path below it: nothing of it is looked at through a link. */
struct FoundEntry
{
    mode_t mode = 0;
    /** Of a regular file. */
    QByteArray content;
};
using FoundEntries = QMap<QString, FoundEntry>;

/** A folder to extract into, in a folder of its own that nothing else may appear in. */
class ScratchFolder
{
public:
    ScratchFolder();

    /** Empty and there, whatever was in it before. */
    void renew();
    const QString &path() const { return inside; }
    FoundEntries entries() const;
    /** Whether nothing lies beside the folder. */
    bool isAlone() const;

private:
    QTemporaryDir outside;
    QString inside;
};
