// VlanCounterClearing.cpp: how requests to clear counters are answered.

#include <VlanCounterClearing.h>

#include <koi/KeysOf.h>
#include <mem/Rova.h>

namespace Bridging {

void VlanCounterClearSm::handleClearCountersRequest( VlanId const & vlan ) {
  if( !requests() || !requests()->clearCountersRequest().contains( vlan ) )
    return;
  try {
    if( auto const record = counters()->vlanCounter().lookup( vlan ) )
      snapshots()->vlanCounterSnapshotIs( *record );
  } catch( Rova::MemoryResourceException const & ) {
    return;  // no room for it: the request stays
  }
  requests()->clearCountersRequestDel( vlan );
}

void VlanCounterClearSm::handleRequests() {
  if( requests() )
    for( VlanId const & vlan : Koi::keysOf( requests()->clearCountersRequest() ) )
      handleClearCountersRequest( vlan );
}

}  // namespace Bridging
