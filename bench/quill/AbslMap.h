// AbslMap.h: absl::flat_hash_map in private memory.
#pragma once

#include <absl/container/flat_hash_map.h>

#include "PrivateMap.h"

namespace Bench {

struct AbslMap : PrivateMap< absl::flat_hash_map< Key, Value > > {
  static constexpr char const * name = "absl";
  using PrivateMap::PrivateMap;
};

}  // namespace Bench
