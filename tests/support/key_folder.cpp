#include "support/key_folder.h"

#include <QDir>
#include <QFile>

#include <algorithm>
#include <fcntl.h>
#include <unistd.h>

namespace TestSupport {

namespace {

bool writeLines(const QString &path, const QStringList &lines)
{
    QFile file(path);
    const QByteArray bytes = lines.join('\n').toUtf8() + '\n';
    return file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size();
}

QList<QByteArray> linesOf(const QString &path)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return {};
    QList<QByteArray> lines = file.readAll().split('\n');
    lines.removeAll({});
    return lines;
}

} // namespace

KeyFolder::KeyFolder()
{
    if (!folder.isValid())
        qFatal("no folder for keys");
}

QString KeyFolder::path() const
{
    return folder.path();
}

QStringList KeyFolder::sandboxOptions() const
{
    return {QStringLiteral("--keys"), folder.path()};
}

void KeyFolder::plugBeforehand(const QStringList &nodes)
{
    if (!writeLines(folder.filePath(QStringLiteral("plugged")), nodes))
        qFatal("no key can be plugged");
}

QString KeyFolder::format(const QString &node)
{
    if (!QDir(folder.path()).mkpath(node))
        qFatal("no folder for a key");
    return folder.filePath(node);
}

void KeyFolder::letFail(const QString &node, int error)
{
    if (!writeLines(folder.filePath(node + ".errno"), {QString::number(error)}))
        qFatal("no key can be made to fail");
}

void KeyFolder::letSucceed(const QString &node)
{
    QFile::remove(folder.filePath(node + ".errno"));
}

bool KeyFolder::plug(SandboxRun &run, const QStringList &nodes) const
{
    return tell(run, "plug " + nodes.join(' ').toLatin1()) && run.waitUntil([&] {
        const QList<QByteArray> now = plugged();
        return std::all_of(nodes.begin(), nodes.end(),
                           [&](const QString &node) { return now.contains(node.toLatin1()); });
    });
}

bool KeyFolder::pull(SandboxRun &run, const QStringList &nodes) const
{
    return tell(run, "pull " + nodes.join(' ').toLatin1()) && run.waitUntil([&] {
        const QList<QByteArray> now = plugged();
        return std::none_of(nodes.begin(), nodes.end(),
                            [&](const QString &node) { return now.contains(node.toLatin1()); });
    });
}

QList<QByteArray> KeyFolder::plugged() const
{
    return linesOf(folder.filePath(QStringLiteral("plugged")));
}

QList<QByteArray> KeyFolder::calls() const
{
    return linesOf(folder.filePath(QStringLiteral("calls")));
}

QStringList KeyFolder::filesOn(const QString &node) const
{
    return filesBelow(folder.filePath(node));
}

/** The pipe cannot be opened before somebody reads it. */
bool KeyFolder::tell(SandboxRun &run, const QByteArray &line) const
{
    const QByteArray control = QFile::encodeName(folder.filePath(QStringLiteral("control")));
    int pipe = -1;
    const bool isOpen = run.waitUntil([&] {
        pipe = open(control.constData(), O_WRONLY | O_NONBLOCK | O_CLOEXEC);
        return pipe >= 0;
    });
    if (!isOpen)
        return false;
    const QByteArray bytes = line + '\n';
    const bool told = write(pipe, bytes.constData(), size_t(bytes.size())) == bytes.size();
    close(pipe);
    return told;
}

QStringList withKeyStandIn()
{
    return {QStringLiteral("env"),
            QStringLiteral("LD_PRELOAD=" R4_BUILD_FOLDER "/lib/key_stand_in.so")};
}

} // namespace TestSupport
