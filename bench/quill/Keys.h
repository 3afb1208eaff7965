// Keys.h: the keys of one size of table, the same for all peers: random, all different, the same in
// every run.
#pragma once

#include <algorithm>
#include <bit>
#include <vector>

#include "Record.h"

namespace Bench {

/// Loops go over the keys in strides of this many, and look at the clock after each.
inline constexpr std::size_t stride = 1024;

/// The most keys that one call of a batched look-up or change gets.
inline constexpr unsigned lookupBatchSize = 64, changeBatchSize = 32;

struct Keys {
  explicit Keys( std::size_t numEntries ) : present( numEntries ) {
    std::uint64_t number = 0;
    for( Key & key : present )
      key = mixed( ++number );
    std::size_t const numProbes =
        std::bit_ceil( std::clamp( numEntries, 4 * stride, std::size_t{ 1 } << 22 ) );
    probes.resize( numProbes );
    absent.resize( numProbes );
    for( std::size_t i = 0; i < numProbes; ++i ) {
      probes[i] = present[mixed( ~i ) % numEntries];
      absent[i] = mixed( ++number );
    }
  }

  std::vector< Key > present;  ///< what the tables hold, in the order of insertion
  std::vector< Key > probes;   ///< keys that are there, in random order, whole strides
  std::vector< Key > absent;   ///< as many keys that are not there
};

}  // namespace Bench
