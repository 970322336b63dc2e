#include "crash_reporter/display_fallback.h"
#include "crash_reporter/font_configuration.h"
#include "crash_reporter/r4_crash_reporter_application.h"
#include "vireling/palette/process_initialisers.h"

int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    Vireling::initialiseResources();
    Vireling::initialiseToolkit();
    useOwnFontConfiguration();
    restartWithoutDisplayOnAbort(argv);
    R4CrashReporterApplication app(argc, argv);
    return app.exec();
}
