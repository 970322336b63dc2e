#include "vireling/palette/theme.h"

#include "vireling/palette/theme_palettes.h"

#include <QCoreApplication>

namespace Vireling {

QString themeName(Theme theme)
{
    switch (theme) {
    case Theme::System:
        return QCoreApplication::translate("Theme", "System");
    case Theme::Dark:
        return QCoreApplication::translate("Theme", "Dark");
    case Theme::Light:
        return QCoreApplication::translate("Theme", "Light");
    }
    return QString();
}

Theme resolveTheme(Theme theme)
{
    return theme == Theme::System ? Theme::Dark : theme;
}

QStringList themeSearchPaths(Theme theme)
{
    QStringList paths{QStringLiteral(":/")};
    paths.prepend(resolveTheme(theme) == Theme::Light ? QStringLiteral(":/light")
                                                      : QStringLiteral(":/dark"));
    return paths;
}

const Palette &themePalette(Theme theme)
{
    static const Palette dark = darkPalette();
    static const Palette light = lightPalette();
    return resolveTheme(theme) == Theme::Light ? light : dark;
}

} // namespace Vireling
