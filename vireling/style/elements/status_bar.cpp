#include "vireling/style/elements/status_bar.h"

namespace Vireling {

bool paintStatusBar(const ElementContext &)
{
    return false;
}

bool paintStatusBarItem(const ElementContext &)
{
    return false;
}

} // namespace Vireling
