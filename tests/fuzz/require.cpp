#include "fuzz/require.h"

#include <cstdio>
#include <cstdlib>

void require(bool holds, const char *claim)
{
    if (holds)
        return;
    std::fprintf(stderr, "This does not hold: %s\n", claim);
    std::abort();
}
