#include "child_status.h"
#include "file_list_view_fixture.h"

#include "support/log_capture.h"

#include <QSpinBox>
#include <QtTest>

using namespace TestSupport;

class TestFileListViewRename : public FileListViewFixture
{
    Q_OBJECT

private slots:
    void aTypedNameIsToldOnceAndTheModelRenamesNothing();
    void renameWithoutAMenuEditsTheSelection();
    void newsOfTheFileLeaveWhatIsTyped();
    void newsOfTheFileLeaveTheSelection();
    void aNewNameIsShownUntilSomebodyTypes();
    void afterRenameAPlainEditIsTheModels_data();
    void afterRenameAPlainEditIsTheModels();
    void aNameInAnswerToANewEntryIsTheModels();
    void clickingASelectedItemRenamesThroughTheModel();
    void anItemThatCannotBeEditedIsNotRenamed();
    void anEditorThatIsNoLineIsFatalInARename();
    void anEditorThatIsNoLineMayEditPlainly();
};

void TestFileListViewRename::aTypedNameIsToldOnceAndTheModelRenamesNothing()
{
    view->setCurrentIndex(model->index(0, 0));
    chooseFor(2, "Rename");
    QCOMPARE(editor()->text(), QString("gamma"));
    type("new name");
    QCOMPARE(only(*renamed), model->index(2, 0));
    QCOMPARE(renamed->at(0).at(1).toString(), QString("new name"));
    QCOMPARE(names(), QStringList({"alpha", "beta", "gamma"}));
}

void TestFileListViewRename::renameWithoutAMenuEditsTheSelection()
{
    view->setCurrentIndex(model->index(1, 0));
    actionOf(*view, "Rename")->trigger();
    type("new name");
    QCOMPARE(only(*renamed), model->index(1, 0));
    QCOMPARE(names(), QStringList({"alpha", "beta", "gamma"}));
}

void TestFileListViewRename::newsOfTheFileLeaveWhatIsTyped()
{
    chooseFor(2, "Rename");
    editor()->selectAll();
    QTest::keyClicks(editor(), "new");
    emit model->dataChanged(model->index(2, 0), model->index(2, 0));
    QCOMPARE(editor()->text(), QString("new"));
    QTest::keyClicks(editor(), " name");
    QTest::keyClick(editor(), Qt::Key_Return);
    QTRY_COMPARE(renamed->count(), 1);
    QCOMPARE(renamed->at(0).at(1).toString(), QString("new name"));
}

void TestFileListViewRename::newsOfTheFileLeaveTheSelection()
{
    chooseFor(2, "Rename");
    editor()->setSelection(0, 3);
    emit model->dataChanged(model->index(2, 0), model->index(2, 0));
    QCOMPARE(editor()->selectedText(), QString("gam"));
}

void TestFileListViewRename::aNewNameIsShownUntilSomebodyTypes()
{
    chooseFor(2, "Rename");
    model->item(2)->setText("delta");
    QCOMPARE(editor()->text(), QString("delta"));
}

void TestFileListViewRename::afterRenameAPlainEditIsTheModels_data()
{
    QTest::addColumn<QString>("ending");
    QTest::addColumn<int>("told");
    QTest::newRow("after Return") << "return" << 1;
    QTest::newRow("after Escape") << "escape" << 0;
    QTest::newRow("after its item vanished") << "vanish" << 0;
    QTest::newRow("after the model was set anew") << "reset" << 0;
}

void TestFileListViewRename::afterRenameAPlainEditIsTheModels()
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

void TestFileListViewRename::aNameInAnswerToANewEntryIsTheModels()
{
    openMenu(centreOf(2), [&](QMenu &) {
        view->editName(model->index(0, 0));
        type("New Folder 7"); // while the menu is open
    });
    QCOMPARE(names(), QStringList({"New Folder 7", "beta", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListViewRename::clickingASelectedItemRenamesThroughTheModel()
{
    view->setCurrentIndex(model->index(1, 0));
    QTest::mouseClick(view->viewport(), Qt::LeftButton, Qt::NoModifier, centreOf(1));
    QTRY_VERIFY(editor());
    type("clicked");
    QCOMPARE(names(), QStringList({"alpha", "clicked", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListViewRename::anItemThatCannotBeEditedIsNotRenamed()
{
    model->item(2)->setEditable(false);
    chooseFor(2, "Rename");
    QVERIFY(!editor());
    editPlainly(0, "plain");
    QCOMPARE(names(), QStringList({"plain", "beta", "gamma"}));
    QCOMPARE(toldCount(), 0);
}

void TestFileListViewRename::anEditorThatIsNoLineIsFatalInARename()
{
    model->item(1)->setData(7, Qt::EditRole);
    chooseFor(1, "Rename");
    auto *box = view->findChild<QSpinBox *>();
    QVERIFY(box);
    int status = 0;
    const QByteArray written =
        captureStandardError([&] { status = statusOfChild([&] { view->commitData(box); }); });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written, QByteArray("Error Assert: 'lineEdit' is FALSE at line 1231 in file "
                                 "software/applications/common/file_widget\n"));
}

void TestFileListViewRename::anEditorThatIsNoLineMayEditPlainly()
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

QTEST_MAIN(TestFileListViewRename)
#include "tst_file_list_view_rename.moc"
