#include "file_operations_parts.h"

#include "common/usb_support.h"

#include <QAction>
#include <QtTest>

#include <csignal>
#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <sys/wait.h>

using namespace TestSupport;

namespace {

QString in(const QString &name)
{
    return internalFolder + QLatin1Char('/') + name;
}

/** While it lives no process resource of that kind goes beyond the limit. */
class Limit
{
public:
    Limit(__rlimit_resource what, rlim_t value)
        : resource(what)
    {
        getrlimit(resource, &before);
        const rlimit lower = {value, before.rlim_max};
        setrlimit(resource, &lower);
    }
    ~Limit() { setrlimit(resource, &before); }
    Q_DISABLE_COPY(Limit)

private:
    __rlimit_resource resource;
    rlimit before = {};
};

/** A file that looks that large and takes no room. */
void makeSparse(const QString &path, off_t size)
{
    writeFile(path);
    if (truncate(qPrintable(path), size) != 0)
        qFatal("cannot enlarge %s", qPrintable(path));
}

/** A medium that gives up early: its files yield no more than so many bytes, if not negative. */
ssize_t readableBytes = -1;

} // namespace

/** Instead of the C library's, for Qt as well. */
extern "C" __attribute__((visibility("default"))) ssize_t read(int descriptor, void *data,
                                                               size_t size)
{
    struct stat information = {};
    if (readableBytes >= 0 && fstat(descriptor, &information) == 0 &&
        S_ISREG(information.st_mode)) {
        size = std::min(size, static_cast<size_t>(readableBytes));
        readableBytes -= static_cast<ssize_t>(size);
    }
    return syscall(SYS_read, descriptor, data, size);
}

class TestFileOperationsClipboard : public QObject
{
    Q_OBJECT

private slots:
    void initTestCase() { prepareScratchMachine(); }
    void init();
    void cleanup();

    void aCopiedFileIsPastedIntoTheFolderMeant_data();
    void aCopiedFileIsPastedIntoTheFolderMeant();
    void anOddNameIsPastedAsItIs_data() { addOddNames(); }
    void anOddNameIsPastedAsItIs();
    void anEmptyFileIsPastedEmpty();
    void theClipboardIsKeptAfterAPaste();
    void aCopyMayBePastedOnTheKey();
    void foldersAreNotCopied();
    void aFileThatCannotBeReadDisablesPaste_data();
    void aFileThatCannotBeReadDisablesPaste();
    void aFileThatEndsEarlyDisablesPaste();
    void aFileBeyondTheMemoryDisablesPaste();
    void theNextCopyEnablesPasteAgain();
    void copyOfAnInvalidIndexDoesNothing();
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
    void copy(const QString &path) { emit panel->parts.list->copyIndex(panel->index(path)); }
    void paste(const QString &path) { emit panel->parts.list->pasteAtIndex(panel->index(path)); }
    bool canPaste() const;
    void fill(const QByteArray &content = "content");
    int statusOfPastingChild();
    void verifyCopyFailed(const MessageBoxes &boxes) const;
    void verifyPasteFailed(const MessageBoxes &boxes) const;

    std::unique_ptr<PanelUnderTest> panel;
};

void TestFileOperationsClipboard::init()
{
    emptyScratchMachine();
    makeFolders({in("working directory"), in("from"), in("to")});
    QVERIFY(QDir::setCurrent(in("working directory")));
    panel = PanelUnderTest::atInternalStorage();
}

void TestFileOperationsClipboard::cleanup()
{
    panel.reset();
    QVERIFY(QDir(in("working directory")).isEmpty());
    QDir::setCurrent(QStringLiteral("/"));
}

bool TestFileOperationsClipboard::canPaste() const
{
    for (const QAction *action : panel->parts.list->findChildren<QAction *>()) {
        if (action->text() == QLatin1String("Paste"))
            return action->isEnabled();
    }
    return false;
}

/** Copies a file "from/report.cdp" of that content. */
void TestFileOperationsClipboard::fill(const QByteArray &content)
{
    writeFile(in("from/report.cdp"), content);
    copy(in("from/report.cdp"));
    QVERIFY(canPaste());
}

void TestFileOperationsClipboard::verifyCopyFailed(const MessageBoxes &boxes) const
{
    QCOMPARE(boxes.count(), 1);
    const auto box = boxes.first();
    QCOMPARE(box.title, QString("Copy File"));
    QCOMPARE(box.text, QString("Failed to copy file."));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
    QVERIFY(!canPaste());
}

