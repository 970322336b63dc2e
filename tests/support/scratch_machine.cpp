#include "scratch_machine.h"

#include <QDir>
#include <QElapsedTimer>
#include <QFile>
#include <QFileInfo>
#include <QThread>

namespace TestSupport {

namespace {

const QString devices = QStringLiteral("/dev/");

void requireScratchMachine()
{
    if (!onScratchMachine())
        qFatal("this machine's disks are not the test's");
}

} // namespace

bool onScratchMachine()
{
    return qEnvironmentVariableIsSet("R4_SANDBOX") && !QFileInfo::exists("/sys/kernel");
}

void removeAllDisks()
{
    requireScratchMachine();
    QDir folder(devices);
    const QStringList nodes = folder.entryList({QStringLiteral("sd*"), QStringLiteral("hd*")},
                                               QDir::Files | QDir::System);
    for (const QString &node : nodes)
        folder.remove(node);
    QDir(QStringLiteral("/sys/block")).removeRecursively();
    QDir(QStringLiteral("/sys/devices")).removeRecursively();
}

void addNode(const QString &name)
{
    requireScratchMachine();
    QFile node(devices + name);
    if (!node.open(QIODevice::WriteOnly))
        qFatal("no node %s", qPrintable(node.fileName()));
}

void removeNode(const QString &name)
{
    requireScratchMachine();
    if (!QFile::remove(devices + name))
        qFatal("no node %s to remove", qPrintable(name));
}

QByteArray addDiskFolder(const QString &disk)
{
    requireScratchMachine();
    const QString folder = QStringLiteral("/sys/devices/host0/") + disk;
    const QString block = QStringLiteral("/sys/block/") + disk;
    if (!QDir().mkpath(folder) || !QDir().mkpath(block) ||
        !QFile::link(folder, block + QStringLiteral("/device")))
        qFatal("no folder for %s", qPrintable(disk));
    return QFile::encodeName(folder);
}

void addKeyWithPartition()
{
    const QString disk = QStringLiteral("sdb");
    addNode(disk);
    addNode(disk + QLatin1Char('1'));
    addDiskFolder(disk);
}

void emptyFolder(const QString &folder)
{
    requireScratchMachine();
    const QDir::Filters all = QDir::AllEntries | QDir::Hidden | QDir::System | QDir::NoDotAndDotDot;
    for (const QFileInfo &entry : QDir(folder).entryInfoList(all)) {
        if (entry.isDir() && !entry.isSymLink())
            QDir(entry.filePath()).removeRecursively();
        else
            QFile::remove(entry.filePath());
    }
}

bool waitWithoutEvents(const std::function<bool()> &condition)
{
    constexpr int patience = 5000;
    QElapsedTimer waiting;
    waiting.start();
    while (!condition()) {
        if (waiting.hasExpired(patience))
            return false;
        QThread::yieldCurrentThread();
    }
    return true;
}

} // namespace TestSupport
