/*
 * Names in the file panel: what a typed one becomes, what the list puts into the name line,
 * new folders, filters, and names and folders of every kind.
 */
#include "file_panel_fixture.h"

#include <QDir>
#include <QFile>
#include <QTest>

using namespace TestSupport;

using ModeNumber = int;

class FileWidgetNamesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init() { emptyScratchMachine(); }
    void cleanupTestCase() { emptyScratchMachine(); }

    void theSelectedPath_data();
    void theSelectedPath();
    void theSelectedPathIsInTheFolderShown();
    void nameAndCaptionAreSet();
    void filtersHideWhatMatchesNone();
    void filtersMatchWhateverTheCase();
    void anEmptyFilterLeavesFilesUsable();

    void theListFillsTheNameIn_data();
    void theListFillsTheNameIn();
    void leavingTheListKeepsTheName();
    void activation_data();
    void activation();
    void enteringAFolderSelectsNothingThere();

    void newFoldersAreNumbered();
    void aFileTakesAFolderName();
    void aNewFolderIsNamedAtOnce();
    void aReadOnlyFolderGetsNoNewOne();

    void namesOfEveryKind_data();
    void namesOfEveryKind();
    void hiddenFilesAreNotListed();
    void fiveThousandFilesAreListed();
};

void FileWidgetNamesTest::theSelectedPath_data()
{
    QTest::addColumn<ModeNumber>("mode");
    QTest::addColumn<QString>("filters");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("path");
    const QString folder = internalFolder + '/';
    const auto row = [&folder](const char *what, int mode, const char *filters, const char *name,
                               const char *path) {
        QTest::newRow(what) << mode << QString(filters) << QString(name)
                            << (*path ? folder + QString(path) : QString());
    };
    row("no name", 3, "*.cdp", "", "");
    row("no name, folder", 4, "", "", "");
    row("no filter", 3, "", "report", "report");
    row("bare name", 3, "*.cdp", "report", "report.cdp");
    row("with extension", 3, "*.cdp", "report.cdp", "report.cdp");
    row("other extension", 3, "*.cdp", "report.zip", "report.zip.cdp");
    row("other case", 3, "*.cdp", "x.CDP", "x.CDP.cdp");
    row("dot at the end", 3, "*.cdp", "report.", "report..cdp");
    row("only the extension", 3, "*.cdp", ".cdp", ".cdp");
    row("without its dot", 3, "*.cdp", "reportcdp", "reportcdp.cdp");
    row("two filters", 3, "*.cdp *.zip", "report", "report.cdp");
    row("the second's extension", 3, "*.cdp *.zip", "report.zip", "report.zip");
    row("first without extension", 3, "report* *.zip", "report", "report.zip");
    row("no extension in any", 3, "report* *", "report", "report");
    row("from the last dot", 3, "*.tar.gz", "report", "report.gz");
    row("from the last dot, there", 3, "*.tar.gz", "a.gz", "a.gz");
    row("two blanks", 3, "  *.cdp", "report", "report.cdp");
    row("load mode", 1, "*.cdp", "report", "report.cdp");
    row("folder mode", 4, "*.cdp", "chosen", "chosen/");
    row("folder mode, no filter", 4, "", "chosen", "chosen/");
    row("this folder", 3, "", ".", "");
    row("the folder above", 3, "", "..", "");
    row("the folder above, folder mode", 4, "", "..", "");
    row("three dots", 3, "", "...", "...");
}

void FileWidgetNamesTest::theSelectedPath()
{
    QFETCH(ModeNumber, mode);
    QFETCH(QString, filters);
    QFETCH(QString, name);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
    panel->widget.setNameFilters(filters);
    panel->widget.setFileName(name);
    QTEST(panel->widget.selectedFilePath(), "path");
}

