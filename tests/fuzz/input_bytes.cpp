#include "fuzz/input_bytes.h"

#include <QtEndian>

#include <algorithm>

InputBytes::InputBytes(const uint8_t *data, std::size_t size)
    : front(reinterpret_cast<const char *>(data))
    , left(size)
{}

quint8 InputBytes::takeByte()
{
    if (left == 0)
        return 0;
    --left;
    return static_cast<quint8>(*front++);
}

quint16 InputBytes::takeShort()
{
    const quint8 high = takeByte();
    const quint8 low = takeByte();
    return static_cast<quint16>((high << 8U) | low);
}

QByteArray InputBytes::take(std::size_t size)
{
    const std::size_t taken = std::min(size, left);
    const QByteArray bytes(front, static_cast<int>(taken));
    front += taken;
    left -= taken;
    return bytes;
}

QByteArray InputBytes::takeRest()
{
    return take(left);
}

QString utf16From(const QByteArray &bytes)
{
    QString text(bytes.size() / 2, Qt::Uninitialized);
    qFromBigEndian<quint16>(bytes.constData(), text.size(), text.data());
    return text;
}
