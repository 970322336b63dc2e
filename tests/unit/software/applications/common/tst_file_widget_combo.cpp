/*
 * The file panel's list of locations: which entries, in which order, at which depth, and
 * that it follows what the file system model learns later.
 */
#include "context_translator.h"
#include "file_panel_fixture.h"

#include "common/file_icons.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace TestSupport;

class FileWidgetComboTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init() { emptyScratchMachine(); }
    void cleanupTestCase() { emptyScratchMachine(); }

    void aRootListsItsFolders();
    void filesAreSkipped();
    void theBranchIsListedBelowItsFolder();
    void theKeysFoldersFollowTheKey();
    void theEntriesCarryPathAndLevel();
    void theEntriesHaveIcons();
    void anEmptyInternalRootListsTheWayFromTheTop();
    void nowhereIsAnEmptyListAndALineOnStandardError();
    void aFolderEnteredDirectlyGetsItsNeighboursLater();
    void foldersThatComeAndGoAreFollowed();
    void aVanishedFolderLeadsToTheNearestLeft();
    void aVanishedRootShowsNothing();
    void choosingAVanishedFolderStays();
    void longNamesDoNotWidenThePanel();
    void allButTheLocationsIsTranslated();
};

void FileWidgetComboTest::aRootListsItsFolders()
{
    makeFolders({internalFolder + "/c/below", internalFolder + "/a", internalFolder + "/B"});
    const auto panel = PanelUnderTest::atInternalStorage();
    // In the order of the rows.
    QVERIFY(panel->lists({"a", "B", "c"}));
    QVERIFY(panel->offers({"Internal Storage", "| a", "| B", "| c"}));
    QCOMPARE(panel->currentEntry(), internalFolder);
}

void FileWidgetComboTest::filesAreSkipped()
{
    makeFolders({internalFolder + "/a", internalFolder + "/.hidden"});
    writeFile(internalFolder + "/file");
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->lists({"a", "file"}));
    QVERIFY(panel->offers({"Internal Storage", "| a"}));
}

