// The combo box of FileWidget: locations, their folders, and the way to the present one.

#include "common/file_icons.h"
#include "common/file_widget.h"
#include "common/usb_support.h"
#include "tessel_core/error_report.h"

#include <QFileSystemModel>

void FileWidget::refreshComboBox()
{
    locationComboBox->clear();
    const QModelIndex current = listView->rootIndex();
    if (!current.isValid()) {
        Tessel::printError("refreshComboBox called for invalid rootIndex\n");
        return;
    }
    const USBSupport *usb = USBSupport::instance();
    const QModelIndex location = locationOf(current);
    const bool isOnKey = location.isValid() && location == usbRoot();
    QModelIndexList branch;
    for (QModelIndex folder = current; folder != location; folder = folder.parent())
        branch.prepend(folder);

    // The names of the locations are not translated: applications look for them.
    locationComboBox->addItem(fileIcon(FileIcon::InternalStorage),
                              QStringLiteral("Internal Storage"),
                              QVariantList{internalStoragePath});
    if (!isOnKey && (internalRoot().isValid() || internalStoragePath.isEmpty()))
        listFolders(internalRoot(), branch);
    if (!usbKeyDisabled && usb->isUsbKeyPresent()) {
        locationComboBox->addItem(fileIcon(FileIcon::UsbKey), QStringLiteral("USB Key"),
                                  QVariantList{usb->mountPoint()});
        if (isOnKey)
            listFolders(location, branch);
    }
    selectEntryOf(current == location && !isOnKey ? internalStoragePath : model->filePath(current));
}

/** The folders of a location; below the one on the way to the present folder those that follow. */
void FileWidget::listFolders(const QModelIndex &root, const QModelIndexList &branch)
{
    if (root.isValid() && model->canFetchMore(root))
        model->fetchMore(root);
    for (int row = 0; row < model->rowCount(root); ++row) {
        const QModelIndex folder = model->index(row, 0, root);
        if (!model->isDir(folder))
            continue;
        listFolder(folder, 1);
        if (branch.value(0) != folder)
            continue;
        for (int level = 2; level <= branch.size(); ++level)
            listFolder(branch.at(level - 1), level);
    }
}

void FileWidget::listFolder(const QModelIndex &folder, int level)
{
    locationComboBox->addItem(folder.data(Qt::DecorationRole).value<QIcon>(),
                              model->fileName(folder),
                              QVariantList{model->filePath(folder), level});
}

/** No entry when none is that of the path: in a location that is not listed, or in neither. */
void FileWidget::selectEntryOf(const QString &path)
{
    int entry = locationComboBox->count() - 1;
    while (entry >= 0 && locationComboBox->itemData(entry).toList().value(0) != path)
        --entry;
    locationComboBox->setCurrentIndex(entry);
}

bool FileWidget::isChoosingLocation() const
{
    return locationComboBox->view()->isVisible();
}

void FileWidget::refreshUnlessChoosing()
{
    if (!isChoosingLocation())
        refreshComboBox();
}

void FileWidget::refreshLater()
{
    refreshTimer.start();
}

/** Entries do not move under the finger; the popup asks for this again when it closes. */
void FileWidget::refreshNow()
{
    if (isChoosingLocation())
        return;
    if (listView->rootIndex().isValid())
        refreshComboBox();
    else
        locationComboBox->clear();
}
