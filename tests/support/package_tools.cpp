#include "support/package_reader.h"

#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>

namespace TestSupport {
namespace {

constexpr int toolTimeoutMs = 60000;

struct Output
{
    bool ok = false;
    QByteArray bytes;
    QString problem;
};

Output run(const QString &program, const QStringList &arguments)
{
    Output output;
    const QString path = QStandardPaths::findExecutable(program);
    if (path.isEmpty()) {
        output.problem = QStringLiteral("%1 is not installed").arg(program);
        return output;
    }
    QProcess process;
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert(QStringLiteral("LC_ALL"), QStringLiteral("C.UTF-8"));
    process.setProcessEnvironment(environment);
    process.start(path, arguments, QIODevice::ReadOnly);
    const bool finished = process.waitForFinished(toolTimeoutMs);
    output.bytes = process.readAllStandardOutput();
    output.ok = finished && process.exitStatus() == QProcess::NormalExit && process.exitCode() == 0;
    if (!output.ok)
        output.problem = QStringLiteral("%1 %2 failed: %3")
                             .arg(program, arguments.join(QLatin1Char(' ')),
                                  QString::fromUtf8(process.readAllStandardError()));
    return output;
}

/** What one tool says about a package, in its order. */
struct View
{
    QString tool;
    QString problem;
    QStringList names; // directories without their trailing slash
    QStringList modes; // as in "-rw-r--r--"
    QByteArray bytes;  // of all files, one after the other
};

QStringList lines(const QByteArray &text)
{
    return QString::fromUtf8(text).split(QLatin1Char('\n'), Qt::SkipEmptyParts);
}

QString withoutSlash(const QString &name)
{
    return name.endsWith(QLatin1Char('/')) ? name.chopped(1) : name;
}

/** GNU tar and bsdtar answer to the same letters. */
View tarView(const QString &tool, const QStringList &options, const QString &path)
{
    View view;
    view.tool = tool;
    const Output names = run(tool, options + QStringList{QStringLiteral("-tzf"), path});
    const Output table = run(tool, options + QStringList{QStringLiteral("-tvzf"), path});
    const Output bytes = run(tool, options + QStringList{QStringLiteral("-xOzf"), path});
    for (const Output &output : {names, table, bytes})
        if (!output.ok)
            view.problem = output.problem;
    for (const QString &name : lines(names.bytes))
        view.names.append(withoutSlash(name));
    for (const QString &line : lines(table.bytes))
        view.modes.append(line.section(QLatin1Char(' '), 0, 0));
    view.bytes = bytes.bytes;
    return view;
}

/** The records of 7-Zip's technical listing, which start behind a line of dashes. */
void readListing(const QByteArray &listing, View *view)
{
    const QString text = QString::fromUtf8(listing);
    const QString records = text.mid(text.indexOf(QLatin1String("\n----------\n")));
    for (const QString &line : records.split(QLatin1Char('\n'))) {
        if (line.startsWith(QLatin1String("Path = ")))
            view->names.append(withoutSlash(line.mid(7)));
        if (line.startsWith(QLatin1String("Mode = ")))
            view->modes.append(line.mid(7));
    }
}

/** 7-Zip opens one layer at a time: the gzip member first, then the archive inside. */
View sevenZipView(const QString &path)
{
    View view;
    // The one Debian package installs either name, depending on its age.
    view.tool = QStandardPaths::findExecutable(QStringLiteral("7zz")).isEmpty()
                    ? QStringLiteral("7z")
                    : QStringLiteral("7zz");
    const QTemporaryDir scratch;
    const QString inner = scratch.filePath(QStringLiteral("inner.tar"));
    const Output unpacked = run(
        view.tool, {QStringLiteral("x"), QStringLiteral("-so"), QStringLiteral("-tgzip"), path});
    view.problem = unpacked.problem;
    QFile file(inner);
    if (!unpacked.ok || !file.open(QIODevice::WriteOnly) ||
        file.write(unpacked.bytes) != unpacked.bytes.size())
        return view;
    file.close();
    const Output listing = run(
        view.tool, {QStringLiteral("l"), QStringLiteral("-slt"), QStringLiteral("-ttar"), inner});
    const Output bytes = run(
        view.tool, {QStringLiteral("x"), QStringLiteral("-so"), QStringLiteral("-ttar"), inner});
    view.problem = listing.ok ? bytes.problem : listing.problem;
    readListing(listing.bytes, &view);
    view.bytes = bytes.bytes;
    return view;
}

QString modeText(const PackageMember &member)
{
    QString text = QStringLiteral("-rwxrwxrwx");
    if (member.typeFlag == '5')
        text[0] = QLatin1Char('d');
    for (int bit = 0; bit < 9; ++bit)
        if ((member.mode & (0400u >> bit)) == 0)
            text[1 + bit] = QLatin1Char('-');
    return text;
}

View expectedView(const QVector<PackageMember> &members)
{
    View view;
    for (const PackageMember &member : members) {
        view.names.append(withoutSlash(member.name));
        view.modes.append(modeText(member));
        view.bytes += member.bytes;
    }
    return view;
}

/** What differs between a tool's view and the expected one; null when nothing does. */
QString difference(const View &seen, const View &expected)
{
    if (!seen.problem.isNull())
        return seen.problem;
    const QLatin1String comma(", ");
    if (seen.names != expected.names)
        return QStringLiteral("%1 sees the names %2 instead of %3")
            .arg(seen.tool, seen.names.join(comma), expected.names.join(comma));
    if (seen.modes != expected.modes)
        return QStringLiteral("%1 sees the permissions %2 instead of %3")
            .arg(seen.tool, seen.modes.join(comma), expected.modes.join(comma));
    if (seen.bytes != expected.bytes)
        return QStringLiteral("%1 unpacks other bytes").arg(seen.tool);
    return {};
}

} // namespace

bool sameWithEveryTool(const QString &path, const QVector<PackageMember> &expectedMembers,
                       QString *why)
{
    const View expected = expectedView(expectedMembers);
    const View views[] = {
        tarView(QStringLiteral("tar"), {QStringLiteral("--quoting-style=literal")}, path),
        tarView(QStringLiteral("bsdtar"), {}, path),
        sevenZipView(path),
    };
    for (const View &view : views) {
        *why = difference(view, expected);
        if (!why->isNull())
            return false;
    }
    return true;
}

bool sameWithEveryTool(const QString &path, QString *why)
{
    const Package package = readPackage(path);
    *why = package.problem;
    return package.isWellFormed() && sameWithEveryTool(path, package.members, why);
}

} // namespace TestSupport
