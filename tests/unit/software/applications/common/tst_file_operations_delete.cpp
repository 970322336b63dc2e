#include "context_translator.h"
#include "file_operations_parts.h"

#include "common/usb_support.h"
#include "support/scratch_machine.h"

#include <QtTest>

#include <sys/stat.h>

using namespace TestSupport;

namespace {

constexpr auto yesOrNo = QMessageBox::Yes | QMessageBox::No;

} // namespace

class TestFileOperationsDelete : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init();
    void cleanup();

    void theQuestionNamesKindAndBaseName_data();
    void theQuestionNamesKindAndBaseName();
    void anOddNameIsShownAsItIsAndGoes_data() { addOddNames(); }
    void anOddNameIsShownAsItIsAndGoes();
    void noKeepsTheFile();
    void aFolderGoesWithAllItLists();
    void aFilterHidesNothingFromDeletion();
    void aHiddenFileKeepsItsFolderAndTheFailureAsks();
    void aFileThatMayNotBeDeletedIsReported();
    void aLinkGoesWithoutItsTarget_data();
    void aLinkGoesWithoutItsTarget();
    void linksInsideAFolderAreNotFollowed();
    void aLinkThatLeadsNowhereIsFollowedNowhere();
    void aPipeGoes();
    void anInvalidIndexAsksNothing();
    void anEntryThatVanishesWhileAskedHarmsNothing();
    void aKeyUnmountedWhileAskedKeepsItsFiles();
    void aPanelThatGoesWhileAskedDeletesNothing();
    void theTextsAreThePanels();
    void theTestsOwnEmptyingFollowsNoLink();

private:
    void remove(const QString &path) { emit panel->parts.list->deleteIndex(panel->index(path)); }

    std::unique_ptr<PanelUnderTest> panel;
};

void TestFileOperationsDelete::init()
{
    emptyScratchMachine();
    // Where a deletion gone astray would strike.
    makeFolders({in("working directory")});
    writeFile(in("working directory/kept"));
    QVERIFY(QDir::setCurrent(in("working directory")));
    panel = PanelUnderTest::atInternalStorage();
}

void TestFileOperationsDelete::cleanup()
{
    panel.reset();
    QVERIFY(QFileInfo::exists(in("working directory/kept")));
    QDir::setCurrent(QStringLiteral("/"));
}

void TestFileOperationsDelete::theQuestionNamesKindAndBaseName_data()
{
    QTest::addColumn<QString>("name");
    QTest::addColumn<bool>("isFolder");
    QTest::addColumn<QString>("kind");
    QTest::addColumn<QString>("shown");
    QTest::newRow("file") << "report.cdp" << false << "File"
                          << "report";
    QTest::newRow("several dots") << "archive.tar.gz" << false << "File"
                                  << "archive";
    QTest::newRow("no dot") << "notes" << false << "File"
                            << "notes";
    QTest::newRow("folder") << "reports" << true << "Folder"
                            << "reports";
    QTest::newRow("folder with a dot") << "reports.old" << true << "Folder"
                                       << "reports";
}

void TestFileOperationsDelete::theQuestionNamesKindAndBaseName()
{
    QFETCH(QString, name);
    QFETCH(bool, isFolder);
    QFETCH(QString, kind);
    QFETCH(QString, shown);
    if (isFolder)
        makeFolders({in(name)});
    else
        writeFile(in(name));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in(name));
    QCOMPARE(boxes.count(), 1);
    const auto box = boxes.first();
    QCOMPARE(box.title, "Delete " + kind);
    QCOMPARE(box.text, "Are you sure you want to delete the " + kind + " \"" + shown + "\"?");
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, yesOrNo);
    QCOMPARE(box.defaultButton, QMessageBox::No);
    QCOMPARE(box.parent, panel->widget.window());
    QVERIFY(!isThere(in(name)));
}

void TestFileOperationsDelete::anOddNameIsShownAsItIsAndGoes()
{
    QFETCH(QString, name);
    writeFile(in(name));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in(name));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(boxes.first().text, "Are you sure you want to delete the File \"" + name + "\"?");
    QCOMPARE(boxes.first().format, Qt::PlainText);
    QCOMPARE(QDir(internalFolder).entryList(QDir::AllEntries | QDir::NoDotAndDotDot),
             QStringList({"working directory"}));
}

