// FlatMap.h: boost::unordered_flat_map in private memory: the upper bound.
#pragma once

#include <boost/unordered/unordered_flat_map.hpp>

#include "PrivateMap.h"

namespace Bench {

struct FlatMap : PrivateMap< boost::unordered_flat_map< Key, Value > > {
  static constexpr char const * name = "flat_map";
  using PrivateMap::PrivateMap;
};

}  // namespace Bench
