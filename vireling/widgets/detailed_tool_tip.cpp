#include "vireling/widgets/detailed_tool_tip.h"
namespace Vireling {
QString detailedToolTip(const QString &title, const QString &text)
{
    return title + text;
}
bool isDetailedToolTip(const QWidget *)
{
    return false;
}
QString cssFontShorthand(const QFont &)
{
    return {};
}
} // namespace Vireling
