// Names that operators type or paste into the file panel: whatever they are, the path
// that comes of them is that of one entry of the folder shown, with an extension of the
// filters.
//
// An input is 1 byte, the number of the filters; for each of them 1 byte, the size of
// its text, and the text in UTF-8; and the name, UTF-16 in big-endian order.

#include "common/file_names.h"
#include "fuzz/input_bytes.h"
#include "fuzz/require.h"

#include <cstddef>
#include <cstdint>

#include <algorithm>
#include <vector>

namespace {

constexpr int mostFilters = 4;

struct Input
{
    QStringList filters;
    QString name;
};

Input inputFrom(InputBytes bytes)
{
    Input input;
    for (int left = bytes.takeByte() % (mostFilters + 1); left > 0; --left) {
        // An application chooses them: patterns for names, which hold no separator.
        const QString filter = QString::fromUtf8(bytes.take(bytes.takeByte()));
        input.filters += filter.split(QLatin1Char('/')).join(QLatin1Char('-'));
    }
    input.name = utf16From(bytes.takeRest());
    return input;
}

/** What the kernel makes of a path: the folders on the way to the entry, and the entry. */
std::vector<QString> walk(const QString &path)
{
    std::vector<QString> entries;
    for (const QString &part : path.split(QLatin1Char('/'), Qt::SkipEmptyParts)) {
        if (part == QStringLiteral("..") && !entries.empty())
            entries.pop_back();
        else if (part != QStringLiteral("."))
            entries.push_back(part);
    }
    return entries;
}

QString withoutThem(const QString &name)
{
    QString kept;
    std::copy_if(name.begin(), name.end(), std::back_inserter(kept),
                 [](QChar c) { return c != '/' && c != QChar(0); });
    return kept;
}

/** The part of a filter from its last dot on; null without one. */
QString ending(const QString &filter)
{
    const QStringList parts = filter.split(QLatin1Char('.'));
    return parts.size() < 2 ? QString() : '.' + parts.last();
}

/** What may follow the path typed: nothing if an ending is there, else the first ending. */
QString missingEnding(const QString &path, const QStringList &filters)
{
    QStringList endings;
    for (const QString &filter : filters)
        endings += ending(filter);
    endings.removeAll(QString());
    const bool isThere = std::any_of(endings.begin(), endings.end(), [&](const QString &text) {
        return path.rightRef(text.size()) == text;
    });
    return isThere ? QString() : endings.value(0);
}

void checkPath(const QString &folder, const QString &name, const QStringList &filters)
{
    const QString path = pathOfName(folder, name);
    const bool isNoName =
        name.isEmpty() || name == QStringLiteral(".") || name == QStringLiteral("..");
    require(path.isEmpty() == isNoName, "what names no entry has no path");
    if (isNoName)
        return;
    std::vector<QString> expected = walk(folder);
    expected.push_back(name);
    require(walk(path) == expected, "the path is that of an entry of the folder");

    const QString chosen = withExtension(path, filters);
    expected.back() = name + missingEnding(path, filters);
    require(walk(chosen) == expected, "with its extension it is one of the same folder");
    require(withExtension(chosen, filters) == chosen, "an extension is added once");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    const Input input = inputFrom({data, size});
    const QString name = withoutSeparators(input.name);
    require(name == withoutThem(input.name), "nothing but separators and zeros is taken out");
    for (const char *folder : {"/usbkey", "/usbkey/a folder.cdp", "/"})
        checkPath(QString::fromLatin1(folder), name, input.filters);
    return 0;
}
