#include "vireling/style_icon_engine/style_icons.h"
namespace Vireling {
QIcon styleIcon(StyleIcon)
{
    return {};
}
QIcon makeIcon(const QString &path)
{
    return QIcon(path);
}
} // namespace Vireling
