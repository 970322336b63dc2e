#pragma once

#include "tessel_core/thread.h"

#include <atomic>
#include <cstddef>

#include <pthread.h>

inline constexpr quint32 mediumPriority = 3;
inline constexpr std::size_t stackHint = 16384;

inline void startWorker(Tessel::Thread &thread, Tessel::Thread::Entry entry,
                        void *argument = nullptr, quint32 priority = mediumPriority)
{
    thread.start(entry, argument, "worker", priority, stackHint);
}

inline void setFlag(void *argument)
{
    static_cast<std::atomic<bool> *>(argument)->store(true);
}

inline void storeHandle(void *argument)
{
    *static_cast<pthread_t *>(argument) = pthread_self();
}
