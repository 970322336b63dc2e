#pragma once

#include <QByteArray>
#include <QDateTime>
#include <QString>
#include <QtGlobal>

class QCommandLineParser;

namespace CrashScenario {

/*
 * Typed access to the options of a parsed command line.
 *
 * The first value that cannot be read is remembered as error(); what is asked
 * for then and later still gets some harmless value, so that a caller asks for
 * everything first and looks at error() once.
 */
class OptionValues
{
public:
    /** Keeps a reference. */
    explicit OptionValues(const QCommandLineParser &parser);

    bool isSet(const char *option) const;

    /** Never null when the option is given, even as an empty text. */
    QString text(const char *option) const;

    /** Decimal, or hexadecimal after "0x"; `fallback` when the option is not given. */
    qint64 number(const char *option, qint64 minimum, qint64 maximum, qint64 fallback = 0);

    /** A text for a field of `maximum` bytes: Latin-1, without zero bytes. */
    QByteArray latin1(const char *option, int maximum);

    /** Bytes given as pairs of hexadecimal digits, blanks allowed between them. */
    QByteArray hex(const char *option);

    /** The contents of the named file. */
    QByteArray fileContents(const char *option);

    /** The crash time: "--time" in the terms of "--time-spec", "--offset", "--zone". */
    QDateTime dateTime();

    /** Remembers an error of the caller's own finding. */
    void fail(const QString &message);

    /** Fails when both options are given. */
    void exclude(const char *option, const char *other);

    /** Null when every value could be read. */
    QString error() const { return firstError; }

private:
    QDateTime inSpec(const QDateTime &wall);

    const QCommandLineParser &parser;
    QString firstError;
};

} // namespace CrashScenario
