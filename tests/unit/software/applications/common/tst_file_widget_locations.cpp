/*
 * Where the file panel goes: the two locations, the key's mount on every way there and
 * back, and up one level.
 */
#include "file_panel_fixture.h"

#include "common/usb_support.h"

#include <QTest>

using namespace TestSupport;

class FileWidgetLocationsTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init() { emptyScratchMachine(); }
    void cleanupTestCase() { emptyScratchMachine(); }

    void pathsByPrefix_data();
    void pathsByPrefix();
    void anEmptyInternalRootIsThePrefixOfEveryPath();
    void aFolderThatIsNotThereIsNowhere();
    void goingToTheKeyMountsItOnce();
    void aKeyThatCannotBeMountedIsNotEntered();

    void theKeyButtonNeedsAKey();
    void theKeyButtonMountsOnce();
    void theKeyButtonStaysOutWhenTheMountFails();
    void theInternalButtonUnmountsOnce();
    void theInternalButtonGoesEvenIfTheUnmountFails();
    void theInternalButtonWithoutAMountOnlyGoes();
    void theBoxMountsAndUnmounts();
    void theBoxStaysWhenTheMountFails();
    void theBoxIgnoresALocationWithoutAFolder();
    void theBoxEntersAFolderOfTheMountedKey();

    void upOneLevel();
    void upStopsAtTheRoots();
    void upInFolderModeNamesTheFolder();
};

void FileWidgetLocationsTest::pathsByPrefix_data()
{
    QTest::addColumn<QString>("path");
    QTest::addColumn<QString>("reached");
    QTest::addColumn<int>("mounts");
    QTest::newRow("internal root") << "/user_data"
                                   << "/user_data" << 0;
    QTest::newRow("internal folder") << "/user_data/a"
                                     << "/user_data/a" << 0;
    QTest::newRow("the key") << "/usbkey"
                             << "/usbkey" << 1;
    QTest::newRow("folder of the key") << "/usbkey/k"
                                       << "/usbkey/k" << 1;
    QTest::newRow("outside") << "/tmp"
                             << "/user_data/a/b" << 0;
    QTest::newRow("the top") << "/"
                             << "/user_data/a/b" << 0;
    QTest::newRow("relative") << "user_data/a"
                              << "/user_data/a/b" << 0;
    QTest::newRow("nothing") << ""
                             << "/user_data/a/b" << 0;
    QTest::newRow("other case, internal") << "/User_data"
                                          << "/user_data/a/b" << 0;
    QTest::newRow("other case, key") << "/USBKEY"
                                     << "/user_data/a/b" << 0;
}

void FileWidgetLocationsTest::pathsByPrefix()
{
    QFETCH(QString, path);
    makeFolders({internalFolder + "/a/b", keyFolder + "/k"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/a/b");
    panel->widget.setDirectory(path);
    QTEST(panel->shownFolder(), "reached");
    QTEST(mountCalls(), "mounts");
    QCOMPARE(panel->currentEntry(), panel->shownFolder());
}

void FileWidgetLocationsTest::anEmptyInternalRootIsThePrefixOfEveryPath()
{
    // The crash reporter sets none: it has mounted the key itself before it goes there.
    QVERIFY(plugKey());
    PanelUnderTest panel;
    panel.widget.setDirectory(keyFolder);
    QCOMPARE(panel.shownFolder(), keyFolder);
    QCOMPARE(mountCalls(), 0);
    panel.widget.setDirectory(QStringLiteral("/tmp"));
    QCOMPARE(panel.shownFolder(), QStringLiteral("/tmp"));
}

void FileWidgetLocationsTest::aFolderThatIsNotThereIsNowhere()
{
    const auto panel = PanelUnderTest::atInternalStorage();
    const QByteArray printed =
        captureStandardError([&panel] { panel->widget.setDirectory(internalFolder + "/missing"); });
    QCOMPARE(printed, QByteArray("refreshComboBox called for invalid rootIndex\n"));
    QCOMPARE(panel->parts.location->count(), 0);
    QCOMPARE(panel->names(), QStringList());
    panel->widget.setFileName(QStringLiteral("report"));
    QCOMPARE(panel->widget.selectedFilePath(), QString());
}

void FileWidgetLocationsTest::goingToTheKeyMountsItOnce()
{
    makeFolders({keyFolder + "/k"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(keyFolder);
    panel->widget.setDirectory(keyFolder + "/k");
    QCOMPARE(mountCalls(), 1);
    // One reference, too: the first that is given back unmounts.
    QVERIFY(USBSupport::instance()->unmount());
    QCOMPARE(unmountCalls(), 1);
}

void FileWidgetLocationsTest::aKeyThatCannotBeMountedIsNotEntered()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    QVERIFY(plugKey());
    refuseNext(KernelFunction::Mount);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(keyFolder);
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(panel->currentEntry(), internalFolder);
    QCOMPARE(boxes.count(), 0);
}

void FileWidgetLocationsTest::theKeyButtonNeedsAKey()
{
    const PanelUnderTest without;
    QVERIFY(!without.parts.usbKey->isEnabled());
    QVERIFY(plugKey());
    const PanelUnderTest with;
    QVERIFY(with.parts.usbKey->isEnabled());
}

void FileWidgetLocationsTest::theKeyButtonMountsOnce()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    QCOMPARE(panel->shownFolder(), keyFolder);
    panel->parts.usbKey->click();
    QCOMPARE(mountCalls(), 1);
    QCOMPARE(unmountCalls(), 0);
}

void FileWidgetLocationsTest::theKeyButtonStaysOutWhenTheMountFails()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    QVERIFY(plugKey());
    refuseNext(KernelFunction::Mount);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(boxes.count(), 0);
    panel->parts.usbKey->click();
    QCOMPARE(panel->shownFolder(), keyFolder);
}

void FileWidgetLocationsTest::theInternalButtonUnmountsOnce()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    panel->parts.internalStorage->click();
    QCOMPARE(unmountCalls(), 1);
    QCOMPARE(panel->shownFolder(), internalFolder);
    panel->parts.internalStorage->click();
    QCOMPARE(unmountCalls(), 1);
}

