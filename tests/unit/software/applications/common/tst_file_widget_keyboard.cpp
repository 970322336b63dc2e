/*
 * The file panel by the keyboard alone, in its dialog and in a plain window: one Return
 * does one thing wherever it is pressed.
 */
#include "file_panel_fixture.h"

#include "common/file_dialog.h"
#include "common/usb_support.h"

#include <QApplication>
#include <QClipboard>
#include <QDir>
#include <QTest>

using namespace TestSupport;

class FileWidgetKeyboardTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init();
    void cleanup();

    void theNameHasTheFocus();
    void theNameGetsTheFocusWhenever();
    void tabGoesRound();
    void returnInTheNameAsksOnce();
    void yesByReturnConfirmsOnce();
    void aHeldReturnAsksOnce();
    void returnInTheNameOfAPlainWindow();
    void returnOnAFileOfTheListAsksOnce();
    void returnOnAFolderOnlyEntersIt();
    void returnElsewhereIsTheActionButton();
    void tabbingThroughTheListKeepsATypedName();
    void escapeCancels();
    void escapeWhileNamingAFolderKeepsTheDialog();
    void slashesCannotBeTyped();
    void slashesCannotBePasted();
    void aNameFromTheProgramKeepsItsSlashes();
    void aReportIsSavedWithoutAPointer();

private:
    /** Also while no window is active, as after a message box where nobody manages windows. */
    QWidget *focused() const { return dialog->window()->focusWidget(); }
    void press(Qt::Key key) const { QTest::keyClick(focused(), key); }
    void tabTo(const QWidget *widget) const;

    std::unique_ptr<LogCapture> log;
    std::unique_ptr<FileDialog> dialog;
    std::unique_ptr<FileDialogParts> parts;
};

void FileWidgetKeyboardTest::init()
{
    log = std::make_unique<LogCapture>();
    emptyScratchMachine();
    makeFolders({internalFolder + "/folder"});
    writeFile(internalFolder + "/there");
    dialog = std::make_unique<FileDialog>();
    parts = std::make_unique<FileDialogParts>(*dialog);
    dialog->fileWidget()->setInternalStoragePath(internalFolder);
    dialog->fileWidget()->setMode(FileWidget::BackupMode);
    dialog->show();
    dialog->activateWindow();
    QTRY_VERIFY(dialog->isActiveWindow());
    // Sorted, too.
    QTRY_COMPARE(parts->row(QStringLiteral("there")).row(), 1);
}

void FileWidgetKeyboardTest::cleanup()
{
    parts.reset();
    dialog.reset();
    emptyScratchMachine();
    log.reset();
}

void FileWidgetKeyboardTest::tabTo(const QWidget *widget) const
{
    for (int tabs = 0; focused() != widget && tabs < 20; ++tabs)
        press(Qt::Key_Tab);
    QCOMPARE(focused(), widget);
}

void FileWidgetKeyboardTest::theNameHasTheFocus()
{
    QCOMPARE(focused(), parts->name);
}

void FileWidgetKeyboardTest::theNameGetsTheFocusWhenever()
{
    parts->list->setFocus();
    dialog->hide();
    dialog->show();
    QTRY_COMPARE(focused(), parts->name);
}

void FileWidgetKeyboardTest::tabGoesRound()
{
    const QList<QString> order{
        "okButton",        "cancelButton",    "locationComboBox", "parentFolderButton",
        "newFolderButton", "localDiskButton", "listView",         "configurationNameLineEdit"};
    for (const QString &name : order) {
        press(Qt::Key_Tab);
        // The frame's own buttons are the toolkit's business.
        while (!dialog->fileWidget()->isAncestorOf(focused()))
            press(Qt::Key_Tab);
        QCOMPARE(focused()->objectName(), name);
    }
}

void FileWidgetKeyboardTest::returnInTheNameAsksOnce()
{
    const MessageBoxes boxes(QMessageBox::No);
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    QTest::keyClicks(focused(), QStringLiteral("there"));
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(confirmed.count(), 0);
    QVERIFY(dialog->isVisible());
}

void FileWidgetKeyboardTest::yesByReturnConfirmsOnce()
{
    const MessageBoxes boxes(QMessageBox::Yes);
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    parts->name->setText(QStringLiteral("there"));
    press(Qt::Key_Enter);
    QCoreApplication::processEvents();
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(confirmed.count(), 1);
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
}

void FileWidgetKeyboardTest::aHeldReturnAsksOnce()
{
    const MessageBoxes boxes(QMessageBox::No);
    parts->name->setText(QStringLiteral("there"));
    press(Qt::Key_Return);
    QKeyEvent repeated(QEvent::KeyPress, Qt::Key_Return, Qt::NoModifier, QStringLiteral("\r"),
                       true);
    QCoreApplication::sendEvent(parts->name, &repeated);
    QCOMPARE(boxes.count(), 1);
    press(Qt::Key_Return);
    QCOMPARE(boxes.count(), 2);
}

void FileWidgetKeyboardTest::returnInTheNameOfAPlainWindow()
{
    const MessageBoxes boxes(QMessageBox::Yes);
    const auto panel = PanelUnderTest::atInternalStorage();
    panel->widget.show();
    panel->widget.setFileName(QStringLiteral("there"));
    QTest::keyClick(panel->parts.name, Qt::Key_Return);
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(panel->confirmed.count(), 1);
}

