#include "common/file_widget.h"

#include "common/file_combo_menu_delegate.h"
#include "common/file_icons.h"
#include "common/file_names.h"
#include "common/file_panel_model.h"
#include "common/usb_support.h"

#include <QKeyEvent>
#include <QMessageBox>
#include <QPointer>
#include <QSignalBlocker>

namespace {

constexpr QDir::Filters filesAndFolders = QDir::AllEntries | QDir::AllDirs | QDir::NoDotAndDotDot;
constexpr QDir::Filters foldersOnly = QDir::AllDirs | QDir::NoDotAndDotDot;

bool isReturn(const QEvent &event)
{
    if (event.type() != QEvent::KeyPress)
        return false;
    const int key = static_cast<const QKeyEvent &>(event).key();
    return key == Qt::Key_Return || key == Qt::Key_Enter;
}

} // namespace

FileWidget::FileWidget(QWidget *parent, Qt::WindowFlags flags)
    : QWidget(parent, flags)
    , lastDirectory(QString())
{
    setupUi(this);
    gridLayout->setContentsMargins(0, 0, 0, 0);
    locationComboBox->setItemDelegate(new FileComboMenuDelegate(this, locationComboBox));
    localDiskButton->setIcon(fileIcon(FileIcon::InternalStorage));
    usbDiskButton->setIcon(fileIcon(FileIcon::UsbKey));
    newFolderButton->setIcon(fileIcon(FileIcon::NewFolder));
    parentFolderButton->setIcon(fileIcon(FileIcon::UpDirectory));
    makeModel();
    connectModel();
    connectControls();
    connectLocations();
    cancelButton->setShortcut(Qt::Key_Escape);
    usbDiskButton->setEnabled(USBSupport::instance()->isUsbKeyPresent());
    setMode(mode);
}

void FileWidget::connectControls()
{
    connect(okButton, &QPushButton::clicked, this, &FileWidget::onOk);
    connect(cancelButton, &QPushButton::clicked, this, &FileWidget::onCancel);
    connect(configurationNameLineEdit, &QLineEdit::returnPressed, this, &FileWidget::onOk);
    connect(configurationNameLineEdit, &QLineEdit::textEdited, this, &FileWidget::nameEdited);
    connect(listView, &FileListView::activated, this, &FileWidget::itemActivated);
    connect(listView, &FileListView::deleteIndex, this, &FileWidget::deleteFile);
    connect(listView, &FileListView::renameIndex, this, &FileWidget::renameFile);
    connect(listView, &FileListView::copyIndex, this, &FileWidget::copyFile);
    connect(listView, &FileListView::pasteAtIndex, this, &FileWidget::pasteFile);
    configurationNameLineEdit->installEventFilter(this);
    listView->installEventFilter(this);
}

void FileWidget::connectLocations()
{
    connect(locationComboBox, QOverload<int>::of(&QComboBox::activated), this,
            &FileWidget::goToLocation);
    connect(parentFolderButton, &QToolButton::clicked, this, &FileWidget::goUp);
    connect(newFolderButton, &QToolButton::clicked, this, &FileWidget::makeFolder);
    connect(localDiskButton, &QToolButton::clicked, this, &FileWidget::goToInternalStorage);
    connect(usbDiskButton, &QToolButton::clicked, this, &FileWidget::goToUsbKey);
    const USBSupport *usb = USBSupport::instance();
    connect(usb, &USBSupport::usbKeyInserted, this, &FileWidget::usbKeyInserted);
    connect(usb, &USBSupport::usbKeyRemoved, this, &FileWidget::usbKeyRemoved);
    connect(usb, &USBSupport::usbKeyUnmounted, this, &FileWidget::usbKeyUnmounted);
    locationComboBox->view()->installEventFilter(this);
    refreshTimer.setSingleShot(true);
    connect(&refreshTimer, &QTimer::timeout, this, &FileWidget::refreshNow);
}

void FileWidget::makeModel()
{
    model = new FilePanelModel(this);
    // The model reports what is in a folder, and sorts it, later than it is entered.
    connect(model, &QFileSystemModel::directoryLoaded, this, &FileWidget::refreshLater);
    connect(model, &QFileSystemModel::layoutChanged, this, &FileWidget::refreshLater);
    connect(model, &QFileSystemModel::rowsAboutToBeRemoved, this, &FileWidget::rowsVanish);
}

/** Shows the model in the list, nowhere yet. A list makes a selection model for each model. */
void FileWidget::connectModel()
{
    listView->setModel(model);
    showFolder(QModelIndex());
    connect(listView->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &FileWidget::currentItemChanged);
    connect(model, &QFileSystemModel::layoutChanged, this, &FileWidget::keepEditorInSight);
}

void FileWidget::setMode(Mode newMode)
{
    mode = newMode;
    switch (mode) {
    case CreateMode:
        model->setFilter(filesAndFolders);
        okButton->setText(tr("Create"));
        return;
    case LoadMode:
        model->setFilter(filesAndFolders);
        okButton->setText(tr("Load"));
        return;
    case SaveAsMode:
        model->setFilter(filesAndFolders);
        okButton->setText(tr("Save As"));
        return;
    case BackupMode:
        model->setFilter(filesAndFolders);
        okButton->setText(tr("Backup"));
        return;
    case FolderMode:
        model->setFilter(foldersOnly);
        break;
    }
    okButton->setText(tr("OK"));
}

