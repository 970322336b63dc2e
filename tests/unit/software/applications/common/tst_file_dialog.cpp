/*
 * The file dialog as its callers and its operator see it. In the sandbox: the key is a node
 * in a scratch "/dev", and what is on it a scratch "/usbkey".
 */
#include "file_dialog_parts.h"
#include "support/scratch_machine.h"

#include "common/file_combo_menu_delegate.h"
#include "common/file_dialog.h"
#include "common/file_widget.h"
#include "common/usb_support.h"
#include "support/kernel_fakes.h"
#include "support/log_capture.h"
#include "vireling/palette/process_initialisers.h"
#include "vireling/palette/theme.h"
#include "vireling/style/appearance.h"
#include "vireling/window/window_title_bar.h"

#include <QApplication>
#include <QDir>
#include <QLayout>
#include <QMessageBox>
#include <QScreen>
#include <QSignalSpy>
#include <QTest>
#include <QTimer>

#include <memory>

using namespace TestSupport;

namespace {

int unmounts()
{
    return int(KernelFakes::instance().calls(KernelFunction::Unmount).size());
}

/** The question that is open; null while there is none. */
QMessageBox *openQuestion()
{
    return qobject_cast<QMessageBox *>(QApplication::activeModalWidget());
}

/** No result of a dialog: what resultOf() gives when `action` did not end it. */
constexpr int stillOpen = -1;

/** Runs `action` once the dialog is up, which that is to end. */
template <typename Action>
int resultOf(FileDialog &dialog, Action action)
{
    QTimer::singleShot(0, &dialog, action);
    QTimer::singleShot(5000, &dialog, [&dialog] { dialog.done(stillOpen); });
    return dialog.exec();
}

} // namespace

class FileDialogTest : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase();
    void init();
    void cleanup();
    void cleanupTestCase();

    void itAddsNothingToItsMetaObject();
    void itIsFramedByTheToolkit();
    void thePanelIsAllItHolds();
    void itBelongsToItsParent();
    void itIsModalWhileItRuns();
    void confirmAcceptsIt();
    void cancelRejectsIt();

    void thePanelComesUpAsLargeAsItsForm();
    void itIsNeverLargerThanTheScreen();
    void itComesUpCentredOnItsParent();
    void theNameHasTheFocusAndReturnConfirms();

    void aReportIsNamedAndTheKeyIsStillMounted();
    void anExtensionThatWasTypedIsNotRepeated();
    void escapeCancelsAndUnmounts();
    void theCancelButtonCancelsAndUnmounts();
    void closingTheFrameRejectsAndLeavesTheKeyMounted();
    void noToTheQuestionKeepsItOpen();
    void yesToTheQuestionAcceptsIt();
    void escapeAtTheQuestionIsNo();
    void escapeInTheOpenListOfLocationsClosesOnlyThat();
    void theListOfLocationsStaysATreeInEveryAppearance();
    void returnOnAFolderOnlyOpensIt();
    void itGoesWithoutAPanelLeftBehind();

private:
    /** As the crash reporter does: it mounts the key, where packages are to go. */
    void setUpAsForAReport();
    void show();

    std::unique_ptr<LogCapture> log;
    std::unique_ptr<FileDialog> dialog;
};

void FileDialogTest::initTestCase()
{
    QVERIFY2(onScratchMachine(), "this test writes into /usbkey: run it in the sandbox");
    Vireling::initialiseResources();
    Vireling::installAppearance(Vireling::Theme::Dark);
    removeAllDisks();
    addKeyWithPartition();
}

void FileDialogTest::init()
{
    log = std::make_unique<LogCapture>();
    KernelFakes::instance().reset();
    QVERIFY(USBSupport::instance()->isUsbKeyPresent());
    dialog = std::make_unique<FileDialog>();
}

void FileDialogTest::cleanup()
{
    dialog.reset();
    while (USBSupport::instance()->isUsbKeyMounted())
        USBSupport::instance()->unmount();
    emptyFolder(keyFolder);
    log.reset();
}

void FileDialogTest::cleanupTestCase()
{
    USBSupport::destroyInstance();
}

