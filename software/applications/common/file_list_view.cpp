#include "common/file_list_view.h"

#include "tessel_core/error_report.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QPointer>
#include <QStyledItemDelegate>

namespace {

// Field reports are searched for this place, wherever the check stands by now.
constexpr int assertionLine = 1231;
constexpr char assertionFile[] = "software/applications/common/file_widget";

/**
 * Rows are as wide as the list: a longer name is elided, and nothing scrolls sideways. What
 * is being typed is not lost when size and date of a file come in late, as from a slow key.
 */
class RowDelegate : public QStyledItemDelegate
{
public:
    using QStyledItemDelegate::QStyledItemDelegate;

    QSize sizeHint(const QStyleOptionViewItem &option, const QModelIndex &index) const override
    {
        return {1, QStyledItemDelegate::sizeHint(option, index).height()};
    }

    void setEditorData(QWidget *editor, const QModelIndex &index) const override
    {
        const auto *const line = qobject_cast<QLineEdit *>(editor);
        const bool typed = line && line->isModified();
        const bool shown = line && line->text() == index.data(Qt::EditRole).toString();
        if (!typed && !shown) // what is shown already would lose its selection
            QStyledItemDelegate::setEditorData(editor, index);
    }
};

} // namespace

FileListView::FileListView(QWidget *parent)
    : QListView(parent)
    , deleteAction(new QAction(tr("Delete"), this))
    , renameAction(new QAction(tr("Rename"), this))
    , copyAction(new QAction(tr("Copy"), this))
    , pasteAction(new QAction(tr("Paste"), this))
{
    connect(deleteAction, &QAction::triggered, this, &FileListView::onDelete);
    connect(renameAction, &QAction::triggered, this, &FileListView::onRename);
    connect(copyAction, &QAction::triggered, this, &FileListView::onCopy);
    connect(pasteAction, &QAction::triggered, this, &FileListView::onPaste);
    setItemDelegate(new RowDelegate(this));
    // Nothing has been copied yet, and pasting nothing would stop the program.
    pasteAction->setEnabled(false);
}

void FileListView::setPasteEnabled(bool enabled)
{
    pasteAction->setEnabled(enabled);
}

void FileListView::editName(const QModelIndex &index)
{
    contextIndex = QModelIndex();
    edit(index);
}

void FileListView::reset()
{
    contextIndex = QModelIndex();
    QListView::reset();
}

void FileListView::contextMenuEvent(QContextMenuEvent *event)
{
    // The handlers run inside exec(), and a panel closed meanwhile takes the menu with it.
    const QPointer<QMenu> menu = new QMenu(this);
    contextIndex = indexAt(event->pos());
    menuIsForItem = contextIndex.isValid();
    if (menuIsForItem) {
        menu->addAction(renameAction);
        menu->addAction(deleteAction);
        menu->addSeparator();
        menu->addAction(copyAction);
    }
    menu->addAction(pasteAction);
    const QAction *const chosen = menu->exec(event->globalPos());
    if (!menu)
        return;
    menuIsForItem = false;
    if (chosen != renameAction)
        contextIndex = QModelIndex();
    delete menu;
}

/** The item an action is about; invalid when there is none (any more). */
QModelIndex FileListView::target() const
{
    // When the menu's item has vanished the list has selected a neighbour: not what was meant.
    if (contextIndex.isValid() || menuIsForItem || selectionModel() == nullptr)
        return contextIndex;
    return selectionModel()->selectedIndexes().value(0);
}

/** target(), which is forgotten before it is told: the answer may take a message box. */
QModelIndex FileListView::takeTarget()
{
    const QModelIndex index = target();
    contextIndex = QModelIndex();
    return index;
}

void FileListView::onDelete()
{
    const QModelIndex index = takeTarget();
    if (index.isValid())
        emit deleteIndex(index);
}

void FileListView::onRename()
{
    contextIndex = target();
    // Stays set for commitData(), unless nobody will type a name.
    if (!edit(contextIndex, AllEditTriggers, nullptr) || state() != EditingState)
        contextIndex = QModelIndex();
}

void FileListView::onCopy()
{
    const QModelIndex index = takeTarget();
    if (index.isValid())
        emit copyIndex(index);
}

void FileListView::onPaste()
{
    const QModelIndex index = contextIndex.isValid() ? QModelIndex(contextIndex) : rootIndex();
    contextIndex = QModelIndex();
    emit pasteAtIndex(index);
}

void FileListView::commitData(QWidget *editor)
{
    if (!contextIndex.isValid()) {
        QListView::commitData(editor);
        return;
    }
    const auto *const lineEdit = qobject_cast<QLineEdit *>(editor);
    if (lineEdit == nullptr)
        Tessel::reportFatal("Assert: 'lineEdit' is FALSE", assertionLine, assertionFile);
    emit renameIndex(takeTarget(), lineEdit->text());
}

void FileListView::closeEditor(QWidget *editor, QAbstractItemDelegate::EndEditHint hint)
{
    // After Escape nothing is committed: the next plain edit must not rename this item.
    contextIndex = QModelIndex();
    QListView::closeEditor(editor, hint);
}
