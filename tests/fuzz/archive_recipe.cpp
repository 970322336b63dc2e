#include "fuzz/archive_recipe.h"

#include "fuzz/require.h"

#include <archive.h>
#include <archive_entry.h>

#include <algorithm>
#include <array>
#include <memory>

#include <sys/stat.h>

using Tessel::FileArchive;
using Format = FileArchive::Format;

namespace {

constexpr unsigned int hardLink = 0;
constexpr std::size_t mostEntries = 12;
constexpr std::size_t longestName = 100;

struct WriterRelease
{
    void operator()(struct archive *handle) const { archive_write_free(handle); }
};
using Writer = std::unique_ptr<struct archive, WriterRelease>;

struct EntryRelease
{
    void operator()(struct archive_entry *entry) const { archive_entry_free(entry); }
};
using Entry = std::unique_ptr<struct archive_entry, EntryRelease>;

bool isTar(Format format)
{
    return format == Format::Tar || format == Format::TarGzip;
}

/** Whether the entry survives in the archive, and at a place that is known beforehand. */
bool canCarry(const ArchiveRecipe &recipe, const RecipeEntry &entry)
{
    // SevenZip sorts its folders by name, and keeps one of each.
    const bool anotherFolder =
        std::any_of(recipe.entries.begin(), recipe.entries.end(),
                    [](const RecipeEntry &earlier) { return earlier.type == AE_IFDIR; });
    if (entry.type == AE_IFDIR)
        return recipe.format != Format::SevenZip || !anotherFolder;
    return entry.type == AE_IFREG || isTar(recipe.format);
}

/** Few letters, so that names meet each other; dots and separators are what it is about. */
QByteArray nameFrom(const QByteArray &bytes)
{
    constexpr std::array<char, 8> letters = {'a', 'b', '.', '/', ' ', 'A', '.', '/'};
    QByteArray name;
    for (const char byte : bytes)
        name += letters[static_cast<unsigned char>(byte) % letters.size()];
    return name.isEmpty() ? QByteArray("a") : name;
}

RecipeEntry entryFrom(InputBytes &bytes)
{
    constexpr std::array<unsigned int, 8> types = {AE_IFREG, AE_IFREG, AE_IFREG, AE_IFDIR,
                                                   AE_IFDIR, AE_IFLNK, AE_IFIFO, hardLink};
    RecipeEntry entry;
    entry.type = types[bytes.takeByte() % types.size()];
    // Always for the owner to read and write: whoever tries need not be root.
    const unsigned int bits = bytes.takeByte();
    entry.permissions = S_IRUSR | S_IWUSR | (bits & 0177U) | ((bits & 0x80U) != 0 ? S_ISUID : 0);
    entry.name = nameFrom(bytes.take(std::min<std::size_t>(bytes.takeByte(), longestName)));
    // A file called so would be taken for a folder by some formats.
    if (entry.type != AE_IFDIR && entry.name.endsWith('/'))
        entry.name += 'a';
    entry.data = bytes.take(bytes.takeByte());
    return entry;
}

/** Uncompressed where the format lets us: setting a compressor up takes longest of all. */
void setFormat(struct archive *handle, Format format)
{
    if (format == Format::TarGzip) {
        archive_write_add_filter_gzip(handle);
        archive_write_set_filter_option(handle, "gzip", "compression-level", "1");
    }
    if (isTar(format))
        archive_write_set_format_gnutar(handle);
    else if (format == Format::Zip)
        archive_write_set_format_zip(handle);
    else
        archive_write_set_format_7zip(handle);
    archive_write_set_format_option(handle, nullptr, "compression", "store");
}

Entry header(const RecipeEntry &recipe)
{
    Entry entry(archive_entry_new());
    archive_entry_set_pathname(entry.get(), recipe.name.constData());
    archive_entry_set_filetype(entry.get(), recipe.type == hardLink ? AE_IFREG : recipe.type);
    archive_entry_set_perm(entry.get(), recipe.permissions);
    archive_entry_set_size(entry.get(), recipe.type == AE_IFREG ? recipe.data.size() : 0);
    const QByteArray target = recipe.data.isEmpty() ? QByteArray("/") : recipe.data;
    if (recipe.type == AE_IFLNK)
        archive_entry_set_symlink(entry.get(), target.constData());
    if (recipe.type == hardLink)
        archive_entry_set_hardlink(entry.get(), target.constData());
    return entry;
}

/** False when the format does not know such entries. */
bool add(struct archive *handle, const RecipeEntry &entry)
{
    if (archive_write_header(handle, header(entry).get()) != ARCHIVE_OK)
        return false;
    if (entry.type == AE_IFREG && !entry.data.isEmpty())
        require(archive_write_data(handle, entry.data.constData(),
                                   static_cast<std::size_t>(entry.data.size())) ==
                    entry.data.size(),
                "the writer takes the data");
    return true;
}

/** The format keeps what has data, empty files and folders apart, in this order. */
int placeInSevenZip(const RecipeEntry &entry)
{
    const int place = entry.data.isEmpty() ? 1 : 0;
    return entry.type == AE_IFDIR ? 2 : place;
}

} // namespace

ArchiveRecipe recipeFrom(InputBytes bytes)
{
    ArchiveRecipe recipe;
    recipe.format = static_cast<Format>(bytes.takeByte() & 0x03U);
    while (!bytes.isEmpty() && recipe.entries.size() < mostEntries) {
        const RecipeEntry entry = entryFrom(bytes);
        if (canCarry(recipe, entry))
            recipe.entries.push_back(entry);
    }
    return recipe;
}

QByteArray cook(ArchiveRecipe &recipe)
{
    constexpr int room = 64 << 10;
    QByteArray archive(room, '\0');
    std::size_t used = 0;
    const Writer writer(archive_write_new());
    setFormat(writer.get(), recipe.format);
    archive_write_set_bytes_in_last_block(writer.get(), 1);
    archive_write_open_memory(writer.get(), archive.data(), room, &used);
    auto &entries = recipe.entries;
    const auto refused = [&writer](const RecipeEntry &entry) { return !add(writer.get(), entry); };
    entries.erase(std::remove_if(entries.begin(), entries.end(), refused), entries.end());
    require(archive_write_close(writer.get()) == ARCHIVE_OK, "the archive is written");
    archive.truncate(static_cast<int>(used));
    if (recipe.format == Format::SevenZip)
        std::stable_sort(entries.begin(), entries.end(), [](const auto &one, const auto &other) {
            return placeInSevenZip(one) < placeInSevenZip(other);
        });
    return archive;
}
