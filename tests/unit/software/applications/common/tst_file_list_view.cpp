#include "common/file_list_view.h"

#include "support/log_capture.h"

#include <QAction>
#include <QContextMenuEvent>
#include <QLineEdit>
#include <QMenu>
#include <QSpinBox>
#include <QStandardItemModel>
#include <QTimer>
#include <QTranslator>
#include <QtTest>

#include <csignal>
#include <functional>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

using TestSupport::captureStandardError;

namespace {

/** Tells in which context a text was translated. */
class ContextTranslator : public QTranslator
{
public:
    QString translate(const char *context, const char *source, const char *, int) const override
    {
        return QStringLiteral("%1/%2").arg(QLatin1String(context), QLatin1String(source));
    }
    bool isEmpty() const override { return false; }
};

class OpenFileListView : public FileListView
{
public:
    using FileListView::commitData;
};

QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions())
        texts << (action->isSeparator() ? QStringLiteral("--") : action->text());
    return texts;
}

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

} // namespace

class TestFileListView : public QObject
{
    Q_OBJECT

private slots:
    void init();
    void cleanup();

    void theMenuOfAnItemAndOfEmptySpace();
    void theMenuOpensWhereItWasAskedFor();
    void aKeyboardsMenuIsThatOfTheCurrentItem();
    void pasteIsOfferedOnceSomebodySaysSo();
    void textsAndSignalsAreTheOnesDeclared();
    void aChoiceIsAboutTheItemUnderThePointer_data();
    void aChoiceIsAboutTheItemUnderThePointer();
    void pasteOnEmptySpaceIsForTheFolderShown();
    void withoutAMenuAChoiceIsAboutTheSelection();
    void withoutAnyItemNothingIsToldButPaste();
    void anItemIsForgottenOnceItWasTold();
    void aDismissedMenuIsForgotten();
    void aVanishedItemIsNotTakenForItsNeighbour_data();
    void aVanishedItemIsNotTakenForItsNeighbour();
    void aMenuOutlivesItsModel();
    void aMenuMayLoseItsList();
    void aTypedNameIsToldOnceAndTheModelRenamesNothing();
    void renameWithoutAMenuEditsTheSelection();
    void afterRenameAPlainEditIsTheModels_data();
    void afterRenameAPlainEditIsTheModels();
    void aNameInAnswerToANewEntryIsTheModels();
    void clickingASelectedItemRenamesThroughTheModel();
    void anItemThatCannotBeEditedIsNotRenamed();
    void anEditorThatIsNoLineIsFatalInARename();
    void anEditorThatIsNoLineMayEditPlainly();

private:
    QPoint centreOf(int row) const { return view->visualRect(model->index(row, 0)).center(); }
    QPoint emptySpace() const { return view->viewport()->rect().bottomRight() - QPoint(5, 5); }
    void openMenu(const QPoint &where, const std::function<void(QMenu &)> &visit);
    void chooseFor(int row, const QString &text);
    QLineEdit *editor() const { return view->findChild<QLineEdit *>(); }
    void type(const QString &name, Qt::Key end = Qt::Key_Return);
    void editPlainly(int row, const QString &name);
    QStringList names() const;
    int toldCount() const;
    QModelIndex only(const QSignalSpy &spy) const;

    std::unique_ptr<QStandardItemModel> model;
    std::unique_ptr<OpenFileListView> view;
    std::unique_ptr<QSignalSpy> deleted;
    std::unique_ptr<QSignalSpy> renamed;
    std::unique_ptr<QSignalSpy> copied;
    std::unique_ptr<QSignalSpy> pasted;
};

void TestFileListView::init()
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

void TestFileListView::cleanup()
{
    view.reset();
    model.reset();
}

/** Opens the menu as a right click does, hands it to `visit`, and closes it if that did not. */
void TestFileListView::openMenu(const QPoint &where, const std::function<void(QMenu &)> &visit)
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

void TestFileListView::chooseFor(int row, const QString &text)
{
    openMenu(centreOf(row), [&](QMenu &menu) { choose(menu, text); });
}

/** Types into the open editor and ends it; an ending key is answered through the event loop. */
void TestFileListView::type(const QString &name, Qt::Key end)
{
    const QPointer<QLineEdit> line = editor();
    QVERIFY(line);
    line->selectAll();
    QTest::keyClicks(line, name);
    QTest::keyClick(line, end);
    QTRY_VERIFY(!line);
}

void TestFileListView::editPlainly(int row, const QString &name)
{
    view->edit(model->index(row, 0));
    type(name);
}

