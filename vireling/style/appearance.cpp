#include "vireling/style/appearance.h"

#include "vireling/palette/fonts.h"
#include "vireling/palette/theme.h"
#include "vireling/style/style.h"
#include "vireling/style_icon_engine/style_icon_engine.h"

#include <QApplication>
#include <QDir>
#include <QToolTip>

namespace Vireling {

void installAppearance(Theme theme)
{
    QDir::setSearchPaths(QStringLiteral("vireling"), themeSearchPaths(theme));
    reloadStyleIcons();
    auto *style = new Style(themePalette(theme)); // the application takes it over
    QApplication::setStyle(style);
    QApplication::setFont(styleFont(applicationFontSlot));
    QToolTip::setPalette(style->standardPalette());
    QToolTip::setFont(styleFont(toolTipFontSlot));
}

} // namespace Vireling
