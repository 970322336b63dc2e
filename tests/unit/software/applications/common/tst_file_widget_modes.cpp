/*
 * The file panel's form, its five modes, and what its action button and Cancel do.
 */
#include "file_panel_fixture.h"

#include "common/file_combo_menu_delegate.h"
#include "common/file_icons.h"

#include <QDialog>
#include <QGridLayout>
#include <QTest>
#include <QVBoxLayout>

using namespace TestSupport;

using ModeNumber = int;

class FileWidgetModesTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init() { emptyScratchMachine(); }
    void cleanupTestCase() { emptyScratchMachine(); }

    void theSignalsComeInTheirOrder();
    void theFormIsAsDesigned();
    void everyControlHasItsPlace_data();
    void everyControlHasItsPlace();
    void theButtonsAreNamedAndHaveIcons();
    void theListIsEditedBySelectingAndClicking();
    void thePopupHasItsOwnDelegate();
    void theModelIsTheWholeWritableFileSystem();
    void itStartsNowhereAndShowsNothing();

    void aModeSetsFilterAndCaption_data();
    void aModeSetsFilterAndCaption();
    void anUnknownModeKeepsTheFilter();
    void folderModeListsNoFiles();

    void okNeedsAName();
    void okByModeAndExistence_data();
    void okByModeAndExistence();
    void theQuestionIsWordedAsOperatorsKnowIt();
    void theQuestionBelongsToTheWindow();
    void cancelRemembersTheFolder();
    void cancelUnmountsOnce();
    void cancelWithoutAKeyUnmountsNothing();
    void cancelWhileNowhereKeepsTheRememberedFolder();
};

void FileWidgetModesTest::theSignalsComeInTheirOrder()
{
    const QMetaObject &meta = FileWidget::staticMetaObject;
    const int first = meta.methodOffset();
    QCOMPARE(meta.method(first).methodSignature(), QByteArray("confirm()"));
    QCOMPARE(meta.method(first + 1).methodSignature(), QByteArray("cancel()"));
    QCOMPARE(meta.method(first + 2).name(), QByteArray("projectRenamed"));
    QCOMPARE(meta.method(first + 3).name(), QByteArray("newPath"));
}

void FileWidgetModesTest::theFormIsAsDesigned()
{
    const PanelUnderTest panel;
    QCOMPARE(panel.widget.size(), QSize(495, 296));
    QCOMPARE(panel.widget.windowTitle(), QStringLiteral("Form"));
    const auto *grid = qobject_cast<QGridLayout *>(panel.widget.layout());
    QVERIFY(grid);
    QCOMPARE(grid->objectName(), QStringLiteral("gridLayout"));
    QCOMPARE(grid->contentsMargins(), QMargins());
    const auto *label = panel.widget.findChild<QLabel *>(QStringLiteral("label"));
    QCOMPARE(label->text(), QStringLiteral("Look in:"));
    QCOMPARE(label->alignment(), Qt::AlignRight | Qt::AlignTrailing | Qt::AlignVCenter);
    QCOMPARE(panel.parts.location->sizePolicy().horizontalPolicy(), QSizePolicy::Expanding);
    QVERIFY(panel.parts.ok->isDefault() && !panel.parts.ok->autoDefault());
    QCOMPARE(panel.parts.cancel->text(), QStringLiteral("Cancel"));
    QVERIFY(!panel.parts.cancel->isDefault() && !panel.parts.cancel->autoDefault());
    QCOMPARE(panel.parts.cancel->shortcut(), QKeySequence(Qt::Key_Escape));
}

