#include "option_values.h"

#include <QCommandLineParser>
#include <QFile>
#include <QTimeZone>

namespace CrashScenario {

OptionValues::OptionValues(const QCommandLineParser &commandLine)
    : parser(commandLine)
{}

bool OptionValues::isSet(const char *option) const
{
    return parser.isSet(QLatin1String(option));
}

QString OptionValues::text(const char *option) const
{
    return isSet(option) ? QLatin1String("") + parser.value(QLatin1String(option)) : QString();
}

qint64 OptionValues::number(const char *option, qint64 minimum, qint64 maximum, qint64 fallback)
{
    if (!isSet(option))
        return fallback;
    const QString value = text(option);
    const bool hexadecimal = value.startsWith(QLatin1String("0x"));
    bool isNumber = false;
    const qint64 result = value.toLongLong(&isNumber, hexadecimal ? 16 : 10);
    if (isNumber && result >= minimum && result <= maximum)
        return result;
    fail(
        QStringLiteral("--%1: not a number from %2 to %3: %4")
            .arg(QLatin1String(option), QString::number(minimum), QString::number(maximum), value));
    return fallback;
}

QByteArray OptionValues::latin1(const char *option, int maximum)
{
    const QString value = text(option);
    QByteArray bytes = value.toLatin1();
    if (QString::fromLatin1(bytes) != value)
        fail(QStringLiteral("--%1: not Latin-1: %2").arg(QLatin1String(option), value));
    else if (bytes.size() > maximum)
        fail(QStringLiteral("--%1: longer than %2 bytes")
                 .arg(QLatin1String(option), QString::number(maximum)));
    else
        return bytes;
    return {};
}

QByteArray OptionValues::hex(const char *option)
{
    QByteArray digits = text(option).toLatin1();
    digits.replace(' ', "");
    QByteArray bytes = QByteArray::fromHex(digits);
    // fromHex() skips what is no digit: only what comes out as it went in was one.
    if (bytes.toHex() != digits.toLower())
        fail(QStringLiteral("--%1: not pairs of hexadecimal digits").arg(QLatin1String(option)));
    return bytes;
}

QByteArray OptionValues::fileContents(const char *option)
{
    QFile file(text(option));
    if (!file.open(QIODevice::ReadOnly)) {
        fail(QStringLiteral("--%1: %2: %3")
                 .arg(QLatin1String(option), file.fileName(), file.errorString()));
        return {};
    }
    return file.readAll();
}

QDateTime OptionValues::dateTime()
{
    if (text("time") == QLatin1String("null"))
        return {};
    const QDateTime wall = isSet("time") ? QDateTime::fromString(text("time"), Qt::ISODateWithMs)
                                         : QDateTime::currentDateTime();
    if (!wall.isValid() || wall.timeSpec() != Qt::LocalTime)
        fail(
            QStringLiteral("--time: not a time such as 2024-02-29T13:14:15: %1").arg(text("time")));
    return inSpec(wall);
}

QDateTime OptionValues::inSpec(const QDateTime &wall)
{
    const QString spec = isSet("time-spec") ? text("time-spec") : QStringLiteral("local");
    if (isSet("offset") && spec != QLatin1String("offset"))
        fail(QStringLiteral("--offset: only with --time-spec offset"));
    if (isSet("zone") && spec != QLatin1String("zone"))
        fail(QStringLiteral("--zone: only with --time-spec zone"));

    if (spec == QLatin1String("local"))
        return wall;
    if (spec == QLatin1String("utc"))
        return {wall.date(), wall.time(), Qt::UTC};
    if (spec == QLatin1String("offset")) {
        constexpr int mostOfADay = 14 * 3600;
        const auto seconds = int(number("offset", -mostOfADay, mostOfADay));
        QDateTime result(wall.date(), wall.time(), Qt::OffsetFromUTC, seconds);
        return result;
    }
    if (spec != QLatin1String("zone")) {
        fail(QStringLiteral("--time-spec: not one of local, utc, offset, zone: %1").arg(spec));
        return wall;
    }
    const QTimeZone zone(text("zone").toLatin1());
    if (!zone.isValid())
        fail(QStringLiteral("--zone: no such time zone: %1").arg(text("zone")));
    return zone.isValid() ? QDateTime(wall.date(), wall.time(), zone) : wall;
}

void OptionValues::fail(const QString &message)
{
    if (firstError.isNull())
        firstError = message;
}

void OptionValues::exclude(const char *option, const char *other)
{
    if (isSet(option) && isSet(other))
        fail(QStringLiteral("--%1 and --%2 exclude each other")
                 .arg(QLatin1String(option), QLatin1String(other)));
}

} // namespace CrashScenario