QStringList TestFileListView::names() const
{
    QStringList texts;
    for (int row = 0; row < model->rowCount(); ++row)
        texts << model->item(row)->text();
    return texts;
}

int TestFileListView::toldCount() const
{
    return deleted->count() + renamed->count() + copied->count() + pasted->count();
}

/** The index of the only signal of the spy, if it is the only one of all. */
QModelIndex TestFileListView::only(const QSignalSpy &spy) const
{
    const bool alone = spy.count() == 1 && toldCount() == 1;
    return alone ? spy.at(0).at(0).toModelIndex() : QModelIndex();
}

void TestFileListView::theMenuOfAnItemAndOfEmptySpace()
{
    QStringList ofItem;
    openMenu(centreOf(1), [&](QMenu &menu) { ofItem = textsOf(menu); });
    QCOMPARE(ofItem, QStringList({"Rename", "Delete", "--", "Copy", "Paste"}));
    QStringList ofEmptySpace;
    openMenu(emptySpace(), [&](QMenu &menu) { ofEmptySpace = textsOf(menu); });
    QCOMPARE(ofEmptySpace, QStringList({"Paste"}));
    QCOMPARE(toldCount(), 0);
    QVERIFY(view->findChildren<QMenu *>().isEmpty());
}

void TestFileListView::theMenuOpensWhereItWasAskedFor()
{
    QPoint corner;
    QWidget *parent = nullptr;
    openMenu(centreOf(1), [&](QMenu &menu) {
        corner = menu.pos();
        parent = menu.parentWidget();
    });
    QCOMPARE(corner, view->viewport()->mapToGlobal(centreOf(1)));
    QCOMPARE(parent, view.get());
}

void TestFileListView::aKeyboardsMenuIsThatOfTheCurrentItem()
{
    view->setCurrentIndex(model->index(2, 0));
    QTimer timer;
    connect(&timer, &QTimer::timeout, &timer, [&] {
        if (auto *menu = qobject_cast<QMenu *>(QApplication::activePopupWidget())) {
            timer.stop();
            choose(*menu, "Copy");
        }
    });
    timer.start(0);
    const QPoint where = view->inputMethodQuery(Qt::ImCursorRectangle).toRect().center();
    QContextMenuEvent event(QContextMenuEvent::Keyboard, where, view->mapToGlobal(where));
    QCoreApplication::sendEvent(view.get(), &event);
    QCOMPARE(only(*copied), model->index(2, 0));
}

void TestFileListView::pasteIsOfferedOnceSomebodySaysSo()
{
    const FileListView fresh;
    const QAction *paste = actionOf(fresh, "Paste");
    QVERIFY(paste != nullptr);
    QVERIFY(!paste->isEnabled());

    view->setPasteEnabled(false);
    openMenu(emptySpace(), [&](QMenu &menu) { choose(menu, "Paste"); });
    QCOMPARE(toldCount(), 0);
    view->setPasteEnabled(true);
    openMenu(emptySpace(), [&](QMenu &menu) { choose(menu, "Paste"); });
    QCOMPARE(pasted->count(), 1);
}

void TestFileListView::textsAndSignalsAreTheOnesDeclared()
{
    const QMetaObject &meta = FileListView::staticMetaObject;
    QByteArrayList signalNames;
    for (int i = meta.methodOffset(); i < meta.methodCount(); ++i) {
        if (meta.method(i).methodType() == QMetaMethod::Signal)
            signalNames << meta.method(i).methodSignature();
    }
    QCOMPARE(signalNames,
             QByteArrayList({"deleteIndex(QModelIndex)", "renameIndex(QModelIndex,QString)",
                             "copyIndex(QModelIndex)", "pasteAtIndex(QModelIndex)"}));

    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const FileListView translated;
    QCoreApplication::removeTranslator(&translator);
    QStringList texts;
    for (const QAction *action : translated.findChildren<QAction *>("", Qt::FindDirectChildrenOnly))
        texts << action->text();
    QCOMPARE(texts, QStringList({"FileListView/Delete", "FileListView/Rename", "FileListView/Copy",
                                 "FileListView/Paste"}));
}

void TestFileListView::aChoiceIsAboutTheItemUnderThePointer_data()
{
    QTest::addColumn<QString>("choice");
    QTest::newRow("delete") << "Delete";
    QTest::newRow("copy") << "Copy";
    QTest::newRow("paste") << "Paste";
}

