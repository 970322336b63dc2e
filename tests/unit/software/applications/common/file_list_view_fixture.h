#pragma once

#include "common/file_list_view.h"

#include <QAction>
#include <QLineEdit>
#include <QMenu>
#include <QObject>
#include <QSignalSpy>
#include <QStandardItemModel>
#include <QStringList>

#include <functional>
#include <memory>

/* What the tests of the list of files share. */
namespace TestSupport {

/** A list whose editors a test may end by itself. */
class OpenFileListView : public FileListView
{
public:
    using FileListView::commitData;
};

/** The action of that text below the widget; null when there is none. */
QAction *actionOf(const QWidget &widget, const QString &text);

/** Clicks the choice of that text in an open menu. */
void choose(QMenu &menu, const QString &text);

/** The base of a test class: a list of "alpha", "beta" and "gamma" in front, for each test. */
class FileListViewFixture : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

protected:
    QPoint centreOf(int row) const { return view->visualRect(model->index(row, 0)).center(); }
    QPoint emptySpace() const { return view->viewport()->rect().bottomRight() - QPoint(5, 5); }
    /** Opens the menu as a right click does, hands it to `visit`, and closes what that left open.
     */
    void openMenu(const QPoint &where, const std::function<void(QMenu &)> &visit);
    void chooseFor(int row, const QString &text);
    /** The open editor of a name; null when there is none. */
    QLineEdit *editor() const { return view->findChild<QLineEdit *>(); }
    /** Types into it and ends it; an ending key is answered through the event loop. */
    void type(const QString &name, Qt::Key end = Qt::Key_Return);
    /** Edits without "Rename", as the model's own business. */
    void editPlainly(int row, const QString &name);
    /** What the model calls its rows. */
    QStringList names() const;
    /** How many signals there were of all four. */
    int toldCount() const;
    /** The index of the only signal of the spy, if it is the only one of all. */
    QModelIndex only(const QSignalSpy &spy) const;

    std::unique_ptr<QStandardItemModel> model;
    std::unique_ptr<OpenFileListView> view;
    std::unique_ptr<QSignalSpy> deleted;
    std::unique_ptr<QSignalSpy> renamed;
    std::unique_ptr<QSignalSpy> copied;
    std::unique_ptr<QSignalSpy> pasted;
};

} // namespace TestSupport
