#include "support/package_reader.h"

#include <QFile>

#include <zlib.h>

#include <algorithm>
#include <optional>

namespace TestSupport {
namespace {

constexpr int blockSize = 512;

struct Field
{
    int offset;
    int length;
};

constexpr Field nameField{0, 100};
constexpr Field modeField{100, 8};
constexpr Field uidField{108, 8};
constexpr Field gidField{116, 8};
constexpr Field sizeField{124, 12};
constexpr Field mtimeField{136, 12};
constexpr Field checksumField{148, 8};
constexpr Field magicField{257, 8};
constexpr int typeFlagOffset = 156;

QByteArray fieldOf(const QByteArray &header, Field field)
{
    return header.mid(field.offset, field.length);
}

/** A number field: octal digits, or base 256 when the first bit is set. Empty if neither. */
std::optional<quint64> number(const QByteArray &header, Field field)
{
    const QByteArray raw = fieldOf(header, field);
    if ((raw.at(0) & 0x80) != 0) {
        quint64 value = 0;
        for (const char byte : raw.mid(1))
            value = value << 8 | static_cast<quint8>(byte);
        return value;
    }
    const QByteArray digits = raw.left(raw.indexOf('\0')).trimmed();
    bool isNumber = false;
    const quint64 value = digits.toULongLong(&isNumber, 8);
    return isNumber ? std::optional<quint64>(value) : std::nullopt;
}

QByteArray text(const QByteArray &field)
{
    const int end = field.indexOf('\0');
    return end < 0 ? field : field.left(end);
}

/** The sum of the header's bytes, its checksum field counted as spaces. */
quint64 headerSum(const QByteArray &header)
{
    quint64 sum = 0;
    for (int i = 0; i < blockSize; ++i) {
        const bool inChecksum =
            i >= checksumField.offset && i < checksumField.offset + checksumField.length;
        sum += inChecksum ? quint64(' ') : static_cast<quint8>(header.at(i));
    }
    return sum;
}

bool isZero(const QByteArray &bytes)
{
    return std::all_of(bytes.begin(), bytes.end(), [](char byte) { return byte == '\0'; });
}

/** Walks the blocks of an archive; a step answers whether there is another one to take. */
class TarWalk
{
public:
    explicit TarWalk(const QByteArray &archive)
        : tar(archive)
    {
        package.tarSize = tar.size();
    }

    Package walk()
    {
        if (tar.size() % blockSize != 0)
            fail("The archive is no whole number of blocks");
        else
            while (step())
                continue;
        return package;
    }

private:
    bool fail(const char *problem)
    {
        package.problem = QStringLiteral("%1 at byte %2").arg(QLatin1String(problem)).arg(at);
        return false;
    }

    bool step()
    {
        if (at + blockSize > tar.size())
            return fail("The end blocks are missing");
        const QByteArray header = tar.mid(at, blockSize);
        if (isZero(header))
            return end();
        PackageMember member;
        if (!readHeader(header, &member))
            return false;
        at += blockSize;
        return readData(&member) && keep(member);
    }

    bool readHeader(const QByteArray &header, PackageMember *member)
    {
        const auto mode = number(header, modeField);
        const auto uid = number(header, uidField);
        const auto gid = number(header, gidField);
        const auto size = number(header, sizeField);
        const auto mtime = number(header, mtimeField);
        if (!mode || !uid || !gid || !size || !mtime)
            return fail("A header holds no number where one belongs");
        if (number(header, checksumField) != headerSum(header))
            return fail("A header checksum is wrong");
        member->name = QString::fromUtf8(text(fieldOf(header, nameField)));
        member->mode = quint32(*mode);
        member->uid = quint32(*uid);
        member->gid = quint32(*gid);
        member->size = *size;
        member->mtime = qint64(*mtime);
        member->typeFlag = header.at(typeFlagOffset);
        member->magic = fieldOf(header, magicField);
        return true;
    }

    bool readData(PackageMember *member)
    {
        if (member->size > quint64(tar.size() - at))
            return fail("The data of an entry is cut short");
        const int size = int(member->size);
        member->bytes = tar.mid(at, size);
        const int padding = (blockSize - size % blockSize) % blockSize;
        if (!isZero(tar.mid(at + size, padding)))
            return fail("The padding of an entry is not zero");
        at += size + padding;
        return true;
    }

    /** A type 'L' entry holds the name of the entry that follows it. */
    bool keep(PackageMember member)
    {
        if (member.typeFlag == 'L') {
            longName = text(member.bytes);
            return true;
        }
        if (!longName.isNull())
            member.name = QString::fromUtf8(longName);
        longName = QByteArray();
        package.members.append(member);
        return true;
    }

    bool end()
    {
        if (!longName.isNull())
            return fail("A long name is not followed by its entry");
        if (at + 2 * blockSize > tar.size() || !isZero(tar.mid(at, 2 * blockSize)))
            return fail("There is only one end block");
        package.endBlocks = true;
        at += 2 * blockSize;
        package.bytesAfterEnd = tar.size() - at;
        return package.bytesAfterEnd != 0 && fail("The archive goes on after its end blocks");
    }

    QByteArray tar;
    int at = 0;
    QByteArray longName;
    Package package;
};

} // namespace

QByteArray gunzip(const QByteArray &gzip, QString *problem)
{
    constexpr int gzipOnly = 16;
    QByteArray out;
    z_stream stream{};
    if (inflateInit2(&stream, MAX_WBITS + gzipOnly) != Z_OK) {
        *problem = QStringLiteral("zlib could not start");
        return out;
    }
    stream.next_in = reinterpret_cast<Bytef *>(const_cast<char *>(gzip.constData()));
    stream.avail_in = uInt(gzip.size());
    QByteArray chunk(1 << 20, Qt::Uninitialized);
    int result = Z_OK;
    while (result == Z_OK) {
        stream.next_out = reinterpret_cast<Bytef *>(chunk.data());
        stream.avail_out = uInt(chunk.size());
        result = inflate(&stream, Z_NO_FLUSH);
        out.append(chunk.constData(), chunk.size() - int(stream.avail_out));
    }
    if (result != Z_STREAM_END)
        *problem = QStringLiteral("The gzip member is damaged or incomplete");
    else if (stream.avail_in != 0)
        *problem = QStringLiteral("There are %1 bytes after the gzip member").arg(stream.avail_in);
    inflateEnd(&stream);
    return out;
}

Package readTar(const QByteArray &tar)
{
    return TarWalk(tar).walk();
}

Package readPackageBytes(const QByteArray &gzip)
{
    QString problem;
    Package package = readTar(gunzip(gzip, &problem));
    if (!problem.isNull())
        package.problem = problem;
    return package;
}

Package readPackage(const QString &path)
{
    QFile file(path);
    if (file.open(QIODevice::ReadOnly))
        return readPackageBytes(file.readAll());
    Package package;
    package.problem = QStringLiteral("%1: %2").arg(path, file.errorString());
    return package;
}

} // namespace TestSupport
