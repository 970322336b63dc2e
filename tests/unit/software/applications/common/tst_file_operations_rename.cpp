#include "file_operations_parts.h"

#include <QAction>
#include <QtTest>

#include <sys/time.h>

using namespace TestSupport;

class TestFileOperationsRename : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init();
    void cleanup();

    void aFileGetsItsNameAndIsSelected();
    void aFolderGetsItsNameAndIsSelected();
    void aLinkToAFolderIsRenamedItself();
    void anOddNameIsTakenAsItIs_data() { addOddNames(); }
    void anOddNameIsTakenAsItIs();
    void aNameThatIsTakenChangesNothing_data();
    void aNameThatIsTakenChangesNothing();
    void aNameThatLeadsElsewhereIsRefused_data();
    void aNameThatLeadsElsewhereIsRefused();
    void theOldNameTouchesNothing();
    void letterCaseMayChange();
    void aReadOnlyFolderKeepsItsNames();
    void theTopOfTheFileSystemKeepsItsName();
    void anInvalidIndexDoesNothing();
    void aVanishedFileDoesNothing();
    void whatIsTypedIntoTheListIsTheName();

private:
    void rename(const QString &path, const QString &newName)
    {
        emit panel->parts.list->renameIndex(panel->index(path), newName);
    }
    QStringList selectedPaths() const;
    QStringList entries() const;

    std::unique_ptr<PanelUnderTest> panel;
    std::unique_ptr<MessageBoxes> boxes;
};

void TestFileOperationsRename::init()
{
    emptyScratchMachine();
    panel = PanelUnderTest::atInternalStorage();
    boxes = std::make_unique<MessageBoxes>(QMessageBox::Ok);
}

void TestFileOperationsRename::cleanup()
{
    boxes.reset();
    panel.reset();
}

QStringList TestFileOperationsRename::selectedPaths() const
{
    QStringList paths;
    for (const QModelIndex &index : panel->parts.list->selectionModel()->selectedIndexes())
        paths << panel->model()->filePath(index);
    return paths;
}

QStringList TestFileOperationsRename::entries() const
{
    return QDir(internalFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot, QDir::Name);
}