void FileWidgetModesTest::everyControlHasItsPlace_data()
{
    QTest::addColumn<QByteArray>("className");
    QTest::addColumn<QRect>("cells"); // column, row, columns, rows
    QTest::newRow("label") << QByteArray("QLabel") << QRect(0, 0, 1, 1);
    QTest::newRow("localDiskButton") << QByteArray("QToolButton") << QRect(0, 1, 1, 1);
    QTest::newRow("listView") << QByteArray("FileListView") << QRect(1, 1, 3, 3);
    QTest::newRow("usbDiskButton") << QByteArray("QToolButton") << QRect(0, 2, 1, 1);
    QTest::newRow("captionLabel") << QByteArray("QLabel") << QRect(1, 4, 1, 1);
    QTest::newRow("configurationNameLineEdit") << QByteArray("QLineEdit") << QRect(2, 4, 1, 1);
    QTest::newRow("okButton") << QByteArray("QPushButton") << QRect(3, 4, 1, 1);
    QTest::newRow("cancelButton") << QByteArray("QPushButton") << QRect(3, 5, 1, 1);
    QTest::newRow("horizontalLayout") << QByteArray("QHBoxLayout") << QRect(1, 0, 3, 1);
}

void FileWidgetModesTest::everyControlHasItsPlace()
{
    QFETCH(QByteArray, className);
    const PanelUnderTest panel;
    auto *grid = qobject_cast<QGridLayout *>(panel.widget.layout());
    auto *control = panel.widget.findChild<QObject *>(QString::fromLatin1(QTest::currentDataTag()));
    QVERIFY(control);
    QCOMPARE(QByteArray(control->metaObject()->className()), className);
    QRect cells;
    for (int item = 0; item < grid->count(); ++item) {
        if (grid->itemAt(item)->widget() != control && grid->itemAt(item)->layout() != control)
            continue;
        int row = 0;
        int column = 0;
        int rows = 0;
        int columns = 0;
        grid->getItemPosition(item, &row, &column, &rows, &columns);
        cells = QRect(column, row, columns, rows);
    }
    QTEST(cells, "cells");
}

void FileWidgetModesTest::theButtonsAreNamedAndHaveIcons()
{
    const PanelUnderTest panel;
    const QToolButton *small[] = {panel.parentFolder, panel.newFolder};
    const QToolButton *large[] = {panel.parts.internalStorage, panel.parts.usbKey};
    QCOMPARE(panel.parentFolder->toolTip(), QStringLiteral("Up one level"));
    QCOMPARE(panel.newFolder->toolTip(), QStringLiteral("Create a new folder"));
    QCOMPARE(panel.newFolder->focusPolicy(), Qt::StrongFocus);
    for (const QToolButton *button : small) {
        QCOMPARE(button->iconSize(), QSize(16, 16));
        QCOMPARE(button->text(), QStringLiteral("..."));
    }
    for (const QToolButton *button : large)
        QCOMPARE(button->iconSize(), QSize(32, 32));
    const auto all = panel.widget.findChildren<QToolButton *>();
    QCOMPARE(all.size(), 4);
    for (const QToolButton *button : all) {
        QVERIFY(button->autoRaise());
        QVERIFY2(!button->accessibleName().isEmpty(), qPrintable(button->objectName()));
    }
    const auto key = [](const QIcon &icon) { return icon.cacheKey(); };
    QCOMPARE(key(panel.parts.internalStorage->icon()), key(fileIcon(FileIcon::InternalStorage)));
    QCOMPARE(key(panel.newFolder->icon()), key(fileIcon(FileIcon::NewFolder)));
    QCOMPARE(key(panel.parts.usbKey->icon()), key(fileIcon(FileIcon::UsbKey)));
    QCOMPARE(key(panel.parentFolder->icon()), key(fileIcon(FileIcon::UpDirectory)));
}

void FileWidgetModesTest::theListIsEditedBySelectingAndClicking()
{
    const PanelUnderTest panel;
    QCOMPARE(panel.parts.list->editTriggers(),
             QAbstractItemView::EditTriggers(QAbstractItemView::SelectedClicked));
    QCOMPARE(panel.parts.list->selectionBehavior(), QAbstractItemView::SelectRows);
}

void FileWidgetModesTest::thePopupHasItsOwnDelegate()
{
    PanelUnderTest panel;
    panel.widget.show();
    panel.widget.ensurePolished();
    QVERIFY(qobject_cast<FileComboMenuDelegate *>(panel.parts.location->view()->itemDelegate()));
}

