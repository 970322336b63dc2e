/*
 * The file panel while keys come and go, with locations locked, and after an unmount.
 */
#include "file_panel_fixture.h"

#include "common/usb_support.h"

#include <QPointer>
#include <QTest>

using namespace TestSupport;

class FileWidgetKeysTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init() { emptyScratchMachine(); }
    void cleanupTestCase() { emptyScratchMachine(); }

    void lockedLocationsHaveDisabledButtons();
    void aKeyThatComesEnablesItsButton();
    void aKeyThatComesLeavesALockedButton();
    void aKeyThatGoesSendsUsToInternalStorage();
    void aKeyThatGoesLeavesUsWhereInternalStorageIsLocked();
    void aKeyThatGoesElsewhereChangesNothing();
    void aKeyThatGoesWhileMountedLeavesNothingShown();
    void unmountingReplacesTheModel();
    void theReplacedModelKeepsTheMode();
    void destroyingThePanelLeavesTheKeyMounted();
    void anOpenListOfLocationsIsNotDisturbed();
    void aKeyThatGoesDuringTheQuestionIsNotSavedTo();
    void aPanelMayGoDuringTheQuestion();
};

void FileWidgetKeysTest::lockedLocationsHaveDisabledButtons()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setInternalStorageDisabled(true);
    QVERIFY(!panel->parts.internalStorage->isEnabled());
    panel->widget.setInternalStorageDisabled(false);
    QVERIFY(panel->parts.internalStorage->isEnabled());
    panel->widget.setUsbKeyDisabled(true);
    QVERIFY(!panel->parts.usbKey->isEnabled());
    QCOMPARE(panel->entries(), QStringList("Internal Storage"));
    panel->widget.setUsbKeyDisabled(false);
    QVERIFY(panel->parts.usbKey->isEnabled());
    QCOMPARE(panel->entries(), QStringList({"Internal Storage", "USB Key"}));
}

void FileWidgetKeysTest::aKeyThatComesEnablesItsButton()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setUsbKeyDisabled(false);
    QVERIFY(!panel->parts.usbKey->isEnabled());
    // So that no news of the model's refreshes the list: the top, and internal storage.
    QSignalSpy loaded(panel->model(), &QFileSystemModel::directoryLoaded);
    QTRY_COMPARE(loaded.count(), 2);
    QCoreApplication::processEvents();
    QVERIFY(plugKey());
    QVERIFY(panel->parts.usbKey->isEnabled());
    // USBSupport tells of the key before it counts it as present.
    QVERIFY(panel->offers({"Internal Storage", "USB Key"}));
}

void FileWidgetKeysTest::aKeyThatComesLeavesALockedButton()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setUsbKeyDisabled(true);
    QVERIFY(plugKey());
    QCoreApplication::processEvents();
    QVERIFY(!panel->parts.usbKey->isEnabled());
    QCOMPARE(panel->entries(), QStringList("Internal Storage"));
}

