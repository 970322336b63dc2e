#include "crash_reporter/progress_window.h"

#include <QCloseEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QProgressBar>
#include <QVBoxLayout>

#include <algorithm>

namespace {

/** A bar counts in int, which the bytes of a large dump exceed. */
constexpr int steps = 1000;
constexpr int widthInLetters = 60;

QString asText(quint64 bytes)
{
    return QLocale().formattedDataSize(qint64(bytes), 1, QLocale::DataSizeSIFormat);
}

} // namespace

ProgressWindow::ProgressWindow(QWidget *parent)
    : Vireling::Dialog(parent, Qt::Dialog | Qt::CustomizeWindowHint | Qt::WindowTitleHint)
    , amount(new QLabel)
    , bar(new QProgressBar)
{
    setWindowTitle(tr("Saving the crash report"));
    setWindowModality(Qt::ApplicationModal);
    bar->setRange(0, steps);
    bar->setTextVisible(false);
    bar->setAccessibleName(windowTitle());
    bar->setMinimumWidth(widthInLetters * fontMetrics().averageCharWidth());
    auto *layout = new QVBoxLayout(this);
    layout->addWidget(amount, 0, Qt::AlignLeft); // where reading begins, which it mirrors itself
    layout->addWidget(bar);
    layout->setSizeConstraint(QLayout::SetFixedSize); // nothing to enlarge
}

void ProgressWindow::setProgress(quint64 done, quint64 inAll)
{
    const quint64 shown = std::min(done, inAll);
    amount->setText(tr("%1 of %2").arg(asText(shown), asText(inAll)));
    bar->setValue(inAll == 0 ? 0 : int(double(shown) / double(inAll) * steps));
}

void ProgressWindow::keyPressEvent(QKeyEvent *event)
{
    event->accept(); // Escape would reject a dialog
}

void ProgressWindow::closeEvent(QCloseEvent *event)
{
    event->setAccepted(!event->spontaneous());
}