void FileWidgetModesTest::theModelIsTheWholeWritableFileSystem()
{
    const PanelUnderTest panel;
    QCOMPARE(panel.model()->rootPath(), QStringLiteral("/"));
    QVERIFY(!panel.model()->isReadOnly());
    QCOMPARE(panel.model()->parent(), &panel.widget);
}

void FileWidgetModesTest::itStartsNowhereAndShowsNothing()
{
    PanelUnderTest panel;
    QVERIFY(!panel.parts.list->rootIndex().isValid());
    // The model's only top-level row is the file system itself.
    QCOMPARE(panel.model()->rowCount(), 1);
    QVERIFY(panel.parts.list->isRowHidden(0));
    QVERIFY(panel.entries().isEmpty());
    panel.widget.setFileName(QStringLiteral("etc"));
    QCOMPARE(panel.widget.selectedFilePath(), QString());
    panel.parts.ok->click();
    panel.parentFolder->click();
    panel.newFolder->click();
    QCOMPARE(panel.confirmed.count(), 0);
    QVERIFY(!panel.parts.list->rootIndex().isValid());
}

void FileWidgetModesTest::aModeSetsFilterAndCaption_data()
{
    QTest::addColumn<ModeNumber>("mode");
    QTest::addColumn<QString>("caption");
    QTest::addColumn<int>("filter");
    QTest::newRow("create") << 0 << "Create" << 0x6407;
    QTest::newRow("load") << 1 << "Load" << 0x6407;
    QTest::newRow("save as") << 2 << "Save As" << 0x6407;
    QTest::newRow("backup") << 3 << "Backup" << 0x6407;
    QTest::newRow("folder") << 4 << "OK" << 0x6400;
}

void FileWidgetModesTest::aModeSetsFilterAndCaption()
{
    QFETCH(ModeNumber, mode);
    PanelUnderTest panel;
    QCOMPARE(panel.parts.ok->text(), QStringLiteral("Create"));
    panel.widget.setMode(mode == 4 ? FileWidget::LoadMode : FileWidget::FolderMode);
    panel.widget.setMode(static_cast<FileWidget::Mode>(mode));
    QTEST(panel.parts.ok->text(), "caption");
    QTEST(int(panel.model()->filter()), "filter");
}

void FileWidgetModesTest::anUnknownModeKeepsTheFilter()
{
    PanelUnderTest panel;
    for (const auto known : {FileWidget::LoadMode, FileWidget::FolderMode}) {
        panel.widget.setMode(known);
        const QDir::Filters filter = panel.model()->filter();
        panel.widget.setMode(static_cast<FileWidget::Mode>(7));
        QCOMPARE(panel.model()->filter(), filter);
        QCOMPARE(panel.parts.ok->text(), QStringLiteral("OK"));
    }
}

void FileWidgetModesTest::folderModeListsNoFiles()
{
    makeFolders({internalFolder + "/reports"});
    writeFile(internalFolder + "/a.cdp");
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->lists({"reports", "a.cdp"}));
    panel->widget.setMode(FileWidget::FolderMode);
    QVERIFY(panel->lists({"reports"}));
    panel->widget.setMode(FileWidget::SaveAsMode);
    QVERIFY(panel->lists({"reports", "a.cdp"}));
}

void FileWidgetModesTest::okNeedsAName()
{
    const MessageBoxes boxes(QMessageBox::Yes);
    for (int mode = 0; mode <= 4; ++mode) {
        const auto panel = PanelUnderTest::atInternalStorage();
        panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
        panel->parts.ok->click();
        QCOMPARE(panel->confirmed.count(), 0);
    }
    QCOMPARE(boxes.count(), 0);
}