void TestFileOperationsDelete::noKeepsTheFile()
{
    writeFile(in("report.cdp"));
    const MessageBoxes boxes(QMessageBox::No);
    remove(in("report.cdp"));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(isThere(in("report.cdp")));
}

void TestFileOperationsDelete::aFolderGoesWithAllItLists()
{
    makeFolders({in("tree/a/b/c"), in("tree/empty")});
    for (const char *name : {"tree/one", "tree/a/two", "tree/a/b/c/three.cdp"})
        writeFile(in(name));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree"));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!isThere(in("tree")));
}

void TestFileOperationsDelete::aFilterHidesNothingFromDeletion()
{
    panel->widget.setNameFilters("*.cdp");
    makeFolders({in("tree/inner")});
    for (const char *name : {"tree/shown.cdp", "tree/filtered.txt", "tree/inner/filtered.txt"})
        writeFile(in(name));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree"));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!isThere(in("tree")));
}

/** Deleting takes what a folder lists; hidden files are not listed, and so keep it. */
void TestFileOperationsDelete::aHiddenFileKeepsItsFolderAndTheFailureAsks()
{
    makeFolders({in("tree.d")});
    writeFile(in("tree.d/.hidden"));
    writeFile(in("tree.d/listed"));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree.d"));
    QCOMPARE(boxes.count(), 2);
    const auto box = boxes.last();
    QCOMPARE(box.title, QString("Delete Folder"));
    QCOMPARE(box.text, QString("Failed to delete the Folder \"tree\"?")); // as a question, kept
    QCOMPARE(box.icon, QMessageBox::Warning);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
    QVERIFY(isThere(in("tree.d/.hidden")));
    QVERIFY(!isThere(in("tree.d/listed")));
}

void TestFileOperationsDelete::aFileThatMayNotBeDeletedIsReported()
{
    makeFolders({in("locked")});
    writeFile(in("locked/report.cdp"));
    QFile::setPermissions(in("locked"), QFile::ReadOwner | QFile::ExeOwner);
    const OrdinaryRights rights;
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("locked/report.cdp"));
    QCOMPARE(boxes.count(), 2);
    QCOMPARE(boxes.last().title, QString("Delete File"));
    QCOMPARE(boxes.last().text, QString("Failed to delete the File \"report\"?"));
    QVERIFY(isThere(in("locked/report.cdp")));
}

void TestFileOperationsDelete::aLinkGoesWithoutItsTarget_data()
{
    QTest::addColumn<QString>("target");
    QTest::addColumn<QString>("kind");
    QTest::newRow("to a folder") << in("outside") << "Folder";
    QTest::newRow("to a file") << in("outside/file") << "File";
    QTest::newRow("to the folder it is in") << internalFolder << "Folder";
}

void TestFileOperationsDelete::aLinkGoesWithoutItsTarget()
{
    QFETCH(QString, target);
    QFETCH(QString, kind);
    makeFolders({in("outside")});
    writeFile(in("outside/file"));
    QVERIFY(QFile::link(target, in("link")));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("link"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(boxes.first().title, "Delete " + kind);
    QVERIFY(!isThere(in("link")));
    QVERIFY(isThere(in("outside/file")));
}

void TestFileOperationsDelete::linksInsideAFolderAreNotFollowed()
{
    makeFolders({in("outside"), in("tree/inner")});
    writeFile(in("outside/file"));
    QVERIFY(QFile::link(in("outside"), in("tree/inner/folder")));
    QVERIFY(QFile::link("../../outside", in("tree/inner/relative")));
    QVERIFY(QFile::link(in("outside/file"), in("tree/file")));
    QVERIFY(QFile::link(in("tree"), in("tree/inner/round")));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree"));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!isThere(in("tree")));
    QVERIFY(isThere(in("outside/file")));
}

/** No folder lists such a link: as a hidden file it keeps its folder. */
void TestFileOperationsDelete::aLinkThatLeadsNowhereIsFollowedNowhere()
{
    makeFolders({in("tree")});
    QVERIFY(QFile::link(in("nothing"), in("tree/broken")));
    QVERIFY(QFile::link(in("tree/itself"), in("tree/itself")));
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree/broken")); // the model knows no such entry
    QCOMPARE(boxes.count(), 0);
    remove(in("tree"));
    QCOMPARE(boxes.count(), 2);
    QCOMPARE(boxes.last().text, QString("Failed to delete the Folder \"tree\"?"));
    QVERIFY(isThere(in("tree/broken")));
    QVERIFY(isThere(in("tree/itself")));
}

void TestFileOperationsDelete::aPipeGoes()
{
    QCOMPARE(mkfifo(qPrintable(in("pipe")), 0600), 0);
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("pipe"));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(!isThere(in("pipe")));
}

