// Allocations.h: counts every block that the process takes from the heap, its libraries' included.
#pragma once

#include <cstdint>

namespace Bench {

/// How often malloc, calloc, realloc and so every operator new were called, by all threads.
std::uint64_t numAllocations();

}  // namespace Bench
