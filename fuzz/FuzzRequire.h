#pragma once

#include <cstdio>
#include <cstdlib>

/// Ends the process if a promise does not hold. The fuzzer then keeps the input, and a replay names it.
inline void require(bool holds, const char* promise)
{
    if (holds)
        return;
    std::fprintf(stderr, "Broken promise: %s\n", promise);
    std::abort();
}