void TestFileOperationsRename::aFileGetsItsNameAndIsSelected()
{
    writeFile(in("old.cdp"), "content");
    writeFile(in("other.cdp"));
    panel->parts.list->setCurrentIndex(panel->index(in("other.cdp")));
    rename(in("old.cdp"), "new.cdp");
    QCOMPARE(entries(), QStringList({"new.cdp", "other.cdp"}));
    QCOMPARE(contentOf(in("new.cdp")), QByteArray("content"));
    QCOMPARE(selectedPaths(), QStringList({in("new.cdp")}));
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::aFolderGetsItsNameAndIsSelected()
{
    makeFolders({in("old")});
    writeFile(in("old/inside"));
    rename(in("old"), "new");
    QCOMPARE(entries(), QStringList({"new"}));
    QVERIFY(isThere(in("new/inside")));
    QCOMPARE(selectedPaths(), QStringList({in("new")}));
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::aLinkToAFolderIsRenamedItself()
{
    makeFolders({in("folder")});
    QVERIFY(QFile::link(in("folder"), in("link")));
    rename(in("link"), "renamed");
    QCOMPARE(entries(), QStringList({"folder", "renamed"}));
    QVERIFY(QFileInfo(in("renamed")).isSymLink());
}

void TestFileOperationsRename::anOddNameIsTakenAsItIs()
{
    QFETCH(QString, name);
    writeFile(in("old"));
    makeFolders({in("folder/old")});
    rename(in("old"), name);
    rename(in("folder/old"), name);
    QVERIFY(QFileInfo(in(name)).isFile());
    QVERIFY(QFileInfo(in("folder/" + name)).isDir());
    QCOMPARE(selectedPaths(), QStringList({in("folder/" + name)}));
}

void TestFileOperationsRename::aNameThatIsTakenChangesNothing_data()
{
    QTest::addColumn<QString>("from");
    QTest::addColumn<QString>("to");
    QTest::newRow("file to file") << "file"
                                  << "other file";
    QTest::newRow("file to folder") << "file"
                                    << "folder";
    QTest::newRow("folder to file") << "folder"
                                    << "file";
    QTest::newRow("folder to empty folder") << "folder"
                                            << "other folder";
}

void TestFileOperationsRename::aNameThatIsTakenChangesNothing()
{
    QFETCH(QString, from);
    QFETCH(QString, to);
    makeFolders({in("folder"), in("other folder")});
    writeFile(in("file"), "one");
    writeFile(in("other file"), "two");
    const QStringList before = entries();
    rename(in(from), to);
    QCOMPARE(entries(), before);
    QCOMPARE(contentOf(in("file")), QByteArray("one"));
    QCOMPARE(contentOf(in("other file")), QByteArray("two"));
    QCOMPARE(selectedPaths(), QStringList());
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::aNameThatLeadsElsewhereIsRefused_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("none") << "";
    QTest::newRow("this folder") << ".";
    QTest::newRow("the folder above") << "..";
    QTest::newRow("in the folder above") << "../moved";
    QTest::newRow("in a folder beside") << "beside/moved";
    QTest::newRow("absolute") << "/usbkey/moved";
    QTest::newRow("ends in a slash") << "moved/";
}

void TestFileOperationsRename::aNameThatLeadsElsewhereIsRefused()
{
    QFETCH(QString, name);
    makeFolders({in("inner/beside"), in("inner/folder")});
    writeFile(in("inner/file"));
    rename(in("inner/file"), name);
    rename(in("inner/folder"), name);
    QVERIFY(isThere(in("inner/file")));
    QVERIFY(isThere(in("inner/folder")));
    QCOMPARE(entries(), QStringList({"inner"}));
    QVERIFY(QDir(in("inner/beside")).isEmpty());
    QCOMPARE(boxes->count(), 0);
}

/** Moving a file away and back for nothing could lose it on a key that is pulled. */
void TestFileOperationsRename::theOldNameTouchesNothing()
{
    makeFolders({in("inner")});
    writeFile(in("inner/file"));
    const timeval longAgo[2] = {{1000000000, 0}, {1000000000, 0}};
    QCOMPARE(utimes(qPrintable(in("inner")), longAgo), 0);
    rename(in("inner/file"), "file");
    QCOMPARE(QFileInfo(in("inner")).lastModified().toSecsSinceEpoch(), 1000000000);
    QCOMPARE(selectedPaths(), QStringList({in("inner/file")}));
    rename(in("inner"), "inner");
    QCOMPARE(selectedPaths(), QStringList({in("inner")}));
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::letterCaseMayChange()
{
    writeFile(in("report.cdp"), "content");
    rename(in("report.cdp"), "Report.cdp");
    QCOMPARE(entries(), QStringList({"Report.cdp"}));
    QCOMPARE(contentOf(in("Report.cdp")), QByteArray("content"));
}

void TestFileOperationsRename::aReadOnlyFolderKeepsItsNames()
{
    makeFolders({in("locked/folder")});
    writeFile(in("locked/file"));
    QFile::setPermissions(in("locked"), QFile::ReadOwner | QFile::ExeOwner);
    const OrdinaryRights rights;
    rename(in("locked/file"), "moved");
    rename(in("locked/folder"), "moved");
    QVERIFY(isThere(in("locked/file")));
    QVERIFY(isThere(in("locked/folder")));
    QCOMPARE(selectedPaths(), QStringList());
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::theTopOfTheFileSystemKeepsItsName()
{
    rename("/", "new");
    QCOMPARE(boxes->count(), 1);
    const auto box = boxes->first();
    QCOMPARE(box.title, QString("Rename Directory"));
    QCOMPARE(box.text, QString("Cannot rename top level directories."));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
}

void TestFileOperationsRename::anInvalidIndexDoesNothing()
{
    QFileSystemModel another;
    another.setRootPath("/");
    writeFile(in("file"));
    emit panel->parts.list->renameIndex(QModelIndex(), "moved");
    emit panel->parts.list->renameIndex(another.index(in("file")), "moved");
    QCOMPARE(entries(), QStringList({"file"}));
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::aVanishedFileDoesNothing()
{
    writeFile(in("file"));
    const QModelIndex index = panel->index(in("file"));
    QVERIFY(QFile::remove(in("file")));
    emit panel->parts.list->renameIndex(index, "moved");
    QCOMPARE(entries(), QStringList());
    QCOMPARE(boxes->count(), 0);
}

void TestFileOperationsRename::whatIsTypedIntoTheListIsTheName()
{
    writeFile(in("old.cdp"), "content");
    panel->widget.show();
    QVERIFY(QTest::qWaitForWindowActive(&panel->widget));
    FileListView *list = panel->parts.list;
    QVERIFY(panel->lists({"old.cdp"}));
    list->setCurrentIndex(panel->index(in("old.cdp")));
    for (QAction *action : list->findChildren<QAction *>()) {
        if (action->text() == QLatin1String("Rename"))
            action->trigger();
    }
    auto *editor = list->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->selectAll();
    QTest::keyClicks(editor, "typed.cdp");
    QTest::keyClick(editor, Qt::Key_Return);
    QVERIFY(panel->lists({"typed.cdp"}));
    QCOMPARE(contentOf(in("typed.cdp")), QByteArray("content"));
    QCOMPARE(boxes->count(), 0);
}

QTEST_MAIN(TestFileOperationsRename)
#include "tst_file_operations_rename.moc"
