#include "support/reporter_process.h"

#include <QDir>
#include <QFile>

#include <sys/stat.h>
#include <sys/syscall.h>

namespace TestSupport {
namespace {

QByteArray contents(const QString &path)
{
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/** The first word of /proc/PID/syscall is the call's number, or "running". */
bool sleepsInPoll(const QString &process)
{
    const QByteArray call = contents(process + QStringLiteral("/syscall")).split(' ').first();
    return call == QByteArray::number(SYS_poll) || call == QByteArray::number(SYS_ppoll);
}

/** By what it is: the path of a program in another mount namespace is no help. */
bool isSameFile(const QString &one, const QString &other)
{
    struct stat first
    {};
    struct stat second
    {};
    return stat(QFile::encodeName(one).constData(), &first) == 0 &&
           stat(QFile::encodeName(other).constData(), &second) == 0 &&
           first.st_dev == second.st_dev && first.st_ino == second.st_ino;
}

} // namespace

bool isWaitingForEvents(const QString &program, const QByteArray &variable)
{
    const QDir proc(QStringLiteral("/proc"));
    const QStringList processes =
        proc.entryList({QStringLiteral("[0-9]*")}, QDir::Dirs | QDir::NoDotAndDotDot);
    for (const QString &id : processes) {
        const QString process = proc.filePath(id);
        if (isSameFile(process + QStringLiteral("/exe"), program) &&
            contents(process + QStringLiteral("/environ")).split('\0').contains(variable))
            return sleepsInPoll(process);
    }
    return false;
}

} // namespace TestSupport