void FileWidgetModesTest::okByModeAndExistence_data()
{
    QTest::addColumn<ModeNumber>("mode");
    QTest::addColumn<bool>("exists");
    QTest::addColumn<bool>("saysYes");
    QTest::addColumn<int>("questions");
    QTest::addColumn<int>("confirms");
    const char *const names[] = {"create", "load", "save as", "backup", "folder", "unknown"};
    for (int mode = 0; mode <= 5; ++mode) {
        const bool picks = mode == 1 || mode == 4;
        const char *name = names[mode];
        QTest::addRow("%s, new", name) << mode << false << true << 0 << int(!picks);
        QTest::addRow("%s, exists, yes", name) << mode << true << true << int(!picks) << 1;
        QTest::addRow("%s, exists, no", name) << mode << true << false << int(!picks) << int(picks);
    }
}

void FileWidgetModesTest::okByModeAndExistence()
{
    QFETCH(ModeNumber, mode);
    QFETCH(bool, exists);
    QFETCH(bool, saysYes);
    if (exists && mode == FileWidget::FolderMode)
        makeFolders({internalFolder + "/chosen"});
    else if (exists)
        writeFile(internalFolder + "/chosen");
    const MessageBoxes boxes(saysYes ? QMessageBox::Yes : QMessageBox::No);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(static_cast<FileWidget::Mode>(mode));
    panel->widget.setFileName(QStringLiteral("chosen"));
    panel->parts.ok->click();
    QTEST(boxes.count(), "questions");
    QTEST(panel->confirmed.count(), "confirms");
    QCOMPARE(panel->cancelled.count(), 0);
}

void FileWidgetModesTest::theQuestionIsWordedAsOperatorsKnowIt()
{
    writeFile(internalFolder + "/report.cdp");
    const MessageBoxes boxes(QMessageBox::No);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(FileWidget::BackupMode);
    panel->widget.setNameFilters(QStringLiteral("*.cdp"));
    panel->widget.setFileName(QStringLiteral("report"));
    panel->parts.ok->click();
    QCOMPARE(boxes.count(), 1);
    const auto box = boxes.first();
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.title, QStringLiteral("File exists"));
    QCOMPARE(box.text, QStringLiteral("The selected file already exists.\n"
                                      "Do you want to overwrite it?"));
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::No);
    QCOMPARE(box.defaultButton, QMessageBox::No);
}

void FileWidgetModesTest::theQuestionBelongsToTheWindow()
{
    writeFile(internalFolder + "/report");
    const MessageBoxes boxes(QMessageBox::No);
    QDialog window;
    auto *panel = new FileWidget(&window);
    panel->setInternalStoragePath(internalFolder);
    panel->setFileName(QStringLiteral("report"));
    FileDialogParts(window).ok->click();
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(boxes.first().parent, &window);
}

void FileWidgetModesTest::cancelRemembersTheFolder()
{
    makeFolders({internalFolder + "/a/b"});
    const auto panel = PanelUnderTest::atInternalStorage();
    QCOMPARE(panel->widget.directory(), QDir(QString()));
    panel->widget.setDirectory(internalFolder + "/a/b");
    panel->parts.cancel->click();
    QCOMPARE(panel->widget.directory().path(), internalFolder + "/a/b");
    QCOMPARE(panel->cancelled.count(), 1);
    QCOMPARE(panel->confirmed.count(), 0);
}

void FileWidgetModesTest::cancelUnmountsOnce()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    QCOMPARE(panel->shownFolder(), keyFolder);
    panel->parts.cancel->click();
    QCOMPARE(unmountCalls(), 1);
    QCOMPARE(panel->cancelled.count(), 1);
    QCOMPARE(panel->widget.directory().path(), keyFolder);
}

void FileWidgetModesTest::cancelWithoutAKeyUnmountsNothing()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.cancel->click();
    QCOMPARE(unmountCalls(), 0);
    QCOMPARE(panel->cancelled.count(), 1);
}

void FileWidgetModesTest::cancelWhileNowhereKeepsTheRememberedFolder()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.cancel->click();
    QDir(internalFolder).mkdir("gone");
    panel->widget.setDirectory(internalFolder + "/never");
    QVERIFY(!panel->parts.list->rootIndex().isValid());
    panel->parts.cancel->click();
    QCOMPARE(panel->widget.directory().path(), internalFolder);
}

QTEST_MAIN(FileWidgetModesTest)
#include "tst_file_widget_modes.moc"
