// What FileWidget does to files for its list's menu: delete, rename, copy and paste.

#include "common/file_widget.h"

#include "tessel_core/error_report.h"

#include <QFileInfo>
#include <QFileSystemModel>
#include <QItemSelectionModel>
#include <QMessageBox>
#include <QPointer>

#include <limits>
#include <new>

namespace {

// Field reports are searched for this place, wherever the check stands by now.
constexpr int assertionLine = 682;
constexpr char assertionFile[] = "software/applications/common/file_widget";

/**
 * As the static functions of QMessageBox, but a file called "<b>" reads as it is called.
 * NoButton when the window went away with the question.
 */
QMessageBox::StandardButton
showBox(QMessageBox::Icon icon, QWidget *window, const QString &title, const QString &text,
        QMessageBox::StandardButtons buttons = QMessageBox::Ok,
        QMessageBox::StandardButton defaultButton = QMessageBox::NoButton)
{
    const QPointer<QMessageBox> box = new QMessageBox(icon, title, text, buttons, window);
    box->setTextFormat(Qt::PlainText);
    box->setDefaultButton(defaultButton);
    const int answer = box->exec();
    delete box;
    return static_cast<QMessageBox::StandardButton>(answer);
}

/**
 * Deletes an entry and, of a folder, what it lists. A link goes without its target. Nothing
 * happens for an invalid index: the model would take it for the working directory.
 */
bool removeEntry(QFileSystemModel &model, const QModelIndex &index)
{
    if (!index.isValid())
        return false;
    const QFileInfo entry(model.filePath(index));
    if (entry.isSymLink() || !entry.isDir()) {
        // The model's remove() says it has removed a pipe or a device, and has not.
        return entry.isFile() && !entry.isSymLink() ? model.remove(index)
                                                    : QFile::remove(entry.filePath());
    }
    if (model.hasChildren(index)) {
        const QFileInfoList children =
            QDir(entry.filePath())
                .entryInfoList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Unsorted);
        for (const QFileInfo &child : children)
            removeEntry(model, model.index(child.filePath()));
    }
    return model.rmdir(index);
}

/** Whether the index is one of the model, which an unmounted key's no longer is. */
bool isEntryOf(const QModelIndex &index, const QFileSystemModel *model)
{
    return index.isValid() && index.model() == model;
}

QString pathIn(const QString &folder, const QString &name)
{
    return folder + QLatin1Char('/') + name;
}

/** The whole file in one read; false for what is no readable file or too large for memory. */
bool readWhole(const QString &path, QByteArray &data)
{
    QFile file(path);
    // A pipe would block the panel, so only files are opened.
    if (!QFileInfo(path).isFile() || !file.open(QIODevice::ReadOnly))
        return false;
    const qint64 size = file.size();
    if (size > std::numeric_limits<int>::max())
        return false;
    try {
        data.resize(static_cast<int>(size));
    } catch (const std::bad_alloc &) {
        return false;
    }
    return file.read(data.data(), size) == size;
}

/** Also by a link that leads nowhere. */
bool isTaken(const QString &path)
{
    const QFileInfo present(path);
    return present.exists() || present.isSymLink();
}

/** The whole data in one write, over a file of that name if need be, but over nothing else. */
bool writeWhole(const QString &path, const QByteArray &data)
{
    if (isTaken(path) && !QFileInfo(path).isFile())
        return false;
    // Unbuffered: what a full medium refuses must show in this write, not after it.
    QFile file(path);
    return file.open(QIODevice::WriteOnly | QIODevice::Truncate | QIODevice::Unbuffered) &&
           file.write(data) == data.size();
}

} // namespace

