// Archives whose writer chose the names of their entries freely: extracting one makes
// exactly the files and folders that the rules give, and ends at the first that would
// leave the folder or that stands in the way of another.
//
// An input is a recipe for an archive, see archive_recipe.h.

#include "fuzz/archive_recipe.h"
#include "fuzz/require.h"
#include "fuzz/scratch_folder.h"
#include "fuzz/write_guard.h"

#include <archive_entry.h>

#include <QBuffer>

#include <optional>

using namespace Tessel;

namespace {

/** The folder as it should look, by path: folders have no content and mode 0. */
class ExpectedFolder
{
public:
    /** False when the extraction ends at this entry. */
    bool extract(const RecipeEntry &entry)
    {
        if (entry.type != AE_IFREG && entry.type != AE_IFDIR)
            return true;
        const auto place = placeOf(QString::fromUtf8(entry.name));
        return place && (entry.type == AE_IFDIR ? makeFolder(*place) : makeFile(*place, entry));
    }

    const QMap<QString, std::optional<RecipeEntry>> &entries() const { return nodes; }

private:
    /** The names on the way down; none where the way leads out of the folder. */
    static std::optional<QStringList> placeOf(const QString &name)
    {
        if (name.startsWith(QLatin1Char('/')))
            return std::nullopt;
        QStringList place;
        for (const QString &step : name.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
            if (step == QStringLiteral("..")) {
                if (place.isEmpty())
                    return std::nullopt;
                place.removeLast();
            } else if (step != QStringLiteral(".")) {
                place.append(step);
            }
        }
        return place;
    }

    bool makeFolder(const QStringList &place)
    {
        const auto pathAt = [&place](int depth) {
            return QStringList(place.mid(0, depth)).join(QLatin1Char('/'));
        };
        for (int depth = 1; depth <= place.size(); ++depth) {
            if (nodes.value(pathAt(depth)))
                return false;
        }
        for (int depth = 1; depth <= place.size(); ++depth)
            nodes.insert(pathAt(depth), std::nullopt);
        return true;
    }

    bool makeFile(const QStringList &place, const RecipeEntry &entry)
    {
        const QString path = place.join(QLatin1Char('/'));
        const bool isFolder = place.isEmpty() || (nodes.contains(path) && !nodes.value(path));
        if (isFolder || !makeFolder(place.mid(0, place.size() - 1)))
            return false;
        nodes.insert(path, entry);
        return true;
    }

    QMap<QString, std::optional<RecipeEntry>> nodes;
};

void requireSame(const FoundEntry &found, const std::optional<RecipeEntry> &expected)
{
    require(expected ? S_ISREG(found.mode) : S_ISDIR(found.mode), "a file is one, a folder one");
    if (!expected)
        return;
    require(found.content == expected->data, "a file holds what the archive holds of it");
    require((found.mode & 07777U) == (expected->permissions & 0777U),
            "a file has the permissions it came with, and no more");
}

bool extract(QByteArray archiveBytes, FileArchive::Format format, const ScratchFolder &scratch)
{
    QBuffer device(&archiveBytes);
    device.open(QIODevice::ReadOnly);
    FileArchive archive;
    require(archive.open(FileArchive::OpenMode::Read, &device, format), "the archive is one");
    const WriteGuard guard(scratch.path().toLocal8Bit());
    return archive.extractAll(scratch.path());
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    static ScratchFolder scratch;
    ArchiveRecipe recipe = recipeFrom({data, size});
    if (recipe.entries.empty())
        return 0;
    const QByteArray archive = cook(recipe);
    ExpectedFolder expected;
    bool complete = true;
    for (const RecipeEntry &entry : recipe.entries)
        complete = complete && expected.extract(entry);

    require(extract(archive, recipe.format, scratch) == complete,
            "an extraction succeeds when every entry has its place");
    require(scratch.isAlone(), "nothing lies beside the folder");
    const FoundEntries found = scratch.entries();
    require(found.keys() == expected.entries().keys(), "what is there has its place there");
    for (auto entry = found.begin(); entry != found.end(); ++entry)
        requireSame(*entry, expected.entries().value(entry.key()));
    scratch.renew();
    return 0;
}
