#include "CounterAgent.h"

#include <koi/KeysOf.h>
#include <koi/UtcText.h>
#include <mem/Rova.h>

#include <cstdio>

namespace VlanCounters {

using namespace Quill::Bridging;

namespace {

constexpr Koi::U32 mostVlans = Bridging::VlanId::koiRange.high;

}  // namespace

CounterAgent::CounterAgent( Koi::Activity * activity, Mem::RootPath const & root,
                            Koi::Seconds interval, Koi::Ptr< Bridging::Config const > config )
    : config_( std::move( config ) ),
      topology_( Bridging::Topology::configFactory( Koi::Name( "topology" ) ) ),
      counters_( vlanCounterDirFactory( Koi::Name( "vlanCounters" ) ) ),
      snapshots_( vlanCounterSnapshotDirFactory( Koi::Name( "vlanCounterSnapshots" ) ) ),
      requests_( Bridging::vlanCountersCliReqFactory( Koi::Name( "vlanCountersCliReq" ) ) ),
      interval_( interval ),
      timer_( activity, [this] {
        refresh();
        timer_.delayIs( interval_ );
      } ) {
  Quill::QuillParameters parameters;
  parameters.activity = activity;
  parameters.root = root;
  counters_->vlanCounterControl().init( Quill::QuillType::writer, true, mostVlans, parameters );
  snapshots_->vlanCounterSnapshotControl().init( Quill::QuillType::writer, true, mostVlans,
                                                 parameters );
  counts_ = std::make_unique< VlanCounts >( counters_ );
  clearing_ = Bridging::vlanCounterClearSmFactory( requests_, counters_, snapshots_ );
  server_ = std::make_unique< Coredb::TreeServer >(
      requests_, root.path() + "/vlanCounter/requests", Coredb::Access::writable, activity );
  timer_.delayIs( interval_ );
}

CounterAgent::~CounterAgent() { clearing_->koiDoZombieReactors( true ); }

Frames::Port & CounterAgent::port( Wirex::IntfId intf ) {
  return ports_.try_emplace( intf, intf, config_, topology_ ).first->second;
}

bool CounterAgent::refresh() {
  try {
    counts_->refresh( Koi::secondsSince1970() );
  } catch( Rova::MemoryResourceException const & e ) {
    std::fprintf( stderr, "vlan-counters: %s\n", e.what() );
    return false;
  }
  // Those that could not be answered for want of room.
  for( auto const & vlan : Koi::keysOf( requests_->clearCountersRequest() ) )
    requests_->clearCountersRequestNotify( vlan );
  return true;
}

}  // namespace VlanCounters
