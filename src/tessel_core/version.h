#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <string>
#include <string_view>

namespace Tessel {

/*
 * Version numbers of the appliance's software, such as 2.5.1 or 2.5.1.BETA3.
 * Everything here is a function of its arguments: any thread may call it.
 */

/**
 * A version as the appliance's programs exchange it. The four bytes lie in this
 * order in the shared memory block and in the serialised form, so nothing may be
 * added. The top two bits of `build` are the kind, the low six the build number.
 */
struct Version
{
    quint8 major;
    quint8 minor;
    quint8 patch;
    quint8 build;
};
static_assert(sizeof(Version) == 4, "other programs lay this out as four bytes");

/** The kinds of a build, as the build byte's value with the number bits clear. */
constexpr quint8 releaseKind = 0;
constexpr quint8 releaseCandidateKind = 64;
constexpr quint8 betaKind = 128;
constexpr quint8 debugKind = 192;

constexpr quint8 kindOf(const Version &version)
{
    return version.build & 0xC0U;
}

/** 0 to 63. */
constexpr quint8 buildNumberOf(const Version &version)
{
    return version.build & 0x3FU;
}

/** The packed form: major in bits 0 to 7, minor, patch, and build in bits 24 to 31. */
constexpr quint32 packVersion(const Version &version)
{
    return version.major | (quint32(version.minor) << 8U) | (quint32(version.patch) << 16U) |
           (quint32(version.build) << 24U);
}

constexpr Version unpackVersion(quint32 packed)
{
    return {quint8(packed & 0xFFU), quint8((packed >> 8U) & 0xFFU), quint8((packed >> 16U) & 0xFFU),
            quint8(packed >> 24U)};
}

/**
 * The name of a kind: "RC", "BETA", "DEBUG" in the long style, "RC", "B", "D" in
 * the short one, empty for a release and for any value that is no kind. The view
 * is of a literal: it stays valid, and its data ends in a NUL.
 */
std::string_view kindName(quint8 kind, bool longStyle);

/**
 * Reads a text such as "2.5", "2.5.1", "2.5.1 RC2" or "2.5.1.RC2" and returns its
 * packed form; 0 for a text of any other form, which reads as release 0.0.0.
 *
 * Each number keeps its low eight bits; one past 32 bits counts as 0, as does one
 * with digits other than 0 to 9, which the match lets through. The build number
 * is not limited to its six bits: 64 and more spill into the kind.
 */
quint32 parseVersion(const QString &text);

/** The four bytes in field order. */
QByteArray toByteArray(const Version &version);

/**
 * The packed form of what toByteArray() wrote. Missing bytes count as 0, further
 * ones are ignored. The build number of a release does not survive.
 */
quint32 fromByteArray(const QByteArray &bytes);

/**
 * The version for people. Long: "2.5.0", "2.5.1.BETA3". Short: a patch of 0 is
 * left out and the kind stands after a blank, "2.5", "2.5.1 BETA3"; the name of
 * the kind is the long one in both. A release shows no build number.
 */
std::string toString(const Version &version, bool longStyle);

/** toString() as a QString. */
QString toQString(const Version &version, bool longStyle);

/**
 * The version in a form of the caller's choice. `pattern` is copied, except for
 *
 *   %M major   %m minor   %p patch   %n build number
 *   %T long name of the kind    %B the same, followed by the build number
 *   %t short name of the kind   %b the same, followed by the build number
 *
 * where the last four give nothing for a release. A "%" before anything else, or
 * at the end, is an ordinary character.
 *
 * What stands between "<" and ">" is left out unless a placeholder in it produced
 * output; a number is output, also when it is 0. Sections do not nest: a "<"
 * within one and a ">" outside any are ordinary characters. A section that is
 * never closed ends with the pattern.
 */
QString formatVersion(const Version &version, const QString &pattern);

} // namespace Tessel
