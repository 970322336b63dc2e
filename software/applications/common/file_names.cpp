#include "common/file_names.h"

namespace {

/** ".cdp" of "*.cdp"; empty for a filter without an extension. */
QString extensionOf(const QString &filter)
{
    const int dot = filter.lastIndexOf(QLatin1Char('.'));
    return dot < 0 ? QString() : filter.mid(dot);
}

/** These name the folder and the one above it: they would lead out of the location. */
bool isDotOrDotDot(const QString &name)
{
    return name == QLatin1String(".") || name == QLatin1String("..");
}

} // namespace

QString withoutSeparators(const QString &name)
{
    QString allowed = name;
    return allowed.remove(QLatin1Char('/')).remove(QChar());
}

QString pathOfName(const QString &folder, const QString &name)
{
    if (name.isEmpty() || isDotOrDotDot(name))
        return {};
    return folder + QLatin1Char('/') + name;
}

QString withExtension(const QString &path, const QStringList &filters)
{
    QString first;
    for (const QString &filter : filters) {
        const QString extension = extensionOf(filter);
        if (!extension.isEmpty() && path.endsWith(extension))
            return path;
        if (first.isEmpty())
            first = extension;
    }
    return path + first;
}
