#include "child_status.h"
#include "file_clipboard_fixture.h"

#include "common/usb_support.h"

#include <QtTest>

#include <csignal>
#include <sys/stat.h>

using namespace TestSupport;

class TestFileOperationsPaste : public FileClipboardFixture
{
    Q_OBJECT

private slots:
    void aCopiedFileIsPastedIntoTheFolderMeant_data();
    void aCopiedFileIsPastedIntoTheFolderMeant();
    void anOddNameIsPastedAsItIs_data() { addOddNames(); }
    void anOddNameIsPastedAsItIs();
    void anEmptyFileIsPastedEmpty();
    void theClipboardIsKeptAfterAPaste();
    void aCopyMayBePastedOnTheKey();
    void pasteWithoutACopyIsFatal();
    void pasteIntoNowhereWritesNothing();
    void aTakenNameIsAskedAbout();
    void cancelKeepsWhatIsThere();
    void pasteOverTheSourceKeepsItsContent();
    void aFullMediumIsReported_data();
    void aFullMediumIsReported();
    void aReadOnlyFolderIsReported();
    void whatIsNoFileIsNotWrittenOver_data();
    void whatIsNoFileIsNotWrittenOver();
    void aKeyUnmountedWhileAskedGetsNothing();
    void aPanelThatGoesWhileAskedPastesNothing();

private:
    void verifyPasteFailed(const MessageBoxes &boxes) const;
};

void TestFileOperationsPaste::verifyPasteFailed(const MessageBoxes &boxes) const
{
    const auto box = boxes.last();
    QCOMPARE(box.title, QString("Paste File"));
    QCOMPARE(box.text,
             QString("An error occurred whilst attempting to copy the file or directory."));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
}

void TestFileOperationsPaste::aCopiedFileIsPastedIntoTheFolderMeant_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("a folder itself") << in("to");
    QTest::newRow("a file's folder") << in("to/neighbour");
}

void TestFileOperationsPaste::aCopiedFileIsPastedIntoTheFolderMeant()
{
    QFETCH(QString, place);
    writeFile(in("to/neighbour"), "neighbour");
    QVERIFY(!canPaste());
    const MessageBoxes boxes(QMessageBox::Yes);
    const QByteArray content = QByteArray("\0\r\n\xFF", 4).repeated(50000);
    fill(content);
    paste(place);
    QCOMPARE(contentOf(in("to/report.cdp")), content);
    QCOMPARE(contentOf(in("from/report.cdp")), content);
    QCOMPARE(contentOf(in("to/neighbour")), QByteArray("neighbour"));
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsPaste::anOddNameIsPastedAsItIs()
{
    QFETCH(QString, name);
    writeFile(in("from/" + name), "odd");
    const MessageBoxes boxes(QMessageBox::Yes);
    copy(in("from/" + name));
    paste(in("to"));
    QCOMPARE(contentOf(in("to/" + name)), QByteArray("odd"));
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsPaste::anEmptyFileIsPastedEmpty()
{
    const MessageBoxes boxes(QMessageBox::Yes);
    fill("");
    paste(in("to"));
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray());
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsPaste::theClipboardIsKeptAfterAPaste()
{
    makeFolders({in("again")});
    fill();
    QVERIFY(QFile::remove(in("from/report.cdp")));
    paste(in("to"));
    paste(in("again"));
    QVERIFY(canPaste());
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("content"));
    QCOMPARE(contentOf(in("again/report.cdp")), QByteArray("content"));
}

void TestFileOperationsPaste::aCopyMayBePastedOnTheKey()
{
    fill();
    QVERIFY(plugKey());
    panel->widget.setDirectory(keyFolder);
    emit panel->parts.list->pasteAtIndex(panel->parts.list->rootIndex());
    QCOMPARE(contentOf(keyFolder + "/report.cdp"), QByteArray("content"));
}

void TestFileOperationsPaste::pasteWithoutACopyIsFatal()
{
    int status = 0;
    const QByteArray written = captureStandardError([&] {
        status = statusOfChild(
            [&] { emit panel->parts.list->pasteAtIndex(panel->parts.list->rootIndex()); });
    });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written, QByteArray("Error Assert: '!copiedFileName.isEmpty()' is FALSE at line 682 "
                                 "in file software/applications/common/file_widget\n"));
}

