#pragma once

#include "vireling/style/element_context.h"

#include <vector>

/** What is read, or seen, on what, in one state of one control. */
struct ContrastPair
{
    const char *what;
    QStyle::State state;
    QColor (*foreground)(const Vireling::ElementContext &context);
    QColor (*ground)(const Vireling::ElementContext &context);
    /** At least this much to one: 4.5 for text, 3 for indicators and focus. */
    double required;
    /** Why the palette does not allow it in the theme; null where it does. */
    const char *darkReason;
    const char *lightReason;
};

/** Every pair the style draws in enabled controls. */
std::vector<ContrastPair> contrastPairs();
