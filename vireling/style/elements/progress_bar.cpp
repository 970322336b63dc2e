#include "vireling/style/elements/progress_bar.h"

namespace Vireling {

bool paintProgressBar(const ElementContext &)
{
    return false;
}

bool paintProgressBarGroove(const ElementContext &)
{
    return false;
}

bool paintProgressBarContents(const ElementContext &)
{
    return false;
}

bool paintProgressBarLabel(const ElementContext &)
{
    return false;
}

bool paintProgressChunk(const ElementContext &)
{
    return false;
}

std::optional<QRect> progressBarPart(const ElementContext &, QStyle::SubElement)
{
    return std::nullopt;
}

std::optional<QSize> progressBarSize(const ElementContext &, const QSize &)
{
    return std::nullopt;
}

} // namespace Vireling
