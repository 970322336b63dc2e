#pragma once

#include <QListView>
#include <QPersistentModelIndex>

class QAction;

/**
 * The list of the file panel: offers rename, delete, copy and paste in a context menu and
 * tells by signals what is wanted of which item. It changes no file itself.
 */
class FileListView : public QListView
{
    Q_OBJECT

public:
    explicit FileListView(QWidget *parent = nullptr);

    /** Whether the menu's "Paste" can be chosen; it can not until somebody says so. */
    void setPasteEnabled(bool enabled);

    /** Opens a new entry for its name; a menu's target is forgotten. */
    void editName(const QModelIndex &index);

    /** Also forgets the item of the menu or of a rename: it belonged to what was shown before. */
    void reset() override;

signals:
    void deleteIndex(const QModelIndex &index);
    void renameIndex(const QModelIndex &index, const QString &newName);
    void copyIndex(const QModelIndex &index);
    /** The item under the menu, or the folder shown when the menu was over none. */
    void pasteAtIndex(const QModelIndex &index);

protected:
    void contextMenuEvent(QContextMenuEvent *event) override;
    /** While the menu's "Rename" is open the new name becomes renameIndex(). */
    void commitData(QWidget *editor) override;
    void closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint) override;

private:
    void onDelete();
    void onRename();
    void onCopy();
    void onPaste();
    QModelIndex target() const;
    QModelIndex takeTarget();

    QAction *deleteAction;
    QAction *renameAction;
    QAction *copyAction;
    QAction *pasteAction;
    /**
     * The item the menu was opened on or is renamed; invalid otherwise. Persistent, because
     * the folder may change while the menu or the editor is open: a plain index would dangle.
     */
    QPersistentModelIndex contextIndex;
    /** The open menu is about one item, even if that has vanished since. */
    bool menuIsForItem = false;
};
