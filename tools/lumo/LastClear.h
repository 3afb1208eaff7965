// LastClear.h: what the counters of a VLAN interface were when they were cleared, as the tree of
// its system has it.
#pragma once

#include <Lumo/VlanIntf.h>

namespace Lumo {

using LastClear = Koi::Ptr< Interface::VlanIntfCounter >;

inline constexpr char lastClearName[] = "lastClear";

/// Null when there is nothing, or no directory.
inline LastClear lastClearOf( Koi::Ptr< Interface::AllVlanIntfCounterDir > const & all,
                              Wirex::IntfId const & intf ) {
  auto const one = all ? all->intfCounterDir( intf ) : nullptr;
  return one ? one->intfCounter( Koi::Name( lastClearName ) ) : nullptr;
}

}  // namespace Lumo
