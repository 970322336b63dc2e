#include "vireling/style/elements/line_edit.h"

namespace Vireling {

bool paintLineEditPanel(const ElementContext &)
{
    return false;
}

bool paintLineEditFrame(const ElementContext &)
{
    return false;
}

std::optional<QRect> lineEditContents(const ElementContext &)
{
    return std::nullopt;
}

std::optional<QSize> lineEditSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
