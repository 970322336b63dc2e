// Opens a folder in the file dialog of the appliance ("panel") or in Qt's own ("peer"),
// both in the same style, and prints the milliseconds from the dialog's construction until
// its list has been painted with the first files, and with all of them.
//
//   dialog_bench panel|peer FOLDER

#include "common/file_dialog.h"
#include "common/file_list_view.h"
#include "common/file_widget.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/style/appearance.h"

#include <QApplication>
#include <QDir>
#include <QElapsedTimer>
#include <QFileDialog>
#include <QListView>

#include <cstdio>
#include <memory>

namespace {

const QString filter = QStringLiteral("*.cdp");

/** Ends the event loop once the list has been painted with all its files. */
class PaintWatch : public QObject
{
public:
    PaintWatch(QListView *watched, int filesInAll, const QElapsedTimer &running)
        : list(watched)
        , files(filesInAll)
        , time(running)
    {
        list->viewport()->installEventFilter(this);
    }

    bool eventFilter(QObject *watched, QEvent *event) override
    {
        if (event->type() == QEvent::Paint)
            QMetaObject::invokeMethod(
                this, [this] { painted(); }, Qt::QueuedConnection);
        return QObject::eventFilter(watched, event);
    }

private:
    void painted()
    {
        const int rows = list->model()->rowCount(list->rootIndex());
        const double now = double(time.nsecsElapsed()) * 1e-6;
        if (rows > 0 && first < 0)
            first = now;
        if (rows < files)
            return;
        std::printf("%.3f %.3f\n", first, now);
        QCoreApplication::quit();
    }

    QListView *list;
    int files;
    QElapsedTimer time;
    double first = -1;
};

std::unique_ptr<QDialog> panel(const QString &folder)
{
    auto dialog = std::make_unique<FileDialog>();
    FileWidget *files = dialog->fileWidget();
    files->setMode(FileWidget::BackupMode);
    files->setInternalStoragePath(folder);
    files->setNameFilters(filter);
    return dialog;
}

std::unique_ptr<QDialog> peer(const QString &folder)
{
    auto dialog = std::make_unique<QFileDialog>(nullptr, QString(), folder);
    dialog->setOption(QFileDialog::DontUseNativeDialog);
    dialog->setViewMode(QFileDialog::List);
    dialog->setAcceptMode(QFileDialog::AcceptSave);
    dialog->setNameFilter(filter);
    return dialog;
}

} // namespace

int main(int argc, char **argv)
{
    Vireling::initialiseHighDpi();
    Vireling::initialiseResources();
    QApplication app(argc, argv);
    Vireling::installAppearance(Vireling::Theme::Dark);
    if (argc != 3)
        return 2;
    const QString folder = QFile::decodeName(argv[2]);
    const int files = QDir(folder).entryList({filter}, QDir::Files).size();

    QElapsedTimer time;
    time.start();
    const bool ours = qstrcmp(argv[1], "panel") == 0;
    const std::unique_ptr<QDialog> dialog = ours ? panel(folder) : peer(folder);
    const PaintWatch watch(dialog->findChild<QListView *>("listView"), files, time);
    dialog->show();
    return QApplication::exec();
}
