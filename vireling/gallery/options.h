#pragma once

#include "vireling/palette/enums.h"

#include <QString>
#include <QStringList>

#include <optional>

namespace Vireling {

/** What the command line of the gallery asks for. */
struct GalleryOptions
{
    Theme theme = Theme::Dark;
    QString page;                ///< the name of one; the first when empty
    std::optional<double> scale; ///< of the logical density; empty leaves it to the screen
    QString style;               ///< another style of Qt; our own when empty
    QString screenshot;          ///< the file to write; empty opens a window
    bool rightToLeft = false;
    bool disabled = false;
    bool pseudo = false;
    bool listPages = false;
    bool help = false;
};

/** What is wrong with a command line, or what it asks for. */
struct ParsedOptions
{
    GalleryOptions options;
    QString error; ///< empty when there is none
};

/** Needs no application object. The style is not looked for: that takes one. */
ParsedOptions parseOptions(const QStringList &arguments);

/** What the options do, for people. Needs a QCoreApplication. */
QString optionsHelp();

} // namespace Vireling