void FileDialogTest::setUpAsForAReport()
{
    QVERIFY(USBSupport::instance()->mount());
    dialog->setWindowTitle(QStringLiteral("Save crash report"));
    FileWidget *panel = dialog->fileWidget();
    panel->setInternalStorageDisabled(true);
    panel->setMode(FileWidget::BackupMode);
    panel->setDirectory(USBSupport::instance()->mountPoint());
    panel->setNameFilters(QStringLiteral("*.cdp"));
}

void FileDialogTest::show()
{
    dialog->open();
    dialog->activateWindow();
    QTRY_VERIFY(dialog->isActiveWindow());
}

void FileDialogTest::itAddsNothingToItsMetaObject()
{
    const QMetaObject &own = FileDialog::staticMetaObject;
    QCOMPARE(own.superClass(), &Vireling::Dialog::staticMetaObject);
    QCOMPARE(own.methodCount(), own.methodOffset());
    QCOMPARE(own.propertyCount(), own.propertyOffset());
}

void FileDialogTest::itIsFramedByTheToolkit()
{
    dialog->setWindowTitle(QStringLiteral("Save crash report"));
    show();
    QVERIFY(dialog->windowFlags().testFlag(Qt::FramelessWindowHint));
    QVERIFY(dialog->titleBar()->isVisible());
    QCOMPARE(dialog->titleBar()->title(), QStringLiteral("Save crash report"));
}

void FileDialogTest::thePanelIsAllItHolds()
{
    auto *layout = qobject_cast<QVBoxLayout *>(dialog->layout());
    QVERIFY(layout);
    QCOMPARE(layout->count(), 1);
    QCOMPARE(layout->itemAt(0)->widget(), dialog->fileWidget());
    QCOMPARE(layout->stretch(0), 0);
    QCOMPARE(layout->itemAt(0)->alignment(), Qt::Alignment());
    QCOMPARE(dialog->fileWidget()->parentWidget(), dialog.get());
    QVERIFY(!dialog->fileWidget()->isWindow());
}

void FileDialogTest::itBelongsToItsParent()
{
    QWidget parent;
    auto *owned = new FileDialog(&parent);
    QCOMPARE(owned->parentWidget(), &parent);
    QVERIFY(owned->isWindow());
    QCOMPARE(owned->windowType(), Qt::Dialog);
}

void FileDialogTest::itIsModalWhileItRuns()
{
    QVERIFY(!dialog->isModal());
    bool modal = false;
    resultOf(*dialog, [&] {
        modal = QApplication::activeModalWidget() == dialog.get();
        dialog->reject();
    });
    QVERIFY(modal);
}

void FileDialogTest::confirmAcceptsIt()
{
    QCOMPARE(resultOf(*dialog, [&] { emit dialog->fileWidget()->confirm(); }),
             int(QDialog::Accepted));
}

void FileDialogTest::cancelRejectsIt()
{
    QCOMPARE(resultOf(*dialog, [&] { emit dialog->fileWidget()->cancel(); }),
             int(QDialog::Rejected));
}

// Run at 96 and at 144 dpi; see the CMake file.
void FileDialogTest::thePanelComesUpAsLargeAsItsForm()
{
    QCOMPARE(dialog->logicalDpiX(), qEnvironmentVariableIntValue("QT_FONT_DPI"));
    show();
    QCOMPARE(dialog->fileWidget()->size(),
             QSize(495 * dialog->logicalDpiX() / 96, 296 * dialog->logicalDpiY() / 96));
}

void FileDialogTest::itIsNeverLargerThanTheScreen()
{
    const QSize room = dialog->screen()->availableSize();
    QVERIFY(dialog->width() <= room.width() && dialog->height() <= room.height());
    QVERIFY(dialog->minimumSizeHint().width() <= 800);
    QVERIFY(dialog->minimumSizeHint().height() <= 480);
}

void FileDialogTest::itComesUpCentredOnItsParent()
{
    QWidget parent;
    parent.setGeometry(40, 20, 700, 500);
    parent.show();
    QVERIFY(QTest::qWaitForWindowExposed(&parent));
    FileDialog centred(&parent);
    centred.open();
    QVERIFY(QTest::qWaitForWindowExposed(&centred));
    const QPoint off = centred.geometry().center() - parent.geometry().center();
    QVERIFY2(qAbs(off.x()) <= 2 && qAbs(off.y()) <= 30,
             qPrintable(QStringLiteral("off by %1, %2").arg(off.x()).arg(off.y())));
}

