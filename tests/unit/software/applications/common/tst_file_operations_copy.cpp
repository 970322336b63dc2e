#include "file_clipboard_fixture.h"

#include <QtTest>

#include <algorithm>
#include <sys/stat.h>

using namespace TestSupport;

namespace {

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

class TestFileOperationsCopy : public FileClipboardFixture
{
    Q_OBJECT

private slots:
    void foldersAreNotCopied();
    void aFileThatCannotBeReadDisablesPaste_data();
    void aFileThatCannotBeReadDisablesPaste();
    void aFileThatEndsEarlyDisablesPaste();
    void aFileBeyondTheMemoryDisablesPaste();
    void theNextCopyEnablesPasteAgain();
    void copyOfAnInvalidIndexDoesNothing();

private:
    void verifyCopyFailed(const MessageBoxes &boxes) const;
};

void TestFileOperationsCopy::verifyCopyFailed(const MessageBoxes &boxes) const
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

void TestFileOperationsCopy::foldersAreNotCopied()
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

void TestFileOperationsCopy::aFileThatCannotBeReadDisablesPaste_data()
{
    QTest::addColumn<QString>("hindrance");
    for (const char *hindrance : {"vanished", "forbidden", "pipe", "beyond any array"})
        QTest::newRow(hindrance) << hindrance;
}

void TestFileOperationsCopy::aFileThatCannotBeReadDisablesPaste()
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

void TestFileOperationsCopy::aFileThatEndsEarlyDisablesPaste()
{
    writeFile(in("from/torn"), QByteArray(100000, 'x'));
    const QModelIndex index = panel->index(in("from/torn"));
    const MessageBoxes boxes(QMessageBox::Ok, [] { readableBytes = -1; });
    readableBytes = 99999;
    emit panel->parts.list->copyIndex(index);
    readableBytes = -1;
    verifyCopyFailed(boxes);
}

void TestFileOperationsCopy::aFileBeyondTheMemoryDisablesPaste()
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

void TestFileOperationsCopy::theNextCopyEnablesPasteAgain()
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

void TestFileOperationsCopy::copyOfAnInvalidIndexDoesNothing()
{
    const MessageBoxes boxes(QMessageBox::Ok);
    emit panel->parts.list->copyIndex(QModelIndex());
    copy(in("never there"));
    QCOMPARE(boxes.count(), 0);
    QVERIFY(!canPaste());
}

QTEST_MAIN(TestFileOperationsCopy)
#include "tst_file_operations_copy.moc"