void FileWidget::setNameFilters(const QString &filters)
{
    nameFilters = filters.split(QLatin1Char(' '), Qt::KeepEmptyParts, Qt::CaseSensitive);
    // A model that is given one empty pattern disables every file.
    model->setNameFilters(filters.isEmpty() ? QStringList() : nameFilters);
    model->setNameFilterDisables(filters.isEmpty());
}

void FileWidget::setInternalStorageDisabled(bool disabled)
{
    internalStorageDisabled = disabled;
    localDiskButton->setEnabled(!disabled);
}

void FileWidget::setUsbKeyDisabled(bool disabled)
{
    usbKeyDisabled = disabled;
    usbDiskButton->setEnabled(!disabled && USBSupport::instance()->isUsbKeyPresent());
    refreshComboBox();
}

void FileWidget::setFileName(const QString &name)
{
    configurationNameLineEdit->setText(name);
}

void FileWidget::setCaption(const QString &caption)
{
    captionLabel->setText(caption);
}

QString FileWidget::selectedFilePath() const
{
    const QModelIndex root = listView->rootIndex();
    // Nowhere has an empty path: names would count from the top of the file system.
    if (!root.isValid())
        return {};
    const QString path = pathOfName(model->filePath(root), configurationNameLineEdit->text());
    if (path.isEmpty())
        return {};
    if (mode == FolderMode)
        return path + QDir::separator();
    return withExtension(path, nameFilters);
}

QDir FileWidget::directory() const
{
    return lastDirectory;
}

void FileWidget::showEvent(QShowEvent *event)
{
    configurationNameLineEdit->setFocus(Qt::OtherFocusReason);
    QWidget::showEvent(event);
}

bool FileWidget::eventFilter(QObject *watched, QEvent *event)
{
    if (watched == locationComboBox->view()) {
        if (event->type() == QEvent::Hide)
            refreshLater();
    } else if (watched == listView && event->type() == QEvent::FocusIn) {
        enterList(event);
        return true;
    } else if (isReturn(*event)) {
        takeReturn(watched, static_cast<QKeyEvent *>(event));
        return true;
    }
    return QWidget::eventFilter(watched, event);
}

/**
 * Both the list and the name pass Return on after they acted on it, and a dialog would then
 * press its default button: a second question about the same file, or a file saved
 * because a folder was entered. So it ends here, and a held one acts once.
 */
void FileWidget::takeReturn(QObject *watched, QKeyEvent *event)
{
    if (!event->isAutoRepeat())
        watched->event(event);
    event->accept();
}

/** The focus alone makes a list's first item current: nobody chose it, and a typed name stays. */
void FileWidget::enterList(QEvent *event)
{
    const QSignalBlocker quiet(listView->selectionModel());
    static_cast<QObject *>(listView)->event(event);
}

/** The name is that of a file in the folder shown: typed or pasted, it cannot lead elsewhere. */
void FileWidget::nameEdited(const QString &name)
{
    const QString allowed = withoutSeparators(name);
    if (allowed == name)
        return;
    const int cursor = configurationNameLineEdit->cursorPosition() - (name.size() - allowed.size());
    configurationNameLineEdit->setText(allowed);
    configurationNameLineEdit->setCursorPosition(cursor);
}

void FileWidget::onOk()
{
    const QString path = selectedFilePath();
    if (path.isEmpty())
        return;
    const bool exists = QFileInfo::exists(path);
    const bool mustExist = mode == LoadMode || mode == FolderMode;
    if (mustExist ? exists : !exists || mayOverwrite(path))
        emit confirm();
}

/** False as well when the panel, or the path with its key, has gone during the question. */
bool FileWidget::mayOverwrite(const QString &path)
{
    const QPointer<FileWidget> self(this);
    const auto answer =
        QMessageBox::question(window(), tr("File exists"),
                              tr("The selected file already exists.\nDo you want to overwrite it?"),
                              QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    return self && answer == QMessageBox::Yes && selectedFilePath() == path;
}

void FileWidget::onCancel()
{
    const QModelIndex root = listView->rootIndex();
    if (root.isValid())
        lastDirectory = QDir(model->filePath(root));
    USBSupport *usb = USBSupport::instance();
    if (usb->isUsbKeyMounted())
        usb->unmount();
    emit cancel();
}

void FileWidget::itemActivated(const QModelIndex &index)
{
    if (!index.isValid())
        return;
    const bool isFolder = model->isDir(index);
    if (!isFolder || mode == FolderMode)
        configurationNameLineEdit->setText(index.data().toString());
    if (isFolder)
        goTo(index);
    else if (mode != FolderMode)
        okButton->click();
}

void FileWidget::currentItemChanged(const QModelIndex &current)
{
    if (current.isValid() && (mode == FolderMode || !model->isDir(current)))
        configurationNameLineEdit->setText(current.data().toString());
}
