#pragma once

#include <QByteArray>
#include <QString>
#include <QVector>

namespace TestSupport {

/** One entry of a tar archive, as its header tells it. */
struct PackageMember
{
    QString name;     // UTF-8 decoded; a GNU long name already put in its place
    quint32 mode = 0; // permission bits
    quint32 uid = 0;
    quint32 gid = 0;
    quint64 size = 0;  // as declared; equal to bytes.size() in a whole archive
    qint64 mtime = 0;  // seconds since 1970
    char typeFlag = 0; // '0' regular file, '5' directory
    QByteArray magic;  // the 8 bytes of magic and version
    QByteArray bytes;
};

/**
 * A crash dump package taken apart by a reader that shares no code with the
 * writer: zlib and the tar header layout, nothing else.
 */
struct Package
{
    QString problem; // the first thing wrong with it, null when nothing is
    QVector<PackageMember> members;
    bool endBlocks = false;   // the two blocks of zeros are there
    qint64 bytesAfterEnd = 0; // what follows the two blocks: padding of the last record
    qint64 tarSize = 0;       // of the archive inside the gzip member

    /** Complete to the last byte: gzip trailer, checksums, end blocks, nothing behind them. */
    bool isWellFormed() const { return problem.isNull(); }
};

/** Reads a gzip-compressed tar file. Members found before a problem are kept. */
Package readPackage(const QString &path);
/** The same from memory. */
Package readPackageBytes(const QByteArray &gzip);
/** The archive inside, not compressed. */
Package readTar(const QByteArray &tar);

/**
 * Unpacks one gzip member, which must be complete, trailer included, with nothing
 * behind it; otherwise answers what could be unpacked and sets *problem.
 */
QByteArray gunzip(const QByteArray &gzip, QString *problem);

/**
 * Whether GNU tar, bsdtar and 7-Zip see these members in the package at `path`:
 * the same names in the same order, the same permissions and the same bytes. A
 * tool that is not installed counts as a difference. `why` says what differs.
 */
bool sameWithEveryTool(const QString &path, const QVector<PackageMember> &expectedMembers,
                       QString *why);
/** The same against readPackage(), which must find the package well-formed too. */
bool sameWithEveryTool(const QString &path, QString *why);

} // namespace TestSupport
