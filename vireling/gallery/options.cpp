#include "vireling/gallery/options.h"

#include "vireling/gallery/pages.h"

#include <QCommandLineParser>

#include <algorithm>

namespace Vireling {

namespace {

const QString themeOption = QStringLiteral("theme");
const QString pageOption = QStringLiteral("page");
const QString scaleOption = QStringLiteral("scale");
const QString styleOption = QStringLiteral("style");
const QString screenshotOption = QStringLiteral("screenshot");
const QString rtlOption = QStringLiteral("rtl");
const QString disabledOption = QStringLiteral("disabled");
const QString pseudoOption = QStringLiteral("pseudo");
const QString listPagesOption = QStringLiteral("list-pages");
const QString helpOption = QStringLiteral("help");

void addOptions(QCommandLineParser &parser)
{
    parser.setApplicationDescription(
        QStringLiteral("Shows every control of the toolkit in every state."));
    parser.addOptions({
        {themeOption, "Colours: \"dark\" (unless given) or \"light\".", "theme"},
        {pageOption, "The page to open; see --list-pages.", "name"},
        {scaleOption, "Size of everything: 1, 1.5 or 2.", "factor"},
        {styleOption,
         "Ours, \"vireling\", or a style of Qt for comparison: fusion, breeze, adwaita.", "name"},
        {screenshotOption, "Save a picture of the page as PNG instead of opening it.", "file"},
        {rtlOption, "Right to left."},
        {disabledOption, "All controls disabled."},
        {pseudoOption, "Texts with accents, in brackets and longer."},
        {listPagesOption, "Print the names of the pages."},
        {helpOption, "Print this."},
    });
}

bool isPage(const QString &name)
{
    const auto &pages = galleryPages();
    return std::any_of(pages.begin(), pages.end(),
                       [&](const GalleryPage &page) { return name == QLatin1String(page.name); });
}

std::optional<Theme> themeByName(const QString &name)
{
    if (name == QLatin1String("dark"))
        return Theme::Dark;
    if (name == QLatin1String("light"))
        return Theme::Light;
    return std::nullopt;
}

std::optional<double> scaleByName(const QString &name)
{
    for (const double scale : {1.0, 1.5, 2.0})
        if (name == QString::number(scale))
            return scale;
    return std::nullopt;
}

QString unknown(const QString &what, const QString &value)
{
    return QStringLiteral("Unknown %1: \"%2\"").arg(what, value);
}

/** The options with values; answers what is wrong with them. */
QString readValues(const QCommandLineParser &parser, GalleryOptions &options)
{
    if (parser.isSet(themeOption)) {
        const auto theme = themeByName(parser.value(themeOption));
        if (!theme)
            return unknown(themeOption, parser.value(themeOption));
        options.theme = *theme;
    }
    if (parser.isSet(scaleOption)) {
        options.scale = scaleByName(parser.value(scaleOption));
        if (!options.scale)
            return unknown(scaleOption, parser.value(scaleOption));
    }
    if (parser.isSet(pageOption) && !isPage(parser.value(pageOption)))
        return unknown(pageOption, parser.value(pageOption));
    if (parser.isSet(screenshotOption) && parser.value(screenshotOption).isEmpty())
        return QStringLiteral("The picture needs a file name");
    options.page = parser.value(pageOption);
    options.style = parser.value(styleOption);
    options.screenshot = parser.value(screenshotOption);
    return QString();
}

} // namespace

ParsedOptions parseOptions(const QStringList &arguments)
{
    QCommandLineParser parser;
    addOptions(parser);
    ParsedOptions parsed;
    if (!parser.parse(arguments))
        parsed.error = parser.errorText();
    else if (!parser.positionalArguments().isEmpty())
        parsed.error = unknown(QStringLiteral("argument"), parser.positionalArguments().first());
    else
        parsed.error = readValues(parser, parsed.options);
    parsed.options.rightToLeft = parser.isSet(rtlOption);
    parsed.options.disabled = parser.isSet(disabledOption);
    parsed.options.pseudo = parser.isSet(pseudoOption);
    parsed.options.listPages = parser.isSet(listPagesOption);
    parsed.options.help = parser.isSet(helpOption);
    return parsed;
}

QString optionsHelp()
{
    QCommandLineParser parser;
    addOptions(parser);
    return parser.helpText();
}

} // namespace Vireling
