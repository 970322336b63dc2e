#include "fuzz/memory_meter.h"

#ifdef R4_MEASURED_MEMORY

#include <atomic>

// Declared here because only one of the compilers brings a header for them, and
// every sanitiser's run-time library the functions.
extern "C" int __sanitizer_install_malloc_and_free_hooks(void (*allocated)(const volatile void *,
                                                                           std::size_t),
                                                         void (*freed)(const volatile void *));
extern "C" std::size_t __sanitizer_get_allocated_size(const volatile void *pointer);

namespace {

// Qt keeps no threads here, but the sanitisers do.
std::atomic<std::size_t> inUse{0};
std::atomic<std::size_t> highest{0};

void allocated(const volatile void *, std::size_t size)
{
    const std::size_t now = inUse += size;
    if (now > highest)
        highest = now;
}

void freed(const volatile void *pointer)
{
    inUse -= __sanitizer_get_allocated_size(pointer);
}

} // namespace

MemoryMeter::MemoryMeter()
{
    static const int installed = __sanitizer_install_malloc_and_free_hooks(allocated, freed);
    static_cast<void>(installed);
    start = inUse;
    highest = start;
}

std::size_t MemoryMeter::peak() const
{
    return highest - start;
}

#else

MemoryMeter::MemoryMeter()
    : start(0)
{}

std::size_t MemoryMeter::peak() const
{
    return start;
}

#endif