void TestFileOperationsClipboard::verifyPasteFailed(const MessageBoxes &boxes) const
{
    const auto box = boxes.last();
    QCOMPARE(box.title, QString("Paste File"));
    QCOMPARE(box.text,
             QString("An error occurred whilst attempting to copy the file or directory."));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
}

void TestFileOperationsClipboard::aCopiedFileIsPastedIntoTheFolderMeant_data()
{
    QTest::addColumn<QString>("place");
    QTest::newRow("a folder itself") << in("to");
    QTest::newRow("a file's folder") << in("to/neighbour");
}

void TestFileOperationsClipboard::aCopiedFileIsPastedIntoTheFolderMeant()
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

void TestFileOperationsClipboard::anOddNameIsPastedAsItIs()
{
    QFETCH(QString, name);
    writeFile(in("from/" + name), "odd");
    const MessageBoxes boxes(QMessageBox::Yes);
    copy(in("from/" + name));
    paste(in("to"));
    QCOMPARE(contentOf(in("to/" + name)), QByteArray("odd"));
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsClipboard::anEmptyFileIsPastedEmpty()
{
    const MessageBoxes boxes(QMessageBox::Yes);
    fill("");
    paste(in("to"));
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray());
    QCOMPARE(boxes.count(), 0);
}

void TestFileOperationsClipboard::theClipboardIsKeptAfterAPaste()
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

void TestFileOperationsClipboard::aCopyMayBePastedOnTheKey()
{
    fill();
    QVERIFY(plugKey());
    panel->widget.setDirectory(keyFolder);
    emit panel->parts.list->pasteAtIndex(panel->parts.list->rootIndex());
    QCOMPARE(contentOf(keyFolder + "/report.cdp"), QByteArray("content"));
}

void TestFileOperationsClipboard::foldersAreNotCopied()
{
    fill();
    const MessageBoxes boxes(QMessageBox::Ok);
    copy(in("from"));
    QCOMPARE(boxes.count(), 1);
    const auto box = boxes.first();
    QCOMPARE(box.title, QString("Copy Directory"));
    QCOMPARE(box.text, QString("It is not possible to copy directories."));
    QCOMPARE(box.icon, QMessageBox::Critical);
    QCOMPARE(box.buttons, QMessageBox::StandardButtons(QMessageBox::Ok));
    QCOMPARE(box.parent, panel->widget.window());
    // What was copied before still is.
    QVERIFY(canPaste());
    paste(in("to"));
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("content"));
}

void TestFileOperationsClipboard::aFileThatCannotBeReadDisablesPaste_data()
{
    QTest::addColumn<QString>("hindrance");
    for (const char *hindrance : {"vanished", "forbidden", "pipe", "beyond any array"})
        QTest::newRow(hindrance) << hindrance;
}

void TestFileOperationsClipboard::aFileThatCannotBeReadDisablesPaste()
{
    QFETCH(QString, hindrance);
    fill();
    const QString path = in("from/other");
    if (hindrance == "pipe")
        QCOMPARE(mkfifo(qPrintable(path), 0600), 0);
    else
        makeSparse(path, hindrance == "beyond any array" ? off_t(3) << 30 : 10);
    const QModelIndex index = panel->index(path);
    QVERIFY(index.isValid());
    if (hindrance == "vanished")
        QVERIFY(QFile::remove(path));
    else if (hindrance == "forbidden")
        QVERIFY(QFile::setPermissions(path, QFile::Permissions()));
    const OrdinaryRights rights;
    const MessageBoxes boxes(QMessageBox::Ok);
    emit panel->parts.list->copyIndex(index);
    verifyCopyFailed(boxes);
}

void TestFileOperationsClipboard::aFileThatEndsEarlyDisablesPaste()
{
    writeFile(in("from/torn"), QByteArray(100000, 'x'));
    const QModelIndex index = panel->index(in("from/torn"));
    const MessageBoxes boxes(QMessageBox::Ok, [] { readableBytes = -1; });
    readableBytes = 99999;
    emit panel->parts.list->copyIndex(index);
    readableBytes = -1;
    verifyCopyFailed(boxes);
}