void FileWidgetComboTest::theBranchIsListedBelowItsFolder()
{
    makeFolders({internalFolder + "/a/x", internalFolder + "/b/c/d/e", internalFolder + "/b/side",
                 internalFolder + "/z"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/b/c/d");
    QVERIFY(
        panel->offers({"Internal Storage", "| a", "| b", "| | c", "| | | d", "| z", "USB Key"}));
    QCOMPARE(panel->currentEntry(), internalFolder + "/b/c/d");
    panel->choose(QStringLiteral("b"));
    QVERIFY(panel->offers({"Internal Storage", "| a", "| b", "| z", "USB Key"}));
    QCOMPARE(panel->currentEntry(), internalFolder + "/b");
}

void FileWidgetComboTest::theKeysFoldersFollowTheKey()
{
    makeFolders({internalFolder + "/i", keyFolder + "/k/l", keyFolder + "/m"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(keyFolder + "/k/l");
    QVERIFY(panel->offers({"Internal Storage", "USB Key", "| k", "| | l", "| m"}));
    QCOMPARE(panel->currentEntry(), keyFolder + "/k/l");
    panel->choose(QStringLiteral("USB Key"));
    QVERIFY(panel->offers({"Internal Storage", "USB Key", "| k", "| m"}));
    QCOMPARE(panel->currentEntry(), keyFolder);
}

void FileWidgetComboTest::theEntriesCarryPathAndLevel()
{
    makeFolders({internalFolder + "/a/b"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/a/b");
    QVERIFY(panel->offers({"Internal Storage", "| a", "| | b", "USB Key"}));
    const auto data = [&panel](int entry) {
        return panel->parts.location->itemData(entry, Qt::UserRole).toList();
    };
    QCOMPARE(data(0), QVariantList({internalFolder}));
    QCOMPARE(data(1), QVariantList({internalFolder + "/a", 1}));
    QCOMPARE(data(2), QVariantList({internalFolder + "/a/b", 2}));
    QCOMPARE(data(3), QVariantList({keyFolder}));
}

void FileWidgetComboTest::theEntriesHaveIcons()
{
    makeFolders({internalFolder + "/a"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| a", "USB Key"}));
    const auto key = [&panel](int entry) {
        return panel->parts.location->itemIcon(entry).cacheKey();
    };
    QCOMPARE(key(0), fileIcon(FileIcon::InternalStorage).cacheKey());
    QCOMPARE(key(2), fileIcon(FileIcon::UsbKey).cacheKey());
    const QModelIndex folder = panel->index(internalFolder + "/a");
    QCOMPARE(key(1), folder.data(Qt::DecorationRole).value<QIcon>().cacheKey());
    QVERIFY(!panel->parts.location->itemIcon(1).isNull());
}

void FileWidgetComboTest::anEmptyInternalRootListsTheWayFromTheTop()
{
    makeFolders({internalFolder + "/a"});
    PanelUnderTest panel;
    panel.widget.setDirectory(internalFolder + "/a");
    QVERIFY(panel.offers({"Internal Storage", "| /", "| | user_data", "| | | a"}));
    QCOMPARE(panel.currentEntry(), internalFolder + "/a");
    panel.widget.setDirectory(keyFolder);
    QVERIFY(panel.offers({"Internal Storage"}));
    QCOMPARE(panel.currentEntry(), QStringLiteral("(none)"));
}

void FileWidgetComboTest::nowhereIsAnEmptyListAndALineOnStandardError()
{
    PanelUnderTest panel;
    const QByteArray printed = captureStandardError([&panel] { panel.widget.refreshComboBox(); });
    QCOMPARE(printed, QByteArray("refreshComboBox called for invalid rootIndex\n"));
    QCOMPARE(panel.parts.location->count(), 0);
}

void FileWidgetComboTest::aFolderEnteredDirectlyGetsItsNeighboursLater()
{
    makeFolders({internalFolder + "/a", internalFolder + "/b/c", internalFolder + "/d"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/b/c");
    QVERIFY(panel->offers({"Internal Storage", "| a", "| b", "| | c", "| d"}));
    QCOMPARE(panel->currentEntry(), internalFolder + "/b/c");
}

void FileWidgetComboTest::foldersThatComeAndGoAreFollowed()
{
    makeFolders({internalFolder + "/a"});
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| a"}));
    makeFolders({internalFolder + "/b"});
    QVERIFY(panel->offers({"Internal Storage", "| a", "| b"}));
    QVERIFY(QDir(internalFolder).rmdir("a"));
    QVERIFY(panel->offers({"Internal Storage", "| b"}));
    QCOMPARE(panel->currentEntry(), internalFolder);
}

void FileWidgetComboTest::aVanishedFolderLeadsToTheNearestLeft()
{
    makeFolders({internalFolder + "/a/b/c", internalFolder + "/z"});
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| a", "| z"}));
    panel->widget.setDirectory(internalFolder + "/a/b/c");
    panel->widget.setFileName(QStringLiteral("report"));
    QVERIFY(QDir(internalFolder + "/a").removeRecursively());
    QTRY_COMPARE(panel->shownFolder(), internalFolder);
    QVERIFY(panel->offers({"Internal Storage", "| z"}));
    QCOMPARE(panel->currentEntry(), internalFolder);
    QCOMPARE(panel->widget.selectedFilePath(), internalFolder + "/report");
}

void FileWidgetComboTest::aVanishedRootShowsNothing()
{
    const QString root = QStringLiteral("/tmp/storage");
    makeFolders({root + "/a"});
    PanelUnderTest panel;
    // The folder above it is watched as well.
    panel.widget.setDirectory(QStringLiteral("/tmp"));
    QTRY_VERIFY(panel.names().contains(QStringLiteral("storage")));
    panel.widget.setInternalStoragePath(root);
    QVERIFY(panel.lists({"a"}));
    QVERIFY(QDir(root).removeRecursively());
    QTRY_VERIFY(!panel.parts.list->rootIndex().isValid());
    QTRY_COMPARE(panel.parts.location->count(), 0);
    QVERIFY(panel.lists({}));
    panel.widget.setFileName(QStringLiteral("report"));
    panel.parts.ok->click();
    panel.parentFolder->click();
    panel.newFolder->click();
    QCOMPARE(panel.confirmed.count(), 0);
    QCOMPARE(panel.shownFolder(), QString());
}

void FileWidgetComboTest::choosingAVanishedFolderStays()
{
    makeFolders({internalFolder + "/a", internalFolder + "/b"});
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| a", "| b"}));
    QVERIFY(QDir(internalFolder).rmdir("a"));
    panel->choose(QStringLiteral("a"));
    QVERIFY(panel->offers({"Internal Storage", "| b"}));
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(panel->currentEntry(), internalFolder);
}

void FileWidgetComboTest::longNamesDoNotWidenThePanel()
{
    const auto narrow = PanelUnderTest::atInternalStorage();
    const int width = narrow->widget.minimumSizeHint().width();
    const QString name(255, QLatin1Char('W'));
    makeFolders({internalFolder + '/' + name});
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| " + name}));
    panel->choose(name);
    QCOMPARE(panel->widget.minimumSizeHint().width(), width);
}

void FileWidgetComboTest::allButTheLocationsIsTranslated()
{
    ContextTranslator translator;
    QVERIFY(QCoreApplication::installTranslator(&translator));
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    QCOMPARE(panel->entries(), QStringList({"Internal Storage", "USB Key"}));
    const QStringList captions{"FileWidget|Create", "FileWidget|Load", "FileWidget|Save As",
                               "FileWidget|Backup", "FileWidget|OK"};
    for (int mode = 0; mode < captions.size(); ++mode) {
        panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
        QCOMPARE(panel->parts.ok->text(), captions.at(mode));
    }
    QCOMPARE(panel->parts.cancel->text(), QStringLiteral("FileWidget|Cancel"));
    QCOMPARE(panel->parentFolder->toolTip(), QStringLiteral("FileWidget|Up one level"));
    QCOMPARE(panel->newFolder->toolTip(), QStringLiteral("FileWidget|Create a new folder"));
    QCOMPARE(panel->widget.findChild<QLabel *>("label")->text(),
             QStringLiteral("FileWidget|Look in:"));
    QCOMPARE(panel->widget.findChild<QLabel *>("captionLabel")->text(),
             QStringLiteral("FileWidget|Name:"));
    panel->newFolder->click();
    QVERIFY(QFileInfo(internalFolder + "/FileWidget|New Folder").isDir());
    const MessageBoxes boxes(QMessageBox::No);
    panel->widget.setMode(FileWidget::BackupMode);
    panel->widget.setFileName(QStringLiteral("FileWidget|New Folder"));
    panel->parts.ok->click();
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(boxes.first().title, QStringLiteral("FileWidget|File exists"));
    QCOMPARE(boxes.first().text, QStringLiteral("FileWidget|The selected file already exists.\n"
                                                "Do you want to overwrite it?"));
    QCoreApplication::removeTranslator(&translator);
}

QTEST_MAIN(FileWidgetComboTest)
#include "tst_file_widget_combo.moc"
