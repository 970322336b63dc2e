#include "tessel_core/recursive_mutex.h"

#include "tessel_core/thread.h"

namespace Tessel {

RecursiveMutex::RecursiveMutex()
{
    pthread_mutex_init(&mutex, nullptr);
}

RecursiveMutex::~RecursiveMutex()
{
    pthread_mutex_destroy(&mutex);
}

void RecursiveMutex::lock()
{
    const qint32 caller = currentThreadId();
    if (owner == caller) {
        ++depth;
        return;
    }
    pthread_mutex_lock(&mutex);
    owner = caller;
    depth = 1;
}

void RecursiveMutex::unlock()
{
    if (owner != currentThreadId())
        return;
    if (--depth > 0)
        return;
    owner = noOwner;
    pthread_mutex_unlock(&mutex);
}

} // namespace Tessel