void FileWidget::deleteFile(const QModelIndex &index)
{
    if (!isEntryOf(index, model))
        return;
    // While the question is open the model may list its folder anew, and no index lives
    // through that; with an unmounted key it goes itself, and the path names nothing then.
    const QPointer<QFileSystemModel> asked = model;
    const QString path = model->filePath(index);
    const QString kind = model->isDir(index) ? tr("Folder") : tr("File");
    const QString name = QFileInfo(path).baseName();
    const QString title = tr("Delete %1").arg(kind);
    const QMessageBox::StandardButton answer =
        showBox(QMessageBox::Question, window(), title,
                tr("Are you sure you want to delete the %1 \"%2\"?").arg(kind, name),
                QMessageBox::Yes | QMessageBox::No, QMessageBox::No);
    if (answer != QMessageBox::Yes || asked != model)
        return;
    const QModelIndex entry = model->index(path);
    // The failure keeps its question mark: operators know the text so.
    if (entry.isValid() && !removeEntry(*model, entry))
        showBox(QMessageBox::Warning, window(), title,
                tr("Failed to delete the %1 \"%2\"?").arg(kind, name));
}

void FileWidget::renameFile(const QModelIndex &index, const QString &newName)
{
    // Renaming is not moving: a name leads to no other folder.
    if (!isEntryOf(index, model) || newName.contains(QLatin1Char('/')))
        return;
    const QFileInfo entry = model->fileInfo(index);
    const QString oldPath = entry.absoluteFilePath();
    QString newPath;
    bool renamed = false;
    if (model->isDir(index)) {
        QDir parent(oldPath);
        if (!parent.cdUp()) {
            showBox(QMessageBox::Critical, window(), tr("Rename Directory"),
                    tr("Cannot rename top level directories."));
            return;
        }
        newPath = pathIn(parent.absolutePath(), newName);
        renamed = newPath == oldPath || parent.rename(oldPath, newPath);
    } else {
        newPath = pathIn(entry.absolutePath(), newName);
        renamed = newPath == oldPath || QFile(oldPath).rename(newPath);
    }
    const QModelIndex result = renamed ? model->index(newPath) : QModelIndex();
    if (result.isValid())
        listView->selectionModel()->select(result, QItemSelectionModel::ClearAndSelect);
}

void FileWidget::copyFile(const QModelIndex &index)
{
    if (!isEntryOf(index, model))
        return;
    if (model->isDir(index)) {
        showBox(QMessageBox::Critical, window(), tr("Copy Directory"),
                tr("It is not possible to copy directories."));
        return;
    }
    const QString path = model->filePath(index);
    QByteArray bytes;
    if (!readWhole(path, bytes)) {
        // An earlier copy stays, but whoever pasted it now would take it for this file.
        listView->setPasteEnabled(false);
        showBox(QMessageBox::Critical, window(), tr("Copy File"), tr("Failed to copy file."));
        return;
    }
    copiedFileData = bytes;
    copiedFileName = QFileInfo(path).fileName();
    listView->setPasteEnabled(true);
}

void FileWidget::pasteFile(const QModelIndex &index)
{
    if (copiedFileName.isEmpty())
        Tessel::reportFatal("Assert: '!copiedFileName.isEmpty()' is FALSE", assertionLine,
                            assertionFile);
    if (!isEntryOf(index, model))
        return;
    const QPointer<QFileSystemModel> asked = model;
    const QFileInfo entry = model->fileInfo(index);
    const QDir folder(model->isDir(index) ? entry.absoluteFilePath() : entry.absolutePath());
    const QString path = folder.filePath(copiedFileName);
    if (isTaken(path)) {
        const QMessageBox::StandardButton answer =
            showBox(QMessageBox::Question, window(), tr("Paste File"),
                    tr("A file of the same name already exists.  Do you want to replace it?"),
                    QMessageBox::Yes | QMessageBox::Cancel);
        // Once the key is unmounted its path is a folder of the appliance itself.
        if (answer != QMessageBox::Yes || asked != model)
            return;
    }
    if (!writeWhole(path, copiedFileData))
        showBox(QMessageBox::Critical, window(), tr("Paste File"),
                tr("An error occurred whilst attempting to copy the file or directory."));
}
