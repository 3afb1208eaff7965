// Pairs.h: benchmarks in pairs: an operation of ours, and plain code that does the same work, timed
// in one run in turns, so that their ratio means something on any machine.
#pragma once

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>

namespace Bench {

/// One pass over all items. What comes back tells that the work was done, and done right.
using Pass = std::function< std::uint64_t() >;

enum class Heap { untouched, used };

/// Adds a pair. Ours and plain must return the same number; where the heap is to stay untouched, a
/// pass of ours must not allocate. A broken promise is said and makes runPairs() return 1. `after`
/// puts away what a pass has built; it is not timed.
void addPair( std::string const & name, std::size_t numItems, Heap heap, Pass ours, Pass plain,
              std::function< void() > after = {} );

/// Says what the machine and the build are, runs all pairs, and prints a line for each: the median
/// nanoseconds an item, the ratio, the allocations an item. Takes Google Benchmark's options; the
/// median is that of five unless they say otherwise. Returns the process's exit status.
int runPairs( int argc, char ** argv );

}  // namespace Bench
