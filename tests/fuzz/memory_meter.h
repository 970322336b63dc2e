#pragma once

#include <cstddef>

/**
 * Measures how much heap the code that runs during its life takes at most, over
 * what was taken when it began. One at a time. Only the sanitisers' allocators
 * tell: in other builds it measures nothing.
 */
class MemoryMeter
{
public:
    MemoryMeter();

    /** Bytes; 0 in a build without sanitisers. */
    std::size_t peak() const;

private:
    std::size_t start;
};
