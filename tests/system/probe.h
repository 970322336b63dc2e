#pragma once

#include <QByteArray>
#include <QFile>
#include <QString>
#include <QStringList>

#include <fcntl.h>
#include <sys/file.h>
#include <unistd.h>

/*
 * Running end_action_probe, and looking at what it left. The target that includes
 * this defines R4_END_ACTION_PROBE as the probe's path.
 */
namespace TestSupport {

inline QString probeProgram()
{
    return QStringLiteral(R4_END_ACTION_PROBE);
}

/** The command line of the probe for these actions, words separated by blanks. */
inline QStringList probe(const QString &actions)
{
    return QStringList{probeProgram()} + actions.split(' ', Qt::SkipEmptyParts);
}

inline QByteArray contentsOf(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("(cannot be read)");
}

inline bool writeFile(const QString &path, const QByteArray &contents,
                      QFile::Permissions permissions = QFile::ReadOwner | QFile::WriteOwner)
{
    QFile file(path);
    return file.open(QIODevice::WriteOnly) && file.write(contents) == contents.size() &&
           file.setPermissions(permissions);
}

/** Whether some process still holds the lock that the probe's "lock" took. */
inline bool isLocked(const QString &path)
{
    const int file = open(QFile::encodeName(path).constData(), O_RDWR | O_CLOEXEC);
    const bool locked = file >= 0 && flock(file, LOCK_EX | LOCK_NB) != 0;
    if (file >= 0)
        close(file);
    return locked;
}

} // namespace TestSupport
