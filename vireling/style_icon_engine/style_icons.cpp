#include "vireling/style_icon_engine/style_icons.h"

#include "vireling/style_icon_engine/style_icon_engine.h"

#include <array>

namespace Vireling {

namespace {

constexpr std::size_t iconCount = std::size_t(StyleIcon::NStyleIcons);

// In the order of StyleIcon.
constexpr std::array<const char *, iconCount> fileNames = {
    "arrow_down.svg",     "arrow_left.svg",   "arrow_right.svg",     "arrow_up.svg",
    "edit_clear.svg",     "expand_down.svg",  "expand_left.svg",     "expand_right.svg",
    "expand_up.svg",      "window_close.svg", "window_maximise.svg", "window_minimise.svg",
    "window_restore.svg",
};

} // namespace

QIcon styleIcon(StyleIcon icon)
{
    static std::array<QIcon, iconCount> icons;
    const auto index = std::size_t(icon);
    if (index >= iconCount)
        return {};
    if (icons[index].isNull())
        icons[index] = makeIcon(QStringLiteral("vireling:/vireling_style/icons/") +
                                QLatin1String(fileNames[index]));
    return icons[index];
}

QIcon makeIcon(const QString &path)
{
    if (path.endsWith(QLatin1String(".svg"), Qt::CaseInsensitive))
        return QIcon(new StyleIconEngine(path));
    return QIcon(path);
}

} // namespace Vireling
