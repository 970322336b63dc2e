#include "tessel_core/io/sparse_reader.h"

#include <QFile>
#include <QTemporaryDir>
#include <QTest>

#include <cerrno>
#include <dlfcn.h>
#include <unistd.h>

using Tessel::SparseReader;

namespace {

constexpr qint64 block = 65536;

/** Whether the file system plays one that does not tell of holes. */
bool holesAreHidden = false;

struct Piece
{
    char fill; // 0 makes a hole
    qint64 size;
};
using Pieces = QVector<Piece>;

QByteArray contentsOf(const Pieces &pieces)
{
    QByteArray bytes;
    for (const Piece &piece : pieces)
        bytes += QByteArray(static_cast<int>(piece.size), piece.fill);
    return bytes;
}

bool writeSparse(const QString &path, const Pieces &pieces)
{
    QFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return false;
    qint64 position = 0;
    for (const Piece &piece : pieces) {
        if (piece.fill != 0 &&
            (!file.seek(position) ||
             file.write(QByteArray(static_cast<int>(piece.size), piece.fill)) < 0))
            return false;
        position += piece.size;
    }
    return file.flush() && file.resize(position);
}

struct Reading
{
    QByteArray bytes;
    qint64 last = 0;
    qint64 largestChunk = 0;
    /** How far the descriptor was read, as the kernel counts it. */
    qint64 fetched = 0;
};

qint64 bytesReadByThisProcess()
{
    QFile counters(QStringLiteral("/proc/self/io"));
    if (!counters.open(QIODevice::ReadOnly))
        return -1;
    return counters.readLine().mid(sizeof "rchar:").trimmed().toLongLong();
}

Reading readAll(QFile &file)
{
    Reading reading;
    const auto reader = std::make_unique<SparseReader>(file);
    const char *chunk = nullptr;
    const qint64 before = bytesReadByThisProcess();
    while ((reading.last = reader->next(chunk)) > 0) {
        reading.bytes.append(chunk, static_cast<int>(reading.last));
        reading.largestChunk = std::max(reading.largestChunk, reading.last);
    }
    reading.fetched = bytesReadByThisProcess() - before;
    return reading;
}

} // namespace

Q_DECLARE_METATYPE(Piece)

extern "C" off64_t lseek64(int descriptor, off64_t offset, int whence) noexcept
{
    using Function = off64_t (*)(int, off64_t, int);
    static const auto real = reinterpret_cast<Function>(dlsym(RTLD_NEXT, "lseek64"));
    if (holesAreHidden && (whence == SEEK_DATA || whence == SEEK_HOLE)) {
        errno = EINVAL;
        return -1;
    }
    return real(descriptor, offset, whence);
}

extern "C" off_t lseek(int descriptor, off_t offset, int whence) noexcept
{
    return lseek64(descriptor, offset, whence);
}

class SparseReaderTest : public QObject
{
    Q_OBJECT

private slots:
    void cleanup() { holesAreHidden = false; }
    void everyByteComesInOrder_data();
    void everyByteComesInOrder();
    void everythingIsReadWhereHolesAreNotTold_data() { everyByteComesInOrder_data(); }
    void everythingIsReadWhereHolesAreNotTold();
    void holesAreNotFetched();
    void aFileThatGrowsMeanwhileIsReadOn();
    void aFileThatShrinksMeanwhileEnds();
    void aFailureToReadIsTold();

private:
    QTemporaryDir scratch;
};

void SparseReaderTest::everyByteComesInOrder_data()
{
    QTest::addColumn<Pieces>("pieces");
    QTest::newRow("empty") << Pieces{};
    QTest::newRow("one byte") << Pieces{{'a', 1}};
    QTest::newRow("a chunk") << Pieces{{'a', 8192}};
    QTest::newRow("a chunk and a byte") << Pieces{{'a', 8193}};
    QTest::newRow("more than the buffer") << Pieces{{'a', block}, {'b', block}, {'c', 17}};
    QTest::newRow("only a hole") << Pieces{{0, 3 * block}};
    QTest::newRow("a hole of odd size") << Pieces{{0, 3 * block + 5}};
    QTest::newRow("hole first") << Pieces{{0, block}, {'a', 100}};
    QTest::newRow("hole last") << Pieces{{'a', 100}, {0, 2 * block}};
    QTest::newRow("hole between") << Pieces{{'a', block + 3}, {0, 5 * block}, {'b', 9000}};
    QTest::newRow("many") << Pieces{{0, block}, {'a', block}, {0, 2 * block},
                                    {'b', 1},   {0, block},   {'c', 2 * block}};
}

void SparseReaderTest::everyByteComesInOrder()
{
    QFETCH(Pieces, pieces);
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(writeSparse(file.fileName(), pieces));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const Reading reading = readAll(file);
    QVERIFY(reading.bytes == contentsOf(pieces));
    QCOMPARE(reading.last, qint64(0));
    QVERIFY(reading.largestChunk <= SparseReader::chunkBytes);
}

void SparseReaderTest::everythingIsReadWhereHolesAreNotTold()
{
    holesAreHidden = true;
    everyByteComesInOrder();
}

void SparseReaderTest::holesAreNotFetched()
{
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(writeSparse(file.fileName(), {{'a', block}, {0, 64 * block}, {'b', block}}));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const Reading told = readAll(file);
    QCOMPARE(qint64(told.bytes.size()), 66 * block);
    QVERIFY2(told.fetched < 4 * block, qPrintable(QString::number(told.fetched)));

    holesAreHidden = true;
    QVERIFY(file.seek(0));
    QVERIFY(readAll(file).fetched >= 66 * block);
}

void SparseReaderTest::aFileThatGrowsMeanwhileIsReadOn()
{
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(writeSparse(file.fileName(), {{'a', 100}}));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    SparseReader reader(file);
    const char *chunk = nullptr;
    QCOMPARE(reader.next(chunk), qint64(100));
    QFile writer(file.fileName());
    QVERIFY(writer.open(QIODevice::Append));
    writer.write("more");
    writer.close();
    QCOMPARE(reader.next(chunk), qint64(4));
    QCOMPARE(QByteArray(chunk, 4), QByteArray("more"));
}

void SparseReaderTest::aFileThatShrinksMeanwhileEnds()
{
    QFile file(scratch.filePath(QStringLiteral("file")));
    QVERIFY(writeSparse(file.fileName(), {{'a', 4 * block}}));
    QVERIFY(file.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    SparseReader reader(file);
    const char *chunk = nullptr;
    QCOMPARE(reader.next(chunk), SparseReader::chunkBytes);
    QVERIFY(QFile::resize(file.fileName(), 10));
    qint64 count = 0;
    qint64 total = 0;
    while ((count = reader.next(chunk)) > 0)
        total += count;
    QCOMPARE(count, qint64(0));
    QVERIFY(total <= block);
}

void SparseReaderTest::aFailureToReadIsTold()
{
    // The first page of a process is mapped nowhere.
    QFile memory(QStringLiteral("/proc/self/mem"));
    QVERIFY(memory.open(QIODevice::ReadOnly | QIODevice::Unbuffered));
    const Reading reading = readAll(memory);
    QCOMPARE(reading.last, qint64(-1));
    QCOMPARE(reading.bytes, QByteArray());
}

QTEST_APPLESS_MAIN(SparseReaderTest)
#include "tst_sparse_reader.moc"
