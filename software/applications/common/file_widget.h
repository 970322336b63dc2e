#pragma once

#include "ui_file_widget.h"

#include <QByteArray>
#include <QDir>
#include <QModelIndexList>
#include <QString>
#include <QStringList>
#include <QTimer>
#include <QWidget>

class QFileSystemModel;
class QKeyEvent;

/**
 * The file panel of the appliance's applications: browses internal storage and the USB
 * key, takes a name or a choice, and renames, deletes, copies and pastes on the way.
 *
 * It mounts the key through USBSupport when the operator goes there, and unmounts it when
 * the operator leaves it or cancels; not when it is destroyed: after confirm() the key is
 * the caller's. GUI thread.
 */
class FileWidget : public QWidget, private Ui_FileWidget
{
    Q_OBJECT

public:
    enum Mode : qint32
    {
        CreateMode = 0,
        LoadMode = 1,
        SaveAsMode = 2,
        BackupMode = 3,
        FolderMode = 4, ///< picks a folder; files are not listed
    };

    explicit FileWidget(QWidget *parent = nullptr, Qt::WindowFlags flags = Qt::WindowFlags());

    /** What is listed and what the action button reads; CreateMode at first. */
    void setMode(Mode mode);
    /**
     * Goes to an absolute path below one of the two locations, mounting the key if it is
     * there; ignored for any other path, and when the key cannot be mounted.
     */
    void setDirectory(const QString &path);
    /** The root of internal storage, empty at first; goes there. */
    void setInternalStoragePath(const QString &path);
    /** Blank-separated patterns, "*.cdp"; what matches none is hidden. Empty shows all. */
    void setNameFilters(const QString &filters);
    void setInternalStorageDisabled(bool disabled);
    void setUsbKeyDisabled(bool disabled);
    void setFileName(const QString &name);
    /** The text before the name, "Name:" at first. */
    void setCaption(const QString &caption);

    /**
     * What the operator chose: an absolute path with the extension of the filters, or a
     * folder's with a separator at its end in FolderMode; empty while there is no name.
     */
    QString selectedFilePath() const;
    /** Where the operator was when cancelling. */
    QDir directory() const;

    /** Lists the locations and the folders on the way to the present one anew. */
    void refreshComboBox();

signals:
    void confirm();
    void cancel();
    void projectRenamed(const QString &oldName, const QString &newName);
    void newPath(const QString &path);

protected:
    void showEvent(QShowEvent *event) override;
    /** What Return and the focus do, and the locations anew once their popup is closed. */
    bool eventFilter(QObject *watched, QEvent *event) override;

private:
    // file_widget.cpp: the panel, its modes and its answer
    void connectControls();
    void connectLocations();
    void makeModel();
    void connectModel();
    void takeReturn(QObject *watched, QKeyEvent *event);
    void enterList(QEvent *event);
    void nameEdited(const QString &name);
    bool mayOverwrite(const QString &path);
    void onOk();
    void onCancel();
    void itemActivated(const QModelIndex &index);
    void currentItemChanged(const QModelIndex &current);

    // file_widget_locations.cpp: where it is and how it gets elsewhere
    QModelIndex internalRoot() const;
    QModelIndex usbRoot() const;
    QModelIndex locationOf(const QModelIndex &index) const;
    void showFolder(const QModelIndex &index);
    void goTo(const QModelIndex &index);
    void goToInternalStorage();
    void goToUsbKey();
    void goToLocation(int entry);
    void goUp();
    void makeFolder();
    void usbKeyInserted();
    void usbKeyRemoved();
    void usbKeyUnmounted();
    void rowsVanish(const QModelIndex &parent, int first, int last);
    void keepEditorInSight();

    // file_widget_combo.cpp: the list of locations
    void listFolders(const QModelIndex &root, const QModelIndexList &branch);
    void listFolder(const QModelIndex &folder, int level);
    void selectEntryOf(const QString &path);
    bool isChoosingLocation() const;
    void refreshUnlessChoosing();
    void refreshLater();
    void refreshNow();

    // file_widget_operations.cpp: what the list's menu asks for
    void deleteFile(const QModelIndex &index);
    void renameFile(const QModelIndex &index, const QString &newName);
    void copyFile(const QModelIndex &index);
    void pasteFile(const QModelIndex &index);

    QFileSystemModel *model = nullptr;
    QString internalStoragePath;
    QDir lastDirectory;
    bool internalStorageDisabled = false;
    bool usbKeyDisabled = false;
    QString copiedFileName;
    QByteArray copiedFileData;
    QStringList nameFilters;
    Mode mode = CreateMode;
    /** Collects what the model reports, entry by entry, into one refresh. */
    QTimer refreshTimer;
};
