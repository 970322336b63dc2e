// Version numbers: what texts are read as, what patterns make of them, and that the
// forms agree with each other.
//
// An input is 4 bytes, a version in the order of its fields, and a text in UTF-8 that
// serves as version text, as pattern and as serialised form.

#include "fuzz/input_bytes.h"
#include "fuzz/require.h"
#include "tessel_core/version.h"

#include <cstddef>
#include <cstdint>
#include <limits>
#include <optional>

using namespace Tessel;

namespace {

/** Reads a version text letter by letter, where the product has one regular expression. */
class Scanner
{
public:
    explicit Scanner(const QString &versionText)
        : text(versionText)
    {}

    bool isAtEnd() const { return position == text.size(); }

    bool skip(const QString &word)
    {
        if (text.midRef(position, word.size()) != word)
            return false;
        position += word.size();
        return true;
    }

    /** The value of one or more digits, of any script; none where there is no digit. */
    std::optional<quint32> number()
    {
        const int start = position;
        quint64 value = 0;
        bool countsAsZero = false;
        for (; position < text.size() && text[position].isDigit(); ++position) {
            const int digit = text[position].unicode() - '0';
            countsAsZero |= digit > 9;
            value = value * 10 + static_cast<quint64>(countsAsZero ? 0 : digit);
            countsAsZero |= value > std::numeric_limits<quint32>::max();
        }
        if (position == start)
            return std::nullopt;
        return countsAsZero ? 0 : static_cast<quint32>(value);
    }

    void goTo(int place) { position = place; }
    int place() const { return position; }

private:
    const QString &text;
    int position = 0;
};

struct Build
{
    quint32 kind = 0;
    quint32 number = 0;
};

std::optional<Build> scanBuild(Scanner &scanner)
{
    if (!scanner.skip(QStringLiteral(".")) && !scanner.skip(QStringLiteral(" ")))
        return std::nullopt;
    quint32 kind = 0;
    if (scanner.skip(QStringLiteral("RC")))
        kind = 0x40;
    else if (scanner.skip(QStringLiteral("BETA")))
        kind = 0x80;
    else if (scanner.skip(QStringLiteral("DEBUG")))
        kind = 0xC0;
    const auto number = scanner.number();
    if (kind == 0 || !number)
        return std::nullopt;
    return Build{kind, *number};
}

/** The packed form that a text should be read as. */
quint32 scanVersion(const QString &text)
{
    Scanner scanner(text);
    const auto major = scanner.number();
    if (!major || !scanner.skip(QStringLiteral(".")))
        return 0;
    const auto minor = scanner.number();
    if (!minor)
        return 0;
    const int afterMinor = scanner.place();
    std::optional<quint32> patch;
    if (scanner.skip(QStringLiteral(".")))
        patch = scanner.number();
    if (!patch)
        scanner.goTo(afterMinor);
    Build build;
    if (!scanner.isAtEnd()) {
        const auto scanned = scanBuild(scanner);
        if (!scanned || !scanner.isAtEnd())
            return 0;
        build = *scanned;
    }
    const quint32 fields[] = {*major, *minor, patch.value_or(0), build.kind | build.number};
    quint32 packed = 0;
    for (int field = 3; field >= 0; --field)
        packed = packed * 256 + fields[field] % 256;
    return packed;
}

QString expected(const Version &version, QChar letter)
{
    const QString longNames[] = {QString(), QStringLiteral("RC"), QStringLiteral("BETA"),
                                 QStringLiteral("DEBUG")};
    const QString shortNames[] = {QString(), QStringLiteral("RC"), QStringLiteral("B"),
                                  QStringLiteral("D")};
    const int kind = version.build / 64;
    const QString number = QString::number(version.build % 64);
    switch (letter.unicode()) {
    case 'M':
        return QString::number(version.major);
    case 'm':
        return QString::number(version.minor);
    case 'p':
        return QString::number(version.patch);
    case 'n':
        return number;
    case 'T':
        return longNames[kind];
    case 't':
        return shortNames[kind];
    case 'B':
        return kind == 0 ? QString() : longNames[kind] + number;
    default:
        return kind == 0 ? QString() : shortNames[kind] + number;
    }
}

/** One pass over the pattern, a state for being in a section, where the product searches. */
QString walkPattern(const Version &version, const QString &pattern)
{
    QString output;
    QString section;
    bool inSection = false;
    bool keepSection = false;
    for (int i = 0; i < pattern.size(); ++i) {
        const QChar c = pattern[i];
        QString piece = c;
        if (c == '%' && i + 1 < pattern.size() &&
            QStringLiteral("MmpnTtBb").contains(pattern[i + 1])) {
            piece = expected(version, pattern[++i]);
            keepSection |= inSection && !piece.isEmpty();
        } else if (!inSection && c == '<') {
            inSection = true;
            keepSection = false;
            continue;
        } else if (inSection && c == '>') {
            output += keepSection ? section : QString();
            section.clear();
            inSection = false;
            continue;
        }
        (inSection ? section : output) += piece;
    }
    return inSection && keepSection ? output + section : output;
}

void checkTexts(const Version &version)
{
    const quint8 build = kindOf(version) == releaseKind ? quint8(0) : version.build;
    const quint32 seen = packVersion({version.major, version.minor, version.patch, build});
    for (const bool longStyle : {true, false}) {
        const QString text = toQString(version, longStyle);
        require(QString::fromStdString(toString(version, longStyle)) == text,
                "both kinds of string say the same");
        require(parseVersion(text) == seen, "a version is read as what it was written for");
    }
    require(toQString(version, true) == formatVersion(version, QStringLiteral("%M.%m.%p<.%B>")),
            "the long style is a pattern");
    require(fromByteArray(toByteArray(version)) == seen, "four bytes carry a version");
    require(unpackVersion(packVersion(version)).build == version.build, "packing loses nothing");
}

void checkBytes(const QByteArray &bytes)
{
    quint8 fields[4] = {};
    for (int i = 0; i < 4 && i < bytes.size(); ++i)
        fields[i] = static_cast<quint8>(bytes[i]);
    if (fields[3] < 64)
        fields[3] = 0;
    require(fromByteArray(bytes) == packVersion({fields[0], fields[1], fields[2], fields[3]}),
            "missing bytes count as 0 and further ones as nothing");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const uint8_t *data, std::size_t size)
{
    InputBytes input(data, size);
    const Version version = {input.takeByte(), input.takeByte(), input.takeByte(),
                             input.takeByte()};
    const QByteArray bytes = input.takeRest();
    const QString text = QString::fromUtf8(bytes);

    require(parseVersion(text) == scanVersion(text), "the text is read as it stands there");
    require(formatVersion(version, text) == walkPattern(version, text), "the pattern is filled in");
    checkTexts(version);
    checkBytes(bytes);
    return 0;
}
