#include "options.h"

#include "option_values.h"

#include <QCommandLineParser>

#include <limits>

namespace CrashScenario {

namespace {

constexpr qint64 largestCount = std::numeric_limits<quint32>::max();
constexpr int serialLength = sizeof(Tessel::SharedClientInfo::serialNumber);
constexpr int logPathLength = sizeof(Tessel::SharedClientInfo::logFilePath);

const char description[] =
    "Plays the application that crashed: writes the crash data file, fills the shared\n"
    "block and starts the command given after \"--\" with the file's path as its last\n"
    "argument (or in place of an argument \"{}\"). Stays attached to the block until\n"
    "the command has ended, for the block goes with the last process attached.\n"
    "\n"
    "The block's key is derived from the temporary folder: run the reporter with the\n"
    "same TMPDIR, and both of them in tools/sandbox.\n"
    "\n"
    "Exit status: the command's, or 128 + N when signal N ended it; 2 when the command\n"
    "line is wrong; 125 when the file or the block cannot be made; 127 when the command\n"
    "cannot be started; 0 when there is none.";

const QList<QCommandLineOption> &crashDataOptions()
{
    static const QList<QCommandLineOption> options = {
        {"crash-file", "Where to write the crash data; else a new file in the temporary folder.",
         "path"},
        {"dump", "Path of the dump file; else none is named.", "path"},
        {"time", "Time of the crash, as 2024-02-29T13:14:15.016, or \"null\"; else now.", "time"},
        {"time-spec", "What the time is in: local (unless given), utc, offset or zone.", "spec"},
        {"offset", "Seconds east of UTC, for \"--time-spec offset\".", "seconds"},
        {"zone", "Zone such as Europe/Berlin, for \"--time-spec zone\".", "id"},
        {"output", "A line of output, oldest first; may be given many times.", "line"},
        {"stream-version", "Spoil: version of the stream, 1 to 19.", "n"},
        {"byte-order", "Spoil: byte order of the stream, little or big.", "order"},
        {"path-length", "Spoil: byte count before the dump path.", "n"},
        {"list-count", "Spoil: count before the output lines.", "n"},
        {"raw-hex", "Spoil: the file's bytes as hexadecimal digits.", "hex"},
        {"raw-file", "Spoil: a file holding the file's bytes.", "file"},
        {"truncate", "Spoil: keep only the first N bytes of the file.", "n"},
    };
    return options;
}

const QList<QCommandLineOption> &blockOptions()
{
    static const QList<QCommandLineOption> options = {
        {"serial", "Serial number, at most 63 characters.", "text"},
        {"device-type", "Device type code, 0 to 255.", "code"},
        {"version", "Software version, such as 2.5.1 or \"2.5.1 RC2\".", "version"},
        {"log", "Path of the application's log file, at most 255 characters.", "path"},
        {"seconds", "Auto-action seconds, may be negative.", "n"},
        {"unattended", "Set the unattended restart flag."},
        {"serial-unterminated", "Spoil: no zero byte in the serial number's 64 bytes."},
        {"block-hex", "Spoil: the block's bytes as hexadecimal digits.", "hex"},
        {"block-fill", "Spoil: the byte the block is filled with.", "byte"},
        {"block-size", "Spoil: make a block of N bytes.", "n"},
        {"no-block", "Leave the block alone."},
    };
    return options;
}

const QList<QCommandLineOption> &commandOptions()
{
    static const QList<QCommandLineOption> options = {
        {"no-argument", "Do not pass the crash data file's path to the command."},
        {"crash", "Only crash, for a debugger to take a core image of it."},
    };
    return options;
}

Tessel::Version readVersion(OptionValues &values)
{
    const QString text = values.text("version");
    const Tessel::Version version = Tessel::unpackVersion(Tessel::parseVersion(text));
    // 0 also means "not a version": only a text of zeroes may mean it.
    if (values.isSet("version") && Tessel::packVersion(version) == 0 &&
        !text.startsWith(QLatin1String("0.0")))
        values.fail(QStringLiteral("--version: not a version: %1").arg(text));
    return version;
}

CrashData readCrashData(OptionValues &values, const QStringList &lines)
{
    CrashData data;
    data.dumpFilePath = values.text("dump");
    data.crashTime = values.dateTime();
    data.outputLog = lines;
    data.streamVersion =
        int(values.number("stream-version", 1, QDataStream::Qt_5_15, QDataStream::Qt_5_15));
    const QString order = values.text("byte-order");
    if (order == QLatin1String("little"))
        data.byteOrder = QDataStream::LittleEndian;
    else if (!order.isNull() && order != QLatin1String("big"))
        values.fail(QStringLiteral("--byte-order: neither little nor big: %1").arg(order));
    if (values.isSet("path-length"))
        data.falsePathLength = quint32(values.number("path-length", 0, largestCount));
    if (values.isSet("list-count"))
        data.falseListCount = quint32(values.number("list-count", 0, largestCount));
    values.exclude("raw-hex", "raw-file");
    if (values.isSet("raw-hex"))
        data.raw = values.hex("raw-hex");
    if (values.isSet("raw-file"))
        data.raw = values.fileContents("raw-file");
    if (values.isSet("truncate"))
        data.truncateTo = int(values.number("truncate", 0, std::numeric_limits<int>::max()));
    return data;
}

void refuseFieldsOfRawBytes(OptionValues &values)
{
    for (const char *raw : {"block-hex", "block-fill"})
        for (const QCommandLineOption &option : blockOptions().mid(0, 7))
            values.exclude(raw, qPrintable(option.names().constFirst()));
    for (const QCommandLineOption &option : blockOptions().mid(0, 10))
        values.exclude("no-block", qPrintable(option.names().constFirst()));
}

std::optional<Block> readBlock(OptionValues &values)
{
    refuseFieldsOfRawBytes(values);
    if (values.isSet("no-block"))
        return std::nullopt;
    Block block;
    block.serialUnterminated = values.isSet("serial-unterminated");
    block.serialNumber = values.latin1("serial", serialLength - (block.serialUnterminated ? 0 : 1));
    block.deviceType = quint8(values.number("device-type", 0, 255));
    block.version = readVersion(values);
    block.logFilePath = values.latin1("log", logPathLength - 1);
    block.autoActionSeconds = qint32(values.number("seconds", std::numeric_limits<qint32>::min(),
                                                   std::numeric_limits<qint32>::max()));
    block.unattendedRestart = values.isSet("unattended");
    if (values.isSet("block-fill"))
        block.fill = quint8(values.number("block-fill", 0, 255));
    block.size = int(values.number("block-size", 1, 1 << 20, block.size));
    if (values.isSet("block-hex"))
        block.raw = values.hex("block-hex");
    if (block.raw && block.raw->size() > block.size)
        values.fail(QStringLiteral("--block-hex: more than %1 bytes").arg(block.size));
    return block;
}

Command readCommand(const OptionValues &values, const QStringList &words)
{
    return {words, !values.isSet("no-argument")};
}

/** The options end at "--", and what follows is the command's, dashes and all. */
QStringList takeCommand(QStringList &arguments)
{
    const int dashes = arguments.indexOf(QStringLiteral("--"));
    if (dashes < 0)
        return {};
    QStringList command = arguments.mid(dashes + 1);
    arguments = arguments.mid(0, dashes);
    return command;
}

} // namespace

std::variant<Scenario, UsageError, HelpText> parseArguments(const QStringList &arguments)
{
    QCommandLineParser parser;
    parser.setApplicationDescription(QString::fromLatin1(description));
    parser.addOptions(crashDataOptions());
    parser.addOptions(blockOptions());
    parser.addOptions(commandOptions());
    const QCommandLineOption help({"h", "help"}, "This text.");
    parser.addOption(help);

    QStringList own = arguments;
    const QStringList command = takeCommand(own);
    if (!parser.parse(own))
        return UsageError{parser.errorText()};
    if (parser.isSet(help))
        return HelpText{parser.helpText()};
    if (!parser.positionalArguments().isEmpty())
        return UsageError{QStringLiteral("not an option: %1 (a command follows after \"--\")")
                              .arg(parser.positionalArguments().constFirst())};

    OptionValues values(parser);
    Scenario scenario;
    scenario.crash = values.isSet("crash");
    scenario.crashFile = values.text("crash-file");
    scenario.crashData = readCrashData(values, parser.values(QStringLiteral("output")));
    scenario.block = readBlock(values);
    scenario.command = readCommand(values, command);
    if (!values.error().isNull())
        return UsageError{values.error()};
    return scenario;
}

} // namespace CrashScenario