void TestFileOperationsClipboard::aFileBeyondTheMemoryDisablesPaste()
{
#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
    QSKIP("a sanitiser needs more address space than any limit allows");
#endif
    makeSparse(in("from/huge"), off_t(2000) << 20);
    const QModelIndex index = panel->index(in("from/huge"));
    const MessageBoxes boxes(QMessageBox::Ok);
    {
        const Limit memory(RLIMIT_AS, rlim_t(1500) << 20);
        emit panel->parts.list->copyIndex(index);
    }
    verifyCopyFailed(boxes);
}

void TestFileOperationsClipboard::theNextCopyEnablesPasteAgain()
{
    fill("first");
    const QModelIndex index = panel->index(in("from/report.cdp"));
    QVERIFY(QFile::remove(in("from/report.cdp")));
    const MessageBoxes boxes(QMessageBox::Ok);
    emit panel->parts.list->copyIndex(index);
    QVERIFY(!canPaste());
    // Nothing was cleared: the first content is only out of the operator's reach.
    paste(in("to"));
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("first"));
    writeFile(in("from/next.cdp"), "next");
    copy(in("from/next.cdp"));
    QVERIFY(canPaste());
    paste(in("to"));
    QCOMPARE(contentOf(in("to/next.cdp")), QByteArray("next"));
    QCOMPARE(boxes.count(), 1);
}

void TestFileOperationsClipboard::copyOfAnInvalidIndexDoesNothing()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    emit panel->parts.list->copyIndex(QModelIndex());
    copy(in("never there"));
    QCOMPARE(boxes.count(), 0);
    QVERIFY(!canPaste());
}

int TestFileOperationsClipboard::statusOfPastingChild()
{
    const pid_t child = fork();
    if (child == 0) {
        // QtTest catches the signal to write a report of its own.
        std::signal(SIGABRT, SIG_DFL);
        const rlimit noCoreFile = {0, 0};
        setrlimit(RLIMIT_CORE, &noCoreFile);
        emit panel->parts.list->pasteAtIndex(panel->parts.list->rootIndex());
        _exit(0);
    }
    int status = 0;
    waitpid(child, &status, 0);
    return status;
}

void TestFileOperationsClipboard::pasteWithoutACopyIsFatal()
{
    int status = 0;
    const QByteArray written = captureStandardError([&] { status = statusOfPastingChild(); });
    QVERIFY(WIFSIGNALED(status));
    QCOMPARE(WTERMSIG(status), SIGABRT);
    QCOMPARE(written, QByteArray("Error Assert: '!copiedFileName.isEmpty()' is FALSE at line 682 "
                                 "in file software/applications/common/file_widget\n"));
}

/** Nowhere is the working directory to a careless path; cleanup() looks into that. */
void TestFileOperationsClipboard::pasteIntoNowhereWritesNothing()
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

void TestFileOperationsClipboard::aTakenNameIsAskedAbout()
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

void TestFileOperationsClipboard::cancelKeepsWhatIsThere()
{
    fill("new");
    writeFile(in("to/report.cdp"), "old");
    const MessageBoxes boxes(QMessageBox::Cancel);
    paste(in("to"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(in("to/report.cdp")), QByteArray("old"));
}

void TestFileOperationsClipboard::pasteOverTheSourceKeepsItsContent()
{
    fill();
    const MessageBoxes boxes(QMessageBox::Yes);
    paste(in("from"));
    QCOMPARE(boxes.count(), 1);
    QCOMPARE(contentOf(in("from/report.cdp")), QByteArray("content"));
}

void TestFileOperationsClipboard::aFullMediumIsReported_data()
{
    QTest::addColumn<int>("size");
    // Less than what QFile would keep in a buffer until it closes the file, and more.
    QTest::newRow("small") << 100;
    QTest::newRow("large") << 100000;
}

void TestFileOperationsClipboard::aFullMediumIsReported()
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

void TestFileOperationsClipboard::aReadOnlyFolderIsReported()
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

void TestFileOperationsClipboard::whatIsNoFileIsNotWrittenOver_data()
{
    QTest::addColumn<QString>("obstacle");
    for (const char *obstacle : {"folder", "pipe", "link that leads nowhere", "link to a device"})
        QTest::newRow(obstacle) << obstacle;
}

void TestFileOperationsClipboard::whatIsNoFileIsNotWrittenOver()
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
void TestFileOperationsClipboard::aKeyUnmountedWhileAskedGetsNothing()
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

void TestFileOperationsClipboard::aPanelThatGoesWhileAskedPastesNothing()
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

QTEST_MAIN(TestFileOperationsClipboard)
#include "tst_file_operations_clipboard.moc"
