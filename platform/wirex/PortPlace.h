// PortPlace.h: where a front-panel port sits, as part 1 of its identifier says it. For the rooms of
// the platform; programs ask EthIntfId or MgmtIntfId.
//
//     24-15  module   0 on a switch without modules
//     14-5   port
//      4-0   lane     0 for the whole port; only a port of a module has lanes
#pragma once

#include <koi/Types.h>

namespace Wirex {

struct PortPlace {
  static constexpr Koi::U32 moduleMax = 1023;
  static constexpr Koi::U32 portMax = 1023;
  static constexpr Koi::U32 laneMax = 31;

  Koi::U32 module = 0;
  Koi::U32 port = 0;
  Koi::U32 lane = 0;

  static constexpr PortPlace ofPart( Koi::U32 part1 ) {
    return { part1 >> 15 & moduleMax, part1 >> 5 & portMax, part1 & laneMax };
  }
  /// Needs each number within its maximum.
  constexpr Koi::U32 part() const { return module << 15 | port << 5 | lane; }
};

}  // namespace Wirex