void FileWidgetKeysTest::aKeyThatGoesSendsUsToInternalStorage()
{
    makeFolders({keyFolder + "/k/l"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    panel->widget.setDirectory(keyFolder + "/k/l");
    // The kernel still needs it: the model stays, and with it the folder of the key.
    refuseNext(KernelFunction::Unmount);
    announceRemoval();
    QCOMPARE(panel->shownFolder(), internalFolder);
    QVERIFY(!panel->parts.usbKey->isEnabled());
    QVERIFY(panel->offers({"Internal Storage"}));
    QCOMPARE(panel->currentEntry(), internalFolder);
}

void FileWidgetKeysTest::aKeyThatGoesLeavesUsWhereInternalStorageIsLocked()
{
    makeFolders({keyFolder + "/k"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setInternalStorageDisabled(true);
    panel->widget.setDirectory(keyFolder + "/k");
    refuseNext(KernelFunction::Unmount);
    announceRemoval();
    QCOMPARE(panel->shownFolder(), keyFolder + "/k");
    QVERIFY(!panel->parts.usbKey->isEnabled());
    // Its folders must not read as if they were in internal storage.
    QVERIFY(panel->offers({"Internal Storage"}));
    QCOMPARE(panel->currentEntry(), QStringLiteral("(none)"));
}

void FileWidgetKeysTest::aKeyThatGoesElsewhereChangesNothing()
{
    makeFolders({internalFolder + "/a"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/a");
    announceRemoval();
    QCOMPARE(panel->shownFolder(), internalFolder + "/a");
    QVERIFY(!panel->parts.usbKey->isEnabled());
    QVERIFY(panel->offers({"Internal Storage", "| a"}));
}

void FileWidgetKeysTest::aKeyThatGoesWhileMountedLeavesNothingShown()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    const QByteArray printed = captureStandardError([] { announceRemoval(); });
    QCOMPARE(unmountCalls(), 1);
    QCOMPARE(printed, QByteArray("refreshComboBox called for invalid rootIndex\n"));
    // Not the top of the file system, which is what a list shows when it is nowhere.
    QCOMPARE(panel->names(), QStringList());
    panel->parts.internalStorage->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
}

void FileWidgetKeysTest::unmountingReplacesTheModel()
{
    writeFile(internalFolder + "/a.cdp");
    writeFile(internalFolder + "/b.txt");
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(FileWidget::BackupMode);
    panel->widget.setNameFilters(QStringLiteral("*.cdp *.zip"));
    panel->parts.usbKey->click();
    const QPointer<QFileSystemModel> old(panel->model());
    panel->parts.internalStorage->click();
    QVERIFY(panel->model() != old);
    QTRY_VERIFY(!old);
    QCOMPARE(panel->model()->parent(), &panel->widget);
    QCOMPARE(panel->model()->rootPath(), QStringLiteral("/"));
    QVERIFY(!panel->model()->isReadOnly());
    QCOMPARE(panel->model()->nameFilters(), QStringList({"*.cdp", "*.zip"}));
    QVERIFY(!panel->model()->nameFilterDisables());
    QCOMPARE(int(panel->model()->filter()), 0x6407);
    QVERIFY(panel->lists({"a.cdp"}));
    // The list's new selection still fills the name in.
    panel->parts.list->setCurrentIndex(panel->index(internalFolder + "/a.cdp"));
    QCOMPARE(panel->parts.name->text(), QStringLiteral("a.cdp"));
}

void FileWidgetKeysTest::theReplacedModelKeepsTheMode()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(FileWidget::FolderMode);
    panel->parts.usbKey->click();
    panel->parts.internalStorage->click();
    QCOMPARE(int(panel->model()->filter()), 0x6400);
    QCOMPARE(panel->parts.ok->text(), QStringLiteral("OK"));
}

void FileWidgetKeysTest::destroyingThePanelLeavesTheKeyMounted()
{
    QVERIFY(plugKey());
    auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    panel.reset();
    QCOMPARE(unmountCalls(), 0);
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());
}

void FileWidgetKeysTest::anOpenListOfLocationsIsNotDisturbed()
{
    makeFolders({internalFolder + "/a"});
    const auto panel = PanelUnderTest::atInternalStorage();
    QVERIFY(panel->offers({"Internal Storage", "| a"}));
    panel->widget.show();
    panel->parts.location->showPopup();
    QTRY_VERIFY(panel->parts.location->view()->isVisible());
    QSignalSpy loaded(panel->model(), &QFileSystemModel::directoryLoaded);
    makeFolders({internalFolder + "/b"});
    QVERIFY(panel->lists({"a", "b"}));
    QTRY_VERIFY(!loaded.isEmpty());
    QVERIFY(plugKey());
    QCoreApplication::processEvents();
    QCOMPARE(panel->entries(), QStringList({"Internal Storage", "| a"}));
    QVERIFY(panel->parts.location->view()->isVisible());
    panel->parts.location->hidePopup();
    QVERIFY(panel->offers({"Internal Storage", "| a", "| b", "USB Key"}));
}

void FileWidgetKeysTest::aKeyThatGoesDuringTheQuestionIsNotSavedTo()
{
    writeFile(keyFolder + "/report");
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    panel->widget.setFileName(QStringLiteral("report"));
    const MessageBoxes boxes(QMessageBox::Yes);
    QTimer::singleShot(0, &panel->widget, [] { announceRemoval(); });
    panel->parts.ok->click();
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(unmountCalls(), 1);
    QCOMPARE(panel->confirmed.count(), 0);
}

void FileWidgetKeysTest::aPanelMayGoDuringTheQuestion()
{
    writeFile(internalFolder + "/report");
    QWidget window;
    QPointer<FileWidget> panel(new FileWidget(&window));
    panel->setInternalStoragePath(internalFolder);
    panel->setFileName(QStringLiteral("report"));
    const MessageBoxes boxes(QMessageBox::Yes);
    QTimer::singleShot(0, panel, [&panel] { delete panel; });
    // Not by the button, which goes with the panel.
    QMetaObject::invokeMethod(FileDialogParts(window).name, "returnPressed");
    QVERIFY(!panel);
    QCOMPARE(boxes.count(), 1);
}

QTEST_MAIN(FileWidgetKeysTest)
#include "tst_file_widget_keys.moc"