/** Nowhere is the working directory to a careless path; cleanup() looks into that. */
void TestFileOperationsPaste::pasteIntoNowhereWritesNothing()
{
    QFileSystemModel another;
    another.setRootPath("/");
    fill();
    const MessageBoxes boxes(QMessageBox::Yes);
    emit panel->parts.list->pasteAtIndex(QModelIndex());
    emit panel->parts.list->pasteAtIndex(another.index(in("to")));
    QVERIFY(QDir(in("to")).isEmpty());
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsPaste::aTakenNameIsAskedAbout()
{
    fill("new");
    writeFile(in("to/report.cdp"), "old and longer");
    const MessageBoxes boxes(QMessageBox::Yes);
    paste(in("to"));
    QCOMPARE(boxes.count(), 1);
    const auto box = boxes.first();
    QCOMPARE(box.title, QString("Paste File"));
    // Two blanks, kept: the text is known so.
    QCOMPARE(box.text, QString("A file of the same name already exists.  "
                               "Do you want to replace it?"));
    QCOMPARE(box.icon, QMessageBox::Question);
    QCOMPARE(box.buttons, QMessageBox::Yes | QMessageBox::Cancel);
    QCOMPARE(box.defaultButton, QMessageBox::NoButton);
    QCOMPARE(box.parent, panel->widget.window());
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("new"));
}

void TestFileOperationsPaste::cancelKeepsWhatIsThere()
{
    fill("new");
    writeFile(in("to/report.cdp"), "old");
    const MessageBoxes boxes(QMessageBox::Cancel);
    paste(in("to"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("old"));
}

void TestFileOperationsPaste::pasteOverTheSourceKeepsItsContent()
{
    fill();
    const MessageBoxes boxes(QMessageBox::Yes);
    paste(in("from"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(in("from/report.cdp")), QByteArray("content"));
}

void TestFileOperationsPaste::aFullMediumIsReported_data()
{
    QTest::addColumn<int>("size");
    // Less than what QFile would keep in a buffer until it closes the file, and more.
    QTest::newRow("small") << 100;
    QTest::newRow("large") << 100000;
}

void TestFileOperationsPaste::aFullMediumIsReported()
{
    QFETCH(int, size);
    fill(QByteArray(size, 'x'));
    const MessageBoxes boxes(QMessageBox::Ok);
    std::signal(SIGXFSZ, SIG_IGN);
    {
        const Limit room(RLIMIT_FSIZE, 50);
        paste(in("to"));
    }
    std::signal(SIGXFSZ, SIG_DFL);
    QCOMPARE(boxes.count(), 1);
    verifyPasteFailed(boxes);
}

void TestFileOperationsPaste::aReadOnlyFolderIsReported()
{
    fill("");
    QFile::setPermissions(in("to"), QFile::ReadOwner | QFile::ExeOwner);
    const OrdinaryRights rights;
    const MessageBoxes boxes(QMessageBox::Ok);
    paste(in("to"));
    QCOMPARE(boxes.count(), 1);
    verifyPasteFailed(boxes);
    QVERIFY(!isThere(in("to/report.cdp")));
}

void TestFileOperationsPaste::whatIsNoFileIsNotWrittenOver_data()
{
    QTest::addColumn<QString>("obstacle");
    for (const char *obstacle : {"folder", "pipe", "link that leads nowhere", "link to a device"})
        QTest::newRow(obstacle) << obstacle;
}

void TestFileOperationsPaste::whatIsNoFileIsNotWrittenOver()
{
    QFETCH(QString, obstacle);
    fill();
    const QString path = in("to/report.cdp");
    if (obstacle == "folder")
        makeFolders({path});
    else if (obstacle == "pipe")
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    else
        QVERIFY(QFile::link(obstacle == "link to a device" ? "/dev/null" : in("nothing"), path));
    const MessageBoxes boxes(QMessageBox::Yes);
    paste(in("to"));
    QCOMPARE(boxes.count(), 2); // it is in the way, so it is asked about as well
    QCOMPARE(boxes.first().icon, QMessageBox::Question);
    verifyPasteFailed(boxes);
    QVERIFY(isThere(path));
    QVERIFY(!QFileInfo(path).isFile());
    QVERIFY(!isThere(in("nothing")));
}

/** Once unmounted the key's folder is one of the appliance's own. */
void TestFileOperationsPaste::aKeyUnmountedWhileAskedGetsNothing()
{
    fill("new");
    QVERIFY(plugKey());
    panel->widget.setDirectory(keyFolder);
    writeFile(keyFolder + "/report.cdp", "old");
    const MessageBoxes boxes(QMessageBox::Yes, [] { USBSupport::instance()->unmount(); });
    paste(keyFolder);
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(keyFolder + "/report.cdp"), QByteArray("old"));
}

void TestFileOperationsPaste::aPanelThatGoesWhileAskedPastesNothing()
{
    writeFile(in("from/report.cdp"), "new");
    writeFile(in("to/report.cdp"), "old");
    auto widget = std::make_unique<FileWidget>();
    auto *list = widget->findChild<FileListView *>("listView");
    auto *model = qobject_cast<QFileSystemModel *>(list->model());
    emit list->copyIndex(model->index(in("from/report.cdp")));
    const MessageBoxes boxes(QMessageBox::Yes, [&] { widget.reset(); });
    emit list->pasteAtIndex(model->index(in("to")));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("old"));
}

QTEST_MAIN(TestFileOperationsPaste)
#include "tst_file_operations_paste.moc"