void FileWidgetLocationsTest::theInternalButtonGoesEvenIfTheUnmountFails()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    refuseNext(KernelFunction::Unmount);
    panel->parts.internalStorage->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());
}

void FileWidgetLocationsTest::theInternalButtonWithoutAMountOnlyGoes()
{
    makeFolders({internalFolder + "/a"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/a");
    panel->parts.internalStorage->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(unmountCalls(), 0);
}

void FileWidgetLocationsTest::theBoxMountsAndUnmounts()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->choose(QStringLiteral("USB Key"));
    QCOMPARE(panel->shownFolder(), keyFolder);
    QCOMPARE(mountCalls(), 1);
    panel->choose(QStringLiteral("USB Key"));
    QCOMPARE(mountCalls(), 1);
    panel->choose(QStringLiteral("Internal Storage"));
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(unmountCalls(), 1);
    panel->choose(QStringLiteral("Internal Storage"));
    QCOMPARE(unmountCalls(), 1);
}

void FileWidgetLocationsTest::theBoxStaysWhenTheMountFails()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    refuseNext(KernelFunction::Mount);
    panel->choose(QStringLiteral("USB Key"));
    QCOMPARE(panel->shownFolder(), internalFolder);
    // It says where we are, not where we could not go.
    QCOMPARE(panel->currentEntry(), internalFolder);
    QCOMPARE(boxes.count(), 0);
}

void FileWidgetLocationsTest::theBoxIgnoresALocationWithoutAFolder()
{
    QVERIFY(plugKey());
    PanelUnderTest panel;
    panel.parts.usbKey->click();
    QCOMPARE(panel.shownFolder(), keyFolder);
    panel.choose(QStringLiteral("Internal Storage"));
    QCOMPARE(panel.shownFolder(), keyFolder);
    QCOMPARE(panel.currentEntry(), keyFolder);
    QCOMPARE(unmountCalls(), 0);
}

void FileWidgetLocationsTest::theBoxEntersAFolderOfTheMountedKey()
{
    makeFolders({keyFolder + "/k", internalFolder + "/i"});
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parts.usbKey->click();
    QVERIFY(panel->offers({"Internal Storage", "USB Key", "| k"}));
    panel->choose(QStringLiteral("k"));
    QCOMPARE(panel->shownFolder(), keyFolder + "/k");
    QCOMPARE(mountCalls(), 1);
    QCOMPARE(unmountCalls(), 0);
}

void FileWidgetLocationsTest::upOneLevel()
{
    makeFolders({internalFolder + "/a/b"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setDirectory(internalFolder + "/a/b");
    panel->widget.setFileName(QStringLiteral("typed"));
    panel->parentFolder->click();
    QCOMPARE(panel->shownFolder(), internalFolder + "/a");
    QCOMPARE(panel->currentEntry(), internalFolder + "/a");
    panel->parentFolder->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
    QCOMPARE(panel->parts.name->text(), QStringLiteral("typed"));
}

void FileWidgetLocationsTest::upStopsAtTheRoots()
{
    QVERIFY(plugKey());
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->parentFolder->click();
    QCOMPARE(panel->shownFolder(), internalFolder);
    panel->parts.usbKey->click();
    panel->parentFolder->click();
    QCOMPARE(panel->shownFolder(), keyFolder);
    // Also where the key is the only location there is.
    PanelUnderTest alone;
    alone.widget.setDirectory(keyFolder);
    alone.parentFolder->click();
    QCOMPARE(alone.shownFolder(), keyFolder);
}

void FileWidgetLocationsTest::upInFolderModeNamesTheFolder()
{
    makeFolders({internalFolder + "/a/b"});
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.setMode(FileWidget::FolderMode);
    panel->widget.setDirectory(internalFolder + "/a/b");
    panel->parentFolder->click();
    QCOMPARE(panel->shownFolder(), internalFolder + "/a");
    QCOMPARE(panel->parts.name->text(), QStringLiteral("a"));
}

QTEST_MAIN(FileWidgetLocationsTest)
#include "tst_file_widget_locations.moc"