void TestFileOperationsDelete::anInvalidIndexAsksNothing()
{
    QFileSystemModel another;
    another.setRootPath("/");
    writeFile(in("report.cdp"));
    const MessageBoxes boxes(QMessageBox::Yes);
    emit panel->parts.list->deleteIndex(QModelIndex());
    remove(in("never there"));
    emit panel->parts.list->deleteIndex(another.index(in("report.cdp")));
    QCOMPARE(boxes.count(), 0);
    QVERIFY(isThere(in("report.cdp")));
}

void TestFileOperationsDelete::anEntryThatVanishesWhileAskedHarmsNothing()
{
    makeFolders({in("tree/inner")});
    writeFile(in("tree/inner/file"));
    QVERIFY(panel->lists({"tree", "working directory"}));
    const MessageBoxes boxes(QMessageBox::Yes, [&] {
        QVERIFY(QDir(in("tree")).removeRecursively());
        QVERIFY(panel->lists({"working directory"}));
    });
    remove(in("tree"));
    QCOMPARE(boxes.count(), 1);
}

void TestFileOperationsDelete::aKeyUnmountedWhileAskedKeepsItsFiles()
{
    QVERIFY(plugKey());
    panel->widget.setDirectory(keyFolder);
    writeFile(keyFolder + "/report.cdp");
    const MessageBoxes boxes(QMessageBox::Yes, [] { USBSupport::instance()->unmount(); });
    remove(keyFolder + "/report.cdp");
    QCOMPARE(boxes.count(), 1);
    QVERIFY(isThere(keyFolder + "/report.cdp"));
}

void TestFileOperationsDelete::aPanelThatGoesWhileAskedDeletesNothing()
{
    writeFile(in("report.cdp"));
    auto widget = std::make_unique<FileWidget>();
    auto *list = widget->findChild<FileListView *>("listView");
    auto *model = qobject_cast<QFileSystemModel *>(list->model());
    const MessageBoxes boxes(QMessageBox::Yes, [&] { widget.reset(); });
    emit list->deleteIndex(model->index(in("report.cdp")));
    QCOMPARE(boxes.count(), 1);
    QVERIFY(isThere(in("report.cdp")));
}

void TestFileOperationsDelete::theTextsAreThePanels()
{
    makeFolders({in("tree")});
    writeFile(in("tree/.hidden"));
    ContextTranslator translator;
    QCoreApplication::installTranslator(&translator);
    const MessageBoxes boxes(QMessageBox::Yes);
    remove(in("tree"));
    QCoreApplication::removeTranslator(&translator);
    QCOMPARE(boxes.count(), 2);
    QCOMPARE(boxes.first().title, QString("FileWidget|Delete FileWidget|Folder"));
    QCOMPARE(boxes.first().text,
             QString("FileWidget|Are you sure you want to delete the FileWidget|Folder \"tree\"?"));
    QCOMPARE(boxes.last().text,
             QString("FileWidget|Failed to delete the FileWidget|Folder \"tree\"?"));
}

void TestFileOperationsDelete::theTestsOwnEmptyingFollowsNoLink()
{
    makeFolders({in("tree"), in("outside")});
    writeFile(in("outside/file"));
    QVERIFY(QFile::link(in("outside"), in("tree/folder")));
    QVERIFY(QFile::link(in("outside/file"), in("tree/file")));
    QVERIFY(QFile::link(in("nothing"), in("tree/broken")));
    emptyFolder(in("tree"));
    QVERIFY(isThere(in("outside/file")));
    QVERIFY(QDir().rmdir(in("tree"))); // nothing is left in it
}

QTEST_MAIN(TestFileOperationsDelete)
#include "tst_file_operations_delete.moc"
