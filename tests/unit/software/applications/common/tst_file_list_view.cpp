#include "file_list_view_fixture.h"

#include "context_translator.h"

#include <QContextMenuEvent>
#include <QTimer>
#include <QtTest>

using namespace TestSupport;

namespace {

QStringList textsOf(const QMenu &menu)
{
    QStringList texts;
    for (const QAction *action : menu.actions())
        texts << (action->isSeparator() ? QStringLiteral("--") : action->text());
    return texts;
}

} // namespace

class TestFileListView : public FileListViewFixture
{
    Q_OBJECT

private slots:
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
};

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
    QCOMPARE(texts, QStringList({"FileListView|Delete", "FileListView|Rename", "FileListView|Copy",
                                 "FileListView|Paste"}));
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

QTEST_MAIN(TestFileListView)
#include "tst_file_list_view.moc"
