#pragma once

#include <QByteArray>
#include <QString>
#include <QtGlobal>

#include <cstddef>
#include <cstdint>

/** A fuzz input that is taken apart from its front. Does not copy: the bytes stay the fuzzer's. */
class InputBytes
{
public:
    InputBytes(const uint8_t *data, std::size_t size);

    bool isEmpty() const { return left == 0; }
    /** 0 at the end. */
    quint8 takeByte();
    /** Big-endian; bytes past the end count as 0. */
    quint16 takeShort();
    /** A copy of up to `size` bytes, fewer where the input ends early. */
    QByteArray take(std::size_t size);
    QByteArray takeRest();

private:
    const char *front;
    std::size_t left;
};

/** UTF-16 in big-endian order, lone surrogates included; an odd byte at the end is ignored. */
QString utf16From(const QByteArray &bytes);
