#include "vireling/window/window_control.h"

#include <QCoreApplication>

namespace Vireling {

QString windowControlText(WindowControl control)
{
    switch (control) {
    case WindowControl::Close:
        return QCoreApplication::translate("WindowControl", "Close");
    case WindowControl::Maximise:
        return QCoreApplication::translate("WindowControl", "Maximise");
    case WindowControl::Minimise:
        return QCoreApplication::translate("WindowControl", "Minimise");
    case WindowControl::Restore:
        break;
    }
    // Numbers beyond the list, which reach us through queued signals, also read so.
    return QCoreApplication::translate("WindowControl", "Restore");
}

} // namespace Vireling
