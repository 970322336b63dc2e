#include "crash_reporter/r4_crash_reporter_application.h"

int main(int argc, char **argv)
{
    R4CrashReporterApplication app(argc, argv);
    return app.exec();
}