void FileDialogTest::theNameHasTheFocusAndReturnConfirms()
{
    setUpAsForAReport();
    show();
    const FileDialogParts parts(*dialog);
    QTRY_VERIFY(parts.name->hasFocus());
    QTest::keyClicks(QApplication::focusWidget(), QStringLiteral("report"));
    QSignalSpy finished(dialog.get(), &QDialog::finished);
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    QTest::keyClick(QApplication::focusWidget(), Qt::Key_Return);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(dialog->result(), int(QDialog::Accepted));
    QCOMPARE(confirmed.count(), 1);
}

void FileDialogTest::aReportIsNamedAndTheKeyIsStillMounted()
{
    setUpAsForAReport();
    const FileDialogParts parts(*dialog);
    QCOMPARE(parts.ok->text(), QStringLiteral("Backup"));
    QVERIFY(!parts.internalStorage->isEnabled());
    const int result = resultOf(*dialog, [&] {
        parts.name->setText(QStringLiteral("report"));
        parts.ok->click();
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), keyFolder + QStringLiteral("/report.cdp"));
    QVERIFY(USBSupport::instance()->isUsbKeyMounted()); // the caller has yet to write
    QCOMPARE(KernelFakes::instance().calls(KernelFunction::Mount).size(), size_t(1));
    QCOMPARE(unmounts(), 0);
}

void FileDialogTest::anExtensionThatWasTypedIsNotRepeated()
{
    setUpAsForAReport();
    FileDialogParts(*dialog).name->setText(QStringLiteral("report.cdp"));
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), keyFolder + QStringLiteral("/report.cdp"));
}

void FileDialogTest::escapeCancelsAndUnmounts()
{
    setUpAsForAReport();
    show();
    QSignalSpy cancelled(dialog->fileWidget(), &FileWidget::cancel);
    QSignalSpy finished(dialog.get(), &QDialog::finished);
    QTest::keyClick(dialog->windowHandle(), Qt::Key_Escape);
    QTRY_COMPARE(finished.count(), 1);
    QCOMPARE(dialog->result(), int(QDialog::Rejected));
    QCOMPARE(cancelled.count(), 1);
    QCOMPARE(unmounts(), 1);
    QVERIFY(!USBSupport::instance()->isUsbKeyMounted());
}

void FileDialogTest::theCancelButtonCancelsAndUnmounts()
{
    setUpAsForAReport();
    const int result = resultOf(*dialog, [&] { FileDialogParts(*dialog).cancel->click(); });
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(unmounts(), 1);
    QCOMPARE(dialog->fileWidget()->directory(), QDir(keyFolder));
}

// Unlike Cancel: the next save finds the key mounted and relies on it.
void FileDialogTest::closingTheFrameRejectsAndLeavesTheKeyMounted()
{
    setUpAsForAReport();
    QSignalSpy cancelled(dialog->fileWidget(), &FileWidget::cancel);
    const int result = resultOf(*dialog, [&] {
        QVERIFY(dialog->isControlAvailable(Vireling::WindowControl::Close));
        dialog->triggerControl(Vireling::WindowControl::Close);
    });
    QCOMPARE(result, int(QDialog::Rejected));
    QCOMPARE(cancelled.count(), 0);
    QCOMPARE(unmounts(), 0);
    QVERIFY(USBSupport::instance()->isUsbKeyMounted());
}

void FileDialogTest::noToTheQuestionKeepsItOpen()
{
    makeFile(keyFolder, QStringLiteral("report.cdp"));
    setUpAsForAReport();
    show();
    QSignalSpy finished(dialog.get(), &QDialog::finished);
    const FileDialogParts parts(*dialog);
    parts.name->setText(QStringLiteral("report"));
    QPointer<QWidget> parent;
    QString text;
    QTimer::singleShot(0, this, [&] {
        QVERIFY(openQuestion());
        parent = openQuestion()->parentWidget();
        text = openQuestion()->text();
        openQuestion()->button(QMessageBox::No)->click();
    });
    parts.ok->click();
    QCOMPARE(text,
             QStringLiteral("The selected file already exists.\nDo you want to overwrite it?"));
    QCOMPARE(parent.data(), dialog.get());
    QVERIFY(dialog->isVisible());
    QCOMPARE(finished.count(), 0);
    QCOMPARE(unmounts(), 0);
}

