#include "crash_reporter/package_progress.h"

#include "crash_reporter/progress_window.h"

#include <QGuiApplication>

namespace {

constexpr qint64 patienceMilliseconds = 1000;
constexpr qint64 turnMilliseconds = 50;

} // namespace

PackageProgress::PackageProgress(QWidget *screenOfOperator)
    : screen(screenOfOperator)
{
    sinceStart.start();
    sinceTurn.start();
}

PackageProgress::~PackageProgress()
{
    if (!window)
        return;
    // Handled while the window still keeps it from the screens behind.
    QGuiApplication::sync();
    delete window;
}

void PackageProgress::advance(quint64 payloadBytesDone)
{
    if (sinceTurn.elapsed() < turnMilliseconds || sinceStart.elapsed() < patienceMilliseconds)
        return;
    if (screen)
        show(payloadBytesDone);
    QCoreApplication::processEvents(QEventLoop::ExcludeUserInputEvents);
    sinceTurn.start();
}

void PackageProgress::show(quint64 payloadBytesDone)
{
    if (!window)
        window = new ProgressWindow(screen);
    window->setProgress(payloadBytesDone, bytesInAll);
    window->show();
}
