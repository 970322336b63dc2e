#include "vireling/style/elements/tree_view.h"

namespace Vireling {

bool paintBranch(const ElementContext &)
{
    return false;
}

std::optional<QRect> disclosureItem(const ElementContext &)
{
    return std::nullopt;
}

} // namespace Vireling