void FileDialogTest::yesToTheQuestionAcceptsIt()
{
    makeFile(keyFolder, QStringLiteral("report.cdp"));
    setUpAsForAReport();
    const FileDialogParts parts(*dialog);
    const int result = resultOf(*dialog, [&] {
        parts.name->setText(QStringLiteral("report"));
        QTimer::singleShot(0, this, [&] {
            QVERIFY(openQuestion());
            openQuestion()->button(QMessageBox::Yes)->click();
        });
        parts.ok->click();
    });
    QCOMPARE(result, int(QDialog::Accepted));
    QCOMPARE(dialog->fileWidget()->selectedFilePath(), keyFolder + QStringLiteral("/report.cdp"));
}

void FileDialogTest::escapeAtTheQuestionIsNo()
{
    makeFile(keyFolder, QStringLiteral("report.cdp"));
    setUpAsForAReport();
    show();
    const FileDialogParts parts(*dialog);
    parts.name->setText(QStringLiteral("report"));
    bool asked = false;
    QTimer::singleShot(0, this, [&] {
        asked = openQuestion() != nullptr;
        QTest::keyClick(openQuestion(), Qt::Key_Escape);
    });
    parts.ok->click();
    QVERIFY(asked);
    QVERIFY(dialog->isVisible());
    QCOMPARE(unmounts(), 0);
}

void FileDialogTest::escapeInTheOpenListOfLocationsClosesOnlyThat()
{
    setUpAsForAReport();
    show();
    const FileDialogParts parts(*dialog);
    parts.location->showPopup();
    QTRY_VERIFY(parts.location->view()->isVisible());
    QTest::keyClick(parts.location->view(), Qt::Key_Escape);
    QTRY_VERIFY(!parts.location->view()->isVisible());
    QVERIFY(dialog->isVisible());
    QCOMPARE(unmounts(), 0);
}

// The toolkit gives combo boxes a delegate of its own, when they are polished and again with
// every change of style.
void FileDialogTest::theListOfLocationsStaysATreeInEveryAppearance()
{
    setUpAsForAReport();
    show();
    const FileDialogParts parts(*dialog);
    const auto drawsTree = [&] {
        return qobject_cast<FileComboMenuDelegate *>(parts.location->view()->itemDelegate());
    };
    QVERIFY(drawsTree());
    parts.location->showPopup();
    QVERIFY(drawsTree());
    parts.location->hidePopup();
    Vireling::installAppearance(Vireling::Theme::Light);
    QVERIFY(drawsTree());
    Vireling::installAppearance(Vireling::Theme::Dark);
    QVERIFY(drawsTree());
}

// An item view leaves Return to the dialog, which would press its default button as well.
void FileDialogTest::returnOnAFolderOnlyOpensIt()
{
    QVERIFY(QDir(keyFolder).mkdir(QStringLiteral("shows")));
    setUpAsForAReport();
    show();
    const FileDialogParts parts(*dialog);
    QTRY_VERIFY(parts.row(QStringLiteral("shows")).isValid());
    parts.name->setText(QStringLiteral("report"));
    parts.list->setFocus();
    parts.list->setCurrentIndex(parts.row(QStringLiteral("shows")));
    QSignalSpy confirmed(dialog->fileWidget(), &FileWidget::confirm);
    QTest::keyClick(parts.list, Qt::Key_Return);
    QCOMPARE(parts.list->rootIndex().data().toString(), QStringLiteral("shows"));
    QCOMPARE(confirmed.count(), 0);
    QVERIFY(dialog->isVisible());
}

void FileDialogTest::itGoesWithoutAPanelLeftBehind()
{
    const QPointer<FileWidget> panel(dialog->fileWidget());
    QVERIFY(panel);
    dialog.reset();
    QVERIFY(!panel);
}

QTEST_MAIN(FileDialogTest)
#include "tst_file_dialog.moc"