void FileWidgetKeyboardTest::returnOnAFileOfTheListAsksOnce()
{
    const MessageBoxes boxes(QMessageBox::No);
    parts->list->setFocus();
    parts->list->setCurrentIndex(parts->row(QStringLiteral("there")));
    press(Qt::Key_Return);
    QCoreApplication::processEvents();
    QCOMPARE(parts->name->text(), QStringLiteral("there"));
    QCOMPARE(boxes.count(), 1);
}

void FileWidgetKeyboardTest::returnOnAFolderOnlyEntersIt()
{
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    parts->name->setText(QStringLiteral("typed"));
    parts->list->setFocus();
    parts->list->setCurrentIndex(parts->row(QStringLiteral("folder")));
    press(Qt::Key_Return);
    QCOMPARE(confirmed.count(), 0);
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), internalFolder + "/folder/typed");
}

void FileWidgetKeyboardTest::returnElsewhereIsTheActionButton()
{
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    parts->name->setText(QStringLiteral("new"));
    parts->location->setFocus();
    press(Qt::Key_Return);
    QCOMPARE(confirmed.count(), 1);
}

void FileWidgetKeyboardTest::tabbingThroughTheListKeepsATypedName()
{
    QVERIFY(QDir(internalFolder).rmdir(QStringLiteral("folder")));
    QTRY_VERIFY(!parts->row(QStringLiteral("folder")).isValid());
    parts->name->setText(QStringLiteral("typed"));
    tabTo(parts->list);
    QCOMPARE(parts->name->text(), QStringLiteral("typed"));
    // It is where Return acts, and where the arrows start.
    QCOMPARE(parts->list->currentIndex(), parts->row(QStringLiteral("there")));
    writeFile(internalFolder + "/too");
    QTRY_VERIFY(parts->row(QStringLiteral("too")).isValid());
    press(Qt::Key_Down);
    QCOMPARE(parts->name->text(), QStringLiteral("too"));
}

void FileWidgetKeyboardTest::escapeCancels()
{
    QSignalSpy cancelled(dialog->fileWidget(), &FileWidget::cancel);
    press(Qt::Key_Escape);
    QTRY_COMPARE(cancelled.count(), 1);
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QCOMPARE(dialog->fileWidget()->directory().path(), internalFolder);
}

void FileWidgetKeyboardTest::escapeWhileNamingAFolderKeepsTheDialog()
{
    tabTo(dialog->findChild<QToolButton *>(QStringLiteral("newFolderButton")));
    press(Qt::Key_Space);
    auto *editor = parts->list->findChild<QLineEdit *>();
    QVERIFY(editor);
    QTest::keyClick(editor, Qt::Key_Escape);
    QTRY_COMPARE(parts->list->findChildren<QLineEdit *>().size(), 0);
    QVERIFY(dialog->isVisible());
    QVERIFY(parts->row(QStringLiteral("New Folder")).isValid());
}

void FileWidgetKeyboardTest::slashesCannotBeTyped()
{
    QTest::keyClicks(focused(), QStringLiteral("../../etc/passwd"));
    QCOMPARE(parts->name->text(), QStringLiteral("....etcpasswd"));
    parts->name->setCursorPosition(4);
    QTest::keyClicks(focused(), QStringLiteral("/-"));
    QCOMPARE(parts->name->text(), QStringLiteral("....-etcpasswd"));
}

void FileWidgetKeyboardTest::slashesCannotBePasted()
{
    QApplication::clipboard()->setText(QStringLiteral("/etc/passwd"));
    parts->name->setText(QStringLiteral("ab"));
    parts->name->setCursorPosition(1);
    QTest::keySequence(focused(), QKeySequence::Paste);
    QCOMPARE(parts->name->text(), QStringLiteral("aetcpasswdb"));
    QCOMPARE(parts->name->cursorPosition(), 10);
}

void FileWidgetKeyboardTest::aNameFromTheProgramKeepsItsSlashes()
{
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    dialog->fileWidget()->setFileName(QStringLiteral("folder/report"));
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), internalFolder + "/folder/report");
    press(Qt::Key_Return);
    QCOMPARE(confirmed.count(), 1);
}

void FileWidgetKeyboardTest::aReportIsSavedWithoutAPointer()
{
    makeFolders({keyFolder + "/reports"});
    QVERIFY(plugKey());
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    dialog->fileWidget()->setNameFilters(QStringLiteral("*.cdp"));
    tabTo(parts->usbKey);
    press(Qt::Key_Space);
    QTRY_VERIFY(parts->row(QStringLiteral("reports")).isValid());
    tabTo(parts->list);
    press(Qt::Key_Home);
    press(Qt::Key_Return);
    tabTo(parts->name);
    QTest::keyClicks(focused(), QStringLiteral("today"));
    press(Qt::Key_Return);
    QCOMPARE(confirmed.count(), 1);
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), keyFolder + "/reports/today.cdp");
    QCOMPARE(mountCalls(), 1);
    QCOMPARE(unmountCalls(), 0);
}

QTEST_MAIN(FileWidgetKeyboardTest)
#include "tst_file_widget_keyboard.moc"
