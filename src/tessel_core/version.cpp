#include "tessel_core/version.h"

#include <QDataStream>
#include <QRegExp>

#include <optional>

namespace Tessel {

namespace {

quint8 kindNamed(const QString &name)
{
    for (const quint8 kind : {releaseCandidateKind, betaKind, debugKind}) {
        const std::string_view candidate = kindName(kind, true);
        if (name == QLatin1String(candidate.data(), int(candidate.size())))
            return kind;
    }
    return releaseKind;
}

quint8 lowByte(quint32 value)
{
    return quint8(value & 0xFFU);
}

QString nameOfKind(const Version &version, bool longStyle)
{
    const std::string_view name = kindName(kindOf(version), longStyle);
    return QLatin1String(name.data(), int(name.size()));
}

/** Nothing for a release, not even its number. */
QString nameAndNumber(const Version &version, bool longStyle)
{
    const QString name = nameOfKind(version, longStyle);
    return name.isEmpty() ? name : name + QString::number(buildNumberOf(version));
}

/** What the placeholder of this letter stands for; none if there is no such placeholder. */
std::optional<QString> placeholderValue(const Version &version, QChar letter)
{
    switch (letter.unicode()) {
    case 'M':
        return QString::number(version.major);
    case 'm':
        return QString::number(version.minor);
    case 'p':
        return QString::number(version.patch);
    case 'n':
        return QString::number(buildNumberOf(version));
    case 'T':
        return nameOfKind(version, true);
    case 't':
        return nameOfKind(version, false);
    case 'B':
        return nameAndNumber(version, true);
    case 'b':
        return nameAndNumber(version, false);
    default:
        return std::nullopt;
    }
}

struct Expansion
{
    QString text;
    bool placeholderGaveOutput = false;
};

Expansion expandPlaceholders(const Version &version, const QString &pattern)
{
    Expansion expansion;
    for (int i = 0; i < pattern.size(); ++i) {
        std::optional<QString> value;
        if (pattern[i] == '%' && i + 1 < pattern.size())
            value = placeholderValue(version, pattern[i + 1]);
        if (!value) {
            expansion.text += pattern[i];
            continue;
        }
        expansion.text += *value;
        expansion.placeholderGaveOutput |= !value->isEmpty();
        ++i;
    }
    return expansion;
}

} // namespace

std::string_view kindName(quint8 kind, bool longStyle)
{
    switch (kind) {
    case releaseCandidateKind:
        return "RC";
    case betaKind:
        return longStyle ? "BETA" : "B";
    case debugKind:
        return longStyle ? "DEBUG" : "D";
    default:
        return "";
    }
}

quint32 parseVersion(const QString &text)
{
    // Local, not static: a QRegExp keeps its captures in itself.
    const QRegExp form(R"((\d+)\.(\d+)(?:\.(\d+))?(?:[ \.](RC|BETA|DEBUG)(\d+))?)");
    if (!form.exactMatch(text))
        return 0;
    // The number is not cut to six bits before it meets the kind: other programs
    // of the appliance read texts the same way and keep their numbers below 64.
    return packVersion({lowByte(form.cap(1).toUInt()), lowByte(form.cap(2).toUInt()),
                        lowByte(form.cap(3).toUInt()),
                        lowByte(kindNamed(form.cap(4)) | form.cap(5).toUInt())});
}

QByteArray toByteArray(const Version &version)
{
    QByteArray bytes;
    QDataStream stream(&bytes, QIODevice::WriteOnly);
    stream << version.major << version.minor << version.patch << version.build;
    return bytes;
}

quint32 fromByteArray(const QByteArray &bytes)
{
    Version version = {};
    QDataStream stream(bytes);
    stream >> version.major >> version.minor >> version.patch >> version.build;
    // A release has no build number to its readers, so none is let through here.
    if (kindOf(version) == releaseKind)
        version.build = 0;
    return packVersion(version);
}

std::string toString(const Version &version, bool longStyle)
{
    std::string text = std::to_string(version.major) + '.' + std::to_string(version.minor);
    if (longStyle || version.patch != 0)
        text += '.' + std::to_string(version.patch);
    if (kindOf(version) == releaseKind)
        return text;
    text += longStyle ? '.' : ' ';
    text += kindName(kindOf(version), true);
    return text + std::to_string(buildNumberOf(version));
}

QString toQString(const Version &version, bool longStyle)
{
    return QString::fromUtf8(toString(version, longStyle).c_str());
}

QString formatVersion(const Version &version, const QString &pattern)
{
    const auto find = [&pattern](char wanted, int from) {
        const int found = pattern.indexOf(QLatin1Char(wanted), from);
        return found < 0 ? pattern.size() : found;
    };
    QString output;
    for (int position = 0; position < pattern.size();) {
        const int opening = find('<', position);
        output += expandPlaceholders(version, pattern.mid(position, opening - position)).text;
        const int closing = find('>', opening + 1);
        const Expansion section =
            expandPlaceholders(version, pattern.mid(opening + 1, closing - opening - 1));
        if (section.placeholderGaveOutput)
            output += section.text;
        position = closing + 1;
    }
    return output;
}

} // namespace Tessel
