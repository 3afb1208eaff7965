// StoppedReader.h: what readers that stop, and readers that die, cost a table's writer, and whether
// they and the others have everything in the end.
#pragma once

#include <cstddef>
#include <filesystem>

namespace Bench {

/// Three tables that change in turns: one that nobody follows, one with a reader that is awake, one
/// with a reader that is stopped for `seconds`; then the roles change. 1 when a reader misses
/// something afterwards, a killed one is not gone, or the queue grows without bound.
int stoppedReader( std::filesystem::path const & folder, std::size_t numEntries, double seconds );

/// A table with eight readers for `seconds`, of whom four are killed, and others start, each
/// second, and at least eight times. 1 as above.
int dyingReaders( std::filesystem::path const & folder, std::size_t numEntries, double seconds );

}  // namespace Bench
