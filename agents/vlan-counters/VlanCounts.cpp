#include "VlanCounts.h"

namespace VlanCounters {

using Quill::Bridging::VlanCounter;
using Quill::Bridging::VlanStats;

VlanCounts::VlanCounts( Koi::Ptr< Quill::Bridging::VlanCounterDir > table )
    : table_( std::move( table ) ) {
  for( auto const & i : table_->vlanCounter() ) {
    VlanStats const stats = i.value().vlanStats();
    counts_[i.key().value()] = {
        stats.inOctets(), { stats.inUcastPkts(), stats.inMcastPkts(), stats.inBcastPkts() } };
  }
}

void VlanCounts::refresh( Koi::Seconds now ) {
  while( !changed_.empty() ) {
    Koi::U16 const vlan = changed_.back();
    Counts & counts = counts_[vlan];
    auto const & [ucast, mcast, bcast] = counts.packets;
    table_->vlanCounterIs( VlanCounter( Bridging::VlanId( vlan ),
                                        VlanStats( counts.octets, ucast, mcast, bcast, 0, 0, 0, 0 ),
                                        now ) );
    counts.hasChanged = false;
    changed_.pop_back();
  }
}

}  // namespace VlanCounters