void FileWidgetNamesTest::theSelectedPathIsInTheFolderShown()
{
    makeFolders({internalFolder + "/a/b"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setFileName(QStringLiteral("report"));
    panel->widget.setDirectory(internalFolder + "/a/b");
    QCOMPARE(panel->widget.selectedFilePath(), internalFolder + "/a/b/report");
}

void FileWidgetNamesTest::nameAndCaptionAreSet()
{
    PanelUnderTest panel;
    panel.widget.setFileName(QStringLiteral("report"));
    QCOMPARE(panel.parts.name->text(), QStringLiteral("report"));
    panel.widget.setCaption(QStringLiteral("Folder:"));
    QCOMPARE(panel.widget.findChild<QLabel *>("captionLabel")->text(), QStringLiteral("Folder:"));
}

void FileWidgetNamesTest::filtersHideWhatMatchesNone()
{
    makeFolders({internalFolder + "/folder"});
    for (const char *name : {"/a.cdp", "/b.txt", "/c.zip"})
        writeFile(internalFolder + name);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setNameFilters(QStringLiteral("*.cdp"));
    QCOMPARE(panel->model()->nameFilters(), QStringList("*.cdp"));
    QVERIFY(!panel->model()->nameFilterDisables());
    QVERIFY(panel->lists({"folder", "a.cdp"}));
    panel->widget.setNameFilters(QStringLiteral("*.cdp  *.zip"));
    QCOMPARE(panel->model()->nameFilters(), QStringList({"*.cdp", "", "*.zip"}));
    QVERIFY(panel->lists({"folder", "a.cdp", "c.zip"}));
}

void FileWidgetNamesTest::filtersMatchWhateverTheCase()
{
    // A key written elsewhere may hold "REPORT.CDP".
    writeFile(internalFolder + "/A.CDP");
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setNameFilters(QStringLiteral("*.cdp"));
    QVERIFY(panel->lists({"A.CDP"}));
}

void FileWidgetNamesTest::anEmptyFilterLeavesFilesUsable()
{
    writeFile(internalFolder + "/a.cdp");
    writeFile(internalFolder + "/b.txt");
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setNameFilters(QStringLiteral("*.cdp"));
    panel->widget.setNameFilters(QString());
    QVERIFY(panel->model()->nameFilterDisables());
    QVERIFY(panel->lists({"a.cdp", "b.txt"}));
    const QModelIndex file = panel->index(internalFolder + "/b.txt");
    QVERIFY(file.flags().testFlag(Qt::ItemIsEnabled));
}

void FileWidgetNamesTest::theListFillsTheNameIn_data()
{
    QTest::addColumn<ModeNumber>("mode");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("name");
    for (const int mode : {0, 1, 2, 3}) {
        QTest::addRow("mode %d, file", mode) << mode << "a.cdp"
                                             << "a.cdp";
        QTest::addRow("mode %d, folder", mode) << mode << "folder"
                                               << "typed";
    }
    QTest::newRow("folder mode") << 4 << "folder"
                                 << "folder";
}

void FileWidgetNamesTest::theListFillsTheNameIn()
{
    QFETCH(ModeNumber, mode);
    QFETCH(QString, entry);
    makeFolders({internalFolder + "/folder"});
    writeFile(internalFolder + "/a.cdp");
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
    panel->widget.setFileName(QStringLiteral("typed"));
    panel->parts.list->setCurrentIndex(panel->index(internalFolder + '/' + entry));
    QTEST(panel->parts.name->text(), "name");
}

void FileWidgetNamesTest::leavingTheListKeepsTheName()
{
    makeFolders({internalFolder + "/folder"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(FileWidget::FolderMode);
    panel->parts.list->setCurrentIndex(panel->index(internalFolder + "/folder"));
    panel->parts.list->selectionModel()->clear();
    QCOMPARE(panel->parts.name->text(), QStringLiteral("folder"));
}

void FileWidgetNamesTest::activation_data()
{
    QTest::addColumn<ModeNumber>("mode");
    QTest::addColumn<QString>("entry");
    QTest::addColumn<QString>("name");
    QTest::addColumn<QString>("shown");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("confirms");
    for (const int mode : {0, 1, 2, 3}) {
        QTest::addRow("mode %d, folder", mode) << mode << "/folder"
                                               << "typed" << internalFolder + "/folder" << 0 << 0;
        QTest::addRow("mode %d, file", mode)
            << mode << "/a.cdp"
            << "a.cdp" << internalFolder << int(mode != FileWidget::LoadMode) << 1;
    }
    // It fills the name and enters: a second folder of that name would have to be in it.
    QTest::newRow("folder mode") << 4 << "/folder"
                                 << "folder" << internalFolder + "/folder" << 0 << 0;
}

void FileWidgetNamesTest::activation()
{
    QFETCH(ModeNumber, mode);
    QFETCH(QString, entry);
    makeFolders({internalFolder + "/folder"});
    writeFile(internalFolder + "/a.cdp");
    const MessageBoxes boxes(QMessageBox::Yes);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
    panel->widget.setFileName(QStringLiteral("typed"));
    panel->activate(internalFolder + entry);
    QTEST(panel->parts.name->text(), "name");
    QTEST(panel->shownFolder(), "shown");
    QTEST(boxes.count(), "questions");
    QTEST(panel->confirmed.count(), "confirms");
    QCOMPARE(panel->currentEntry(), panel->shownFolder());
}

void FileWidgetNamesTest::enteringAFolderSelectsNothingThere()
{
    makeFolders({internalFolder + "/folder"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.list->setCurrentIndex(panel->index(internalFolder + "/folder"));
    panel->activate(internalFolder + "/folder");
    // The folder we are in must not stay what the list's menu would delete.
    QVERIFY(panel->parts.list->selectionModel()->selectedIndexes().isEmpty());
    QVERIFY(!panel->parts.list->currentIndex().isValid());
}

void FileWidgetNamesTest::newFoldersAreNumbered()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    for (int click = 0; click < 3; ++click)
        panel->newFolder->click();
    QVERIFY(panel->lists({"New Folder", "New Folder 1", "New Folder 2"}));
    QVERIFY(QDir(internalFolder).rmdir("New Folder 1"));
    QVERIFY(panel->lists({"New Folder", "New Folder 2"}));
    panel->newFolder->click();
    QVERIFY(QFileInfo(internalFolder + "/New Folder 1").isDir());
    QVERIFY(!QFileInfo::exists(internalFolder + "/New Folder 3"));
}

void FileWidgetNamesTest::aFileTakesAFolderName()
{
    writeFile(internalFolder + "/New Folder");
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->newFolder->click();
    QVERIFY(QFileInfo(internalFolder + "/New Folder").isFile());
    QVERIFY(QFileInfo(internalFolder + "/New Folder 1").isDir());
}

void FileWidgetNamesTest::aNewFolderIsNamedAtOnce()
{
    for (int number = 0; number < 200; ++number)
        makeFolders({internalFolder + QStringLiteral("/z%1").arg(number)});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.show();
    QTRY_COMPARE(panel->names().size(), 200);
    panel->newFolder->click();
    const QPersistentModelIndex folder = panel->index(internalFolder + "/New Folder");
    QVERIFY(folder.row() > 0);
    QVERIFY(panel->parts.list->isPersistentEditorOpen(folder));
    const auto isInSight = [&panel, &folder] {
        const QRect item = panel->parts.list->visualRect(folder);
        return panel->parts.list->viewport()->rect().contains(item);
    };
    QVERIFY(isInSight());
    // Made at the end, it is sorted to the front with the next news of the folder.
    writeFile(internalFolder + "/news");
    QTRY_COMPARE(folder.row(), 0);
    QVERIFY(isInSight());
    auto *editor = panel->parts.list->findChild<QLineEdit *>();
    QVERIFY(editor);
    editor->setText(QStringLiteral("aaa"));
    QTest::keyClick(editor, Qt::Key_Return);
    QTRY_VERIFY(QFileInfo(internalFolder + "/aaa").isDir());
    QVERIFY(!QFileInfo::exists(internalFolder + "/New Folder"));
}

void FileWidgetNamesTest::aReadOnlyFolderGetsNoNewOne()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    // Root may write anywhere but in here.
    PanelUnderTest panel;
    panel.widget.setDirectory(QStringLiteral("/proc/self"));
    panel.newFolder->click();
    QCOMPARE(panel.parts.list->findChildren<QLineEdit *>().size(), 0);
    QCOMPARE(boxes.count(), 0);
}

void FileWidgetNamesTest::namesOfEveryKind_data()
{
    QTest::addColumn<QString>("name");
    QTest::newRow("255 bytes") << QString(255, QLatin1Char('w'));
    QTest::newRow("255 bytes, umlauts") << QString(127, QChar(0xe4)) + 'x';
    QTest::newRow("newline") << QStringLiteral("two\nlines");
    QTest::newRow("quotes") << QStringLiteral("\"quoted\" 'twice' `thrice`");
    QTest::newRow("ampersands") << QStringLiteral("R&D && more");
    QTest::newRow("markup") << QStringLiteral("<b>bold<");
    QTest::newRow("emoji") << QString::fromUtf8("\xf0\x9f\x92\xa5 crash");
    QTest::newRow("right to left") << QString::fromUtf8("\xd7\x93\xd7\x95\xd7\x97.cdp");
    QTest::newRow("blanks") << QStringLiteral("  a  ");
    QTest::newRow("markers") << QStringLiteral("%1 %n %s");
    QTest::newRow("backslash") << QStringLiteral("a\\b");
}

void FileWidgetNamesTest::namesOfEveryKind()
{
    QFETCH(QString, name);
    const QString folder = internalFolder + '/' + name;
    makeFolders({folder});
    writeFile(folder + '/' + name);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.show();
    QVERIFY(panel->offers({"Internal Storage", "| " + name}));
    panel->activate(folder);
    QCOMPARE(panel->shownFolder(), folder);
    QCOMPARE(panel->currentEntry(), folder);
    QVERIFY(panel->lists({name}));
    panel->widget.setMode(FileWidget::LoadMode);
    panel->activate(folder + '/' + name);
    QCOMPARE(panel->confirmed.count(), 1);
    QCOMPARE(panel->widget.selectedFilePath(), folder + '/' + name);
    panel->widget.grab(); // it can be painted
}

void FileWidgetNamesTest::hiddenFilesAreNotListed()
{
    makeFolders({internalFolder + "/.folder"});
    writeFile(internalFolder + "/.file");
    writeFile(internalFolder + "/file");
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->lists({"file"}));
    QVERIFY(panel->offers({"Internal Storage"}));
}

void FileWidgetNamesTest::fiveThousandFilesAreListed()
{
    constexpr int files = 5000;
    for (int number = 0; number < files; ++number)
        writeFile(keyFolder + QStringLiteral("/report_%1.cdp").arg(number, 4, 10, QChar('0')));
    QVERIFY(plugKey());
    PanelUnderTest panel;
    panel.parts.usbKey->click();
    panel.widget.show();
    QTRY_COMPARE(panel.names().size(), files);
    QTRY_COMPARE(panel.names().last(), QStringLiteral("report_4999.cdp"));
    panel.parts.list->setFocus();
    QTest::keyClick(panel.parts.list, Qt::Key_End);
    QCOMPARE(panel.parts.name->text(), QStringLiteral("report_4999.cdp"));
}

QTEST_MAIN(FileWidgetNamesTest)
#include "tst_file_widget_names.moc"
