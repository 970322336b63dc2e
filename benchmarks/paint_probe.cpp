// Loaded into a Qt program under measurement with LD_PRELOAD: writes down what the
// program has used when the window titled R4_BENCH_WINDOW has been painted for the
// first time. Then the program ends, or, with R4_BENCH_STAY set, goes on.
//
// R4_BENCH_START and R4_BENCH_RECORD are those of end_probe.cpp.

#include "usage_record.h"

#include <QBackingStore>
#include <QWindow>

#include <cstdlib>
#include <cstring>
#include <dlfcn.h>

namespace {

bool isAwaited(const QWindow *window)
{
    static bool seen = false;
    if (seen || window->title() != qEnvironmentVariable("R4_BENCH_WINDOW"))
        return false;
    seen = true;
    return true;
}

} // namespace

// Qt calls this for every window once its contents have been painted.
void QBackingStore::flush(const QRegion &region, QWindow *window, const QPoint &offset)
{
    using Flush = void (QBackingStore::*)(const QRegion &, QWindow *, const QPoint &);
    void *const symbol = dlsym(RTLD_NEXT, "_ZN13QBackingStore5flushERK7QRegionP7QWindowRK6QPoint");
    Flush original = nullptr;
    static_assert(sizeof original >= sizeof symbol);
    std::memcpy(&original, &symbol, sizeof symbol);
    (this->*original)(region, window, offset);
    if (!isAwaited(window ? window : this->window()))
        return;
    writeRecord();
    if (!qEnvironmentVariableIsSet("R4_BENCH_STAY"))
        _Exit(EXIT_SUCCESS); // in the sandbox nobody misses the tidying up
}