void TestFileListView::aChoiceIsAboutTheItemUnderThePointer()
{
    QFETCH(QString, choice);
    view->setCurrentIndex(model->index(0, 0));
    chooseFor(2, choice);
    const QSignalSpy &spy = choice == "Delete" ? *deleted : choice == "Copy" ? *copied : *pasted;
    QCOMPARE(only(spy), model->index(2, 0));
}

void TestFileListView::pasteOnEmptySpaceIsForTheFolderShown()
{
    QStandardItem *folder = model->item(1);
    folder->appendRow(new QStandardItem("inside"));
    view->setRootIndex(folder->index());
    view->setCurrentIndex(folder->child(0)->index());
    openMenu(emptySpace(), [&](QMenu &menu) { choose(menu, "Paste"); });
    QCOMPARE(only(*pasted), folder->index());
}

void TestFileListView::withoutAMenuAChoiceIsAboutTheSelection()
{
    view->setCurrentIndex(model->index(1, 0));
    actionOf(*view, "Delete")->trigger();
    QCOMPARE(only(*deleted), model->index(1, 0));
    deleted->clear();
    actionOf(*view, "Copy")->trigger();
    QCOMPARE(only(*copied), model->index(1, 0));
    copied->clear();
    actionOf(*view, "Paste")->trigger();
    QCOMPARE(pasted->count(), 1);
    QCOMPARE(pasted->at(0).at(0).toModelIndex(), view->rootIndex());
}

void TestFileListView::withoutAnyItemNothingIsToldButPaste()
{
    view->selectionModel()->clear();
    for (const char *choice : {"Delete", "Copy", "Rename"})
        actionOf(*view, choice)->trigger();
    QCOMPARE(toldCount(), 0);
    QVERIFY(!editor());

    FileListView empty; // no model at all
    for (const char *choice : {"Delete", "Copy", "Rename"})
        actionOf(empty, choice)->trigger();
    QSignalSpy pastedThere(&empty, &FileListView::pasteAtIndex);
    empty.setPasteEnabled(true);
    actionOf(empty, "Paste")->trigger();
    QCOMPARE(pastedThere.count(), 1);
    QVERIFY(!pastedThere.at(0).at(0).toModelIndex().isValid());
}

void TestFileListView::anItemIsForgottenOnceItWasTold()
{
    view->setCurrentIndex(model->index(0, 0));
    QModelIndex second;
    // Told while the menu's own call still runs, as when the answer is a message box.
    connect(view.get(), &FileListView::deleteIndex, this, [&] {
        if (copied->isEmpty())
            actionOf(*view, "Paste")->trigger();
    });
    chooseFor(2, "Delete");
    QCOMPARE(deleted->at(0).at(0).toModelIndex(), model->index(2, 0));
    QCOMPARE(pasted->count(), 1);
    QCOMPARE(pasted->at(0).at(0).toModelIndex(), view->rootIndex());
    actionOf(*view, "Copy")->trigger();
    QCOMPARE(copied->at(0).at(0).toModelIndex(), model->index(0, 0));
}

