#include "fuzz/scratch_folder.h"

#include "fuzz/require.h"

#include <QDir>
#include <QDirIterator>
#include <QFile>

#include <csignal>
#include <sys/resource.h>

namespace {

/** A few bytes may claim to be a file of any size: no more of it is to be had than this. */
void limitFiles()
{
    constexpr rlim_t bytes = 64U << 20U;
    const rlimit limit = {bytes, bytes};
    setrlimit(RLIMIT_FSIZE, &limit);
    std::signal(SIGXFSZ, SIG_IGN);
}

FoundEntry entryAt(const QString &path)
{
    constexpr qint64 mostContent = 64 << 10;
    FoundEntry entry;
    struct stat status = {};
    require(lstat(QFile::encodeName(path).constData(), &status) == 0, "the entry can be looked at");
    entry.mode = status.st_mode;
    QFile file(path);
    if (S_ISREG(status.st_mode) && file.open(QIODevice::ReadOnly))
        entry.content = file.read(mostContent);
    return entry;
}

} // namespace

ScratchFolder::ScratchFolder()
    : inside(outside.filePath(QStringLiteral("inside")))
{
    require(outside.isValid(), "there is a place for scratch files");
    limitFiles();
    renew();
}

void ScratchFolder::renew()
{
    require(QDir(inside).removeRecursively() && QDir().mkdir(inside), "the folder can be emptied");
}

FoundEntries ScratchFolder::entries() const
{
    FoundEntries found;
    QDirIterator walk(inside, QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot,
                      QDirIterator::Subdirectories);
    while (walk.hasNext()) {
        const QString path = walk.next();
        found.insert(path.mid(inside.size() + 1), entryAt(path));
    }
    return found;
}

bool ScratchFolder::isAlone() const
{
    return QDir(outside.path())
               .entryList(QDir::AllEntries | QDir::System | QDir::Hidden | QDir::NoDotAndDotDot) ==
           QStringList(QStringLiteral("inside"));
}
