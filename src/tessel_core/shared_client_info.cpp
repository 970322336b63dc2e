#include "tessel_core/shared_client_info.h"

#include <QSharedMemory>

#include <cstring>

namespace Tessel {
namespace {

template <int N>
QString textOf(const char (&field)[N])
{
    return QString::fromLatin1(field, static_cast<int>(qstrnlen(field, N)));
}

SharedClientInfo *blockOf(QSharedMemory &memory)
{
    return static_cast<SharedClientInfo *>(memory.data());
}

} // namespace

SharedClientInfo *sharedClientInfo(int size, const char *key)
{
    static QSharedMemory memory(QString::fromLatin1(key));
    if (memory.isAttached())
        return blockOf(memory);

    if (memory.create(size, QSharedMemory::ReadWrite)) {
        std::memset(memory.data(), 0, static_cast<std::size_t>(size));
        return blockOf(memory);
    }
    if (memory.error() != QSharedMemory::AlreadyExists) {
        qDebug("Failed to create SharedClientInfo shared memory: %d", memory.error());
        return nullptr;
    }
    if (!memory.attach(QSharedMemory::ReadWrite)) {
        qDebug("Failed to attach SharedClientInfo shared memory: %d", memory.error());
        return nullptr;
    }
    return blockOf(memory);
}

QString serialNumber(const SharedClientInfo &info)
{
    return textOf(info.serialNumber);
}

QString logFilePath(const SharedClientInfo &info)
{
    return textOf(info.logFilePath);
}

} // namespace Tessel
