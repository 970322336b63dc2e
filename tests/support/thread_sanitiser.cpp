/*
 * What the thread sanitiser must be told about libraries that were built without
 * it. Linked into the tests of a thread sanitiser build only.
 */

#include <QMutex>

#include <sanitizer/tsan_interface.h>

// The sanitiser does not see the waiting inside Qt's library, so a thread that
// waited for a QMutex would look as if it held none. The linker sends our own
// code's calls of lock() and unlock() through here (--wrap, by mangled name).
extern "C" {
void __real__ZN6QMutex4lockEv(QMutex *mutex);   // NOLINT(bugprone-reserved-identifier)
void __real__ZN6QMutex6unlockEv(QMutex *mutex); // NOLINT(bugprone-reserved-identifier)

void __wrap__ZN6QMutex4lockEv(QMutex *mutex) // NOLINT(bugprone-reserved-identifier)
{
    __real__ZN6QMutex4lockEv(mutex);
    __tsan_acquire(mutex);
}

void __wrap__ZN6QMutex6unlockEv(QMutex *mutex) // NOLINT(bugprone-reserved-identifier)
{
    __tsan_release(mutex);
    __real__ZN6QMutex6unlockEv(mutex);
}

/**
 * QtTest ends its own watchdog thread by means the sanitiser does not see either, and an
 * event of the USB support changes threads in Qt's queue: whoever posts it touches nothing else.
 */
const char *__tsan_default_suppressions() // NOLINT(bugprone-reserved-identifier)
{
    return "race:QTest::qRun\n"
           "race:QWaitCondition::~QWaitCondition\n"
           "race:onDiskNotification\n";
}
}
