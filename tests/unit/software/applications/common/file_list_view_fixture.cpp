#include "file_list_view_fixture.h"

#include <QApplication>
#include <QContextMenuEvent>
#include <QPointer>
#include <QTest>
#include <QTimer>

namespace TestSupport {

QAction *actionOf(const QWidget &widget, const QString &text)
{
    for (QAction *action : widget.findChildren<QAction *>()) {
        if (action->text() == text)
            return action;
    }
    return nullptr;
}

void choose(QMenu &menu, const QString &text)
{
    for (QAction *action : menu.actions()) {
        if (action->text() == text) {
            QTest::mouseClick(&menu, Qt::LeftButton, Qt::NoModifier,
                              menu.actionGeometry(action).center());
            return;
        }
    }
    QFAIL("no such choice");
}

void FileListViewFixture::init()
{
    model = std::make_unique<QStandardItemModel>();
    for (const char *name : {"alpha", "beta", "gamma"})
        model->appendRow(new QStandardItem(QString::fromLatin1(name)));
    view = std::make_unique<OpenFileListView>();
    view->setModel(model.get());
    view->setEditTriggers(QAbstractItemView::SelectedClicked);
    view->resize(200, 200);
    deleted = std::make_unique<QSignalSpy>(view.get(), &FileListView::deleteIndex);
    renamed = std::make_unique<QSignalSpy>(view.get(), &FileListView::renameIndex);
    copied = std::make_unique<QSignalSpy>(view.get(), &FileListView::copyIndex);
    pasted = std::make_unique<QSignalSpy>(view.get(), &FileListView::pasteAtIndex);
    view->setPasteEnabled(true);
    view->show();
    view->activateWindow();
    QVERIFY(QTest::qWaitForWindowActive(view.get()));
}

void FileListViewFixture::cleanup()
{
    view.reset();
    model.reset();
}

void FileListViewFixture::openMenu(const QPoint &where, const std::function<void(QMenu &)> &visit)
{
    bool visited = false;
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        const QPointer<QMenu> menu = qobject_cast<QMenu *>(QApplication::activePopupWidget());
        if (!menu)
            return;
        timer.stop();
        // No operator chooses before the platform has told which window is active.
        visited = QTest::qWaitForWindowExposed(menu) && QTest::qWaitForWindowActive(view.get());
        visit(*menu);
        if (menu && menu->isVisible())
            menu->close();
    });
    timer.start(0);
    QContextMenuEvent event(QContextMenuEvent::Mouse, where, view->viewport()->mapToGlobal(where));
    QCoreApplication::sendEvent(view->viewport(), &event);
    QVERIFY(visited);
}

void FileListViewFixture::chooseFor(int row, const QString &text)
{
    openMenu(centreOf(row), [&](QMenu &menu) { choose(menu, text); });
}

void FileListViewFixture::type(const QString &name, Qt::Key end)
{
    const QPointer<QLineEdit> line = editor();
    QVERIFY(line);
    line->selectAll();
    QTest::keyClicks(line, name);
    QTest::keyClick(line, end);
    QTRY_VERIFY(!line);
}

void FileListViewFixture::editPlainly(int row, const QString &name)
{
    view->edit(model->index(row, 0));
    type(name);
}

QStringList FileListViewFixture::names() const
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->item(row)->text();
    return texts;
}

int FileListViewFixture::toldCount() const
{
    return deleted->count() + renamed->count() + copied->count() + pasted->count();
}

QModelIndex FileListViewFixture::only(const QSignalSpy &spy) const
{
    const bool alone = spy.count() == 1 && toldCount() == 1;
    return alone ? spy.at(0).at(0).toModelIndex() : QModelIndex();
}

} // namespace TestSupport
