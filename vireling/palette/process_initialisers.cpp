#include "vireling/palette/process_initialisers.h"

#include <QGuiApplication>
#include <QtGlobal>

// Q_INIT_RESOURCE declares a function of the namespace it stands in: the bundle's
// is global.
static bool registerBundle()
{
    Q_INIT_RESOURCE(vireling);
    return true;
}

namespace Vireling {

void initialiseHighDpi()
{
    QCoreApplication::setAttribute(Qt::AA_EnableHighDpiScaling, true);
    QCoreApplication::setAttribute(Qt::AA_UseHighDpiPixmaps, true);
    QGuiApplication::setHighDpiScaleFactorRoundingPolicy(
        Qt::HighDpiScaleFactorRoundingPolicy::Round);
}

void initialiseResources()
{
    [[maybe_unused]] static const bool registered = registerBundle();
}

void initialiseToolkit() {}

} // namespace Vireling
