// Where FileWidget is, and how it gets elsewhere: the two locations and the folders below.

#include "common/file_widget.h"

#include "common/usb_support.h"

#include <QFileInfo>
#include <QFileSystemModel>

QModelIndex FileWidget::internalRoot() const
{
    return model->index(internalStoragePath);
}

QModelIndex FileWidget::usbRoot() const
{
    return model->index(USBSupport::instance()->mountPoint());
}

/** The root of the location that the index is in; invalid when it is in neither. */
QModelIndex FileWidget::locationOf(const QModelIndex &index) const
{
    const QModelIndex internal = internalRoot();
    const QModelIndex usb = usbRoot();
    QModelIndex ancestor = index;
    while (ancestor.isValid() && ancestor != internal && ancestor != usb)
        ancestor = ancestor.parent();
    return ancestor;
}

void FileWidget::setDirectory(const QString &path)
{
    // An application that never set an internal root may go anywhere: all begins with nothing.
    if (!path.startsWith(internalStoragePath)) {
        USBSupport *usb = USBSupport::instance();
        if (!path.startsWith(usb->mountPoint()))
            return;
        if (!usb->isUsbKeyMounted() && !usb->mount())
            return;
    }
    goTo(model->index(path));
}

void FileWidget::setInternalStoragePath(const QString &path)
{
    internalStoragePath = path;
    setDirectory(path);
}

/**
 * Without a folder the list would show the top of the file system, and offer to delete
 * it: that row is hidden. What was selected elsewhere must not stay the target of anything.
 */
void FileWidget::showFolder(const QModelIndex &index)
{
    const QModelIndex folder = index; // the selection's own, perhaps
    listView->selectionModel()->clear();
    listView->setRootIndex(folder);
    listView->scrollToTop();
    for (int row = 0; !folder.isValid() && row < model->rowCount(); ++row)
        listView->setRowHidden(row, true);
}

void FileWidget::goTo(const QModelIndex &index)
{
    showFolder(index);
    refreshComboBox();
}

void FileWidget::goToInternalStorage()
{
    USBSupport *usb = USBSupport::instance();
    if (usb->isUsbKeyMounted())
        usb->unmount();
    setDirectory(internalStoragePath);
}

void FileWidget::goToUsbKey()
{
    USBSupport *usb = USBSupport::instance();
    if (usb->isUsbKeyMounted() || usb->mount())
        setDirectory(usb->mountPoint());
}

void FileWidget::goToLocation(int entry)
{
    const QString path = locationComboBox->itemData(entry).toList().value(0).toString();
    const QModelIndex location = locationOf(model->index(path));
    USBSupport *usb = USBSupport::instance();
    // No path, or a folder that has gone: the box must not say that we went there.
    bool reached = model->index(path).isValid();
    if (reached && usb->isUsbKeyMounted() && location == internalRoot())
        usb->unmount();
    else if (reached && !usb->isUsbKeyMounted() && location == usbRoot())
        reached = usb->mount();
    // Unmounting replaced the model.
    if (reached)
        goTo(model->index(path));
    else
        refreshNow();
}

void FileWidget::goUp()
{
    const QModelIndex root = listView->rootIndex();
    if (!root.isValid() || root == internalRoot() || root == usbRoot())
        return;
    itemActivated(model->index(model->fileInfo(root).absolutePath()));
}

void FileWidget::makeFolder()
{
    const QModelIndex root = listView->rootIndex();
    if (!root.isValid())
        return;
    const QString baseName = tr("New Folder");
    const QString path = model->filePath(root) + QLatin1Char('/');
    QString name = baseName;
    for (int number = 1; QFileInfo::exists(path + name); ++number)
        name = baseName + QStringLiteral(" %1").arg(number);
    const QModelIndex folder = model->mkdir(root, name);
    if (!folder.isValid())
        return;
    listView->setCurrentIndex(folder);
    listView->editName(folder);
}

/** A new folder is sorted in while its name is typed, perhaps to where nobody sees it. */
void FileWidget::keepEditorInSight()
{
    const QModelIndex current = listView->currentIndex();
    if (current.isValid() && listView->isPersistentEditorOpen(current))
        listView->scrollTo(current);
}

void FileWidget::usbKeyInserted()
{
    if (!usbKeyDisabled)
        usbDiskButton->setEnabled(true);
    refreshUnlessChoosing();
    // USBSupport counts the key as present only after it has told everybody.
    refreshLater();
}

void FileWidget::usbKeyRemoved()
{
    const QModelIndex location = locationOf(listView->rootIndex());
    if (location.isValid() && location == usbRoot() && !internalStorageDisabled)
        showFolder(internalRoot());
    usbDiskButton->setEnabled(false);
    refreshUnlessChoosing();
    refreshLater();
}

/** A fresh model holds none of the watches on the unmounted tree. */
void FileWidget::usbKeyUnmounted()
{
    model->disconnect(this);
    model->deleteLater();
    makeModel();
    setNameFilters(nameFilters.join(QLatin1Char(' ')));
    connectModel();
    setMode(mode);
}

/** When the folder shown is deleted under us we go to the nearest that is left of its location. */
void FileWidget::rowsVanish(const QModelIndex &parent, int first, int last)
{
    const QModelIndex location = locationOf(listView->rootIndex());
    QModelIndex child = listView->rootIndex();
    while (child.isValid() && child != location && child.parent() != parent)
        child = child.parent();
    const bool isGoing =
        child.isValid() && child.parent() == parent && child.row() >= first && child.row() <= last;
    if (!isGoing)
        return;
    const QPersistentModelIndex left = child == location ? QModelIndex() : parent;
    const auto leave = [this, left] {
        if (listView->rootIndex().isValid())
            return;
        showFolder(left.model() == model ? QModelIndex(left) : QModelIndex());
        refreshLater();
    };
    QMetaObject::invokeMethod(this, leave, Qt::QueuedConnection);
}
