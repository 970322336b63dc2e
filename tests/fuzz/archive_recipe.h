#pragma once

#include "fuzz/input_bytes.h"
#include "tessel_core/io/file_archive.h"

#include <QByteArray>

#include <vector>

/** One entry of an archive to be made, as a hostile writer may choose it. */
struct RecipeEntry
{
    unsigned int type = 0; ///< AE_IFREG and its like; 0 for a hard link
    unsigned int permissions = 0;
    QByteArray name;
    QByteArray data; ///< of a regular file; the target of a link
};

struct ArchiveRecipe
{
    Tessel::FileArchive::Format format = Tessel::FileArchive::Format::TarGzip;
    std::vector<RecipeEntry> entries;
};

/**
 * 1 byte, whose low two bits are the format, and for each entry: 1 byte type, 1 byte
 * permissions, the name after 1 byte with its size, one byte a letter of a small
 * alphabet, and the data after 1 byte with its size.
 */
ArchiveRecipe recipeFrom(InputBytes bytes);

/**
 * The archive, by the library's own writer, which asks no questions about names. Entries
 * that the format cannot carry are taken out of the recipe; the rest is put into the
 * order in which the archive holds them.
 */
QByteArray cook(ArchiveRecipe &recipe);
