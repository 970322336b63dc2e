#include "vireling/style/element_context.h"

#include "vireling/palette/user_palette.h"

namespace Vireling {

QColor ElementContext::colour(ColourRole role, QPalette::ColorGroup group) const
{
    if (const std::optional<UserPalette> own = userPalette(widget))
        return own->brush(group, role).color();
    return style.palette().colour(group, role);
}

} // namespace Vireling