void TestFileListView::aDismissedMenuIsForgotten()
{
    view->setCurrentIndex(model->index(0, 0));
    openMenu(centreOf(2), [](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    actionOf(*view, "Delete")->trigger();
    QCOMPARE(only(*deleted), model->index(0, 0));

    openMenu(centreOf(2), [](QMenu &menu) { QTest::keyClick(&menu, Qt::Key_Escape); });
    editPlainly(1, "plain");
    QCOMPARE(names(), QStringList({"alpha", "plain", "gamma"}));
    QCOMPARE(renamed->count(), 0);
}

void TestFileListView::aVanishedItemIsNotTakenForItsNeighbour_data()
{
    aChoiceIsAboutTheItemUnderThePointer_data();
    QTest::newRow("rename") << "Rename";
}

void TestFileListView::aVanishedItemIsNotTakenForItsNeighbour()
{
    QFETCH(QString, choice);
    view->setCurrentIndex(model->index(1, 0));
    openMenu(centreOf(1), [&](QMenu &menu) {
        model->removeRow(1);
        QCOMPARE(view->selectionModel()->selectedIndexes().size(), 1);
        choose(menu, choice);
    });
    QVERIFY(!editor());
    QCOMPARE(toldCount(), choice == "Paste" ? 1 : 0);
    if (choice == "Paste")
        QCOMPARE(pasted->at(0).at(0).toModelIndex(), view->rootIndex());
}

void TestFileListView::aMenuOutlivesItsModel()
{
    QStandardItemModel other;
    other.appendRow(new QStandardItem("other"));
    openMenu(centreOf(1), [&](QMenu &menu) {
        view->setModel(&other);
        view->setCurrentIndex(other.index(0, 0));
        choose(menu, "Delete"); // an item that is no longer shown
    });
    QCOMPARE(toldCount(), 0);
    view->setModel(nullptr);
}

void TestFileListView::aMenuMayLoseItsList()
{
    openMenu(centreOf(1), [&](QMenu &) { view.reset(); });
    QVERIFY(!view);
}

void TestFileListView::aTypedNameIsToldOnceAndTheModelRenamesNothing()
{
    view->setCurrentIndex(model->index(0, 0));
    chooseFor(2, "Rename");
    QCOMPARE(editor()->text(), QString("gamma"));
    type("new name");
    QCOMPARE(only(*renamed), model->index(2, 0));
    QCOMPARE(renamed->at(0).at(1).toString(), QString("new name"));
    QCOMPARE(names(), QStringList({"alpha", "beta", "gamma"}));
}

void TestFileListView::renameWithoutAMenuEditsTheSelection()
{
    view->setCurrentIndex(model->index(1, 0));
    actionOf(*view, "Rename")->trigger();
    type("new name");
    QCOMPARE(only(*renamed), model->index(1, 0));
    QCOMPARE(names(), QStringList({"alpha", "beta", "gamma"}));
}

void TestFileListView::afterRenameAPlainEditIsTheModels_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("told");
    QTest::newRow("after Return") << "return" << 1;
    QTest::newRow("after Escape") << "escape" << 0;
    QTest::newRow("after its item vanished") << "vanish" << 0;
    QTest::newRow("after the model was set anew") << "reset" << 0;
}

void TestFileListView::afterRenameAPlainEditIsTheModels()
{
    QFETCH(QString, ending);
    QFETCH(int, told);
    chooseFor(2, "Rename");
    if (ending == "vanish")
        model->removeRow(2);
    else if (ending == "reset")
        view->reset();
    else
        type("renamed", ending == "return" ? Qt::Key_Return : Qt::Key_Escape);
    QTRY_VERIFY(!editor());
    QCOMPARE(renamed->count(), told);

    editPlainly(0, "plain");
    QCOMPARE(names().mid(0, 2), QStringList({"plain", "beta"}));
    QCOMPARE(toldCount(), told);
}

void TestFileListView::aNameInAnswerToANewEntryIsTheModels()
{
    openMenu(centreOf(2), [&](QMenu &) {
        view->editName(model->index(0, 0));
        type("New Folder 7"); // while the menu is open
    });
    QCOMPARE(names(), QStringList({"New Folder 7", "beta", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListView::clickingASelectedItemRenamesThroughTheModel()
{
    view->setCurrentIndex(model->index(1, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(1));
    QTRY_VERIFY(editor());
    type("clicked");
    QCOMPARE(names(), QStringList({"alpha", "clicked", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListView::anItemThatCannotBeEditedIsNotRenamed()
{
    model->item(2)->setEditable(false);
    chooseFor(2, "Rename");
    QVERIFY(!editor());
    editPlainly(0, "plain");
    QCOMPARE(names(), QStringList({"plain", "beta", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListView::anEditorThatIsNoLineIsFatalInARename()
{
    model->item(1)->setData(7, Qt::EditRole);
    chooseFor(1, "Rename");
    auto *box = view->findChild<QSpinBox *>();
    QVERIFY(box);
    int status = 0;
    const QByteArray written = captureStandardError([&] {
        const pid_t child = fork();
        if (child == 0) {
            // QtTest catches the signal to write a report of its own.
            std::signal(SIGABRT, SIG_DFL);
            const rlimit noCoreFile = {0, 0};
            setrlimit(RLIMIT_CORE, &noCoreFile);
            view->commitData(box);
            _exit(0);
        }
        waitpid(child, &status, 0);
    });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written, QByteArray("Error Assert: 'lineEdit' is FALSE at line 1231 in file "
                                 "software/applications/common/file_widget\n"));
}

void TestFileListView::anEditorThatIsNoLineMayEditPlainly()
{
    model->item(1)->setData(7, Qt::EditRole);
    view->edit(model->index(1, 0));
    auto *box = view->findChild<QSpinBox *>();
    QVERIFY(box);
    box->setValue(8);
    view->commitData(box);
    QCOMPARE(model->item(1)->data(Qt::EditRole).toInt(), 8);
    QCOMPARE(toldCount(), 0);
}

QTEST_MAIN(TestFileListView)
#include "tst_file_list_view.moc"
